#include "CHostRequests.h"

#include <shlobj.h> // DROPFILES
#include <string.h>

#include "QuorvantHook.h"

namespace
{
// A moveable block of this process's global memory, freed unless its
// ownership has been passed on.
class GlobalBlock
{
public:
    GlobalBlock(UINT uFlags, SIZE_T nSize) : m_hBlock(GlobalAlloc(uFlags, nSize)) {}
    ~GlobalBlock()
    {
        if (m_hBlock)
            GlobalFree(m_hBlock);
    }
    GlobalBlock(const GlobalBlock&) = delete;
    GlobalBlock& operator=(const GlobalBlock&) = delete;

    HGLOBAL Get() const { return m_hBlock; }
    HGLOBAL Release()
    {
        HGLOBAL hBlock = m_hBlock;
        m_hBlock = nullptr;
        return hBlock;
    }

private:
    HGLOBAL m_hBlock;
};

// A menu of this process, destroyed unless something took it over.
class OwnedMenu
{
public:
    explicit OwnedMenu(HMENU hMenu) : m_hMenu(hMenu) {}
    ~OwnedMenu()
    {
        if (m_hMenu)
            DestroyMenu(m_hMenu);
    }
    OwnedMenu(const OwnedMenu&) = delete;
    OwnedMenu& operator=(const OwnedMenu&) = delete;

    HMENU Get() const { return m_hMenu; }
    HMENU Release()
    {
        HMENU hMenu = m_hMenu;
        m_hMenu = nullptr;
        return hMenu;
    }

private:
    HMENU m_hMenu;
};

// A text field of a request holds its NUL within the field.
template <size_t nSize> bool IsTerminated(const char (&szText)[nSize])
{
    return memchr(szText, 0, nSize) != nullptr;
}

// The menu-bar position whose submenu is hPopup, or -1.
int FindPopupPosition(HMENU hMenuBar, HMENU hPopup)
{
    const int nCount = GetMenuItemCount(hMenuBar);
    for (int nPosition = nCount - 1; nPosition >= 0; --nPosition)
    {
        if (GetSubMenu(hMenuBar, nPosition) == hPopup)
            return nPosition;
    }
    return -1;
}
} // namespace

bool CHostRequests::IsRequest(const COPYDATASTRUCT* pData)
{
    return pData && pData->dwData >= REQUEST_DROPFILE && pData->dwData <= REQUEST_CHECKMENUITEM;
}

LRESULT CHostRequests::Carry(HWND hWndFrame, const COPYDATASTRUCT* pData)
{
    bool bDone = false;
    switch (pData->dwData)
    {
    case REQUEST_DROPFILE:
        bDone = DropFile(hWndFrame, pData);
        break;
    case REQUEST_APPENDPOPUP:
        bDone = AppendPopup(hWndFrame, pData);
        break;
    case REQUEST_REMOVEPOPUP:
        bDone = pData->cbData == 0 && RemovePopup(hWndFrame);
        break;
    case REQUEST_CHECKMENUITEM:
        bDone = CheckMenuItem(pData);
        break;
    default:
        break;
    }
    return bDone ? 1 : 0;
}

// Drops ------------------------------------------------------------------------

bool CHostRequests::DropFile(HWND hWndFrame, const COPYDATASTRUCT* pData)
{
    // One ANSI path and its NUL, nothing before the NUL missing and nothing
    // after it. A path of MAX_PATH characters or more is refused: the host
    // reads drops into buffers of MAX_PATH, and a cut name would open some
    // other file.
    const char* pszPath = static_cast<const char*>(pData->lpData);
    const DWORD cbData = pData->cbData;
    if (!pszPath || cbData < 2 || cbData > MAX_PATH)
        return false;
    const void* pNul = memchr(pszPath, 0, cbData);
    if (pNul != pszPath + cbData - 1)
        return false;
    const SIZE_T nPath = cbData - 1;

    // A DROPFILES header, the path, its NUL and the NUL that ends the list;
    // zero-filled, so both NULs are there already. The block is made here
    // because a drop block is memory of the process that reads it.
    GlobalBlock block(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, sizeof(DROPFILES) + nPath + 2);
    if (!block.Get())
        return false;
    BYTE* pBlock = static_cast<BYTE*>(GlobalLock(block.Get()));
    if (!pBlock)
        return false;
    DROPFILES* pHeader = reinterpret_cast<DROPFILES*>(pBlock);
    pHeader->pFiles = sizeof(DROPFILES);
    pHeader->pt.x = 0;
    pHeader->pt.y = 0;
    pHeader->fNC = FALSE;
    pHeader->fWide = FALSE;
    memcpy(pBlock + sizeof(DROPFILES), pszPath, nPath);
    GlobalUnlock(block.Get());

    // Posted, not handled here: the tool is waiting for our answer, and what
    // it posts to the frame next (the close command after a drop) must come
    // after the drop. The frame's DragFinish frees the block.
    if (!PostMessageA(hWndFrame, WM_DROPFILES, reinterpret_cast<WPARAM>(block.Get()), 0))
        return false;
    block.Release();
    return true;
}

// The popup ----------------------------------------------------------------------

CHostRequests::Appended* CHostRequests::FindSlot(HWND hWndFrame)
{
    for (Appended& appended : m_appended)
    {
        if (appended.hWndFrame == hWndFrame)
            return &appended;
    }
    return nullptr;
}

const CHostRequests::Appended* CHostRequests::FindSlot(HWND hWndFrame) const
{
    for (const Appended& appended : m_appended)
    {
        if (appended.hWndFrame == hWndFrame)
            return &appended;
    }
    return nullptr;
}

bool CHostRequests::AppendPopup(HWND hWndFrame, const COPYDATASTRUCT* pData)
{
    if (pData->cbData != sizeof(HostPopupRequest) || !pData->lpData)
        return false;
    const HostPopupRequest* pRequest = static_cast<const HostPopupRequest*>(pData->lpData);
    if (!IsTerminated(pRequest->szText) || !pRequest->szText[0] || pRequest->nItems > 8)
        return false;
    for (uint32_t nItem = 0; nItem < pRequest->nItems; ++nItem)
    {
        if (!IsTerminated(pRequest->items[nItem].szText))
            return false;
    }
    if (FindSlot(hWndFrame))
        return false; // one popup per frame
    Appended* pSlot = FindSlot(nullptr);
    HMENU hMenuBar = GetMenu(hWndFrame);
    if (!pSlot || !hMenuBar || !IsMenu(hMenuBar))
        return false;

    OwnedMenu popup(CreatePopupMenu());
    if (!popup.Get())
        return false;
    for (uint32_t nItem = 0; nItem < pRequest->nItems; ++nItem)
    {
        const HostPopupRequest::Item& item = pRequest->items[nItem];
        BOOL bAppended;
        if (item.nId == 0 && !item.szText[0])
            bAppended = AppendMenuA(popup.Get(), MF_SEPARATOR, 0, nullptr);
        else if (item.nId == 0)
            // A text without a command (a nested popup of the tool's menu):
            // shown, but nothing to choose.
            bAppended = AppendMenuA(popup.Get(), MF_STRING | MF_GRAYED, 0, item.szText);
        else
            bAppended = AppendMenuA(popup.Get(), MF_STRING, item.nId, item.szText);
        if (!bAppended)
            return false;
    }
    if (!AppendMenuA(hMenuBar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Get()), pRequest->szText))
        return false;
    pSlot->hWndFrame = hWndFrame;
    pSlot->hPopup = popup.Release(); // the menu bar holds it now
    DrawMenuBar(hWndFrame);
    return true;
}

bool CHostRequests::RemovePopup(HWND hWndFrame)
{
    Appended* pSlot = FindSlot(hWndFrame);
    if (!pSlot)
        return false;
    const HMENU hPopup = pSlot->hPopup;
    pSlot->hWndFrame = nullptr;
    pSlot->hPopup = nullptr;
    // Found by its handle, not by its place: the host may have added menus
    // behind ours since.
    HMENU hMenuBar = IsWindow(hWndFrame) ? GetMenu(hWndFrame) : nullptr;
    const int nPosition = hMenuBar ? FindPopupPosition(hMenuBar, hPopup) : -1;
    if (nPosition < 0)
        return false; // the host put another menu bar up; ours went with the old one
    DeleteMenu(hMenuBar, static_cast<UINT>(nPosition), MF_BYPOSITION); // destroys the popup too
    DrawMenuBar(hWndFrame);
    return true;
}

void CHostRequests::RemoveAllPopups()
{
    for (Appended& appended : m_appended)
    {
        if (appended.hWndFrame)
            RemovePopup(appended.hWndFrame);
    }
}

void CHostRequests::ForgetFrame(HWND hWndFrame)
{
    if (Appended* pSlot = FindSlot(hWndFrame))
    {
        pSlot->hWndFrame = nullptr;
        pSlot->hPopup = nullptr;
    }
}

// Check marks ----------------------------------------------------------------------

bool CHostRequests::CheckMenuItem(const COPYDATASTRUCT* pData)
{
    if (pData->cbData != sizeof(HostCheckRequest) || !pData->lpData)
        return false;
    const HostCheckRequest* pRequest = static_cast<const HostCheckRequest*>(pData->lpData);
    if (pRequest->nCheck != MF_CHECKED && pRequest->nCheck != MF_UNCHECKED)
        return false;
    // Sign-extended, as 64-bit Windows widens a 32-bit handle.
    HMENU hMenu = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(static_cast<int32_t>(pRequest->hMenu)));
    if (!IsMenu(hMenu))
        return false;
    // -1: the menu has no item of that command.
    return ::CheckMenuItem(hMenu, pRequest->nId, MF_BYCOMMAND | pRequest->nCheck) != static_cast<DWORD>(-1);
}
