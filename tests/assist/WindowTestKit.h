// What the window tests of the Assist Window's and the Project page's
// building blocks do to real windows in this process: run the message loop
// as the tool does (every message offered to PreTranslateMessage first),
// move and press the real mouse and keys with SendInput, and read back what
// the screen shows.
#pragma once

#include "CWinApp.h"
#include "Pixels.h"

#include <windows.h>

#include <functional>
#include <thread>

namespace kit
{
// Runs the message loop for dwMs milliseconds.
inline void PumpFor(DWORD dwMs)
{
    const DWORD dwStart = GetTickCount();
    do
    {
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        {
            if (!AfxPreTranslateMessage(&msg))
            {
                TranslateMessage(&msg);
                DispatchMessageA(&msg);
            }
        }
        Sleep(5);
    } while (GetTickCount() - dwStart < dwMs);
}

// Runs the message loop until the condition holds or the time is up.
inline bool PumpUntil(const std::function<bool()>& fnCondition, DWORD dwTimeoutMs)
{
    const DWORD dwStart = GetTickCount();
    for (;;)
    {
        if (fnCondition())
            return true;
        if (GetTickCount() - dwStart >= dwTimeoutMs)
            return fnCondition();
        PumpFor(10);
    }
}

inline void SendMouse(DWORD dwFlags, int x = 0, int y = 0)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = dwFlags;
    if (dwFlags & MOUSEEVENTF_ABSOLUTE)
    {
        // Normalised to 0..65535 across the primary screen, rounded up: the
        // system truncates on the way back (seen under Wine: rounding to the
        // nearest lands one pixel short on some columns).
        const int cx = GetSystemMetrics(SM_CXSCREEN);
        const int cy = GetSystemMetrics(SM_CYSCREEN);
        input.mi.dx = (x * 65536 + cx - 1) / cx;
        input.mi.dy = (y * 65536 + cy - 1) / cy;
    }
    SendInput(1, &input, sizeof(input));
}

// Moves the real pointer to a screen point and lets the windows see it.
inline void MouseMoveTo(int x, int y)
{
    SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, x, y);
    PumpUntil([&] {
        POINT pt = {0, 0};
        GetCursorPos(&pt);
        return pt.x == x && pt.y == y;
    }, 2000);
    PumpFor(40);
}

inline void MouseMoveTo(HWND hWnd, int xClient, int yClient)
{
    POINT pt = {xClient, yClient};
    ClientToScreen(hWnd, &pt);
    MouseMoveTo(pt.x, pt.y);
}

inline void LeftDown()
{
    SendMouse(MOUSEEVENTF_LEFTDOWN);
    PumpUntil([] { return (GetAsyncKeyState(VK_LBUTTON) & 0x8000) != 0; }, 2000);
    PumpFor(40);
}

inline void LeftUp()
{
    SendMouse(MOUSEEVENTF_LEFTUP);
    PumpUntil([] { return (GetAsyncKeyState(VK_LBUTTON) & 0x8000) == 0; }, 2000);
    PumpFor(40);
}

inline void Click(HWND hWnd, int xClient, int yClient)
{
    MouseMoveTo(hWnd, xClient, yClient);
    LeftDown();
    LeftUp();
}

// A key pressed and released, to whichever window has the keyboard focus.
inline void PressKey(WORD wVk)
{
    INPUT inputs[2] = {};
    inputs[0].type = INPUT_KEYBOARD;
    inputs[0].ki.wVk = wVk;
    inputs[1].type = INPUT_KEYBOARD;
    inputs[1].ki.wVk = wVk;
    inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, inputs, sizeof(INPUT));
    PumpFor(80);
}

// Runs fnInput (raw SendInput calls and pauses, no message loop of its own)
// on another thread while this one runs the message loop: for gestures that
// a control follows in a loop of its own (a tree watching for a drag), which
// input sent from this thread could never reach.
inline void InputFromAnotherThread(const std::function<void()>& fnInput)
{
    bool bDone = false;
    std::thread thread([&] {
        fnInput();
        bDone = true;
    });
    while (!bDone)
        PumpFor(10);
    thread.join();
    PumpFor(60);
}

inline POINT ScreenPoint(HWND hWnd, int xClient, int yClient)
{
    POINT pt = {xClient, yClient};
    ClientToScreen(hWnd, &pt);
    return pt;
}

// Brings a top-level window of this process to the front with the keyboard.
inline bool MakeForeground(HWND hWnd)
{
    SetForegroundWindow(hWnd);
    return PumpUntil([&] { return GetForegroundWindow() == hWnd; }, 2000);
}

// What the screen shows at a client point of a window.
inline COLORREF ScreenPixel(HWND hWnd, int xClient, int yClient)
{
    return ScreenShot(hWnd, ScreenShot::CLIENT_AREA).Pixel(xClient, yClient);
}
} // namespace kit
