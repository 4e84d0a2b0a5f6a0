// The tool beside the stand-in host IDE: wheel scrolling and focus in the MDI
// windows, Ctrl+E to the external editor, and an exit beside a host that
// works, hangs or is gone. Effects are read from the host's own log.
#include "Fixture.h"
#include "HostInput.h"
#include "TestRunner.h"

#include <stdio.h>

using namespace qt;

namespace
{
// Posts the input, then the host's build command behind it as a marker, and
// waits for the marker: the log then holds all the input caused.
bool Settle(Host& host, HWND hWnd, UINT nMessage, short nWheel = 0)
{
    host.WaitQuiet();
    host.ClearLog();
    PostMessageA(hWnd, nMessage, MAKEWPARAM(0, static_cast<WORD>(nWheel)), MAKELPARAM(100, 100));
    PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
    return host.WaitLog("BUILD 1033", 5000);
}
} // namespace

TEST_CASE(a_wheel_notch_scrolls_an_editor_four_lines_and_a_view_one_line)
{
    // Whether or not the host passes the wheel on to the parent (its wheel
    // variant does, as DefWindowProc would).
    for (const char* pszVariant : {"", " /variant wheel"})
    {
        const std::string strFile = MakeSource(MakeScratchDir("wheelsrc"), "main.asm");
        HostAndTool ht("wheel", "/open \"" + strFile + "\" /view 1117" + pszVariant);
        const std::string strView = "Program Memory Window";
        HWND hWndEditor = ht.host.FindWindowByTitle(strFile);
        HWND hWndText = ht.host.FindChildOfClass(ht.host.FindWindowByTitle(strView), "PFE_Text");
        REQUIRE(ht.ok && hWndEditor && hWndText);
        // The window the wheel goes to, the title of the one that scrolls, and its lines up, down.
        const struct { HWND hWnd; const std::string& strTitle; short nDelta; int nUp, nDown; } cases[] = {
            {hWndEditor, strFile, 120, 4, 0}, {hWndEditor, strFile, -120, 0, 4}, {hWndEditor, strFile, 60, 2, 0},
            {hWndEditor, strFile, -29, 0, 0}, {hWndEditor, strFile, 240, 8, 0},  {hWndEditor, strFile, -360, 0, 12},
            {hWndText, strView, 120, 1, 0},   {hWndText, strView, 15, 1, 0},     {hWndText, strView, -120, 0, 1},
            {hWndText, strView, 0, 0, 1}};
        for (const auto& c : cases)
        {
            REQUIRE(Settle(ht.host, c.hWnd, WM_MOUSEWHEEL, c.nDelta));
            CHECK_EQ(ht.host.CountLog("VSCROLL " + c.strTitle + " 0"), c.nUp);
            CHECK_EQ(ht.host.CountLog("VSCROLL " + c.strTitle + " 1"), c.nDown);
            CHECK_EQ(ht.host.CountLogPrefix("VSCROLL "), c.nUp + c.nDown);
            if (CurrentFailed())
                printf("  %d over %s, host \"%s\"\n", c.nDelta, c.strTitle.c_str(), pszVariant);
        }
    }
}

TEST_CASE(clicks_move_the_focus_inside_the_host)
{
    const std::string strFile = MakeSource(MakeScratchDir("focussrc"), "main.c");
    HostAndTool ht("focus", "/open \"" + strFile + "\" /view 1117");
    HWND hWndClient = ht.host.FindChildOfClass(ht.host.Frame(), "MDIClient");
    HWND hWndText = ht.host.FindChildOfClass(ht.host.FindWindowByTitle("Program Memory Window"), "PFE_Text");
    HWND hWndGutter = ht.host.FindChildOfClass(ht.host.FindWindowByTitle(strFile), "PFE_Num");
    REQUIRE(ht.ok && hWndClient && hWndText && hWndGutter);
    // The SETFOCUS line expected, empty: none.
    const struct { HWND hWnd; UINT nMessage; std::string strFocus; } cases[] = {
        {hWndClient, WM_RBUTTONDOWN, "SETFOCUS MDIClient"},
        {hWndText, WM_LBUTTONDOWN, "SETFOCUS PFE_View Program Memory Window"},
        {hWndGutter, WM_MBUTTONDOWN, "SETFOCUS PFE_Text " + strFile},
        {hWndText, WM_RBUTTONDOWN, ""}, // the right button is the host's own there
        {hWndGutter, WM_RBUTTONDOWN, ""},
    };
    for (const auto& c : cases)
    {
        REQUIRE(Settle(ht.host, c.hWnd, c.nMessage));
        ht.host.WaitQuiet();
        CHECK(c.strFocus.empty() ? ht.host.CountLogPrefix("SETFOCUS") == 0 : ht.host.CountLogPrefix(c.strFocus) >= 1);
    }
}

TEST_CASE(ctrl_e_saves_first_then_opens_a_source_in_the_external_editor_and_ignores_other_files)
{
    for (bool bSave : {true, false})
    {
        const std::string strDir = MakeScratchDir("ctrlesrc");
        const std::string strFile = MakeSource(strDir, "main.asm");
        const std::string strList = MakeSource(strDir, "main.lst");
        HostAndTool ht("ctrle", "/open \"" + strList + "\" /open \"" + strFile + "\"",
                       "[Settings]\r\nExternalEditor=\"" + ExeDir() + "RECORDER.exe\" \"" + strDir +
                           "editor.txt\" %FILENAME%\r\nSaveAutomatically=" + (bSave ? "1" : "0") + "\r\n");
        REQUIRE(ht.ok);
        ht.host.ClearLog();
        // The list first: the run of the source is the marker behind it.
        int nKeys = 0;
        for (const std::string& strTitle : {strList, strFile})
        {
            REQUIRE(FocusEditor(ht.host, ht.host.FindWindowByTitle(strTitle)));
            ht.host.WaitQuiet();
            SendKeys({VK_CONTROL, 'E'});
            CHECK(ht.host.WaitLog("HOSTKEY 1099", 5000, ++nKeys)); // the host's own accelerator still saw its key
        }
        // The file exists before the editor has written its line into it.
        REQUIRE(WaitFor([&] { return ReadTextFile(strDir + "editor.txt").find('\n') != std::string::npos; }, 10000));
        const std::vector<std::string> runs = SplitLines(ReadTextFile(strDir + "editor.txt"));
        CHECK(runs.size() == 1 && runs[0].find("editor.txt\" " + strFile) != std::string::npos);
        CHECK_EQ(ht.host.CountLog("SAVE " + strFile), bSave ? 1 : 0);
        CHECK_EQ(ht.host.CountLog("COMMAND 1006"), bSave ? 1 : 0);
    }
}

TEST_CASE(exit_beside_a_working_hung_or_killed_host_is_quick_and_the_host_works_on)
{
    const char* const kHosts[] = {"working", "hung", "killed"};
    for (int nHost = 0; nHost < 3; ++nHost)
    {
        const std::string strFile = MakeSource(MakeScratchDir("exitsrc"), "main.asm");
        HostAndTool ht("exit", "/open \"" + strFile + "\" /view 1117");
        REQUIRE(ht.ok);
        HANDLE hThread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(ht.host.Frame(), nullptr));
        REQUIRE(hThread != nullptr);
        nHost == 1 ? static_cast<void>(SuspendThread(hThread)) : nHost == 2 ? ht.host.Kill() : void();
        const DWORD dwStart = GetTickCount();
        CHECK(ht.tool.Exit(15000));
        CHECK(GetTickCount() - dwStart < 8000);
        CHECK_EQ(ht.tool.GetProcess().ExitCode(), 0ul);
        CHECK(FileExists(ht.tool.SettingsPath()));
        ResumeThread(hThread);
        CloseHandle(hThread);
        // The host answers, its wheel its own again: the tool took its scrolling along.
        if (nHost < 2)
            CHECK(Settle(ht.host, ht.host.FindWindowByTitle(strFile), WM_MOUSEWHEEL, -120) &&
                  ht.host.CountLogPrefix("VSCROLL") == 0);
        if (CurrentFailed())
            printf("  beside the host %s\n", kHosts[nHost]);
    }
}
