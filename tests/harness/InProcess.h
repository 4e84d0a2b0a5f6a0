// Controls on real windows in the test program's own process: the message
// loop run as the tool runs it (every message offered to PreTranslateMessage
// first), real input through SendInput, and waits with a bound.
#pragma once

#include "CFrameWnd.h"
#include "CWinApp.h"
#include "Pixels.h"

#include <functional>

namespace qt
{
// A key no control acts on, sent after other input: once its key-up has been
// dispatched, every earlier input has been too.
const WORD kMarkerKey = VK_F24;

// Runs the message loop until the condition holds (true) or the time is up.
inline bool PumpUntil(const std::function<bool()>& fnCondition, DWORD dwTimeoutMs = 5000, bool* pbMarker = nullptr)
{
    for (const DWORD dwStart = GetTickCount(); !fnCondition(); MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT))
    {
        if (GetTickCount() - dwStart >= dwTimeoutMs)
            return false;
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        {
            if (pbMarker && msg.message == WM_KEYUP && msg.wParam == kMarkerKey)
                *pbMarker = true;
            if (!AfxPreTranslateMessage(&msg))
            {
                TranslateMessage(&msg);
                DispatchMessageA(&msg);
            }
        }
    }
    return true;
}

inline void SendOneInput(DWORD dwType, WORD wVk, DWORD dwFlags, LONG dx = 0, LONG dy = 0)
{
    INPUT input = {};
    input.type = dwType;
    if (dwType == INPUT_KEYBOARD)
        input.ki = {wVk, 0, dwFlags, 0, 0};
    else
        input.mi = {dx, dy, 0, dwFlags, 0, 0};
    SendInput(1, &input, sizeof(input));
}

// Keys pressed and released to the focus, then the marker: true once all of
// them went through the message loop.
inline bool PressKeys(std::initializer_list<WORD> keys)
{
    for (WORD wVk : keys)
        SendOneInput(INPUT_KEYBOARD, wVk, 0), SendOneInput(INPUT_KEYBOARD, wVk, KEYEVENTF_KEYUP);
    SendOneInput(INPUT_KEYBOARD, kMarkerKey, 0), SendOneInput(INPUT_KEYBOARD, kMarkerKey, KEYEVENTF_KEYUP);
    bool bMarker = false;
    return PumpUntil([&] { return bMarker; }, 5000, &bMarker);
}

// The real pointer to a client point of a window (without one, of the screen).
inline bool MouseTo(HWND hWnd, int x, int y)
{
    POINT pt = {x, y};
    if (hWnd)
        ClientToScreen(hWnd, &pt);
    // Rounded up: the system truncates on the way back (seen under Wine:
    // rounding to the nearest lands a pixel short on some columns).
    const int cx = GetSystemMetrics(SM_CXSCREEN), cy = GetSystemMetrics(SM_CYSCREEN);
    SendOneInput(INPUT_MOUSE, 0, MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (pt.x * 65536 + cx - 1) / cx,
                 (pt.y * 65536 + cy - 1) / cy);
    return PumpUntil([&] {
        POINT ptNow = {0, 0};
        return GetCursorPos(&ptNow) && ptNow.x == pt.x && ptNow.y == pt.y;
    });
}

inline bool LeftButton(bool bDown)
{
    SendOneInput(INPUT_MOUSE, 0, bDown ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP);
    return PumpUntil([&] { return ((GetAsyncKeyState(VK_LBUTTON) & 0x8000) != 0) == bDown; });
}

inline bool MakeForeground(HWND hWnd)
{
    SetForegroundWindow(hWnd);
    return PumpUntil([&] { return GetForegroundWindow() == hWnd; });
}

// A shown top-level frame to parent the controls under test; on the stack.
class TestFrame : public CFrameWnd
{
public:
    TestFrame() { CreateEx(0, nullptr, "Frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 400, 300, nullptr, nullptr); }

protected:
    void PostNcDestroy() override {}
};
} // namespace qt
