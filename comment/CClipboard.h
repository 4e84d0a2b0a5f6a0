// The clipboard, open for the lifetime of the object (closed on every path).
#pragma once

#include "CString.h"

#include <windows.h>

class CClipboard
{
public:
    // hWndOwner is the window the system associates with the opening; it
    // may belong to another process.
    explicit CClipboard(HWND hWndOwner);
    ~CClipboard();
    CClipboard(const CClipboard&) = delete;
    CClipboard& operator=(const CClipboard&) = delete;

    BOOL IsOpen() const { return m_bOpen; }
    // The CF_TEXT data, empty when the clipboard is not open or holds no text.
    CString GetText() const;

private:
    BOOL m_bOpen;
};
