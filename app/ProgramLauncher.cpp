#include "ProgramLauncher.h"

namespace
{
// How long the tool waits for a new program to be ready for input: enough
// for an editor to show its window, short enough that a program that never
// gets there (no message loop, or one that hangs) does not hold the tool.
const DWORD kIdleWaitMs = 3000;
const DWORD kIdleSliceMs = 50;
} // namespace

HANDLE LaunchProgram(LPSTR lpszCommandLine, WORD wShowWindow)
{
    STARTUPINFOA si = {};
    si.cb = sizeof(si); // 68 bytes in the 32-bit build
    if (wShowWindow != SHOW_PROGRAM_DEFAULT)
    {
        si.dwFlags = STARTF_USESHOWWINDOW;
        si.wShowWindow = wShowWindow;
    }
    PROCESS_INFORMATION pi = {};
    // No handle of the tool's goes to the new program.
    if (!CreateProcessA(nullptr, lpszCommandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
        return nullptr;
    CloseHandle(pi.hThread);
    // In slices, taking the messages other programs send the tool meanwhile
    // (a host waiting on a record of ours among them), but nothing posted:
    // the user's input waits until the editor is up.
    for (DWORD dwWaited = 0; dwWaited < kIdleWaitMs; dwWaited += kIdleSliceMs)
    {
        if (WaitForInputIdle(pi.hProcess, kIdleSliceMs) != WAIT_TIMEOUT)
            break; // ready, or a program without a message loop: nothing to wait for
        MSG msg;
        PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
    return pi.hProcess;
}
