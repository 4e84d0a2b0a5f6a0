// The stand-in host IDE: a plain MDI program that honours the host side of
// the tool's contract and logs what reaches it, so tests can drive real
// windows in a second process.
#include "EditorWindow.h"
#include "HostFrame.h"
#include "HostLog.h"
#include "HostOptions.h"
#include "LineNumbers.h"
#include "ToolBar.h"
#include "ViewWindow.h"

#include <windows.h>

#include <stdlib.h>

using namespace hostide;

namespace
{
class AcceleratorTable
{
public:
    AcceleratorTable()
    {
        // Ctrl+E is the host's own accelerator: the tool must still see the
        // key although the loop turns it into a command. Ctrl+Enter is not
        // one; it reaches the editor as WM_KEYDOWN.
        ACCEL accel[] = {{FCONTROL | FVIRTKEY, 'E', static_cast<WORD>(HostFrame::kCtrlE)}};
        m_hAccel = CreateAcceleratorTableA(accel, 1);
    }
    ~AcceleratorTable() { DestroyAcceleratorTable(m_hAccel); }
    AcceleratorTable(const AcceleratorTable&) = delete;
    AcceleratorTable& operator=(const AcceleratorTable&) = delete;
    HACCEL Handle() const { return m_hAccel; }

private:
    HACCEL m_hAccel;
};

bool RegisterClasses()
{
    return HostFrame::Register() && ToolBar::Register() && EditorWindow::Register() && LineNumbers::Register() &&
           ViewWindow::Register();
}
} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int nShowCmd)
{
    const HostOptions options = HostOptions::Parse(GetCommandLineA());
    HostLog::SetPath(options.strLog);
    HostLog::Write("START pid=" + std::to_string(GetCurrentProcessId()));

    if (!RegisterClasses())
        return 1;
    HWND hWndFrame = HostFrame::Create(options.strProject, options.x, options.y, options.cx, options.cy);
    HostFrame* pFrame = HostFrame::From(hWndFrame);
    if (!pFrame)
        return 1;
    ShowWindow(hWndFrame, nShowCmd == SW_HIDE ? SW_SHOWNORMAL : nShowCmd);
    UpdateWindow(hWndFrame);

    for (const HostOptions::Window& window : options.windows)
    {
        if (window.bView)
        {
            char* pszEnd = nullptr;
            const unsigned long nCommand = strtoul(window.strArgument.c_str(), &pszEnd, 10);
            if (pszEnd && *pszEnd == '\0' && pszEnd != window.strArgument.c_str())
                pFrame->OpenView(static_cast<UINT>(nCommand));
        }
        else
            pFrame->OpenFile(window.strArgument);
    }
    HostLog::Write("READY");

    AcceleratorTable accelerators;
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0)
    {
        // The frame may be gone while messages are still queued.
        HWND hWndClient = IsWindow(hWndFrame) ? pFrame->Client() : nullptr;
        if (hWndClient && TranslateMDISysAccel(hWndClient, &msg))
            continue;
        if (IsWindow(hWndFrame) && TranslateAcceleratorA(hWndFrame, accelerators.Handle(), &msg))
            continue;
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    HostLog::Write("EXIT");
    return static_cast<int>(msg.wParam);
}
