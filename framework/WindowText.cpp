#include "WindowText.h"

#include <vector>

CString GetWindowTitle(HWND hWnd, int nMax)
{
    if (!IsWindow(hWnd) || nMax <= 0)
        return CString();
    std::vector<char> buffer(static_cast<size_t>(nMax), '\0');
    GetWindowTextA(hWnd, buffer.data(), nMax);
    return CString(buffer.data());
}

CString GetWindowClassName(HWND hWnd, int nMax)
{
    if (!IsWindow(hWnd) || nMax <= 0)
        return CString();
    std::vector<char> buffer(static_cast<size_t>(nMax), '\0');
    GetClassNameA(hWnd, buffer.data(), nMax);
    return CString(buffer.data());
}
