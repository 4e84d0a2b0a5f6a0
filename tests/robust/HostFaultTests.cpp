// The host IDE and the tool beside it, each going away at a bad moment, the
// tool started and stopped many times beside one host, and a huge settings
// file: the host never pays for a tool that is gone, the
// tool never waits for a host that is gone, and no file is left broken.
#include "Fixture.h"
#include "HostInput.h"
#include "IniFile.h"
#include "TestRunner.h"

using namespace qt;

namespace
{
// Lines the tool scrolls an editor for one notch, counted once the host has
// handled a marker posted behind it.
int LinesForNotch(const Host& host, const std::string& strTitle)
{
    host.WaitQuiet(100);
    const int nLines = host.CountLog("VSCROLL " + strTitle + " 0");
    const int nMarks = host.CountLog("BUILD 1033");
    PostMessageA(host.FindWindowByTitle(strTitle), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
    if (!host.WaitLog("BUILD 1033", 5000, nMarks + 1))
        return -1;
    host.WaitQuiet(100); // lines the tool sends arrive while the host handles the record
    return host.CountLog("VSCROLL " + strTitle + " 0") - nLines;
}

// A whole settings file: the nine keys of "Settings" and the ten tool sections' two.
bool IsWhole(const std::string& strPath)
{
    const std::vector<IniLine> lines = ReadIni(strPath);
    return lines.size() == 29 && IniValue(lines, "Settings", "Log") != "<missing>" &&
           IniValue(lines, "Tool10", "Command") != "<missing>";
}
} // namespace

TEST_CASE(a_host_killed_amid_records_or_amid_the_tools_exit_never_holds_the_tool)
{
    const std::string strFile = MakeSource(MakeScratchDir("hostkilled"), "a.asm");
    // Killed with records in flight and the tool's window in its frame: the
    // tool runs on and serves a new host as the first.
    HostAndTool s("hostkilled", "/open \"" + strFile + "\"");
    REQUIRE(s.ok && WaitFor([&] { return FindDockBar(s.host.Frame()) != nullptr; }, 5000));
    for (int i = 0; i < 300; ++i)
        PostMessageA(s.host.FindWindowByTitle(strFile), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    REQUIRE(WaitFor([&] { return s.host.CountLogPrefix("VSCROLL ") >= 8; }, 5000));
    s.host.Kill();
    REQUIRE(s.host.Start("/open \"" + strFile + "\"") && s.host.WaitLog(kDockBarAnnouncement, 10000));
    CHECK_EQ(LinesForNotch(s.host, strFile), 4);
    // Killed before, while or after the exit asks it for its windows' last
    // records (the moments are fixed delays after the exit command).
    for (DWORD dwDelay : {0u, 50u, 120u})
    {
        REQUIRE(s.tool.GetProcess().IsRunning() || (s.host.Start("/view 1117") && s.tool.Start() &&
                                                    s.host.WaitLog(kDockBarAnnouncement, 10000)));
        PostMessageA(s.tool.MainFrame(), WM_COMMAND, 57665, 0);
        Sleep(dwDelay);
        s.host.Kill();
        CHECK(s.tool.GetProcess().WaitExit(5000) && s.tool.GetProcess().ExitCode() == 0);
        CHECK(IsWhole(s.tool.SettingsPath()));
    }
}

TEST_CASE(a_killed_tool_stops_scrolling_at_once_and_many_starts_and_stops_leave_nothing_behind)
{
    const std::string strFile = MakeSource(MakeScratchDir("toolkilled"), "a.asm");
    HostAndTool s("toolkilled", "/open \"" + strFile + "\"");
    REQUIRE(s.ok);
    CHECK_EQ(LinesForNotch(s.host, strFile), 4);
    // Killed while the host is busy with a burst: the host's wheel is its own
    // again (no lines), and costs it nothing.
    for (int i = 0; i < 50; ++i)
        PostMessageA(s.host.FindWindowByTitle(strFile), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    s.tool.Kill();
    const DWORD dwStart = GetTickCount();
    CHECK_EQ(LinesForNotch(s.host, strFile), 0);
    CHECK(GetTickCount() - dwStart < 1000);
    // Each start enters the host once more (a notch scrolls four lines, not
    // eight from a hook left behind), each exit ends quickly and whole.
    for (int nRun = 1; nRun <= 10 && !CurrentFailed(); ++nRun)
    {
        REQUIRE(s.tool.Start() && s.host.WaitLog(kDockBarAnnouncement, 10000, nRun + 1));
        CHECK_EQ(LinesForNotch(s.host, strFile), 4);
        CHECK(s.tool.Exit(5000) && s.tool.GetProcess().ExitCode() == 0 && IsWhole(s.tool.SettingsPath()));
        CHECK_EQ(LinesForNotch(s.host, strFile), 0);
    }
}

TEST_CASE(a_huge_settings_file_is_read_and_written_back)
{
    Tool tool(MakeScratchDir("badini"));
    // Four megabytes of junk with the value in the middle. (Twelve took 19 s
    // to write back at exit under Wine: every key rewrites the whole file.)
    std::string strJunk;
    for (int i = 0; i < 2048; ++i)
        strJunk += "k=" + std::string(1000, 'x') + "\r\n";
    REQUIRE(WriteTextFile(tool.SettingsPath(), "[Junk]\r\n" + strJunk + "[Settings]\r\nHeader=*.hh\r\n[More]\r\n" + strJunk));
    REQUIRE(tool.Start());
    CHECK(tool.Exit(20000) && tool.GetProcess().ExitCode() == 0);
    CHECK_EQ(IniValue(ReadIni(tool.SettingsPath()), "Settings", "Header"), std::string("*.hh"));
}
