// What every benchmark program measures with: a high-resolution clock, and a
// message pump that runs for a while (pumping, not sleeping: the tool enters
// the benchmark's own windows from this thread's messages).
#pragma once

#include <windows.h>

inline double Now()
{
    static LARGE_INTEGER s_frequency = [] {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return frequency;
    }();
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    return static_cast<double>(counter.QuadPart) / static_cast<double>(s_frequency.QuadPart);
}

inline void Pump(DWORD dwMs)
{
    const DWORD dwStart = GetTickCount();
    MSG msg;
    while (GetTickCount() - dwStart < dwMs)
    {
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&msg);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}
