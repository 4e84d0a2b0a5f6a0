#include "HostWindows.h"

#include <string.h>

#include "QuorvantHook.h"

namespace HostWindows
{
namespace
{
struct FrameSearch
{
    HWND* pFrames;
    unsigned nFound;
};

BOOL CALLBACK AddFrame(HWND hWnd, LPARAM lParam)
{
    FrameSearch* pSearch = reinterpret_cast<FrameSearch*>(lParam);
    if (pSearch->nFound < HostIde::kMaxFrames && IsClass(hWnd, HostIde::kFrameClass))
        pSearch->pFrames[pSearch->nFound++] = hWnd;
    return TRUE;
}
} // namespace

bool IsClass(HWND hWnd, LPCSTR pszGiven, const char* pszClass)
{
    if (pszGiven && !IS_INTRESOURCE(pszGiven))
        return strcmp(pszGiven, pszClass) == 0;
    char szClass[64];
    return GetClassNameA(hWnd, szClass, sizeof(szClass)) > 0 && strcmp(szClass, pszClass) == 0;
}

unsigned CollectFrames(DWORD dwThread, HWND (&frames)[HostIde::kMaxFrames])
{
    FrameSearch search = {frames, 0};
    EnumThreadWindows(dwThread, AddFrame, reinterpret_cast<LPARAM>(&search));
    return search.nFound;
}

unsigned CollectChildren(HWND hWndParent, HWND* pChildren, unsigned nMax)
{
    unsigned nCount = 0;
    for (HWND hWnd = GetWindow(hWndParent, GW_CHILD); hWnd && nCount < nMax; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
        pChildren[nCount++] = hWnd;
    return nCount;
}

UINT KindAtCreation(HWND hWnd, const CREATESTRUCTA* pcs, UINT nParentKind)
{
    // A pop-up names its owner where a child names its parent, hence the
    // WS_CHILD tests; every window whose parent is an MDI client is an MDI
    // child, whatever its style said at creation.
    const bool bChild = (pcs->style & WS_CHILD) != 0;
    switch (nParentKind)
    {
    case KIND_FRAME:
        return bChild && IsClass(hWnd, pcs->lpszClass, HostIde::kClientClass) ? KIND_CLIENT : 0;
    case KIND_CLIENT:
        return KIND_CHILD;
    case KIND_CHILD:
        return !bChild ? 0 : IsClass(hWnd, pcs->lpszClass, HostIde::kTextClass) ? KIND_TEXT : KIND_NUM;
    case 0:
        return IsClass(hWnd, pcs->lpszClass, HostIde::kFrameClass) ? KIND_FRAME : 0;
    default:
        return 0;
    }
}

bool CHostThread::ClaimOnCreate(HWND hWnd, LPCSTR lpszClass)
{
    return Claim([&] { return IsClass(hWnd, lpszClass, HostIde::kFrameClass); });
}

bool CHostThread::ClaimOnActivate(HWND hWnd)
{
    // A window's activation is rare enough for a class name comparison.
    return Claim([&] {
        return hWnd && GetWindowThreadProcessId(hWnd, nullptr) == GetCurrentThreadId() &&
               IsClass(hWnd, HostIde::kFrameClass);
    });
}

bool CHostThread::ClaimOnEnter()
{
    return Claim([] {
        HWND frames[HostIde::kMaxFrames] = {};
        return CollectFrames(GetCurrentThreadId(), frames) > 0;
    });
}
} // namespace HostWindows
