// Text of a window, any process's: read into a cleared buffer of nMax
// characters, so at most nMax - 1; empty for a handle that is no window.
#pragma once

#include "CString.h"

const int WINDOW_TEXT_LIMIT = 1204;

CString GetWindowTitle(HWND hWnd, int nMax = WINDOW_TEXT_LIMIT);
CString GetWindowClassName(HWND hWnd, int nMax = WINDOW_TEXT_LIMIT);

// The project path a host frame shows in its title (the title's third
// word: "Host IDE - <path>"), or empty when it shows none.
CString GetProjectPathOfFrame(HWND hWndFrame);

// The first child of hWndParent, in window order, whose title is lpszTitle
// or, with bEnding, ends with it; compared without case, character by
// character in the ANSI code page. NULL when none.
HWND FindChildTitled(HWND hWndParent, LPCSTR lpszTitle, BOOL bEnding);
