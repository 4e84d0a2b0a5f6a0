#include "CClipboard.h"

#include <string.h>

CClipboard::CClipboard(HWND hWndOwner) : m_bOpen(OpenClipboard(hWndOwner))
{
}

CClipboard::~CClipboard()
{
    if (m_bOpen)
        CloseClipboard();
}

CString CClipboard::GetText() const
{
    CString strText;
    HANDLE hData = m_bOpen ? GetClipboardData(CF_TEXT) : nullptr;
    if (!hData)
        return strText;
    // Another program put the block there: its text need not end within it.
    const SIZE_T nSize = GlobalSize(hData);
    if (const char* pszText = static_cast<const char*>(GlobalLock(hData)))
    {
        strText = CString(pszText, static_cast<int>(strnlen(pszText, nSize)));
        GlobalUnlock(hData);
    }
    return strText;
}
