// The Assist Window in the stand-in host's frame, two processes under Wine:
// where it stands beside the MDI client after every change of the frame, what
// it paints, its drags with real mouse input, the hide button and the
// "&Assist" menu, its settings across a restart, and the host after the tool
// has gone, closed or killed. Rectangles are read across the processes;
// screenshots land in the build's artefacts folder.
#include "Fixture.h"
#include "IniFile.h"
#include "Pixels.h"
#include "RealMouse.h"
#include "TestRunner.h"
#include "Tray.h"

#include <commctrl.h>
#include <stdio.h>
#include <stdlib.h>

using namespace qt;

namespace
{
const UINT kAssistWindow = 32771;
const UINT kToolBarTop = 1192, kToolBarLeft = 1193, kToolBarBottom = 1194, kToolBarRight = 1195;
const UINT kLogMenuBar = 1196;
const UINT kLogMenuCheck = 1197; // lParam: the command whose check mark is logged
const UINT kLogDeactivations = 1198;

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
        if (ok)
        {
            hWndFrame = host.Frame();
            hWndClient = host.FindChildOfClass(hWndFrame, "MDIClient");
            ok = WaitFor([&] { return (hWndDock = FindDockBar(hWndFrame)) != nullptr && IsWindowVisible(hWndDock); },
                         10000);
        }
        if (ok)
            host.WaitQuiet(300);
        else // which step of the start did not come, for the report
            printf("  start: host %s, tool %s, main frame %s, announced %d, Assist Window %s\n",
                   host.GetProcess().IsRunning() ? "runs" : "gone", tool.GetProcess().IsRunning() ? "runs" : "gone",
                   tool.MainFrame() ? "found" : "none", host.CountLog(kDockBarAnnouncement),
                   hWndDock ? (IsWindowVisible(hWndDock) ? "visible" : "hidden") : "none");
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
    SaveBitmap(shot, strDir + pszName);
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


// The whole screen as the X server shows it.
struct WholeScreen : ScreenShot
{
    WholeScreen() : ScreenShot(GetDesktopWindow()) {}
};

// Pixels inside r (screen coordinates) that differ between two shots.
int CountChanged(const Canvas& a, const Canvas& b, const RECT& r)
{
    int n = 0;
    for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x)
            if (a.Pixel(x, y) != b.Pixel(x, y))
                ++n;
    return n;
}

RECT ClientOnScreen(HWND hWnd)
{
    RECT rc = {};
    GetClientRect(hWnd, &rc);
    MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

// What the host frame's client area shows differs from what its windows
// paint when asked to paint it all again: something was drawn on the screen
// and left there. The number of such pixels.
int LeftOnScreen(const Docked& d)
{
    d.host.WaitQuiet(300);
    Sleep(200);
    const RECT rc = ClientOnScreen(d.hWndFrame);
    WholeScreen shown;
    const UINT nFlags = RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME;
    RedrawWindow(d.hWndFrame, nullptr, nullptr, nFlags);
    RedrawWindow(d.hWndDock, nullptr, nullptr, nFlags);
    d.host.WaitQuiet(300);
    Sleep(300);
    WholeScreen painted;
    const int n = CountChanged(shown, painted, rc);
    if (n)
    {
        // Where, for the report: the box around the changed pixels.
        RECT box = {rc.right, rc.bottom, rc.left, rc.top};
        for (int y = rc.top; y < rc.bottom; ++y)
            for (int x = rc.left; x < rc.right; ++x)
                if (shown.Pixel(x, y) != painted.Pixel(x, y))
                {
                    box.left = x < box.left ? x : box.left;
                    box.right = x + 1 > box.right ? x + 1 : box.right;
                    box.top = y < box.top ? y : box.top;
                    box.bottom = y + 1 > box.bottom ? y + 1 : box.bottom;
                }
        printf("  left on the screen: %d pixels in %s\n", n, Show(box).c_str());
        SaveArtefact(shown, "dock-left-on-screen.bmp");
        SaveArtefact(painted, "dock-left-on-screen-repainted.bmp");
    }
    return n;
}

// The host in front as a user brings it there: a click into its MDI client.
bool ClickIntoHost(const Docked& d)
{
    const RECT rc = ClientOnScreen(d.hWndClient);
    const POINT pt = {rc.right - 40, rc.bottom - 40};
    return XDo("mousemove " + std::to_string(pt.x) + " " + std::to_string(pt.y) + " click 1", pt) &&
           WaitFor([&] { return GetForegroundWindow() == d.hWndFrame; }, 3000);
}

// The check mark of "&Assist Window" as the host's menu shows it after the
// "&Assist" menu was opened with the keyboard and closed again.
std::string AssistCheckShown(Docked& d)
{
    // A host in front has the keyboard: the tool never takes the X input
    // focus from it. Otherwise a click brings it there, as a user would.
    if (GetForegroundWindow() != d.hWndFrame && !ClickIntoHost(d))
        return "host not in front";
    XKeys("alt+a");
    if (!WaitFor([] { return VisibleMenu() != nullptr; }, 3000))
        return "no menu";
    XKeys("Escape Escape");
    WaitFor([] { return VisibleMenu() == nullptr; }, 3000);
    d.host.ClearLog();
    PostMessageA(d.hWndFrame, WM_COMMAND, kLogMenuCheck, kAssistWindow);
    const std::string strPrefix = "MENUCHECK 32771 ";
    if (!WaitFor([&] { return d.host.CountLogPrefix(strPrefix) > 0; }, 3000))
        return "no log";
    for (const std::string& strLine : d.host.Log())
        if (strLine.compare(0, strPrefix.size(), strPrefix) == 0)
            return strLine.substr(strPrefix.size());
    return "no log";
}

// How often the host frame has lost the activation since it started, as
// the host counts WM_ACTIVATE WA_INACTIVE: a window of the tool that took
// the focus for a moment shows here even when the host is in front again.
int Deactivations(const Docked& d)
{
    d.host.ClearLog();
    PostMessageA(d.hWndFrame, WM_COMMAND, kLogDeactivations, 0);
    if (!WaitFor([&] { return d.host.CountLogPrefix("DEACTIVATED ") > 0; }, 3000))
        return -1;
    for (const std::string& strLine : d.host.Log())
        if (strLine.compare(0, 12, "DEACTIVATED ") == 0)
            return atoi(strLine.c_str() + 12);
    return -1;
}

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

} // namespace

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

    // A WM_SIZE the host lays nothing out for (it does so when minimised)
    // measures the MDI client where the tool narrowed it: the strip is not
    // cut off a second time. The host has handled it, and the tool its
    // records, once the host logs the command posted after it.
    PostMessageA(d.hWndFrame, WM_SIZE, SIZE_MINIMIZED, 0);
    d.host.ClearLog();
    PostMessageA(d.hWndFrame, WM_COMMAND, kLogMenuBar, 0);
    REQUIRE(WaitFor([&] { return d.host.CountLogPrefix("MENUBAR ") > 0; }, 3000));
    CHECK_EQ(d.LayoutError(true, w), std::string());

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

// Hosts differ where the contract leaves them free: one lays its MDI client
// out from WM_SIZE's lParam, one has a taller tool bar, one passes the wheel
// on. The layout is right on each, through a resize, a hide and a show from
// the "&Assist" menu's command, and every state of the frame.
TEST_CASE(every_kind_of_host_gets_the_layout_right_through_resize_hide_show_and_every_frame_state)
{
    for (const char* pszVariant : {"lparam", "tallbar", "lparam,tallbar,wheel"})
    {
        Docked d("dockvariant", std::string(), std::string("/pos 20,20 /size 900x600 /variant ") + pszVariant);
        REQUIRE(d.ok);
        const int w = d.DockWidth();
        REQUIRE_LAYOUT(d, true, w);
        MoveWindow(d.hWndFrame, 40, 30, 760, 520, TRUE);
        REQUIRE_LAYOUT(d, true, w);
        // The popup's command, as the host's menu loop posts it: the tool
        // hears it, the host's own procedure does not.
        PostMessageA(d.hWndFrame, WM_COMMAND, kAssistWindow, 0);
        CHECK(WaitFor([&] { return !IsWindowVisible(d.hWndDock); }, 3000));
        CHECK(WaitFor([&] { return d.ClientFillsFreeArea(); }, 3000));
        PostMessageA(d.hWndFrame, WM_COMMAND, kAssistWindow, 0);
        REQUIRE_LAYOUT(d, true, w);
        CHECK_EQ(d.host.CountLog("COMMAND " + std::to_string(kAssistWindow)), 0);
        CycleFrameStates(d, true, w);
        if (qt::CurrentFailed())
            printf("  on the host variant %s\n", pszVariant);
    }
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

TEST_CASE(splitter_drag_sets_the_width_where_released_and_draws_one_tracker_at_a_time)
{
    Docked d("docksplit");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    REQUIRE(d.WaitSettled(true, w));
    RECT rcDock;
    GetWindowRect(d.hWndDock, &rcDock);
    const int y = (rcDock.top + rcDock.bottom) / 2;
    const int cyTracker = (rcDock.bottom - 2) - (rcDock.top + 2);
    // The splitter's hot zone is the 4 pixels at the inner edge but the last.
    const POINT from = {rcDock.right - 3, y};
    const POINT to = {rcDock.left + w + 90, y + 30};

    WholeScreen before;
    REQUIRE(DragPress(from, to));
    {
        // One tracker, at the pointer: a 4-pixel column of inverted
        // halftone from 2 pixels below the Assist Window's top to 2 above
        // its bottom; the places the pointer passed are clean again.
        WholeScreen during;
        const RECT rcTracker = {to.x - 2, rcDock.top + 2, to.x + 2, rcDock.bottom - 2};
        const int nTracker = CountChanged(before, during, rcTracker);
        CHECK(nTracker >= cyTracker * 4 / 2 - 8);
        const RECT rcAbove = {to.x - 2, rcDock.top - 6, to.x + 2, rcDock.top + 1};
        CHECK_EQ(CountChanged(before, during, rcAbove), 0);
        const RECT rcPath = {from.x + 4, rcDock.top, to.x - 3, rcDock.bottom};
        CHECK_EQ(CountChanged(before, during, rcPath), 0);
        SaveArtefact(during, "dock-splitter-tracker.bmp");
    }
    REQUIRE(XDo("mouseup 1", to));
    // The new width is where the pointer was let go; the MDI client follows.
    const int wNew = to.x - rcDock.left;
    REQUIRE_LAYOUT(d, true, wNew);
    CHECK_EQ(LeftOnScreen(d), 0);
    CHECK_EQ(PaintError(d.hWndDock, true), std::string());

    // Narrower again, released within 32 pixels of the frame's left edge:
    // the tracker stopped following there, so the last followed place holds.
    const RECT rcClient = ClientOnScreen(d.hWndFrame);
    GetWindowRect(d.hWndDock, &rcDock);
    const POINT from2 = {rcDock.right - 3, y};
    const POINT inside = {rcClient.left + 60, y};
    const POINT band = {rcClient.left + 20, y};
    REQUIRE(DragPress(from2, inside));
    REQUIRE(XDo("mousemove " + std::to_string(band.x) + " " + std::to_string(band.y) + " sleep 0.1 mouseup 1", band));
    REQUIRE_LAYOUT(d, true, inside.x - rcDock.left);
    CHECK_EQ(LeftOnScreen(d), 0);
}

TEST_CASE(a_drag_that_loses_the_capture_ends_as_released_and_leaves_nothing_drawn)
{
    Docked d("dockcancel");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    REQUIRE(d.WaitSettled(true, w));
    RECT rcDock;
    GetWindowRect(d.hWndDock, &rcDock);
    const int y = (rcDock.top + rcDock.bottom) / 2;

    // A move drag that stays on its own side, its capture taken away: the
    // outline goes and nothing moves.
    WholeScreen before;
    const POINT ptGripper = OnScreen(d.hWndDock, w / 2, 12);
    const POINT ptNear = {ptGripper.x + 40, ptGripper.y + 100};
    REQUIRE(DragPress(ptGripper, ptNear));
    {
        WholeScreen during;
        CHECK(CountChanged(before, during, rcDock) > 0); // the outline is up
    }
    SendMessageA(d.hWndDock, WM_CANCELMODE, 0, 0);
    REQUIRE(XDo("mouseup 1", ptNear));
    d.host.WaitQuiet(300);
    {
        WholeScreen after;
        const RECT rcFrame = ClientOnScreen(d.hWndFrame);
        CHECK_EQ(CountChanged(before, after, rcFrame), 0);
        SaveArtefact(after, "dock-cancelled-move.bmp");
    }
    REQUIRE_LAYOUT(d, true, w);

    // A resize whose capture is lost: applied where the tracker was, as a
    // release there would be, and nothing left on the screen.
    const POINT from = {rcDock.right - 3, y};
    const POINT to = {rcDock.right + 70, y};
    REQUIRE(DragPress(from, to));
    SendMessageA(d.hWndDock, WM_CANCELMODE, 0, 0);
    REQUIRE_LAYOUT(d, true, to.x - rcDock.left);
    // The button comes up later, over a dock bar no longer dragging.
    const POINT away = {to.x + 100, y};
    REQUIRE(XDo("mousemove " + std::to_string(away.x) + " " + std::to_string(away.y) + " sleep 0.1 mouseup 1", away));
    REQUIRE_LAYOUT(d, true, to.x - rcDock.left);
    CHECK_EQ(LeftOnScreen(d), 0);

    // A move drag into the other side's zone, its capture lost there: moved.
    const int w2 = d.DockWidth();
    RECT rcFrame;
    GetWindowRect(d.hWndFrame, &rcFrame);
    const POINT ptFar = {rcFrame.right - 20, y};
    REQUIRE(DragPress(OnScreen(d.hWndDock, w2 / 2, 12), ptFar));
    SendMessageA(d.hWndDock, WM_CANCELMODE, 0, 0);
    REQUIRE_LAYOUT(d, false, w2);
    REQUIRE(XDo("mouseup 1", ptFar));
    CHECK_EQ(LeftOnScreen(d), 0);
    CHECK(d.tool.GetProcess().IsRunning());
}

TEST_CASE(hide_button_and_assist_menu_hide_and_show_it_with_the_check_mark_following)
{
    Docked d("dockhide");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    REQUIRE(d.WaitSettled(true, w));
    CHECK_EQ(AssistCheckShown(d), std::string("checked"));
    // From here on the host keeps the activation throughout: the hide
    // button does not take it, nor does the Assist Window shown again.
    const int nDeactivations = Deactivations(d);
    REQUIRE(nDeactivations >= 0);

    // The hide button, clicked: hidden, and the MDI client takes the whole area.
    HWND hWndButton = GetDlgItem(d.hWndDock, 1001);
    REQUIRE(hWndButton != nullptr);
    const POINT ptButton = Centre(hWndButton);
    REQUIRE(XDo("mousemove " + std::to_string(ptButton.x) + " " + std::to_string(ptButton.y) +
                    " sleep 0.1 click 1 sleep 0.1 mousemove " + std::to_string(ptButton.x + 300) + " " +
                    std::to_string(ptButton.y + 200),
                POINT{ptButton.x + 300, ptButton.y + 200}));
    CHECK(WaitFor([&] { return !IsWindowVisible(d.hWndDock); }, 3000));
    CHECK(d.ClientFillsFreeArea());
    CHECK_EQ(Deactivations(d), nDeactivations);
    CHECK_EQ(AssistCheckShown(d), std::string("unchecked"));
    // Still alive, and still laid out while hidden: a resize leaves it alone.
    MoveWindow(d.hWndFrame, 30, 30, 820, 560, TRUE);
    CHECK(d.ClientFillsFreeArea());
    CHECK(!IsWindowVisible(d.hWndDock));

    // The command with a notification code in its high word is not ours.
    PostMessageA(d.hWndFrame, WM_COMMAND, MAKEWPARAM(kAssistWindow, 1), 0);
    d.host.WaitQuiet(300);
    CHECK(!IsWindowVisible(d.hWndDock));

    // The command of "&Assist Window" shows it again, as wide as before.
    PostMessageA(d.hWndFrame, WM_COMMAND, kAssistWindow, 0);
    REQUIRE_LAYOUT(d, true, w);
    d.host.WaitQuiet(200);
    CHECK_EQ(Deactivations(d), nDeactivations);
    CHECK_EQ(AssistCheckShown(d), std::string("checked"));

    // The menu item itself, chosen with the keyboard: hidden, then shown.
    REQUIRE(ClickIntoHost(d));
    REQUIRE(XKeys("alt+a"));
    REQUIRE(WaitFor([] { return VisibleMenu() != nullptr; }, 3000));
    REQUIRE(XKeys("a"));
    CHECK(WaitFor([&] { return !IsWindowVisible(d.hWndDock); }, 3000));
    CHECK(d.ClientFillsFreeArea());
    CHECK_EQ(AssistCheckShown(d), std::string("unchecked"));
    REQUIRE(ClickIntoHost(d));
    REQUIRE(XKeys("alt+a"));
    REQUIRE(WaitFor([] { return VisibleMenu() != nullptr; }, 3000));
    REQUIRE(XKeys("a"));
    REQUIRE_LAYOUT(d, true, w);
    CHECK_EQ(AssistCheckShown(d), std::string("checked"));
    CHECK_EQ(PaintError(d.hWndDock, true), std::string());
    CHECK_EQ(Deactivations(d), nDeactivations);
}

TEST_CASE(the_assist_window_and_the_mdi_client_follow_the_tool_bar_to_every_edge)
{
    Docked d("docktoolbar", "[Settings]\r\nDockLeft=0\r\n");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    REQUIRE_LAYOUT(d, false, w);
    const struct
    {
        UINT nCommand;
        const char* pszSide;
    } edges[] = {{kToolBarLeft, "left"}, {kToolBarBottom, "bottom"}, {kToolBarRight, "right"}, {kToolBarTop, "top"}};
    for (const auto& edge : edges)
    {
        d.host.ClearLog();
        PostMessageA(d.hWndFrame, WM_COMMAND, edge.nCommand, 0);
        REQUIRE(WaitFor([&] { return d.host.CountLogPrefix(std::string("TOOLBAR ") + edge.pszSide) == 1; }, 5000));
        // The host laid its MDI client out beside the tool bar; its next
        // paint has the tool re-measure and share the area again.
        InvalidateRect(d.hWndFrame, nullptr, TRUE);
        if (!d.WaitLayout(false, w))
        {
            qt::Fail(__FILE__, __LINE__, std::string("tool bar ") + edge.pszSide + ": " + d.LayoutError(false, w));
            return;
        }
        d.host.WaitQuiet(200);
        WholeScreen shot;
        SaveArtefact(shot, (std::string("dock-toolbar-") + edge.pszSide + ".bmp").c_str());
    }
    // Docked left, the tool bar at the left edge: the Assist Window stands
    // beside the tool bar, not under it.
    REQUIRE(d.tool.Exit());
    REQUIRE(WriteTextFile(d.tool.SettingsPath(), "[Settings]\r\nDockLeft=1\r\n"));
    REQUIRE(d.tool.Start());
    REQUIRE(WaitFor([&] { return (d.hWndDock = FindDockBar(d.hWndFrame)) != nullptr && IsWindowVisible(d.hWndDock); }, 10000));
    REQUIRE_LAYOUT(d, true, d.DockWidth());
    d.host.ClearLog();
    PostMessageA(d.hWndFrame, WM_COMMAND, kToolBarLeft, 0);
    REQUIRE(WaitFor([&] { return d.host.CountLogPrefix("TOOLBAR left") == 1; }, 5000));
    InvalidateRect(d.hWndFrame, nullptr, TRUE);
    REQUIRE_LAYOUT(d, true, d.DockWidth());
}

namespace
{

BOOL CALLBACK FindTreeChild(HWND hWnd, LPARAM lParam)
{
    char szClass[32] = "";
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (lstrcmpA(szClass, WC_TREEVIEWA) != 0)
        return TRUE;
    *reinterpret_cast<HWND*>(lParam) = hWnd;
    return FALSE;
}

// The Project page's tree in the Assist Window.
HWND FindTree(HWND hWndDock)
{
    HWND hWndTree = nullptr;
    EnumChildWindows(hWndDock, FindTreeChild, reinterpret_cast<LPARAM>(&hWndTree));
    return hWndTree;
}

int TreeCount(HWND hWndTree)
{
    return static_cast<int>(SendMessageA(hWndTree, TVM_GETCOUNT, 0, 0));
}

// The host frame's caption as the screen shows it: drawn active or not.
bool CaptionLooksActive(HWND hWndFrame)
{
    RECT rc;
    GetWindowRect(hWndFrame, &rc);
    WholeScreen shot;
    const COLORREF clr = shot.Pixel(rc.left + (rc.right - rc.left) / 2, rc.top + GetSystemMetrics(SM_CYFRAME) + 4);
    return clr == GetSysColor(COLOR_ACTIVECAPTION) || clr == GetSysColor(COLOR_GRADIENTACTIVECAPTION);
}
} // namespace

TEST_CASE(the_host_stays_active_beside_the_assist_window_and_a_click_into_the_tree_keeps_its_caption_active)
{
    Docked d("dockactive");
    REQUIRE(d.ok);
    // The Assist Window's page gives its tree the first focus while it is
    // created; the host never lost the activation to it.
    CHECK(WaitFor([&] { return GetForegroundWindow() == d.hWndFrame; }, 3000));
    CHECK(WaitFor([&] { return CaptionLooksActive(d.hWndFrame); }, 3000));
    CHECK_EQ(Deactivations(d), 0);
    HWND hWndTree = FindTree(d.hWndDock);
    REQUIRE(hWndTree != nullptr);
    // Into the tree: the tree has the keyboard, the host's caption stays active.
    const POINT ptTree = OnScreen(hWndTree, 60, 8);
    REQUIRE(XDo("mousemove " + std::to_string(ptTree.x) + " " + std::to_string(ptTree.y) + " click 1", ptTree));
    CHECK(WaitFor([&] { return CaptionLooksActive(d.hWndFrame); }, 3000));
    // The keys go to the tree: Down moves its selection on.
    const LPARAM hSelected = SendMessageA(hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0);
    REQUIRE(XKeys("Down"));
    CHECK(WaitFor([&] { return SendMessageA(hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0) != hSelected; }, 3000));
    CHECK(CaptionLooksActive(d.hWndFrame));
    {
        WholeScreen shot;
        SaveArtefact(shot, "dock-tree-clicked.bmp");
    }
    // Back into the host, then the hide button: the host keeps the front.
    REQUIRE(ClickIntoHost(d));
    CHECK(CaptionLooksActive(d.hWndFrame));
    const int nDeactivations = Deactivations(d);
    const POINT ptButton = Centre(GetDlgItem(d.hWndDock, 1001));
    REQUIRE(XDo("mousemove " + std::to_string(ptButton.x) + " " + std::to_string(ptButton.y) + " click 1", ptButton));
    REQUIRE(WaitFor([&] { return !IsWindowVisible(d.hWndDock); }, 3000));
    CHECK(WaitFor([&] { return GetForegroundWindow() == d.hWndFrame && CaptionLooksActive(d.hWndFrame); }, 3000));
    d.host.WaitQuiet(200);
    CHECK_EQ(Deactivations(d), nDeactivations);
}

TEST_CASE(a_title_change_refreshes_the_tree_and_a_file_changed_in_the_background_reloads_on_return)
{
    const std::string strDirA = MakeScratchDir("docktitlea");
    const std::string strDirB = MakeScratchDir("docktitleb");
    const std::string strMain = strDirA + "main.asm";
    WriteTextFile(strMain, "; main\r\n");
    WriteTextFile(strDirA + "defs.inc", "; defs\r\n");
    for (const char* psz : {"one.asm", "two.asm", "three.inc"})
        WriteTextFile(strDirB + psz, "; b\r\n");
    // No project at first: only the title's change can bring one to the
    // tree (the directory poll runs while a project is open).
    Docked d("docktitle", std::string(),
             "/pos 20,20 /size 900x600 /nextproject \"" + strDirA + "demo.mcp\" /open \"" + strMain + "\"");
    REQUIRE(d.ok);
    HWND hWndTree = FindTree(d.hWndDock);
    REQUIRE(hWndTree != nullptr);
    const int nFixed = TreeCount(hWndTree);
    CHECK(nFixed > 0);
    PostMessageA(d.hWndFrame, WM_COMMAND, 1019, 0); // the host opens the project: its title changes
    CHECK(WaitFor([&] { return TreeCount(hWndTree) == nFixed + 2; }, 5000));

    // main.asm changes while the host is in the background; back in front,
    // the host is told to close it and it is dropped on the host again.
    HWND hWndOther = CreateWindowExA(0, "STATIC", "elsewhere", WS_POPUP | WS_VISIBLE | WS_BORDER, 600, 650, 200, 80,
                                     nullptr, nullptr, nullptr, nullptr);
    REQUIRE(hWndOther != nullptr);
    SetForegroundWindow(hWndOther);
    REQUIRE(WaitFor([&] { return GetForegroundWindow() == hWndOther; }, 3000));
    d.host.WaitQuiet(300);
    ShiftWriteTime(strMain, 60);
    d.host.ClearLog();
    REQUIRE(ClickIntoHost(d));
    CHECK(d.host.WaitLog("DROP " + strMain, 5000));
    const std::vector<std::string> log = d.host.Log();
    int nClose = -1, nDrop = -1;
    for (int i = 0; i < static_cast<int>(log.size()); ++i)
    {
        if (log[i] == "CLOSE " + strMain && nClose < 0)
            nClose = i;
        if (log[i] == "DROP " + strMain && nDrop < 0)
            nDrop = i;
    }
    CHECK(nClose >= 0 && nClose < nDrop);
    DestroyWindow(hWndOther);

    // Another project in another directory by the title alone.
    SetWindowTextA(d.hWndFrame, ("Host IDE - " + strDirB + "other.mcp").c_str());
    CHECK(WaitFor([&] { return TreeCount(hWndTree) == nFixed + 3; }, 5000));
    // No project: the files go.
    SetWindowTextA(d.hWndFrame, "Host IDE");
    CHECK(WaitFor([&] { return TreeCount(hWndTree) == nFixed; }, 5000));
}
