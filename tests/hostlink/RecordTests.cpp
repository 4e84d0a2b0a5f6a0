// Records reach the tool from anyone who sends WM_COPYDATA to its frame. Only
// those with the key of the tool's own installHook count, which only the
// hosts it entered know. This program is a third process: a window of it
// plays a host window, and what the tool's items would do to it (the frame
// item's announcement, the external editor) shows whether a forged record
// got through.
#include "Fixture.h"
#include "QuorvantHook.h"
#include "TestRunner.h"

#include <random>

using namespace qt;

namespace
{
int g_nAnnouncements = 0; // the frame item's WM_CREATEDOCKBAR, posted to a frame it believes in
bool g_bMarker = false;
const UINT kMarker = WM_APP + 7;

LRESULT CALLBACK CountingProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    static const UINT uAnnouncement = RegisterWindowMessageA("49ED7A1D-5042-42B2-9095-89DBDA86205C");
    if (nMessage == uAnnouncement)
        ++g_nAnnouncements;
    else if (nMessage == kMarker)
        g_bMarker = true;
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

// Sends one record and returns when the tool has handled it: whatever the
// tool does to our window meanwhile has happened by then.
void Send(HWND hWndTool, ULONG_PTR dwCode, const HookRecord& record, DWORD dwSize = sizeof(HookRecord))
{
    char buffer[64] = {};
    memcpy(buffer, &record, sizeof(record));
    COPYDATASTRUCT cds = {dwCode, dwSize, buffer};
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutA(hWndTool, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000, &dwResult);
}

HookRecord Record(HWND hWnd, uint32_t nKind, uint32_t nMessage, uint32_t wParam, uint32_t nFlags, uint32_t nKey0,
                  uint32_t nKey1)
{
    return HookRecord{nKind, HookWindowWord(hWnd), nMessage, wParam, nFlags, {nKey0, nKey1}};
}
} // namespace

TEST_CASE(records_without_the_tools_key_make_it_do_nothing)
{
    const std::string strDir = MakeScratchDir("forged");
    Tool tool(strDir);
    WriteTextFile(tool.SettingsPath(), "[Settings]\r\nExternalEditor=\"" + ExeDir() + "RECORDER.exe\" \"" + strDir +
                                           "editor.txt\" %FILENAME%\r\n");
    REQUIRE(tool.Start());
    HWND hWndTool = tool.MainFrame();
    HWND hWnd = MakePlayWindow();
    REQUIRE(hWnd != nullptr);

    // A frame's creation (its item would announce itself to our window), an
    // MDI child's and Ctrl+E on it (the external editor), with no key,
    // guessed keys and the record of the old five-word layout.
    const uint32_t keys[][2] = {{0, 0}, {1, 0}, {0x12345678u, 0x9ABCDEF0u}, {0xFFFFFFFFu, 0xFFFFFFFFu}};
    for (const auto& key : keys)
    {
        Send(hWndTool, HOOK_CREATE, Record(hWnd, KIND_FRAME, 0, 0, 0, key[0], key[1]));
        Send(hWndTool, HOOK_CREATE, Record(hWnd, KIND_FRAME, 0, 0, 0, 0, 0), 20);
        Send(hWndTool, HOOK_CREATE, Record(hWnd, KIND_CHILD, 0, 0, 0, key[0], key[1]));
        Send(hWndTool, HOOK_MESSAGE_DONE, Record(hWnd, 0, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0, key[0], key[1]));
        Send(hWndTool, HOOK_MESSAGE_DONE,
             Record(hWnd, 0, WM_KEYDOWN, 'E', HOOK_FLAG_CONTROL, key[0], key[1]));
        Send(hWndTool, HOOK_CREATE, Record(hWnd, KIND_CHILD, 0, 0, 0, key[0], key[1]), 20);
        Send(hWndTool, HOOK_MESSAGE_DONE, Record(hWnd, 0, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0, 0, 0), 20);
    }
    // A flood of random records: the same 20,000 on every run.
    std::mt19937 random(20261124);
    for (int i = 0; i < 20000; ++i)
    {
        const uint32_t nCode = 1 + random() % 4;
        Send(hWndTool, nCode,
             Record(hWnd, random() % 7, random() % 2 ? WM_MOUSEWHEEL : random(), random(), random() % 4, random(),
                    random()),
             random() % 8 == 0 ? static_cast<DWORD>(random() % 64) : static_cast<DWORD>(sizeof(HookRecord)));
    }
    // Whatever the tool posted our window while it handled them came before
    // this marker.
    PostMessageA(hWnd, kMarker, 0, 0);
    MSG msg;
    const DWORD dwStart = GetTickCount();
    while (!g_bMarker && GetTickCount() - dwStart < 5000 && GetMessageA(&msg, nullptr, 0, 0) > 0)
        DispatchMessageA(&msg);
    REQUIRE(g_bMarker);
    CHECK_EQ(g_nAnnouncements, 0);
    CHECK(!FileExists(strDir + "editor.txt"));
    CHECK(tool.GetProcess().IsRunning());
    CHECK(tool.Exit(5000));
    DestroyWindow(hWnd);
}
