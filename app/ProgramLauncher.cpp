#include "ProgramLauncher.h"

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
    if (!CreateProcessA(nullptr, lpszCommandLine, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &si, &pi))
        return nullptr;
    CloseHandle(pi.hThread);
    // A program without a message loop fails this wait at once.
    if (WaitForInputIdle(pi.hProcess, INFINITE) != 0)
    {
        CloseHandle(pi.hProcess);
        return nullptr;
    }
    return pi.hProcess;
}
