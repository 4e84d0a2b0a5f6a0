// The settings file beside the executable: written at exit with exactly the
// keys, formats, defaults and order users edit by hand, and read back at start.
#include "Fixture.h"
#include "IniFile.h"
#include "TestRunner.h"

using namespace qt;

namespace
{
// Runs the tool once in its folder (with the given settings text, if any)
// and returns the file it left.
std::vector<IniLine> RunOnce(Tool& tool, const std::string* pSettings = nullptr)
{
    if (pSettings)
        WriteTextFile(tool.SettingsPath(), *pSettings);
    if (!tool.Start())
        return {};
    if (!tool.Exit())
        return {};
    return ReadIni(tool.SettingsPath());
}

std::string SettingsWithDockRect(const std::string& strRect)
{
    return "[Settings]\r\nDockRect=" + strRect + "\r\n";
}
} // namespace

TEST_CASE(defaults_are_written_at_exit_with_every_key_in_order)
{
    Tool tool(MakeScratchDir("defaults"));
    REQUIRE(!FileExists(tool.SettingsPath()));
    const std::vector<IniLine> lines = RunOnce(tool);
    std::vector<IniLine> expected = {
        {"Settings", "Source", "*.asm;*.c"},
        {"Settings", "Header", "*.inc;*.h"},
        {"Settings", "ExternalEditor", "notepad %FILENAME%"},
        {"Settings", "DockRect", "0000:0000:0000:0000"},
        {"Settings", "DockLeft", "1"},
        {"Settings", "OpenIMEAutomatically", "1"},
        {"Settings", "SaveAutomatically", "1"},
        {"Settings", "ReladFileAutomatically", "1"},
        {"Settings", "Log", "0"},
    };
    for (int i = 1; i <= 10; ++i)
    {
        char szSection[8];
        snprintf(szSection, sizeof(szSection), "Tool%02d", i);
        expected.push_back({szSection, "Caption", ""});
        expected.push_back({szSection, "Command", ""});
    }
    CHECK_EQ(lines.size(), expected.size());
    for (size_t i = 0; i < lines.size() && i < expected.size(); ++i)
    {
        CHECK_EQ(lines[i].strSection, expected[i].strSection);
        CHECK_EQ(lines[i].strKey, expected[i].strKey);
        CHECK_EQ(lines[i].strValue, expected[i].strValue);
    }
}

TEST_CASE(dock_rect_round_trips_and_bad_text_reads_as_documented)
{
    struct Case
    {
        const char* pszStored;
        const char* pszSavedAgain;
    };
    const Case cases[] = {
        {"0012:0034:0250:0600", "0012:0034:0250:0600"},
        {"-012:0034:0250:-999", "-012:0034:0250:-999"}, // four characters down to -999
        {"", "0000:0000:0000:0000"},                    // empty: the empty rectangle
        {"garbage text", "0000:0000:0000:0000"},        // no digits at the offsets: 0
        {"12", "0012:0000:0000:0000"},                  // fields past the end read as 0
        {" +12: -34:0250:0600", "0012:-034:0250:0600"},  // strtol skips blanks, takes a sign
        {"10000:0034:0250:0600", "1000:0000:0000:0000"}, // four characters a field: five shift the rest
    };
    for (const Case& c : cases)
    {
        Tool tool(MakeScratchDir("dockrect"));
        const std::string strSettings = SettingsWithDockRect(c.pszStored);
        const std::vector<IniLine> lines = RunOnce(tool, &strSettings);
        CHECK_EQ(IniValue(lines, "Settings", "DockRect"), std::string(c.pszSavedAgain));
    }
}

TEST_CASE(values_read_at_start_are_kept_and_missing_keys_keep_defaults)
{
    const std::string kQuotedEditor = "\"\"C:\\My Editor\\ed.exe\" \"%FILENAME%\"\"";
    Tool tool(MakeScratchDir("values"));
    const std::string strSettings =
        "[Settings]\r\nSource=*.s;*.c\r\nExternalEditor=" + kQuotedEditor + "\r\n"
        "DockLeft=0\r\nSaveAutomatically=7\r\n[Tool03]\r\nCaption=Flash\r\nCommand=flash.exe -go\r\n";
    std::vector<IniLine> lines = RunOnce(tool, &strSettings);
    CHECK_EQ(IniValue(lines, "Settings", "Source"), std::string("*.s;*.c"));
    CHECK_EQ(IniValue(lines, "Settings", "Header"), std::string("*.inc;*.h"));
    // The profile functions take one pair of quotes off a value that starts
    // and ends with one; what was written that way must come back unchanged.
    CHECK_EQ(IniValue(lines, "Settings", "ExternalEditor"), kQuotedEditor);
    CHECK_EQ(IniValue(lines, "Settings", "DockLeft"), std::string("0"));
    CHECK_EQ(IniValue(lines, "Settings", "SaveAutomatically"), std::string("7"));
    CHECK_EQ(IniValue(lines, "Tool03", "Caption"), std::string("Flash"));
    CHECK_EQ(IniValue(lines, "Tool03", "Command"), std::string("flash.exe -go"));
    CHECK_EQ(IniValue(lines, "Tool04", "Caption"), std::string(""));

    // A new instance reads what the last one saved.
    lines = RunOnce(tool);
    CHECK_EQ(IniValue(lines, "Settings", "Source"), std::string("*.s;*.c"));
    CHECK_EQ(IniValue(lines, "Tool03", "Command"), std::string("flash.exe -go"));
    CHECK_EQ(IniValue(lines, "Settings", "ExternalEditor"), kQuotedEditor);
}

TEST_CASE(the_file_beside_the_executable_is_used_whatever_the_current_directory)
{
    const std::string strDir = MakeScratchDir("cwd");
    const std::string strElsewhere = MakeScratchDir("elsewhere");
    Tool tool(strDir);
    WriteTextFile(tool.SettingsPath(), "[Settings]\r\nHeader=*.hpp\r\n");
    Process process;
    REQUIRE(process.Start("\"" + strDir + "QUORVANT.exe\"", strElsewhere));
    REQUIRE(WaitFor([] { return FindWindowA("TrayIconFrameClass", nullptr) != nullptr; }, 10000));
    PostMessageA(FindWindowA("TrayIconFrameClass", nullptr), WM_COMMAND, 57665, 0);
    REQUIRE(process.WaitExit(10000));
    CHECK(!FileExists(strElsewhere + "QUORVANT.INI"));
    CHECK_EQ(IniValue(ReadIni(tool.SettingsPath()), "Settings", "Header"), std::string("*.hpp"));
}

TEST_CASE(junk_and_overlong_settings_start_with_defaults_and_end_with_a_valid_file)
{
    std::string strJunk;
    unsigned int nSeed = 12345;
    for (int i = 0; i < 20000; ++i)
    {
        nSeed = nSeed * 1103515245u + 12345u;
        strJunk += static_cast<char>((nSeed >> 16) & 0xFF);
    }
    const std::string strOverlong = "[Settings]\r\nExternalEditor=" + std::string(10000, 'x') + "\r\nDockLeft=zz\r\n";
    const std::string* const settings[] = {&strJunk, &strOverlong};
    for (const std::string* pSettings : settings)
    {
        Tool tool(MakeScratchDir("junk"));
        const std::vector<IniLine> lines = RunOnce(tool, pSettings);
        CHECK(tool.GetProcess().ExitCode() == 0);
        CHECK_EQ(IniValue(lines, "Settings", "Source"), std::string("*.asm;*.c"));
        CHECK_EQ(IniValue(lines, "Settings", "DockRect"), std::string("0000:0000:0000:0000"));
        CHECK_EQ(IniValue(lines, "Settings", "ReladFileAutomatically"), std::string("1"));
        CHECK(IniValue(lines, "Tool10", "Command") == "");
    }
}

TEST_CASE(a_folder_in_place_of_the_settings_file_is_survived)
{
    // (A read-only file proves nothing here: the tests run as root, who may
    // write to it anyway.)
    Tool tool(MakeScratchDir("folder"));
    REQUIRE(CreateDirectoryA(tool.SettingsPath().c_str(), nullptr));
    REQUIRE(tool.Start());
    CHECK(tool.Exit());
    CHECK_EQ(tool.GetProcess().ExitCode(), 0ul);
    CHECK(GetFileAttributesA(tool.SettingsPath().c_str()) & FILE_ATTRIBUTE_DIRECTORY);
}
