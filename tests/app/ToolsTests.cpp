// What a resident helper offers beyond the host's own behaviour: the user
// tools in the "&Assist" menu, the tray menu's About box and Edit Settings,
// settings taken in while the tool runs, and the log of what it did.
#include "Fixture.h"
#include "HostInput.h"
#include "IniFile.h"
#include "RealMouse.h"
#include "TestRunner.h"
#include "Tray.h"

using namespace qt;

namespace
{
// The recorder appends its command line to strDir's runs.txt; the words
// after it tell the runs apart.
std::string Recorder(const std::string& strDir, const std::string& strWords)
{
    return "\"" + ExeDir() + "RECORDER.exe\" \"" + strDir + "runs.txt\" " + strWords;
}

bool Ran(const std::string& strDir, const std::string& strText)
{
    return WaitFor([&] { return ReadTextFile(strDir + "runs.txt").find(strText) != std::string::npos; }, 5000);
}

// The host's "&Assist" menu opened with the keyboard (over the editor, if
// any), and these keys typed into it.
bool ChooseFromAssistMenu(Host& host, HWND hWndEditor, const char* pszKey)
{
    hWndEditor ? FocusEditor(host, hWndEditor) : SetForegroundWindow(host.Frame());
    return WaitFor([&] { return GetForegroundWindow() == host.Frame(); }, 3000) && XKeys("alt+a") &&
           WaitFor([] { return VisibleMenu() != nullptr; }, 3000) && (!*pszKey || XKeys(pszKey));
}

// Waits until the host's "&Assist" popup holds these items, "-" a separator.
bool WaitAssistItems(Host& host, const std::string& strItems)
{
    return WaitFor(
        [&] {
            host.ClearLog();
            PostMessageA(host.Frame(), WM_COMMAND, 1196, 0); // the host logs its menus
            return host.WaitLog("POPUP &Assist: " + strItems, 500);
        },
        5000);
}
} // namespace

TEST_CASE(user_tools_run_from_the_assist_menu_with_their_placeholders_and_grey_without_a_file)
{
    const std::string strDir = MakeScratchDir("tools");
    const std::string strFile = MakeSource(strDir, "main.asm");
    const std::string strProject = strDir + "demo.mcp";
    HostAndTool ht("tools", "/project \"" + strProject + "\" /open \"" + strFile + "\"",
                   "[Settings]\r\nSaveAutomatically=0\r\n[Tool01]\r\nCaption=&Recorder\r\nCommand=" +
                       Recorder(strDir, "file=%FILENAME% project=%PROJECT% dir=%PROJECTDIR%") +
                       "\r\n[Tool02]\r\nCaption=\r\nCommand=" + Recorder(strDir, "hidden") +
                       "\r\n[Tool03]\r\nCaption=&Zip\r\nCommand=" + Recorder(strDir, "zip") + "\r\n");
    HWND hWndEditor = ht.host.FindWindowByTitle(strFile);
    REQUIRE(ht.ok && hWndEditor);
    CHECK(WaitAssistItems(ht.host, "&Assist Window|-|&Recorder|&Zip"));
    REQUIRE(ChooseFromAssistMenu(ht.host, hWndEditor, "r"));
    CHECK(Ran(strDir, "file=" + strFile + " project=" + strProject + " dir=" + strDir.substr(0, strDir.size() - 1)));

    // No editor: the tool that needs a file is grey and its key chooses
    // nothing; the one that needs none still runs, and is the marker.
    SendMessageA(hWndEditor, WM_CLOSE, 0, 0);
    REQUIRE(ChooseFromAssistMenu(ht.host, nullptr, "r Escape"));
    REQUIRE(WaitFor([] { return VisibleMenu() == nullptr; }, 3000));
    REQUIRE(ChooseFromAssistMenu(ht.host, nullptr, "z"));
    CHECK(Ran(strDir, " zip"));
    CHECK_EQ(SplitLines(ReadTextFile(strDir + "runs.txt")).size(), 2u); // those two runs, no more
}

TEST_CASE(a_settings_file_changed_on_disk_takes_effect_at_once_and_survives_the_exit)
{
    const std::string strDir = MakeScratchDir("reload");
    const std::string strFile = MakeSource(strDir, "main.asm");
    const std::string strSettings = "[Settings]\r\nLog=1\r\nSaveAutomatically=0\r\nExternalEditor=";
    HostAndTool ht("reload", "/open \"" + strFile + "\"", strSettings + Recorder(strDir, "old %FILENAME%") + "\r\n");
    HWND hWndEditor = ht.host.FindWindowByTitle(strFile);
    REQUIRE(ht.ok && hWndEditor);

    // Edited while the host has the "&Assist" menu open: the popup changes
    // only once it is closed.
    const std::string strEdited = strSettings + Recorder(strDir, "new %FILENAME%") +
                                  "\r\nSource=*.asm;*.s\r\n[Tool04]\r\nCaption=&Lint\r\nCommand=" +
                                  Recorder(strDir, "lint %FILENAME%") + "\r\n";
    REQUIRE(ChooseFromAssistMenu(ht.host, hWndEditor, "") && WriteTextFile(ht.tool.SettingsPath(), strEdited));
    CHECK(WaitFor([&] { return ReadTextFile(ht.strDir + "QUORVANT.log").find("popup of pid") != std::string::npos; },
                  5000));
    XKeys("Escape Escape");
    REQUIRE(WaitAssistItems(ht.host, "&Assist Window|-|&Lint"));
    REQUIRE(ChooseFromAssistMenu(ht.host, hWndEditor, "l"));
    CHECK(Ran(strDir, "lint " + strFile));
    REQUIRE(FocusEditor(ht.host, hWndEditor));
    SendKeys({VK_CONTROL, 'E'});
    CHECK(Ran(strDir, "new " + strFile));

    // A width of the Assist Window written into the file: taken at the next layout.
    HWND hWndDock = FindDockBar(ht.host.Frame());
    REQUIRE(WriteTextFile(ht.tool.SettingsPath(), "[Settings]\r\nDockRect=0000:0000:0211:0400" + strEdited.substr(10)));
    CHECK(WaitFor([&] { RECT rc = {}; return GetWindowRect(hWndDock, &rc) && rc.right - rc.left == 211; }, 5000));

    // A change just before the exit is not overwritten by what the tool saves.
    REQUIRE(WriteTextFile(ht.tool.SettingsPath(), strEdited + "[Tool05]\r\nCaption=Late\r\n"));
    REQUIRE(ht.tool.Exit());
    const std::vector<IniLine> lines = ReadIni(ht.tool.SettingsPath());
    CHECK_EQ(IniValue(lines, "Settings", "Source"), std::string("*.asm;*.s"));
    CHECK_EQ(IniValue(lines, "Tool05", "Caption"), std::string("Late"));
    CHECK_EQ(IniValue(lines, "Settings", "ExternalEditor"), Recorder(strDir, "new %FILENAME%"));
    CHECK(ReadTextFile(strDir + "runs.txt").find("old ") == std::string::npos);
}

TEST_CASE(the_tray_menu_shows_about_and_opens_the_settings_in_the_external_editor)
{
    const size_t nBefore = TrayIcons().size();
    const std::string strRuns = MakeScratchDir("aboutruns");
    HostAndTool ht("about", "", "[Settings]\r\nExternalEditor=" + Recorder(strRuns, "%FILENAME%") + "\r\n");
    REQUIRE(ht.ok && WaitFor([&] { return TrayIcons().size() == nBefore + 1; }, 5000));
    HWND hWndIcon = TrayIcons().back();

    REQUIRE(ChooseFromTrayMenu(hWndIcon, 'A'));
    HWND hWndAbout = nullptr;
    char szText[1024] = {};
    // Found while it is being made: the text comes with WM_INITDIALOG.
    REQUIRE(WaitFor([&] { return (hWndAbout = FindWindowA(nullptr, "About QUORVANT")) &&
                                 GetDlgItemTextA(hWndAbout, 1005, szText, sizeof(szText)) > 0; }, 5000));
    const std::string strText(szText);
    const char* pszBits = sizeof(void*) == 8 ? "(0 of 32 bits, 1 of 64 bits)" : "(1 of 32 bits, 0 of 64 bits)";
    CHECK(strText.find(std::string("Host IDE frames attached: 1 ") + pszBits) != std::string::npos);
    CHECK(strText.find("Settings: " + ht.tool.SettingsPath()) != std::string::npos);
    PostMessageA(hWndAbout, WM_COMMAND, IDOK, 0);
    CHECK(WaitFor([] { return FindWindowA(nullptr, "About QUORVANT") == nullptr; }, 5000));

    // Edit Settings: the editor gets the settings file, written out in full.
    REQUIRE(ChooseFromTrayMenu(hWndIcon, 'E'));
    CHECK(Ran(strRuns, ht.tool.SettingsPath()));
    CHECK_EQ(IniValue(ReadIni(ht.tool.SettingsPath()), "Tool10", "Command"), std::string());
}

TEST_CASE(the_log_says_what_happened_and_keeps_one_older_copy_of_a_full_file)
{
    Tool tool(MakeScratchDir("log"));
    const std::string strLog = tool.m_strDir + "QUORVANT.log";
    // A log at its limit: the next line moves it to the older copy.
    REQUIRE(WriteTextFile(strLog, std::string(1024 * 1024 - 10, 'x')));
    REQUIRE(WriteTextFile(tool.m_strDir + "QUORVANT.old.log", "oldest"));
    REQUIRE(WriteTextFile(tool.SettingsPath(), "[Settings]\r\nLog=1\r\n"));
    Host host(tool.m_strDir);
    REQUIRE(host.Start() && tool.Start() && host.WaitLog(kDockBarAnnouncement, 10000));
    // A record without our key, sent to the tool as any program could.
    char szBody[64] = "forged";
    COPYDATASTRUCT cds = {1, sizeof(szBody), szBody};
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutA(tool.MainFrame(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000, &dwResult);
    REQUIRE(tool.Exit() && host.Close());

    const std::string strText = ReadTextFile(strLog);
    for (const char* psz : {" start: QUORVANT 0.", " settings read from ", " host IDE left: pid ", " exit",
                            " records refused (no key of ours, or malformed): 1"})
        CHECK(strText.find(psz) != std::string::npos);
    CHECK(strText.find(" host IDE entered: pid " + std::to_string(host.GetProcess().Id())) != std::string::npos);
    CHECK(strText.size() < 10000);
    CHECK_EQ(ReadTextFile(tool.m_strDir + "QUORVANT.old.log").size(), static_cast<size_t>(1024 * 1024 - 10));
}
