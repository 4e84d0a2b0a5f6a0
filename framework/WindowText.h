// Text of a window, any process's: read into a cleared buffer of nMax
// characters, so at most nMax - 1; empty for a handle that is no window.
#pragma once

#include "CString.h"

const int WINDOW_TEXT_LIMIT = 1204;

CString GetWindowTitle(HWND hWnd, int nMax = WINDOW_TEXT_LIMIT);
CString GetWindowClassName(HWND hWnd, int nMax = WINDOW_TEXT_LIMIT);
