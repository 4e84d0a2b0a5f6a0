// Whether the tool that entered the host has ended, known without a server
// call on every message. Asking for the tool's window (IsWindow of another
// process's window) costs a server round trip under Wine, some 40 us, which
// on every wheel notch is more than the scrolling itself. A wait on the
// tool's process, registered once, sets a flag when it ends instead.
#pragma once

#include <windows.h>

#include <atomic>

class CToolWatch
{
public:
    CToolWatch() = default;
    ~CToolWatch() { Stop(); }
    CToolWatch(const CToolWatch&) = delete;
    CToolWatch& operator=(const CToolWatch&) = delete;

    // Watches the process of hWndTool. Where the wait cannot be registered,
    // IsToolGone asks for the window each time.
    void Start(HWND hWndTool);
    void Stop();
    bool IsToolGone() const;

private:
    static VOID CALLBACK OnEnded(PVOID pContext, BOOLEAN bTimedOut);

    HWND m_hWndTool = nullptr;
    HANDLE m_hProcess = nullptr;
    HANDLE m_hWait = nullptr;
    std::atomic<bool> m_bEnded{false};
};
