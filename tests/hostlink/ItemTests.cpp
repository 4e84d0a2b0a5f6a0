// The tool beside the stand-in host IDE, two processes under Wine: wheel
// scrolling and focus in the MDI windows, and Ctrl+E to the external editor.
// Effects are read from the host's own log.
#include "Fixture.h"
#include "HostInput.h"
#include "TestRunner.h"

#include <stdio.h>

using namespace qt;

namespace
{
// The stand-in host with a source file (if named) open, and the tool beside
// it, started once the tool has seen the host.
struct Beside
{
    Beside(const char* pszTag, const char* pszFile)
        : strDir(MakeScratchDir(pszTag)), strFile(pszFile ? MakeSource(strDir, pszFile) : std::string()),
          host(strDir), tool(strDir)
    {
    }
    bool Start(const std::string& strHostArguments = std::string(), const std::string& strSettings = std::string())
    {
        if (!strSettings.empty())
            WriteTextFile(tool.SettingsPath(), strSettings);
        const std::string strOpen = strFile.empty() ? std::string() : "/open \"" + strFile + "\" ";
        return host.Start(strOpen + strHostArguments) && tool.Start() && host.WaitLog(kDockBarAnnouncement, 10000);
    }
    std::string strDir;
    std::string strFile;
    Host host;
    Tool tool;
};

void PostWheel(HWND hWnd, short nDelta)
{
    PostMessageA(hWnd, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(nDelta)), MAKELPARAM(100, 100));
}

std::string Settings(const std::string& strDir, bool bSave)
{
    return "[Settings]\r\nExternalEditor=\"" + ExeDir() + "RECORDER.exe\" \"" + strDir +
           "editor.txt\" %FILENAME%\r\nSaveAutomatically=" + (bSave ? "1" : "0") + "\r\n";
}
} // namespace

// One notch, one scroll, whether or not the host passes the wheel on to the
// parent (the stand-in's wheel variant does, as DefWindowProc would).
TEST_CASE(wheel_over_an_editor_scrolls_four_lines_a_notch)
{
    for (const char* pszVariant : {"", "/variant wheel"})
    {
        Beside b("wheel", "main.asm");
        REQUIRE(b.Start(pszVariant));
        auto& [strDir, strFile, host, tool] = b;
        HWND hWndEditor = host.FindWindowByTitle(strFile);
        REQUIRE(hWndEditor != nullptr);

        struct Case
        {
            short nDelta;
            int nUp;
            int nDown;
        };
        const Case cases[] = {{120, 4, 0}, {-120, 0, 4}, {60, 2, 0}, {-29, 0, 0}, {240, 8, 0}, {-360, 0, 12}};
        for (const Case& c : cases)
        {
            host.WaitQuiet();
            host.ClearLog();
            PostWheel(hWndEditor, c.nDelta);
            PostMessageA(host.Frame(), WM_COMMAND, 1033, 0); // a marker after the wheel's effects
            REQUIRE(host.WaitLog("BUILD 1033", 5000));
            CHECK_EQ(host.CountLog("VSCROLL " + strFile + " 0"), c.nUp);
            CHECK_EQ(host.CountLog("VSCROLL " + strFile + " 1"), c.nDown);
        }
        if (qt::CurrentFailed())
            printf("  on the host variant \"%s\"\n", pszVariant);
    }
}

TEST_CASE(wheel_over_a_view_text_scrolls_the_view_one_line)
{
    for (const char* pszVariant : {"", "/variant wheel"})
    {
        Beside b("viewwheel", nullptr);
        REQUIRE(b.Start(std::string("/view 1117 ") + pszVariant));
        auto& [strDir, strFile, host, tool] = b;
        HWND hWndView = host.FindWindowByTitle("Program Memory Window");
        REQUIRE(hWndView != nullptr);
        HWND hWndText = host.FindChildOfClass(hWndView, "PFE_Text");
        REQUIRE(hWndText != nullptr);

        for (short nDelta : {120, 15, -120, 0})
        {
            host.WaitQuiet();
            host.ClearLog();
            PostWheel(hWndText, nDelta);
            PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
            REQUIRE(host.WaitLog("BUILD 1033", 5000));
            CHECK_EQ(host.CountLog(std::string("VSCROLL Program Memory Window ") + (nDelta > 0 ? "0" : "1")), 1);
            CHECK_EQ(host.CountLogPrefix("VSCROLL "), 1);
        }
        if (qt::CurrentFailed())
            printf("  on the host variant \"%s\"\n", pszVariant);
    }
}

TEST_CASE(clicks_move_the_focus_inside_the_host)
{
    Beside b("focus", "main.c");
    REQUIRE(b.Start("/view 1117"));
    auto& [strDir, strFile, host, tool] = b;
    HWND hWndClient = host.FindChildOfClass(host.Frame(), "MDIClient");
    HWND hWndView = host.FindWindowByTitle("Program Memory Window");
    HWND hWndText = host.FindChildOfClass(hWndView, "PFE_Text");
    HWND hWndEditor = host.FindWindowByTitle(strFile);
    HWND hWndGutter = host.FindChildOfClass(hWndEditor, "PFE_Num");
    REQUIRE(hWndClient && hWndText && hWndEditor && hWndGutter);

    struct Case
    {
        HWND hWnd;
        UINT nMessage;
        std::string strFocus; // the SETFOCUS line expected, empty: none
    };
    const Case cases[] = {
        {hWndClient, WM_RBUTTONDOWN, "SETFOCUS MDIClient"},
        {hWndText, WM_LBUTTONDOWN, "SETFOCUS PFE_View Program Memory Window"},
        {hWndGutter, WM_MBUTTONDOWN, "SETFOCUS PFE_Text " + strFile},
        {hWndText, WM_RBUTTONDOWN, ""}, // the right button is the host's own there
        {hWndGutter, WM_RBUTTONDOWN, ""},
    };
    for (const Case& c : cases)
    {
        host.WaitQuiet();
        host.ClearLog();
        PostMessageA(c.hWnd, c.nMessage, 0, MAKELPARAM(1, 1));
        PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
        REQUIRE(host.WaitLog("BUILD 1033", 5000));
        host.WaitQuiet();
        if (c.strFocus.empty())
            CHECK_EQ(host.CountLogPrefix("SETFOCUS"), 0);
        else
            CHECK(host.CountLogPrefix(c.strFocus) >= 1);
    }
}

TEST_CASE(ctrl_e_saves_first_then_opens_the_file_in_the_external_editor)
{
    for (bool bSave : {true, false})
    {
        Beside b("ctrle", "main.asm");
        REQUIRE(b.Start("", Settings(b.strDir, bSave)));
        auto& [strDir, strFile, host, tool] = b;
        HWND hWndEditor = host.FindWindowByTitle(strFile);
        REQUIRE(FocusEditor(host, hWndEditor));
        host.WaitQuiet();
        host.ClearLog();

        SendKeys({VK_CONTROL, 'E'});
        REQUIRE(WaitFor([&] { return FileExists(strDir + "editor.txt"); }, 10000));
        const std::string strCommand = ReadTextFile(strDir + "editor.txt");
        CHECK(strCommand.find("editor.txt\" " + strFile) != std::string::npos);
        // The host's own accelerator still saw its key.
        CHECK(host.WaitLog("HOSTKEY 1099", 3000));
        CHECK_EQ(host.CountLog("COMMAND 1006"), bSave ? 1 : 0);
        if (bSave)
            CHECK_EQ(host.CountLog("SAVE " + strFile), 1);
    }
}

TEST_CASE(ctrl_e_does_nothing_for_a_title_without_a_known_extension)
{
    Beside b("ctrle_lst", "main.lst");
    REQUIRE(b.Start("", Settings(b.strDir, true)));
    auto& [strDir, strFile, host, tool] = b;
    REQUIRE(FocusEditor(host, host.FindWindowByTitle(strFile)));
    host.WaitQuiet();
    host.ClearLog();
    SendKeys({VK_CONTROL, 'E'});
    CHECK(host.WaitLog("HOSTKEY 1099", 3000));
    host.WaitQuiet(300);
    CHECK(!FileExists(strDir + "editor.txt"));
    CHECK_EQ(host.CountLog("COMMAND 1006"), 0);
}

TEST_CASE(exit_waits_for_the_host_windows_and_leaves_the_host_unharmed)
{
    const std::string strDir = MakeScratchDir("exit");
    const std::string strFile = MakeSource(strDir, "main.asm");
    Host host(strDir);
    REQUIRE(host.Start("/open \"" + strFile + "\""));
    {
        Tool tool(strDir);
        REQUIRE(tool.Start());
        REQUIRE(host.WaitLog(kDockBarAnnouncement, 10000));
        CHECK(tool.Exit(10000));
        CHECK_EQ(tool.GetProcess().ExitCode(), 0ul);
    }
    // The host answers, and its wheel is its own again.
    DWORD_PTR dwResult = 0;
    CHECK(SendMessageTimeoutA(host.Frame(), WM_NULL, 0, 0, SMTO_NORMAL, 2000, &dwResult) != 0);
    host.ClearLog();
    PostWheel(host.FindWindowByTitle(strFile), -120);
    PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
    REQUIRE(host.WaitLog("BUILD 1033", 5000));
    CHECK_EQ(host.CountLogPrefix("VSCROLL"), 0);
    CHECK(host.GetProcess().IsRunning());
}

TEST_CASE(a_killed_host_does_not_hold_up_the_tool)
{
    Beside b("killed", "main.asm");
    REQUIRE(b.Start("/view 1117"));
    auto& [strDir, strFile, host, tool] = b;
    host.Kill();
    Sleep(200);
    CHECK(tool.GetProcess().IsRunning());
    CHECK(tool.Exit(5000));
    CHECK(FileExists(tool.SettingsPath()));
}

TEST_CASE(a_hung_host_does_not_hold_up_the_exit_and_runs_on_afterwards)
{
    Beside b("hung", "main.asm");
    REQUIRE(b.Start());
    auto& [strDir, strFile, host, tool] = b;

    HWND hWndFrame = host.Frame();
    const DWORD dwThread = GetWindowThreadProcessId(hWndFrame, nullptr);
    HANDLE hThread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, dwThread);
    REQUIRE(hThread != nullptr);
    SuspendThread(hThread);
    const DWORD dwStart = GetTickCount();
    CHECK(tool.Exit(15000));
    const DWORD dwExit = GetTickCount() - dwStart;
    CHECK(dwExit < 8000);
    printf("  exit beside a hung host took %lu ms\n", static_cast<unsigned long>(dwExit));
    ResumeThread(hThread);
    CloseHandle(hThread);

    // The host wakes up to a tool that is gone and works on by itself.
    DWORD_PTR dwResult = 0;
    CHECK(SendMessageTimeoutA(hWndFrame, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &dwResult) != 0);
    host.WaitQuiet();
    host.ClearLog();
    PostWheel(host.FindWindowByTitle(strFile), -120);
    PostMessageA(hWndFrame, WM_COMMAND, 1033, 0);
    CHECK(host.WaitLog("BUILD 1033", 5000));
    CHECK(host.GetProcess().IsRunning());
}
