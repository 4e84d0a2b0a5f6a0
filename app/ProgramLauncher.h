// Starting an external program (the external editor) from a command line.
#pragma once

#include <windows.h>

// Show value that leaves the window state to the new program.
const WORD SHOW_PROGRAM_DEFAULT = 0xFFFF;

// Starts the program named by the command line (writable: CreateProcess may
// change it) and waits until it waits for input. Returns the process handle,
// or NULL when it could not start or has no message loop.
HANDLE LaunchProgram(LPSTR lpszCommandLine, WORD wShowWindow);
