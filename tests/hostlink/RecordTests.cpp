// Records reach the tool from anyone who sends WM_COPYDATA to its frame. A
// window of this test program plays a host window: what the tool's items do
// to it (WM_VSCROLL lines) shows which items exist, without looking inside.
#include "Fixture.h"
#include "QuorvantHook.h"
#include "TestRunner.h"

using namespace qt;

namespace
{
int g_nScrollLines = 0;

LRESULT CALLBACK CountingProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_VSCROLL)
    {
        ++g_nScrollLines;
        return 0;
    }
    return DefWindowProcA(hWnd, nMessage, wParam, lParam);
}

HWND MakePlayWindow()
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = CountingProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "RecordTestWindow";
    RegisterClassA(&wc);
    return CreateWindowExA(0, "RecordTestWindow", "play", WS_OVERLAPPED, 0, 0, 50, 50, nullptr, nullptr,
                           wc.hInstance, nullptr);
}

// Sends one record; dwSize other than 20 makes a malformed one.
void Send(HWND hWndTool, ULONG_PTR dwCode, HookRecord record, DWORD dwSize = sizeof(HookRecord))
{
    char buffer[64] = {};
    memcpy(buffer, &record, sizeof(record));
    COPYDATASTRUCT cds = {dwCode, dwSize, buffer};
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutA(hWndTool, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000, &dwResult);
}

HookRecord Create(HWND hWnd, uint32_t nKind) { return HookRecord{nKind, HookWindowWord(hWnd), 0, 0, 0}; }
HookRecord Wheel(HWND hWnd) { return HookRecord{0, HookWindowWord(hWnd), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0}; }

// Lines the tool scrolls for one wheel notch on the play window.
int LinesPerNotch(HWND hWndTool, HWND hWnd)
{
    g_nScrollLines = 0;
    Send(hWndTool, HOOK_MESSAGE_DONE, Wheel(hWnd));
    return g_nScrollLines;
}
} // namespace

TEST_CASE(malformed_records_create_nothing)
{
    Tool tool(MakeScratchDir("malformed"));
    REQUIRE(tool.Start());
    HWND hWndTool = tool.MainFrame();
    HWND hWnd = MakePlayWindow();
    REQUIRE(hWnd != nullptr);

    Send(hWndTool, HOOK_CREATE, Create(hWnd, KIND_CHILD), 16);
    Send(hWndTool, HOOK_CREATE, Create(hWnd, KIND_CHILD), 24);
    Send(hWndTool, 0, Create(hWnd, KIND_CHILD));
    Send(hWndTool, 5, Create(hWnd, KIND_CHILD));
    Send(hWndTool, HOOK_CREATE, Create(hWnd, 0));
    Send(hWndTool, HOOK_CREATE, Create(hWnd, 6));
    Send(hWndTool, HOOK_CREATE, Create(hWnd, 0xFFFFFFFF));
    CHECK_EQ(LinesPerNotch(hWndTool, hWnd), 0);

    // Messages and destroys for windows without an item, and for handles of
    // no window at all, are dropped.
    Send(hWndTool, HOOK_DESTROY, Create(hWnd, 0));
    Send(hWndTool, HOOK_MESSAGE, Wheel(reinterpret_cast<HWND>(0x1234)));
    Send(hWndTool, HOOK_MESSAGE_DONE, Wheel(reinterpret_cast<HWND>(0x1234)));
    Send(hWndTool, HOOK_DESTROY, Create(reinterpret_cast<HWND>(0x5678), 0));
    // A well-formed creation still works afterwards.
    Send(hWndTool, HOOK_CREATE, Create(hWnd, KIND_CHILD));
    CHECK_EQ(LinesPerNotch(hWndTool, hWnd), 4);
    Send(hWndTool, HOOK_DESTROY, Create(hWnd, 0));
    CHECK_EQ(LinesPerNotch(hWndTool, hWnd), 0);

    CHECK(tool.GetProcess().IsRunning());
    CHECK(tool.Exit(5000));
    DestroyWindow(hWnd);
}

TEST_CASE(duplicate_creations_give_two_items_and_records_reach_the_first)
{
    Tool tool(MakeScratchDir("duplicate"));
    REQUIRE(tool.Start());
    HWND hWndTool = tool.MainFrame();
    HWND hWnd = MakePlayWindow();

    // A text item scrolls the parent by one line, a child item itself by four:
    // which one answers shows which is first.
    HWND hWndChild = CreateWindowExA(0, "RecordTestWindow", "inner", WS_CHILD, 0, 0, 10, 10, hWnd, nullptr,
                                     GetModuleHandleA(nullptr), nullptr);
    Send(hWndTool, HOOK_CREATE, Create(hWndChild, KIND_TEXT));
    Send(hWndTool, HOOK_CREATE, Create(hWndChild, KIND_CHILD));
    CHECK_EQ(LinesPerNotch(hWndTool, hWndChild), 1);
    Send(hWndTool, HOOK_DESTROY, Create(hWndChild, 0)); // deletes the first only
    CHECK_EQ(LinesPerNotch(hWndTool, hWndChild), 4);
    Send(hWndTool, HOOK_DESTROY, Create(hWndChild, 0));
    CHECK_EQ(LinesPerNotch(hWndTool, hWndChild), 0);
    CHECK(tool.Exit(5000));
    DestroyWindow(hWnd);
}

TEST_CASE(items_of_windows_that_vanished_do_not_hold_up_the_exit)
{
    Tool tool(MakeScratchDir("vanished"));
    REQUIRE(tool.Start());
    HWND hWndTool = tool.MainFrame();
    HWND hWnd = MakePlayWindow();
    Send(hWndTool, HOOK_CREATE, Create(hWnd, KIND_CHILD));
    DestroyWindow(hWnd); // gone without its HOOK_DESTROY, like a killed host's windows
    Send(hWndTool, HOOK_MESSAGE_DONE, Wheel(hWnd));
    CHECK(tool.GetProcess().IsRunning());
    CHECK(tool.Exit(5000));
}
