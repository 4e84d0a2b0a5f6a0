// The settings file beside the executable: written at exit with every key
// users edit by hand, read back at start, and never a reason to fail.
#include "Fixture.h"
#include "IniFile.h"
#include "TestRunner.h"

using namespace qt;

TEST_CASE(every_key_is_written_at_exit_in_order_with_its_default_or_the_value_read_at_start)
{
    std::string strDefaults = "Settings/Source=*.asm;*.c|Settings/Header=*.inc;*.h|"
                              "Settings/ExternalEditor=notepad %FILENAME%|Settings/DockRect=0000:0000:0000:0000|"
                              "Settings/DockLeft=1|Settings/OpenIMEAutomatically=1|Settings/SaveAutomatically=1|"
                              "Settings/ReladFileAutomatically=1|Settings/Log=0|";
    for (const char* pszTool : {"01", "02", "03", "04", "05", "06", "07", "08", "09", "10"})
        strDefaults += std::string("Tool") + pszTool + "/Caption=|Tool" + pszTool + "/Command=|";
    Tool tool(MakeScratchDir("values"));
    REQUIRE(tool.Start() && tool.Exit());
    std::string strFlat; // the file as one line, in its order
    for (const IniLine& line : ReadIni(tool.SettingsPath()))
        strFlat += line.strSection + "/" + line.strKey + "=" + line.strValue + "|";
    CHECK_EQ(strFlat, strDefaults);

    // The profile functions take one pair of quotes off a value that starts
    // and ends with one; what was written that way must come back unchanged.
    const std::string strEditor = "\"\"C:\\My Editor\\ed.exe\" \"%FILENAME%\"\"";
    WriteTextFile(tool.SettingsPath(), "[Settings]\r\nSource=*.s;*.c\r\nExternalEditor=" + strEditor +
                                           "\r\nDockRect=-012:0034:0250:-999\r\nDockLeft=0\r\nSaveAutomatically=7\r\n"
                                           "[Tool03]\r\nCaption=Flash\r\nCommand=flash.exe -go\r\n");
    const std::string strElsewhere = MakeScratchDir("elsewhere");
    // Started from another folder, then once more reading what it saved.
    for (const std::string& strCurrent : {strElsewhere, tool.m_strDir})
    {
        REQUIRE(tool.GetProcess().Start("\"" + tool.m_strDir + "QUORVANT.exe\"", strCurrent));
        REQUIRE(WaitFor([&] { return tool.MainFrame() != nullptr; }, 10000) && tool.Exit());
        const std::vector<IniLine> lines = ReadIni(tool.SettingsPath());
        std::string strValues;
        for (const char* pszKey : {"Source", "Header", "ExternalEditor", "DockRect", "DockLeft", "SaveAutomatically"})
            strValues += IniValue(lines, "Settings", pszKey) + "|";
        strValues += IniValue(lines, "Tool03", "Caption") + "|" + IniValue(lines, "Tool03", "Command") + "|";
        CHECK_EQ(strValues + IniValue(lines, "Tool04", "Caption"),
                 "*.s;*.c|*.inc;*.h|" + strEditor + "|-012:0034:0250:-999|0|7|Flash|flash.exe -go|");
        CHECK(!FileExists(strElsewhere + "QUORVANT.INI"));
    }
}

TEST_CASE(junk_overlong_values_and_a_folder_in_place_of_the_file_are_survived)
{
    std::string strJunk;
    for (unsigned int i = 0, nSeed = 12345; i < 20000; ++i)
        strJunk += static_cast<char>(((nSeed = nSeed * 1103515245u + 12345u) >> 16) & 0xFF);
    const std::string strOverlong =
        "[Settings]\r\nExternalEditor=" + std::string(10000, 'x') + "\r\nDockLeft=zz\r\nDockRect=garbage\r\n";
    const std::string* const texts[] = {&strJunk, &strOverlong, nullptr}; // nullptr: a folder
    for (const std::string* pText : texts)
    {
        Tool tool(MakeScratchDir("junk"));
        // A folder, not a read-only file: the tests run as root, who may write to that.
        REQUIRE(pText ? WriteTextFile(tool.SettingsPath(), *pText)
                      : CreateDirectoryA(tool.SettingsPath().c_str(), nullptr));
        REQUIRE(tool.Start());
        CHECK(tool.Exit());
        CHECK_EQ(tool.GetProcess().ExitCode(), 0ul);
        const std::vector<IniLine> lines = ReadIni(tool.SettingsPath());
        CHECK(pText ? IniValue(lines, "Settings", "Source") == "*.asm;*.c" &&
                          IniValue(lines, "Settings", "DockRect") == "0000:0000:0000:0000" &&
                          IniValue(lines, "Tool10", "Command").empty()
                    : (GetFileAttributesA(tool.SettingsPath().c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0);
    }
}
