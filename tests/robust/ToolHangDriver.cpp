// The Windows half of tool_hang.sh: the stand-in host with two editors and
// the tool beside it in the folder the script gives (QV_HANG_DIR), so that
// the script can find the tool's process by that folder and stop it with
// SIGSTOP, which no Windows program can do to another.
//
// The two halves take turns through files in that folder:
//   driver writes "ready"      script stops the tool, writes "stopped"
//   driver works the host, writes "done"
//                              script lets the tool run on, writes "continued"
//   driver checks that nothing was lost, ends with "N passed, N failed".
#include "Fixture.h"
#include "TestRunner.h"

#include <stdio.h>
#include <stdlib.h>

#include <algorithm>
#include <atomic>

using namespace qt;

namespace
{
const WPARAM kNotch = MAKEWPARAM(0, 120);
std::string g_strDir;

std::string MakeSource(const char* pszName)
{
    const std::string strPath = g_strDir + pszName;
    WriteTextFile(strPath, std::string(4000, ';') + "\r\n");
    return strPath;
}

bool Handshake(const char* pszMine, const char* pszTheirs)
{
    WriteTextFile(g_strDir + pszMine, "1");
    return WaitFor([&] { return FileExists(g_strDir + pszTheirs); }, 20000);
}

// Another program that sends the host frame WM_NULL every few milliseconds
// (as hung-window checks, broadcasts and DDE do): a thread of our own.
// Sent messages are answered even while the host waits inside a record, so
// this measures nothing; it only shows whether the library takes such
// messages for the tool working for the host.
class ThirdParty
{
public:
    explicit ThirdParty(HWND hWndFrame) : m_hWndFrame(hWndFrame)
    {
        m_hThread = CreateThread(nullptr, 0, Run, this, 0, nullptr);
    }
    ~ThirdParty() { Stop(); }
    ThirdParty(const ThirdParty&) = delete;
    ThirdParty& operator=(const ThirdParty&) = delete;

    DWORD Stop()
    {
        if (m_hThread)
        {
            m_bStop = true;
            WaitForSingleObject(m_hThread, 10000);
            CloseHandle(m_hThread);
            m_hThread = nullptr;
        }
        return m_dwWorst;
    }

private:
    static DWORD WINAPI Run(LPVOID pParam)
    {
        ThirdParty* pThis = static_cast<ThirdParty*>(pParam);
        while (!pThis->m_bStop)
        {
            const DWORD dwStart = GetTickCount();
            DWORD_PTR dwResult = 0;
            SendMessageTimeoutA(pThis->m_hWndFrame, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &dwResult);
            pThis->m_dwWorst = std::max(pThis->m_dwWorst.load(), GetTickCount() - dwStart);
            Sleep(2);
        }
        return 0;
    }

    HWND m_hWndFrame;
    HANDLE m_hThread = nullptr;
    std::atomic<bool> m_bStop{false};
    std::atomic<DWORD> m_dwWorst{0};
};

// Notches posted to an editor, then the time until the host has handled a
// marker behind them.
DWORD TimeBurst(const Host& host, HWND hWndEditor, int nNotches)
{
    const int nMarks = host.CountLog("BUILD 1033");
    const DWORD dwStart = GetTickCount();
    for (int i = 0; i < nNotches; ++i)
        PostMessageA(hWndEditor, WM_MOUSEWHEEL, kNotch, 0);
    PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
    host.WaitLog("BUILD 1033", 10000, nMarks + 1);
    return GetTickCount() - dwStart;
}

// Ten notches one by one, each followed by a posted marker: the longest a
// marker waited is the host's worst stall, the sum what the burst cost it.
DWORD TenNotches(const Host& host, HWND hWndEditor, DWORD* pdwWorst)
{
    DWORD dwTotal = 0;
    for (int i = 0; i < 10; ++i)
    {
        const DWORD dwOne = TimeBurst(host, hWndEditor, 1);
        dwTotal += dwOne;
        *pdwWorst = std::max(*pdwWorst, dwOne);
    }
    return dwTotal;
}

int LinesForNotch(const Host& host, HWND hWndEditor, const std::string& strTitle)
{
    host.WaitQuiet(100);
    const int nBefore = host.CountLog("VSCROLL " + strTitle + " 0");
    TimeBurst(host, hWndEditor, 1);
    host.WaitQuiet(100);
    return host.CountLog("VSCROLL " + strTitle + " 0") - nBefore;
}
} // namespace

void RunStoppedTool(bool bThirdParty)
{
    const char* pszDir = getenv("QV_HANG_DIR");
    REQUIRE(pszDir && *pszDir); // set by tool_hang.sh, which runs this
    g_strDir = pszDir;
    if (g_strDir.back() != '\\')
        g_strDir += '\\';
    const std::string strA = MakeSource("a.asm");
    const std::string strB = MakeSource("b.asm");
    Host host(g_strDir);
    REQUIRE(host.Start("/open \"" + strA + "\" /open \"" + strB + "\""));
    Tool tool(g_strDir);
    REQUIRE(tool.Start());
    REQUIRE(host.WaitLog(kDockBarAnnouncement, 10000));
    HWND hWndA = host.FindWindowByTitle(strA);
    HWND hWndB = host.FindWindowByTitle(strB);
    REQUIRE(hWndA && hWndB);
    CHECK_EQ(LinesForNotch(host, hWndA, strA), 4);
    HWND hWndTool = tool.MainFrame();
    REQUIRE(hWndTool);

    REQUIRE(Handshake("ready", "stopped"));
    {
        ThirdParty* pThirdParty = bThirdParty ? new ThirdParty(host.Frame()) : nullptr;
        DWORD dwWorst = 0;
        const DWORD dwFirst = TenNotches(host, hWndA, &dwWorst);
        const DWORD dwSecond = TenNotches(host, hWndA, &dwWorst);
        // Five seconds on, the system takes the tool for hung and aborts
        // every send to it at once: a record that fails so fast never
        // reached it, and creations and destructions must wait all the same.
        CHECK(WaitFor([&] { return IsHungAppWindow(hWndTool) != FALSE; }, 10000));
        // The wheel scrolls all the same, at the host's own speed: the host
        // scrolls on the wheel message itself.
        CHECK_EQ(LinesForNotch(host, hWndA, strA), 4);
        // Windows come and go while the tool cannot hear of them.
        PostMessageA(host.Frame(), WM_COMMAND, 1001, 0);
        CHECK(host.WaitLog("OPEN Untitled", 5000));
        PostMessageA(hWndB, WM_CLOSE, 0, 0);
        CHECK(host.WaitLog("CLOSE " + strB, 5000));
        const DWORD dwThird = TenNotches(host, hWndA, &dwWorst);
        delete pThirdParty;
        printf("  stopped tool: 10 notches took %lu, then %lu, after new windows %lu ms; host's worst stall %lu ms\n",
               static_cast<unsigned long>(dwFirst), static_cast<unsigned long>(dwSecond),
               static_cast<unsigned long>(dwThird), static_cast<unsigned long>(dwWorst));
        CHECK(dwFirst < 1000);
        CHECK(dwSecond < 1000);
        CHECK(dwThird < 1000);
        CHECK(dwWorst < 1000);
    }
    REQUIRE(Handshake("done", "continued"));

    // Running again: it hears of the new editor and of the closed one.
    HWND hWndNew = host.FindWindowByTitle("Untitled");
    REQUIRE(hWndNew);
    CHECK(WaitFor([&] { return LinesForNotch(host, hWndNew, "Untitled") == 4; }, 10000));
    CHECK_EQ(LinesForNotch(host, hWndA, strA), 4);
    // The closed editor's item went with its record: nothing holds the exit.
    const DWORD dwStart = GetTickCount();
    CHECK(tool.Exit(5000));
    printf("  exit after the stop: %lu ms\n", static_cast<unsigned long>(GetTickCount() - dwStart));
    CHECK_EQ(tool.GetProcess().ExitCode(), 0u);
    CHECK_EQ(LinesForNotch(host, hWndA, strA), 0);
    CHECK(host.GetProcess().IsRunning());
}

TEST_CASE(a_stopped_tool_stalls_the_host_once_and_loses_no_window_when_it_runs_again)
{
    RunStoppedTool(false);
}

// The same while another program keeps sending the host messages: the
// library must not take those for the tool working for the host.
TEST_CASE(a_stopped_tool_stalls_the_host_once_while_another_program_talks_to_it)
{
    RunStoppedTool(true);
}
