// What a user downloads: binaries of one architecture carrying the build's
// version, a zip that runs from any folder and keeps its settings beside
// itself, and a README whose settings are the ones the tool writes.
#include "Fixture.h"
#include "IniFile.h"
#include "TestRunner.h"
#include "Tray.h"

#include <set>

using namespace qt;

namespace
{
std::string VersionString(const std::string& strPath, const char* pszValue)
{
    std::vector<char> data(GetFileVersionInfoSizeA(strPath.c_str(), nullptr) + 1);
    char* pValue = nullptr;
    UINT nLength = 0;
    return GetFileVersionInfoA(strPath.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) &&
                   VerQueryValueA(data.data(), (std::string("\\StringFileInfo\\040904E4\\") + pszValue).c_str(),
                                  reinterpret_cast<void**>(&pValue), &nLength)
               ? pValue
               : "<missing>";
}

// Whether a binary's PE header names the architecture of this test program.
bool OfThisArchitecture(const std::string& strPath)
{
    const std::string strImage = ReadTextFile(strPath) + std::string(0x40, '\0');
    const DWORD dwPe = *reinterpret_cast<const DWORD*>(strImage.data() + 0x3C);
    return dwPe + 6 <= strImage.size() && strImage.compare(dwPe, 4, std::string("PE\0\0", 4)) == 0 &&
           *reinterpret_cast<const WORD*>(strImage.data() + dwPe + 4) ==
               (sizeof(void*) == 8 ? IMAGE_FILE_MACHINE_AMD64 : IMAGE_FILE_MACHINE_I386);
}
} // namespace

TEST_CASE(both_binaries_carry_the_build_version_and_this_architecture)
{
    REQUIRE(!Option("version").empty());
    for (const char* pszFile : {"QUORVANT.exe", "QUORVANT.dll"})
    {
        const std::string strPath = ExeDir() + pszFile;
        for (const char* pszValue : {"FileVersion", "ProductVersion"})
            CHECK_EQ(VersionString(strPath, pszValue), Option("version"));
        CHECK_EQ(VersionString(strPath, "OriginalFilename"), std::string(pszFile));
        CHECK(OfThisArchitecture(strPath));
    }
}

TEST_CASE(every_setting_of_the_readme_is_in_the_file_the_tool_writes)
{
    // The rows of the README's table of section `Settings` start with | `Key`.
    std::set<std::string> readme;
    bool bInSettings = false;
    for (const std::string& strLine : SplitLines(ReadTextFile(Option("readme"))))
    {
        if (strLine.compare(0, 3, "## ") == 0 || strLine.compare(0, 6, "| Key ") == 0)
            bInSettings = strLine.find("section `Settings`") != std::string::npos;
        if (bInSettings && strLine.compare(0, 3, "| `") == 0)
            readme.insert(strLine.substr(3, strLine.find('`', 3) - 3));
    }
    REQUIRE(readme.size() >= 8);
    Tool tool(MakeScratchDir("readme"));
    REQUIRE(tool.Start() && tool.Exit());
    std::set<std::string> written;
    for (const IniLine& line : ReadIni(tool.SettingsPath()))
        if (line.strSection == "Settings")
            written.insert(line.strKey);
    CHECK(readme == written);
}

TEST_CASE(the_unpacked_zip_runs_from_its_folder_and_writes_only_there)
{
    const std::string strDir = Option("unpacked") + "\\";
    CHECK(OfThisArchitecture(strDir + "QUORVANT.exe") && OfThisArchitecture(strDir + "QUORVANT.dll"));
    CHECK(FileExists(strDir + "QUORVANT.txt"));
    REQUIRE(!FileExists(strDir + "QUORVANT.INI"));
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
    CHECK(process.WaitExit(10000) && process.ExitCode() == 0);
    CHECK(FileExists(strDir + "QUORVANT.INI"));
    CHECK(!FileExists(strWindowsIni) && !FileExists(strElsewhere + "QUORVANT.INI"));
}
