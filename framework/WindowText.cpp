#include "WindowText.h"

#include "PathNames.h"
#include "TextWords.h"

#include <mbstring.h>
#include <string.h>

#include <vector>

namespace
{
// What pfnRead (GetWindowTextA, GetClassNameA) reads of the window.
CString ReadWindowString(HWND hWnd, int nMax, int(WINAPI* pfnRead)(HWND, LPSTR, int))
{
    if (!IsWindow(hWnd) || nMax <= 0)
        return CString();
    std::vector<char> buffer(static_cast<size_t>(nMax), '\0');
    pfnRead(hWnd, buffer.data(), nMax);
    return CString(buffer.data());
}
} // namespace

CString GetWindowTitle(HWND hWnd, int nMax)
{
    return ReadWindowString(hWnd, nMax, GetWindowTextA);
}

CString GetWindowClassName(HWND hWnd, int nMax)
{
    return ReadWindowString(hWnd, nMax, GetClassNameA);
}

HWND FindChildTitled(HWND hWndParent, LPCSTR lpszTitle, BOOL bEnding)
{
    const int nLength = static_cast<int>(strlen(lpszTitle));
    for (HWND hWnd = ::GetWindow(hWndParent, GW_CHILD); hWnd; hWnd = ::GetWindow(hWnd, GW_HWNDNEXT))
    {
        const CString strTitle = GetWindowTitle(hWnd, WINDOW_TEXT_LIMIT);
        const int nFrom = bEnding ? strTitle.GetLength() - nLength : 0;
        if (nFrom < 0)
            continue;
        if (_mbsicmp(reinterpret_cast<const unsigned char*>(static_cast<LPCSTR>(strTitle) + nFrom),
                     reinterpret_cast<const unsigned char*>(lpszTitle)) == 0)
            return hWnd;
    }
    return nullptr;
}

CString GetProjectPathOfFrame(HWND hWndFrame)
{
    return CString(TextWords::ProjectPathFromTitle(GetWindowTitle(hWndFrame), IsAnsiLeadByte).c_str());
}
