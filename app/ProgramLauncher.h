// Starting an external program (the external editor) from a command line.
#pragma once

#include <windows.h>

// Show value that leaves the window state to the new program.
const WORD SHOW_PROGRAM_DEFAULT = 0xFFFF;

// Starts the program named by the command line (writable: CreateProcess may
// change it) and waits, three seconds at most, until it waits for input.
// Returns the process handle (the caller closes it), or NULL when it could
// not start.
HANDLE LaunchProgram(LPSTR lpszCommandLine, WORD wShowWindow);
