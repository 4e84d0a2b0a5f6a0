// The Assist Window in the stand-in host's frame, two processes under Wine:
// where it stands beside the MDI client after every change of the frame, what
// it paints, its drags with real mouse input, the hide button and the
// "&Assist" menu, its settings across a restart, and the host after the tool
// has gone, closed or killed. Rectangles are read across the processes;
// screenshots land in the build's artefacts folder.
#include "Fixture.h"
#include "IniFile.h"
#include "Pixels.h"
#include "TestRunner.h"

#include <stdio.h>

using namespace qt;

namespace
{
const UINT kAssistWindow = 32771;
const UINT kToolBarTop = 1192, kToolBarLeft = 1193, kToolBarBottom = 1194, kToolBarRight = 1195;
const UINT kLogMenuBar = 1196;

// The tool's Assist Window in the host frame: a child of the frame on
// Windows, a pop-up owned by it under Wine.
struct DockSearch
{
    HWND hWndFrame;
    HWND hWndFound;
};

BOOL CALLBACK FindOwnedDialog(HWND hWnd, LPARAM lParam)
{
    DockSearch* p = reinterpret_cast<DockSearch*>(lParam);
    char szClass[16] = "";
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (GetWindow(hWnd, GW_OWNER) == p->hWndFrame && lstrcmpA(szClass, "#32770") == 0)
    {
        p->hWndFound = hWnd;
        return FALSE;
    }
    return TRUE;
}

HWND FindDockBar(HWND hWndFrame)
{
    DockSearch search = {hWndFrame, nullptr};
    EnumWindows(FindOwnedDialog, reinterpret_cast<LPARAM>(&search));
    return search.hWndFound ? search.hWndFound : FindWindowExA(hWndFrame, nullptr, "#32770", nullptr);
}

RECT InFrame(HWND hWnd, HWND hWndFrame)
{
    RECT rc = {};
    GetWindowRect(hWnd, &rc);
    MapWindowPoints(nullptr, hWndFrame, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

std::string Show(const RECT& rc)
{
    char sz[64];
    snprintf(sz, sizeof(sz), "%ld,%ld,%ld,%ld", rc.left, rc.top, rc.right, rc.bottom);
    return sz;
}

bool SameRect(const RECT& a, const RECT& b)
{
    return EqualRect(&a, &b) != FALSE;
}

// The host and the tool, and the windows the cases look at.
struct Docked : HostAndTool
{
    explicit Docked(const char* pszTag, const std::string& strSettings = std::string(),
                    const std::string& strHostArguments = "/pos 20,20 /size 900x600")
        : HostAndTool(pszTag, strHostArguments, strSettings)
    {
        if (!ok)
            return;
        hWndFrame = host.Frame();
        hWndClient = host.FindChildOfClass(hWndFrame, "MDIClient");
        ok = WaitFor([&] { return (hWndDock = FindDockBar(hWndFrame)) != nullptr && IsWindowVisible(hWndDock); },
                     10000);
        if (ok)
            host.WaitQuiet(300);
    }

    // The strip of the client area the host leaves to its MDI client: all
    // but the tool bar's edge.
    RECT FreeArea() const
    {
        RECT rc = {};
        GetClientRect(hWndFrame, &rc);
        HWND hWndBar = host.FindChildOfClass(hWndFrame, "PFE_TBar");
        if (!hWndBar || !IsWindowVisible(hWndBar))
            return rc;
        const RECT bar = InFrame(hWndBar, hWndFrame);
        if (bar.right - bar.left >= bar.bottom - bar.top) // horizontal: top or bottom
            (bar.top <= rc.top ? rc.top : rc.bottom) = bar.top <= rc.top ? bar.bottom : bar.top;
        else
            (bar.left <= rc.left ? rc.left : rc.right) = bar.left <= rc.left ? bar.right : bar.left;
        return rc;
    }

    // The MDI client and the Assist Window share the free area exactly: the
    // Assist Window width wide on its side, the MDI client the rest.
    std::string LayoutError(bool bLeft, int nWidth) const
    {
        const RECT free = FreeArea();
        const RECT client = InFrame(hWndClient, hWndFrame);
        const RECT dock = InFrame(hWndDock, hWndFrame);
        RECT wantDock = free, wantClient = free;
        if (bLeft)
            wantDock.right = wantClient.left = free.left + nWidth;
        else
            wantDock.left = wantClient.right = free.right - nWidth;
        if (!IsWindowVisible(hWndDock))
            return "Assist Window hidden";
        if (!SameRect(client, wantClient) || !SameRect(dock, wantDock))
            return "client " + Show(client) + " want " + Show(wantClient) + ", dock " + Show(dock) + " want " +
                   Show(wantDock);
        return std::string();
    }
    bool WaitLayout(bool bLeft, int nWidth, DWORD dwTimeoutMs = 5000) const
    {
        return WaitFor([&] { return LayoutError(bLeft, nWidth).empty(); }, dwTimeoutMs);
    }
    // The layout holds and the frame has not moved for 400 ms. Wine: after a
    // restore the host frame may jump back to its maximised rectangle for a
    // moment (seen: not zoomed, at -4,-4,1284,804) and then return; a point
    // taken for the mouse in that moment lies outside the Assist Window.
    bool WaitSettled(bool bLeft, int nWidth) const
    {
        RECT last = {};
        DWORD dwSince = GetTickCount();
        return WaitFor(
            [&] {
                RECT now = {};
                GetWindowRect(hWndFrame, &now);
                if (!SameRect(now, last) || !LayoutError(bLeft, nWidth).empty())
                {
                    last = now;
                    dwSince = GetTickCount();
                }
                return GetTickCount() - dwSince >= 400;
            },
            8000);
    }
    int DockWidth() const
    {
        RECT rc = {};
        GetWindowRect(hWndDock, &rc);
        return rc.right - rc.left;
    }
    bool ClientFillsFreeArea() const
    {
        return WaitFor([&] { return SameRect(InFrame(hWndClient, hWndFrame), FreeArea()); }, 5000);
    }

    HWND hWndFrame = nullptr;
    HWND hWndClient = nullptr;
    HWND hWndDock = nullptr;
};

#define REQUIRE_LAYOUT(d, bLeft, nWidth)                                         \
    do                                                                           \
    {                                                                            \
        if (!(d).WaitLayout(bLeft, nWidth))                                      \
        {                                                                        \
            qt::Fail(__FILE__, __LINE__, "layout: " + (d).LayoutError(bLeft, nWidth)); \
            return;                                                              \
        }                                                                        \
    } while (0)

// Real mouse input as the X server delivers a hand's: xdotool, started
// through Wine, which runs a Unix program handed to CreateProcess. Wine:
// SendInput's moves reach the window under the pointer, not the window that
// holds the capture in a thread that is not in the foreground (seen: a
// gripper drag stuck with its outline drawn and the button-up at the host),
// while X keeps the pointer grabbed for the window the button went down in.
// Wine gives no handle to wait on for a Unix process: the caller waits for
// the pointer to reach ptEnd, the last place the command moves it to.
bool XDo(const std::string& strArguments, POINT ptEnd)
{
    std::string strCommand = "/usr/bin/xdotool " + strArguments;
    STARTUPINFOA si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi = {};
    if (!CreateProcessA(nullptr, &strCommand[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
    {
        printf("  xdotool did not start: error %lu\n", GetLastError());
        return false;
    }
    if (pi.hThread)
        CloseHandle(pi.hThread);
    if (pi.hProcess)
        CloseHandle(pi.hProcess);
    const bool bThere = WaitFor(
        [&] {
            POINT pt;
            GetCursorPos(&pt);
            return pt.x == ptEnd.x && pt.y == ptEnd.y;
        },
        5000);
    Sleep(300); // what follows the last move (a button) and its handling
    return bThere;
}

std::string MoveSteps(POINT from, POINT to)
{
    std::string str;
    for (int i = 1; i <= 6; ++i)
        str += " mousemove " + std::to_string(from.x + (to.x - from.x) * i / 6) + " " +
               std::to_string(from.y + (to.y - from.y) * i / 6) + " sleep 0.05";
    return str;
}

// Presses at from and moves to to in steps; the button stays down.
bool DragPress(POINT from, POINT to)
{
    return XDo("mousemove " + std::to_string(from.x) + " " + std::to_string(from.y) + " sleep 0.1 mousedown 1 sleep 0.1" +
                   MoveSteps(from, to),
               to);
}

bool Drag(POINT from, POINT to)
{
    return DragPress(from, to) && XDo("mouseup 1", to);
}

POINT OnScreen(HWND hWnd, int x, int y)
{
    POINT pt = {x, y};
    ClientToScreen(hWnd, &pt);
    return pt;
}

// The screen's pixels of a rectangle, kept as a BMP in the artefacts folder.
void SaveArtefact(const ScreenShot& shot, const char* pszName)
{
    const std::string strDir = ExeDir() + "..\\artefacts\\";
    CreateDirectoryA(strDir.c_str(), nullptr);
    BITMAPINFOHEADER bih = {};
    bih.biSize = sizeof(bih);
    bih.biWidth = shot.Width();
    bih.biHeight = -shot.Height();
    bih.biPlanes = 1;
    bih.biBitCount = 32;
    bih.biCompression = BI_RGB;
    std::string strBits;
    for (int y = 0; y < shot.Height(); ++y)
        for (int x = 0; x < shot.Width(); ++x)
        {
            const COLORREF clr = shot.Pixel(x, y);
            const char px[4] = {static_cast<char>(GetBValue(clr)), static_cast<char>(GetGValue(clr)),
                                static_cast<char>(GetRValue(clr)), 0};
            strBits.append(px, 4);
        }
    BITMAPFILEHEADER bfh = {};
    bfh.bfType = 0x4D42;
    bfh.bfOffBits = sizeof(bfh) + sizeof(bih);
    bfh.bfSize = static_cast<DWORD>(bfh.bfOffBits + strBits.size());
    std::string strFile(reinterpret_cast<const char*>(&bfh), sizeof(bfh));
    strFile.append(reinterpret_cast<const char*>(&bih), sizeof(bih));
    strFile += strBits;
    WriteTextFile(strDir + pszName, strFile);
}

// The splitter edge and the gripper as painted, read off the screen in the
// Assist Window's client coordinates.
std::string PaintError(HWND hWndDock, bool bLeft)
{
    ScreenShot shot(hWndDock, ScreenShot::CLIENT_AREA);
    const int cx = shot.Width(), y = shot.Height() / 2;
    struct Line
    {
        int x;
        int nColor;
    };
    const Line left[] = {{cx - 1, COLOR_3DDKSHADOW}, {cx - 2, COLOR_BTNSHADOW}, {cx - 6, COLOR_BTNHIGHLIGHT}};
    const Line right[] = {{0, COLOR_3DLIGHT}, {1, COLOR_BTNHIGHLIGHT}, {5, COLOR_BTNSHADOW}, {6, COLOR_3DDKSHADOW}};
    for (const Line& line : bLeft ? std::vector<Line>(left, left + 3) : std::vector<Line>(right, right + 4))
        if (shot.Pixel(line.x, y) != GetSysColor(line.nColor))
            return "splitter column " + std::to_string(line.x);
    // Gripper: two raised bars, tops at y 8 and 12, in the middle of the width.
    const int xMid = cx / 2;
    if (shot.Pixel(xMid, 8) != GetSysColor(COLOR_BTNHIGHLIGHT) || shot.Pixel(xMid, 10) != GetSysColor(COLOR_BTNSHADOW) ||
        shot.Pixel(xMid, 12) != GetSysColor(COLOR_BTNHIGHLIGHT) || shot.Pixel(xMid, 14) != GetSysColor(COLOR_BTNSHADOW))
        return "gripper";
    return std::string();
}

} // namespace

// Maximise, minimise and restore the frame, checking the layout after each.
void CycleFrameStates(Docked& d, bool bLeft, int w)
{
    PostMessageA(d.hWndFrame, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    REQUIRE(WaitFor([&] { return IsZoomed(d.hWndFrame) != FALSE; }, 5000));
    REQUIRE_LAYOUT(d, bLeft, w);

    PostMessageA(d.hWndFrame, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    REQUIRE(WaitFor([&] { return IsIconic(d.hWndFrame) != FALSE; }, 5000));
    CHECK(WaitFor([&] { return !IsWindowVisible(d.hWndDock); }, 3000)); // gone with the frame
    PostMessageA(d.hWndFrame, WM_SYSCOMMAND, SC_RESTORE, 0);
    REQUIRE(WaitFor([&] { return !IsIconic(d.hWndFrame); }, 5000));
    REQUIRE_LAYOUT(d, bLeft, w);
    PostMessageA(d.hWndFrame, WM_SYSCOMMAND, SC_RESTORE, 0);
    REQUIRE(WaitFor([&] { return !IsZoomed(d.hWndFrame); }, 5000));
    REQUIRE_LAYOUT(d, bLeft, w);
}

TEST_CASE(docked_left_then_right_fills_the_free_area_through_every_frame_change)
{
    Docked d("docklayout");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    CHECK(w > 100);
    REQUIRE_LAYOUT(d, true, w);
    CHECK_EQ(PaintError(d.hWndDock, true), std::string());
    {
        ScreenShot shot(d.hWndFrame);
        SaveArtefact(shot, "dock-left.bmp");
    }

    // The host lays out on every size change; the Assist Window follows.
    MoveWindow(d.hWndFrame, 40, 30, 760, 520, TRUE);
    REQUIRE_LAYOUT(d, true, w);
    MoveWindow(d.hWndFrame, 10, 10, 1100, 700, TRUE);
    REQUIRE_LAYOUT(d, true, w);
    // Moved without a size change: the Assist Window goes along.
    SetWindowPos(d.hWndFrame, nullptr, 120, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    REQUIRE_LAYOUT(d, true, w);
    CycleFrameStates(d, true, w);
    if (qt::CurrentFailed())
        return;

    // After all that, the gripper dragged across to the right edge: docked right.
    REQUIRE(d.WaitSettled(true, w));
    RECT rcFrame;
    GetWindowRect(d.hWndFrame, &rcFrame);
    const POINT ptGripper = OnScreen(d.hWndDock, w / 2, 12);
    // Above the frame it lies on, and so takes the click.
    CHECK(GetAncestor(WindowFromPoint(ptGripper), GA_ROOT) == d.hWndDock);
    REQUIRE(Drag(ptGripper, POINT{rcFrame.right - 20, rcFrame.top + 200}));
    REQUIRE_LAYOUT(d, false, w);
    d.host.WaitQuiet(300);
    CHECK_EQ(PaintError(d.hWndDock, false), std::string());
    {
        ScreenShot shot(d.hWndFrame);
        SaveArtefact(shot, "dock-right.bmp");
    }
    MoveWindow(d.hWndFrame, 40, 30, 760, 520, TRUE);
    REQUIRE_LAYOUT(d, false, w);
    CycleFrameStates(d, false, w);
}

TEST_CASE(exit_gives_the_host_its_area_and_menu_back_and_the_next_start_keeps_width_and_side)
{
    // Docked right and 180 wide by hand-written settings.
    Docked d("dockexit", "[Settings]\r\nDockRect=0000:0000:0180:0500\r\nDockLeft=0\r\n");
    REQUIRE(d.ok);
    REQUIRE_LAYOUT(d, false, 180);
    PostMessageA(d.hWndFrame, WM_COMMAND, kLogMenuBar, 0);
    REQUIRE(d.host.WaitLog("MENUBAR 6 &File &Edit &Project &View &Window &Assist", 5000));

    // Moved across with the gripper, then the tool ends.
    RECT rcFrame;
    GetWindowRect(d.hWndFrame, &rcFrame);
    REQUIRE(Drag(OnScreen(d.hWndDock, 90, 12), POINT{rcFrame.left + 20, rcFrame.top + 200}));
    REQUIRE_LAYOUT(d, true, 180);
    REQUIRE(d.tool.Exit());
    CHECK(!IsWindow(d.hWndDock));
    CHECK(d.ClientFillsFreeArea());
    d.host.ClearLog();
    PostMessageA(d.hWndFrame, WM_COMMAND, kLogMenuBar, 0);
    CHECK(d.host.WaitLog("MENUBAR 5 &File &Edit &Project &View &Window", 5000));
    const auto ini = ReadIni(d.tool.SettingsPath());
    CHECK_EQ(IniValue(ini, "Settings", "DockLeft"), std::string("1"));
    CHECK_EQ(IniValue(ini, "Settings", "DockRect").substr(10, 5), std::string("0180:"));

    // The next start beside the same host: left, 180 wide.
    REQUIRE(d.tool.Start());
    REQUIRE(WaitFor([&] { return (d.hWndDock = FindDockBar(d.hWndFrame)) != nullptr; }, 10000));
    REQUIRE_LAYOUT(d, true, 180);
}

TEST_CASE(a_killed_tool_leaves_a_host_that_lays_out_and_a_garbled_width_is_survived)
{
    Docked d("dockkill", "[Settings]\r\nDockRect=zz:1:x\r\nDockLeft=banana\r\n");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    CHECK(w > 100); // the template's width: the garbled rectangle reads as empty
    // A side without digits reads as 0, as the profile functions read it: right.
    REQUIRE_LAYOUT(d, false, w);
    d.tool.Kill();
    REQUIRE(WaitFor([&] { return !IsWindow(d.hWndDock); }, 5000));
    // The host's own next layout takes the whole area again, and it goes on working.
    MoveWindow(d.hWndFrame, 30, 30, 820, 580, TRUE);
    CHECK(d.ClientFillsFreeArea());
    d.host.ClearLog();
    PostMessageA(d.hWndFrame, WM_COMMAND, 1033, 0);
    CHECK(d.host.WaitLog("BUILD 1033", 5000));
}

TEST_CASE(a_host_that_dies_takes_the_assist_window_along_and_the_tool_runs_on)
{
    Docked d("dockhostdies");
    REQUIRE(d.ok);
    d.host.Kill();
    // A child would die with the frame; the pop-up of Wine must not linger.
    CHECK(WaitFor([&] { return !IsWindow(d.hWndDock); }, 5000));
    CHECK(d.tool.GetProcess().IsRunning());
    CHECK(d.tool.Exit());
}
