// "Start with Windows": the user's Run value for this copy of the tool
// (HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Run,
// "QUORVANT"), the quoted full path of the running executable.
#pragma once

#include <windows.h>

// Whether the Run value starts this very copy: a value left by a copy in
// another folder does not count.
BOOL IsStartingWithWindows();
// Writes the value for this copy (replacing another copy's), or removes it.
BOOL SetStartWithWindows(BOOL bStart);
