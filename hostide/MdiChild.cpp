#include "MdiChild.h"

#include "HostLog.h"

#include <mbstring.h>
#include <string.h>

namespace hostide
{
std::string MdiChild::Title() const
{
    return HostLog::TitleOf(m_hWnd);
}

void MdiChild::ForEach(HWND hWndClient, void (*pfnVisit)(HWND hWndChild, void* pContext), void* pContext)
{
    for (HWND hWnd = GetWindow(hWndClient, GW_CHILD); hWnd; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
    {
        // The icon titles of minimized children are children of the client too.
        if (GetWindow(hWnd, GW_OWNER) == nullptr)
            pfnVisit(hWnd, pContext);
    }
}

HWND MdiChild::Find(HWND hWndClient, const char* pszClass, const std::string& strTitle, bool bIgnoreCase)
{
    struct Search
    {
        const char* pszClass;
        const std::string* pstrTitle;
        bool bIgnoreCase;
        HWND hWndFound;
    } search = {pszClass, &strTitle, bIgnoreCase, nullptr};
    ForEach(
        hWndClient,
        [](HWND hWnd, void* pContext) {
            Search* pSearch = static_cast<Search*>(pContext);
            char szClass[64] = {};
            GetClassNameA(hWnd, szClass, sizeof(szClass));
            if (pSearch->hWndFound || strcmp(szClass, pSearch->pszClass) != 0)
                return;
            const std::string strTitle = HostLog::TitleOf(hWnd);
            const unsigned char* psz1 = reinterpret_cast<const unsigned char*>(strTitle.c_str());
            const unsigned char* psz2 = reinterpret_cast<const unsigned char*>(pSearch->pstrTitle->c_str());
            if ((pSearch->bIgnoreCase ? _mbsicmp(psz1, psz2) : _mbscmp(psz1, psz2)) == 0)
                pSearch->hWndFound = hWnd;
        },
        &search);
    return search.hWndFound;
}

void MdiChild::Activate(HWND hWndChild)
{
    HWND hWndClient = GetParent(hWndChild);
    if (IsIconic(hWndChild))
        SendMessageA(hWndClient, WM_MDIRESTORE, reinterpret_cast<WPARAM>(hWndChild), 0);
    SendMessageA(hWndClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndChild), 0);
}

LRESULT MdiChild::DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    return DefMDIChildProcA(m_hWnd, nMessage, wParam, lParam);
}

bool MdiChild::HandleCommon(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT& lResult)
{
    switch (nMessage)
    {
    case WM_CLOSE:
        // Closing never asks: tests must never meet a modal question.
        HostLog::Write("CLOSE " + Title());
        lResult = DefaultProc(nMessage, wParam, lParam);
        return true;
    case WM_MDIACTIVATE:
        if (reinterpret_cast<HWND>(lParam) == m_hWnd)
            HostLog::Write("ACTIVATE " + Title());
        lResult = DefaultProc(nMessage, wParam, lParam);
        return true;
    case WM_MOUSEWHEEL:
        // The host predates wheel support: the wheel neither scrolls here nor
        // travels on to the parent, so only lines the tool sends are counted.
        lResult = 0;
        return true;
    default:
        return false;
    }
}
} // namespace hostide
