// The Assist Window in the stand-in host's frame, two processes under Wine:
// where it stands beside the MDI client after every change of the frame, on
// every kind of host, what it paints, its drags with real mouse input, the
// hide button and the "&Assist" menu, its settings across a restart, and the
// host after the tool has gone. Rectangles are read across the processes.
#include "IniFile.h"
#include "Pixels.h"
#include "RealMouse.h"
#include "Scenario.h"
#include "TestRunner.h"
#include "Tray.h"

#include <stdio.h>
#include <stdlib.h>

using namespace qt;

namespace
{
const UINT kAssistWindow = 32771;

RECT InFrame(HWND hWnd, HWND hWndFrame) // in the frame's client coordinates; NULL: the screen's
{
    RECT rc = {};
    GetWindowRect(hWnd, &rc);
    MapWindowPoints(nullptr, hWndFrame, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

std::string Show(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) + "," +
           std::to_string(rc.bottom);
}

struct Docked : Scene
{
    explicit Docked(const char* pszTag, const std::string& strSettings = std::string(),
                    const std::string& strVariant = std::string())
        : Scene(pszTag, "/pos 20,20 /size 900x600" + strVariant, strSettings)
    {
        if (ok)
            host.WaitQuiet(300);
    }

    // The client area but the tool bar's edge is what the MDI client and the
    // Assist Window share, the Assist Window its width on its side; hidden
    // (0 wide), the MDI client takes it all.
    std::string LayoutError(bool bLeft, int nWidth) const
    {
        RECT free = {};
        GetClientRect(hWndFrame, &free);
        const RECT bar = InFrame(host.FindChildOfClass(hWndFrame, "PFE_TBar"), hWndFrame);
        SubtractRect(&free, &free, &bar); // the bar lies across one edge of the client area
        RECT wantDock = free, wantClient = free;
        (bLeft ? wantDock.right : wantDock.left) = (bLeft ? wantClient.left : wantClient.right) =
            bLeft ? free.left + nWidth : free.right - nWidth;
        const RECT client = InFrame(host.FindChildOfClass(hWndFrame, "MDIClient"), hWndFrame);
        const RECT dock = InFrame(hWndDock, hWndFrame);
        const bool bShown = IsWindowVisible(hWndDock) != FALSE;
        if (bShown == (nWidth > 0) && EqualRect(&client, &wantClient) && (!bShown || EqualRect(&dock, &wantDock)))
            return std::string();
        return "client " + Show(client) + " want " + Show(wantClient) + ", dock " + (bShown ? Show(dock) : "hidden") +
               " want " + Show(wantDock);
    }
    bool WaitLayout(bool bLeft, int nWidth) const
    {
        return WaitFor([&] { return LayoutError(bLeft, nWidth).empty(); }, 5000);
    }
    // The layout holds and the frame has not moved for 400 ms. Wine: after a
    // restore the host frame may jump back to its maximised rectangle for a
    // moment and then return; a point taken for the mouse then misses.
    bool WaitSettled(bool bLeft, int nWidth) const
    {
        return WaitStill([&] { return LayoutError(bLeft, nWidth).empty() ? Show(InFrame(hWndFrame, nullptr)) : ""; }, 400);
    }
    int DockWidth() const { return InFrame(hWndDock, nullptr).right - InFrame(hWndDock, nullptr).left; }
    // On the screen: the gripper's middle, and a point of the zone beside
    // the frame's left or right edge where a move drag docks.
    POINT Gripper() const
    {
        const RECT rc = InFrame(hWndDock, nullptr);
        return POINT{(rc.left + rc.right) / 2, rc.top + 12};
    }
    POINT NearEdge(bool bLeft) const
    {
        const RECT rc = InFrame(hWndFrame, nullptr);
        return POINT{bLeft ? rc.left + 20 : rc.right - 20, rc.top + 200};
    }
    bool StartAgain()
    {
        return tool.Start() && WaitFor([&] { return (hWndDock = FindDockBar(hWndFrame)) && IsWindowVisible(hWndDock); }, 10000);
    }
    // A logged state of the host: the value after the prefix of the line
    // that the command posted now makes the host write.
    std::string HostState(UINT nCommand, LPARAM lParam, const std::string& strPrefix) const
    {
        host.ClearLog();
        PostMessageA(hWndFrame, WM_COMMAND, nCommand, lParam);
        WaitFor([&] { return host.CountLogPrefix(strPrefix) > 0; }, 3000);
        for (const std::string& strLine : host.Log())
            if (strLine.compare(0, strPrefix.size(), strPrefix) == 0)
                return strLine.substr(strPrefix.size());
        return "no log";
    }
    // How often the host frame has lost the activation: a window of the tool
    // that took it for a moment shows here even when the host is in front again.
    std::string Deactivations() const { return HostState(1198, 0, "DEACTIVATED "); }
    // The check mark of "&Assist Window" after the "&Assist" menu was opened
    // with the keyboard (which updates it) and closed again.
    std::string AssistCheck()
    {
        if (GetForegroundWindow() != hWndFrame && !ClickIntoHost())
            return "host not in front";
        XKeys("alt+a");
        if (!WaitFor([] { return VisibleMenu() != nullptr; }, 3000))
            return "no menu";
        XKeys("Escape Escape");
        WaitFor([] { return VisibleMenu() == nullptr; }, 3000);
        return HostState(1197, kAssistWindow, "MENUCHECK 32771 ");
    }
    RECT ClientOnScreen() const
    {
        RECT rc = {};
        GetClientRect(hWndFrame, &rc);
        MapWindowPoints(hWndFrame, nullptr, reinterpret_cast<POINT*>(&rc), 2);
        return rc;
    }
};

#define REQUIRE_LAYOUT(d, bLeft, nWidth) \
    do { if (!(d).WaitLayout(bLeft, nWidth)) { qt::Fail(__FILE__, __LINE__, "layout: " + (d).LayoutError(bLeft, nWidth)); return; } } while (0)

// Presses at from and moves to to in steps; the button stays down.
bool DragPress(POINT from, POINT to)
{
    return XDo("mousemove " + std::to_string(from.x) + " " + std::to_string(from.y) + " sleep 0.1 mousedown 1 sleep 0.1" +
                   MoveSteps(from, to),
               to);
}

bool Release(POINT pt)
{
    return XDo("mousemove " + std::to_string(pt.x) + " " + std::to_string(pt.y) + " sleep 0.1 mouseup 1", pt);
}

// The splitter edge and the gripper as painted, read off the screen in the
// Assist Window's client coordinates.
std::string PaintError(HWND hWndDock, bool bLeft)
{
    ScreenShot shot(hWndDock, ScreenShot::CLIENT_AREA);
    const int cx = shot.Width(), y = shot.Height() / 2, xMid = cx / 2;
    const int left[][2] = {{cx - 1, COLOR_3DDKSHADOW}, {cx - 2, COLOR_BTNSHADOW}, {cx - 6, COLOR_BTNHIGHLIGHT}};
    const int right[][2] = {{0, COLOR_3DLIGHT}, {1, COLOR_BTNHIGHLIGHT}, {5, COLOR_BTNSHADOW}, {6, COLOR_3DDKSHADOW}};
    for (int i = 0; i < (bLeft ? 3 : 4); ++i)
        if (shot.Pixel((bLeft ? left : right)[i][0], y) != GetSysColor((bLeft ? left : right)[i][1]))
            return "splitter column " + std::to_string((bLeft ? left : right)[i][0]);
    // Gripper: two raised bars, tops at y 8 and 12, in the middle of the width.
    for (int yBar : {8, 12})
        if (shot.Pixel(xMid, yBar) != GetSysColor(COLOR_BTNHIGHLIGHT) ||
            shot.Pixel(xMid, yBar + 2) != GetSysColor(COLOR_BTNSHADOW))
            return "gripper";
    return std::string();
}

int CountChanged(const Canvas& a, const Canvas& b, const RECT& r)
{
    int n = 0;
    for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x)
            n += a.Pixel(x, y) != b.Pixel(x, y) ? 1 : 0;
    return n;
}

// Pixels of the host frame's client area that change when its windows paint
// it all again: something drawn on the screen and left there.
int LeftOnScreen(const Docked& d)
{
    d.host.WaitQuiet(300);
    ScreenShot shown(GetDesktopWindow());
    const UINT nFlags = RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME | RDW_UPDATENOW;
    RedrawWindow(d.hWndFrame, nullptr, nullptr, nFlags);
    RedrawWindow(d.hWndDock, nullptr, nullptr, nFlags);
    d.host.WaitQuiet(300);
    return CountChanged(shown, ScreenShot(GetDesktopWindow()), d.ClientOnScreen());
}

// The host frame's caption as the screen shows it: drawn active or not.
bool CaptionLooksActive(HWND hWndFrame)
{
    const RECT rc = InFrame(hWndFrame, nullptr);
    const COLORREF clr = ScreenShot(GetDesktopWindow()).Pixel((rc.left + rc.right) / 2, rc.top + GetSystemMetrics(SM_CYFRAME) + 4);
    return clr == GetSysColor(COLOR_ACTIVECAPTION) || clr == GetSysColor(COLOR_GRADIENTACTIVECAPTION);
}

} // namespace

// Hosts differ where the contract leaves them free: one lays its MDI client
// out from WM_SIZE's lParam, one has a taller tool bar, one passes the wheel on.
TEST_CASE(on_every_kind_of_host_docked_right_by_garbled_settings_it_fills_the_free_area_beside_the_tool_bar_at_every_edge_through_every_frame_change_and_then_left)
{
    for (const char* pszVariant : {"", " /variant lparam", " /variant tallbar", " /variant lparam,tallbar,wheel"})
    {
        // Garbled settings: the rectangle reads as empty (the template's width),
        // a side without digits as 0, as the profile functions read it: right.
        Docked d("docklayout", "[Settings]\r\nDockRect=zz:1:x\r\nDockLeft=banana\r\n", pszVariant);
        printf("  on the host%s\n", *pszVariant ? pszVariant : " as it comes");
        REQUIRE(d.ok);
        const int w = d.DockWidth();
        CHECK(w > 100);
        REQUIRE_LAYOUT(d, false, w);
        for (UINT nCommand : {1193u, 1194u, 1195u, 1192u}) // the tool bar left, bottom, right, top
        {
            PostMessageA(d.hWndFrame, WM_COMMAND, nCommand, 0);
            UntilMarker(d.host);
            InvalidateRect(d.hWndFrame, nullptr, TRUE); // the host's next paint has the tool measure again
            REQUIRE_LAYOUT(d, false, w);
        }
        // A WM_SIZE the host lays nothing out for (it does so when minimised)
        // measures the MDI client where the tool narrowed it: the strip is not
        // cut off a second time.
        PostMessageA(d.hWndFrame, WM_SIZE, SIZE_MINIMIZED, 0);
        UntilMarker(d.host);
        CHECK_EQ(d.LayoutError(false, w), std::string());
        // Moved without a size change, resized, maximised, minimised (the
        // Assist Window goes with the frame) and restored twice.
        SetWindowPos(d.hWndFrame, nullptr, 120, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        REQUIRE_LAYOUT(d, false, w);
        MoveWindow(d.hWndFrame, 10, 10, 1100, 700, TRUE);
        REQUIRE_LAYOUT(d, false, w);
        const struct { WPARAM nCommand; int nZoomed; BOOL bIconic; } states[] = { // nZoomed -1: either
            {SC_MAXIMIZE, 1, FALSE}, {SC_MINIMIZE, -1, TRUE}, {SC_RESTORE, -1, FALSE}, {SC_RESTORE, 0, FALSE}};
        for (const auto& state : states)
        {
            PostMessageA(d.hWndFrame, WM_SYSCOMMAND, state.nCommand, 0);
            REQUIRE(WaitFor([&] { return !IsIconic(d.hWndFrame) == !state.bIconic &&
                                         (state.nZoomed < 0 || !IsZoomed(d.hWndFrame) == !state.nZoomed); }, 5000));
            if (state.bIconic)
                CHECK(WaitFor([&] { return !IsWindowVisible(d.hWndDock); }, 3000));
            else
                REQUIRE_LAYOUT(d, false, w);
        }
        REQUIRE(d.WaitSettled(false, w));
        CHECK_EQ(PaintError(d.hWndDock, false), std::string());

        // The gripper dragged across to the left edge: docked left.
        REQUIRE(DragPress(d.Gripper(), d.NearEdge(true)) && Release(d.NearEdge(true)));
        REQUIRE_LAYOUT(d, true, w);
    }
}

TEST_CASE(exit_gives_the_host_its_area_and_menu_back_the_next_start_keeps_width_and_side_and_either_dying_spares_the_other)
{
    Docked d("dockexit", "[Settings]\r\nDockRect=0000:0000:0180:0500\r\nDockLeft=0\r\n");
    REQUIRE(d.ok);
    REQUIRE_LAYOUT(d, false, 180);
    // Moved across with the gripper, then the tool ends.
    REQUIRE(DragPress(d.Gripper(), d.NearEdge(true)) && Release(d.NearEdge(true)));
    REQUIRE_LAYOUT(d, true, 180);
    REQUIRE(d.tool.Exit());
    CHECK(!IsWindow(d.hWndDock));
    CHECK(d.WaitLayout(true, 0));
    CHECK_EQ(d.HostState(1196, 0, "MENUBAR "), std::string("5 &File &Edit &Project &View &Window"));
    const auto ini = ReadIni(d.tool.SettingsPath());
    CHECK_EQ(IniValue(ini, "Settings", "DockLeft"), std::string("1"));
    CHECK_EQ(IniValue(ini, "Settings", "DockRect").substr(10, 5), std::string("0180:"));
    // The next start beside the same host: left, 180 wide, beside a tool
    // bar at the left edge, not under it.
    REQUIRE(d.StartAgain());
    REQUIRE_LAYOUT(d, true, 180);
    PostMessageA(d.hWndFrame, WM_COMMAND, 1193, 0);
    UntilMarker(d.host);
    InvalidateRect(d.hWndFrame, nullptr, TRUE); // the host's next paint has the tool measure again
    REQUIRE_LAYOUT(d, true, 180);
    // Killed, it leaves a host whose own next layout takes the whole area.
    d.tool.Kill();
    REQUIRE(WaitFor([&] { return !IsWindow(d.hWndDock); }, 5000));
    MoveWindow(d.hWndFrame, 30, 30, 820, 580, TRUE);
    CHECK(d.WaitLayout(true, 0));
    // The host dies under a running tool: the Assist Window goes along (a
    // child would die with the frame; the pop-up of Wine must not linger).
    REQUIRE(d.StartAgain());
    d.host.Kill();
    CHECK(WaitFor([&] { return !IsWindow(d.hWndDock); }, 5000));
    CHECK(d.tool.Exit());
}

TEST_CASE(splitter_drag_sets_the_width_where_released_with_one_tracker_and_a_drag_that_loses_the_capture_ends_as_released)
{
    Docked d("docksplit");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    REQUIRE(d.WaitSettled(true, w));
    RECT rcDock;
    GetWindowRect(d.hWndDock, &rcDock);
    const int y = (rcDock.top + rcDock.bottom) / 2;
    // The splitter's hot zone is the 4 pixels at the inner edge but the last.
    const POINT from = {rcDock.right - 3, y}, to = {rcDock.left + w + 90, y + 30};
    ScreenShot before(GetDesktopWindow());
    REQUIRE(DragPress(from, to));
    // One tracker at the pointer, a 4-pixel column of inverted halftone from
    // 2 pixels below the top to 2 above the bottom; the places the pointer
    // passed are clean again.
    const ScreenShot during(GetDesktopWindow());
    CHECK(CountChanged(before, during, RECT{to.x - 2, rcDock.top + 2, to.x + 2, rcDock.bottom - 2}) >=
          (rcDock.bottom - rcDock.top - 4) * 2 - 8);
    CHECK_EQ(CountChanged(before, during, RECT{to.x - 2, rcDock.top - 6, to.x + 2, rcDock.top + 1}), 0);
    CHECK_EQ(CountChanged(before, during, RECT{from.x + 4, rcDock.top, to.x - 3, rcDock.bottom}), 0);
    REQUIRE(XDo("mouseup 1", to));
    REQUIRE_LAYOUT(d, true, to.x - rcDock.left);
    CHECK_EQ(LeftOnScreen(d), 0);
    CHECK_EQ(PaintError(d.hWndDock, true), std::string());

    // Released within 32 pixels of the frame's left edge: the tracker
    // stopped following there, so the last followed place holds.
    const RECT rcClient = d.ClientOnScreen();
    GetWindowRect(d.hWndDock, &rcDock);
    const POINT inside = {rcClient.left + 60, y};
    REQUIRE(DragPress(POINT{rcDock.right - 3, y}, inside));
    REQUIRE(Release(POINT{rcClient.left + 20, y}));
    REQUIRE_LAYOUT(d, true, inside.x - rcDock.left);
    CHECK_EQ(LeftOnScreen(d), 0);

    // A move drag on its own side, its capture taken away: the outline goes
    // and nothing moves.
    const int w1 = d.DockWidth();
    GetWindowRect(d.hWndDock, &rcDock);
    const POINT ptGripper = d.Gripper(), ptNear = {ptGripper.x + 40, ptGripper.y + 100};
    const ScreenShot beforeMove(GetDesktopWindow());
    REQUIRE(DragPress(ptGripper, ptNear));
    CHECK(CountChanged(beforeMove, ScreenShot(GetDesktopWindow()), rcDock) > 0); // the outline is up
    SendMessageA(d.hWndDock, WM_CANCELMODE, 0, 0);
    REQUIRE(XDo("mouseup 1", ptNear));
    d.host.WaitQuiet(300);
    CHECK_EQ(CountChanged(beforeMove, ScreenShot(GetDesktopWindow()), d.ClientOnScreen()), 0);
    REQUIRE_LAYOUT(d, true, w1);
    // A move drag into the other side's zone, its capture lost there: moved.
    const POINT ptFar = d.NearEdge(false);
    REQUIRE(DragPress(ptGripper, ptFar));
    SendMessageA(d.hWndDock, WM_CANCELMODE, 0, 0);
    REQUIRE_LAYOUT(d, false, w1);
    REQUIRE(XDo("mouseup 1", ptFar));
    CHECK_EQ(LeftOnScreen(d), 0);
}

TEST_CASE(the_host_keeps_the_activation_while_the_tree_has_the_keys_and_the_hide_button_and_menu_follow_the_check_mark)
{
    Docked d("dockhide");
    REQUIRE(d.ok);
    const int w = d.DockWidth();
    REQUIRE(d.WaitSettled(true, w));
    // The page gave its tree the first focus while it was made; the host
    // never lost the activation to it.
    CHECK(WaitFor([&] { return GetForegroundWindow() == d.hWndFrame; }, 3000));
    CHECK_EQ(d.Deactivations(), std::string("0"));
    CHECK_EQ(d.AssistCheck(), std::string("checked"));
    // A click into the tree gives it the keys: Down moves its selection on.
    REQUIRE(d.ClickNode("Source Files", 1));
    const LRESULT hSelected = SendMessageA(d.hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0);
    REQUIRE(XKeys("Down"));
    CHECK(WaitFor([&] { return SendMessageA(d.hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0) != hSelected; }, 3000));
    REQUIRE(d.ClickIntoHost());
    const std::string strDeactivations = d.Deactivations();

    // The hide button: hidden, the MDI client takes the whole area, and the
    // host kept the activation throughout.
    REQUIRE(RealClick(Centre(GetDlgItem(d.hWndDock, 1001))));
    CHECK(d.WaitLayout(true, 0));
    CHECK(WaitFor([&] { return GetForegroundWindow() == d.hWndFrame && CaptionLooksActive(d.hWndFrame); }, 3000));
    CHECK_EQ(d.Deactivations(), strDeactivations);
    CHECK_EQ(d.AssistCheck(), std::string("unchecked"));
    // Still laid out while hidden; a command with a notification code is not ours.
    MoveWindow(d.hWndFrame, 30, 30, 820, 560, TRUE);
    CHECK(d.WaitLayout(true, 0));
    PostMessageA(d.hWndFrame, WM_COMMAND, MAKEWPARAM(kAssistWindow, 1), 0);
    UntilMarker(d.host);
    CHECK(!IsWindowVisible(d.hWndDock));

    // The menu item itself, chosen with the keyboard: shown as wide as
    // before; the tool hears the command, the host does not.
    REQUIRE(d.ClickIntoHost());
    REQUIRE(XKeys("alt+a"));
    REQUIRE(WaitFor([] { return VisibleMenu() != nullptr; }, 3000));
    REQUIRE(XKeys("a"));
    REQUIRE_LAYOUT(d, true, w);
    CHECK_EQ(Joined(UntilMarker(d.host)), std::string());
    CHECK_EQ(d.AssistCheck(), std::string("checked"));
    CHECK_EQ(d.Deactivations(), strDeactivations);
}
