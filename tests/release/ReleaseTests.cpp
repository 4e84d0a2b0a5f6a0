// What a user downloads: binaries of one architecture carrying the build's
// version, a zip that runs from any empty folder and keeps its settings beside
// itself, and a README whose settings are the ones the tool writes.
#include "Fixture.h"
#include "IniFile.h"
#include "TestRunner.h"
#include "Tray.h"

#include <set>
#include <stdio.h>

using namespace qt;

namespace
{
std::string VersionString(const std::string& strPath, const char* pszValue)
{
    DWORD dwHandle = 0;
    const DWORD dwSize = GetFileVersionInfoSizeA(strPath.c_str(), &dwHandle);
    if (dwSize == 0)
        return "<no version>";
    std::vector<char> data(dwSize);
    if (!GetFileVersionInfoA(strPath.c_str(), 0, dwSize, data.data()))
        return "<no version>";
    char* pValue = nullptr;
    UINT nLength = 0;
    const std::string strKey = std::string("\\StringFileInfo\\040904E4\\") + pszValue;
    if (!VerQueryValueA(data.data(), strKey.c_str(), reinterpret_cast<void**>(&pValue), &nLength) || !pValue)
        return "<missing>";
    return std::string(pValue);
}

WORD MachineOf(const std::string& strPath)
{
    const std::string strImage = ReadTextFile(strPath);
    if (strImage.size() < 0x40)
        return 0;
    const DWORD dwPe = *reinterpret_cast<const DWORD*>(strImage.data() + 0x3C);
    if (dwPe + 6 > strImage.size() || strImage.compare(dwPe, 4, std::string("PE\0\0", 4)) != 0)
        return 0;
    return *reinterpret_cast<const WORD*>(strImage.data() + dwPe + 4);
}

WORD OwnMachine()
{
#if defined(_M_X64) || defined(__x86_64__)
    return IMAGE_FILE_MACHINE_AMD64;
#else
    return IMAGE_FILE_MACHINE_I386;
#endif
}

// The keys of the README's table of section `Settings`: its rows that start
// with | `Key` (the user tools' table that follows is not that section).
std::set<std::string> ReadmeSettingKeys(const std::string& strReadme)
{
    std::set<std::string> keys;
    bool bInSettings = false;
    for (const std::string& strLine : SplitLines(ReadTextFile(strReadme)))
    {
        if (strLine.compare(0, 3, "## ") == 0 || strLine.compare(0, 6, "| Key ") == 0)
            bInSettings = strLine.find("section `Settings`") != std::string::npos;
        if (bInSettings && strLine.compare(0, 3, "| `") == 0)
            keys.insert(strLine.substr(3, strLine.find('`', 3) - 3));
    }
    return keys;
}
} // namespace

TEST_CASE(both_binaries_carry_the_build_version_and_this_architecture)
{
    const std::string strVersion = Option("version");
    REQUIRE(!strVersion.empty());
    for (const char* pszFile : {"QUORVANT.exe", "QUORVANT.dll"})
    {
        const std::string strPath = ExeDir() + pszFile;
        CHECK_EQ(VersionString(strPath, "FileVersion"), strVersion);
        CHECK_EQ(VersionString(strPath, "ProductVersion"), strVersion);
        CHECK_EQ(VersionString(strPath, "ProductName"), std::string("QUORVANT"));
        CHECK_EQ(VersionString(strPath, "OriginalFilename"), std::string(pszFile));
        CHECK_EQ(MachineOf(strPath), OwnMachine());
    }
}

TEST_CASE(every_setting_of_the_readme_is_in_the_file_the_tool_writes)
{
    const std::set<std::string> readme = ReadmeSettingKeys(Option("readme"));
    REQUIRE(readme.size() >= 8);
    Tool tool(MakeScratchDir("readme"));
    REQUIRE(tool.Start());
    REQUIRE(tool.Exit());
    std::set<std::string> written;
    for (const IniLine& line : ReadIni(tool.SettingsPath()))
    {
        if (line.strSection == "Settings")
            written.insert(line.strKey);
    }
    CHECK(readme == written);
    for (const std::string& strKey : readme)
    {
        if (!written.count(strKey))
            printf("  in the README but not written: %s\n", strKey.c_str());
    }
}

TEST_CASE(the_unpacked_zip_runs_from_its_folder_and_writes_only_there)
{
    std::string strDir = Option("unpacked");
    REQUIRE(!strDir.empty());
    if (strDir.back() != '\\')
        strDir += '\\';
    // Binaries of this architecture only, and the guide.
    CHECK_EQ(MachineOf(strDir + "QUORVANT.exe"), OwnMachine());
    CHECK_EQ(MachineOf(strDir + "QUORVANT.dll"), OwnMachine());
    CHECK(FileExists(strDir + "QUORVANT.txt"));
    CHECK(!FileExists(strDir + "QUORVANT.INI"));

    char szWindows[MAX_PATH] = {};
    GetWindowsDirectoryA(szWindows, MAX_PATH);
    const std::string strWindowsIni = std::string(szWindows) + "\\QUORVANT.INI";
    DeleteFileA(strWindowsIni.c_str());
    const std::string strElsewhere = MakeScratchDir("cwd");

    const size_t nIcons = TrayIcons().size();
    Process process;
    REQUIRE(process.Start("\"" + strDir + "QUORVANT.exe\"", strElsewhere));
    REQUIRE(WaitFor([&] { return TrayIcons().size() == nIcons + 1; }, 10000));
    REQUIRE(ExitFromTrayMenu(TrayIcons().back()));
    CHECK(process.WaitExit(10000));
    CHECK_EQ(process.ExitCode(), 0ul);

    CHECK(FileExists(strDir + "QUORVANT.INI"));
    CHECK(!FileExists(strWindowsIni));
    CHECK(!FileExists(strElsewhere + "QUORVANT.INI"));
}
