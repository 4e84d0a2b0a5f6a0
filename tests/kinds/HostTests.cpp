// What the stand-in host grew for the node kinds and the Assist Window: the
// tool bar at each edge of the frame with the MDI client in the rest, the
// menu bar's log line, and the project commands that change its title.
#include "Fixture.h"
#include "TestRunner.h"

#include <string>

namespace
{
RECT RectInFrame(HWND hWnd, HWND hWndFrame)
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
} // namespace

TEST_CASE(ToolBarGoesToEveryEdgeAndTheClientTakesTheRest)
{
    qt::Host host(qt::MakeScratchDir("hosttbar"));
    REQUIRE(host.Start("/size 800x600"));
    HWND hWndFrame = host.Frame();
    HWND hWndBar = host.FindChildOfClass(hWndFrame, "PFE_TBar");
    HWND hWndClient = host.FindChildOfClass(hWndFrame, "MDIClient");
    REQUIRE(hWndBar && hWndClient);
    RECT rcFrame;
    GetClientRect(hWndFrame, &rcFrame);
    const int cx = rcFrame.right, cy = rcFrame.bottom, n = 28;
    struct Case
    {
        UINT nCommand;
        const char* pszSide;
        RECT rcBar, rcClient;
    } cases[] = {
        {1193, "left", {0, 0, n, cy}, {n, 0, cx, cy}},
        {1195, "right", {cx - n, 0, cx, cy}, {0, 0, cx - n, cy}},
        {1194, "bottom", {0, cy - n, cx, cy}, {0, 0, cx, cy - n}},
        {1192, "top", {0, 0, cx, n}, {0, n, cx, cy}},
    };
    for (const Case& c : cases)
    {
        host.ClearLog();
        PostMessageA(hWndFrame, WM_COMMAND, c.nCommand, 0);
        CHECK(host.WaitLog(std::string("TOOLBAR ") + c.pszSide + " " + Show(c.rcBar), 5000));
        CHECK_EQ(Show(RectInFrame(hWndBar, hWndFrame)), Show(c.rcBar));
        CHECK_EQ(Show(RectInFrame(hWndClient, hWndFrame)), Show(c.rcClient));
    }
    // The layout holds when the frame is resized (a WM_SIZE lays it out anew).
    host.ClearLog();
    PostMessageA(hWndFrame, WM_COMMAND, 1193, 0);
    REQUIRE(host.WaitLog("TOOLBAR left 0,0,28," + std::to_string(cy), 5000));
    SetWindowPos(hWndFrame, nullptr, 0, 0, 700, 500, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    GetClientRect(hWndFrame, &rcFrame);
    const RECT rcWant = {n, 0, rcFrame.right, rcFrame.bottom};
    CHECK(qt::WaitFor([&] { return Show(RectInFrame(hWndClient, hWndFrame)) == Show(rcWant); }, 3000));
    // An upright bar's buttons are hit along its length: the second button
    // (1002, "open file") is below the first.
    host.ClearLog();
    PostMessageA(hWndBar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 4 + 24 + 10));
    CHECK(host.WaitLog("COMMAND 1002", 3000));
}

TEST_CASE(ToolBarEdgeFromTheCommandLine)
{
    qt::Host host(qt::MakeScratchDir("hosttbarcl"));
    REQUIRE(host.Start("/toolbar right /size 800x600"));
    HWND hWndFrame = host.Frame();
    RECT rcFrame;
    GetClientRect(hWndFrame, &rcFrame);
    CHECK_EQ(Show(RectInFrame(host.FindChildOfClass(hWndFrame, "PFE_TBar"), hWndFrame)),
             Show(RECT{rcFrame.right - 28, 0, rcFrame.right, rcFrame.bottom}));
}

TEST_CASE(MenuBarIsLoggedOnRequest)
{
    qt::Host host(qt::MakeScratchDir("hostmenu"));
    REQUIRE(host.Start());
    PostMessageA(host.Frame(), WM_COMMAND, 1196, 0);
    CHECK(host.WaitLog("MENUBAR 5 &File &Edit &Project &View &Window", 5000));
}

TEST_CASE(ProjectCommandsChangeTheFramesTitle)
{
    const std::string strDir = qt::MakeScratchDir("hostproj");
    qt::Host host(strDir);
    REQUIRE(host.Start("/nextproject " + strDir + "next.mcp"));
    HWND hWndFrame = host.Frame();
    auto title = [&] {
        char sz[512] = {};
        GetWindowTextA(hWndFrame, sz, sizeof(sz));
        return std::string(sz);
    };
    CHECK_EQ(title(), std::string("Host IDE"));
    // Closing a project that is not open changes nothing.
    PostMessageA(hWndFrame, WM_COMMAND, 1030, 0);
    REQUIRE(host.WaitLog("COMMAND 1030", 3000));
    CHECK_EQ(host.CountLogPrefix("PROJECT"), 0);
    PostMessageA(hWndFrame, WM_COMMAND, 1019, 0);
    CHECK(host.WaitLog("PROJECT " + strDir + "next.mcp", 3000));
    CHECK_EQ(title(), "Host IDE - " + strDir + "next.mcp");
    PostMessageA(hWndFrame, WM_COMMAND, 1030, 0);
    CHECK(host.WaitLog("PROJECT CLOSE", 3000));
    CHECK_EQ(title(), std::string("Host IDE"));
    // The views of a file follow the project.
    PostMessageA(hWndFrame, WM_COMMAND, 1018, 0);
    PostMessageA(hWndFrame, WM_COMMAND, 1164, 0);
    CHECK(host.WaitLog("VIEW 1164 " + strDir + "next.map", 3000));
}
