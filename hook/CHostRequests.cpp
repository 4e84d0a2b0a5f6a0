#include "CHostRequests.h"

#include <shlobj.h> // DROPFILES
#include <string.h>

#include "QuorvantHook.h"
#include "RequestRules.h"

namespace
{
void FreeBlock(HGLOBAL hBlock)
{
    GlobalFree(hBlock);
}

void FreeMenu(HMENU hMenu)
{
    DestroyMenu(hMenu);
}

// A handle of this process (a global memory block, a menu), freed with Free
// unless its ownership has been passed on.
template <class THandle, void (*Free)(THandle)>
class Owned
{
public:
    explicit Owned(THandle hHandle) : m_hHandle(hHandle) {}
    ~Owned()
    {
        if (m_hHandle)
            Free(m_hHandle);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;

    THandle Get() const { return m_hHandle; }
    THandle Release()
    {
        THandle hHandle = m_hHandle;
        m_hHandle = nullptr;
        return hHandle;
    }

private:
    THandle m_hHandle;
};
using GlobalBlock = Owned<HGLOBAL, FreeBlock>;
using OwnedMenu = Owned<HMENU, FreeMenu>;

// Whether a menu or any menu below it has an item of command nId.
bool MenuHasCommand(HMENU hMenu, UINT nId, int nDepth = 0)
{
    const int nCount = GetMenuItemCount(hMenu);
    for (int i = 0; i < nCount; ++i)
    {
        if (HMENU hSub = GetSubMenu(hMenu, i))
        {
            if (nDepth < 8 && MenuHasCommand(hSub, nId, nDepth + 1))
                return true;
        }
        else if (GetMenuItemID(hMenu, i) == nId)
            return true;
    }
    return false;
}

// The first of kMaxPopupItems command ids that no item of the menu bar has:
// the tool's own numbers where the host leaves them free, else a block high
// in the command range that hosts rarely use; 0 if none.
UINT FindFreeCommandBlock(HMENU hMenuBar)
{
    const UINT kFirstCandidate = 0xDF00;
    const UINT kBlocks = 16;
    for (UINT nBlock = 0; nBlock <= kBlocks; ++nBlock)
    {
        const UINT nFirst = nBlock == 0 ? kFirstPopupCommand : kFirstCandidate + (nBlock - 1) * kMaxPopupItems;
        bool bFree = true;
        for (UINT nId = nFirst; nId < nFirst + kMaxPopupItems && bFree; ++nId)
            bFree = !MenuHasCommand(hMenuBar, nId);
        if (bFree)
            return nFirst;
    }
    return 0;
}

// A file the host may be handed as a drop: it exists now, is a plain file
// (no directory, no device) and lies on a drive of this machine, not on a
// network share behind a drive letter.
bool IsLocalRegularFile(const char* pszPath)
{
    if (!RequestRules::IsLocalDrivePath(pszPath))
        return false;
    const char szRoot[4] = {pszPath[0], ':', '\\', 0};
    switch (GetDriveTypeA(szRoot))
    {
    case DRIVE_FIXED:
    case DRIVE_REMOVABLE:
    case DRIVE_CDROM:
    case DRIVE_RAMDISK:
        break;
    default:
        return false;
    }
    const DWORD dwAttributes = GetFileAttributesA(pszPath);
    return dwAttributes != INVALID_FILE_ATTRIBUTES &&
           (dwAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_REPARSE_POINT)) == 0;
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
// A menu of this thread is open (the menu bar's or a popup's). Changing the
// menu bar under an open menu takes the host down (seen under Wine: an
// assertion in the window manager's lock checks); the tool asks again later.
bool IsMenuOpen()
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) &&
           (info.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE)) != 0;
}
} // namespace

bool CHostRequests::IsRequest(const COPYDATASTRUCT* pData)
{
    return pData && pData->dwData >= REQUEST_DROPFILE && pData->dwData <= REQUEST_CHOOSE;
}

bool CHostRequests::HasKey(const COPYDATASTRUCT* pData, const uint32_t key[2])
{
    size_t cbBody = 0;
    return RequestRules::BodyOf(pData->lpData, pData->cbData, key, &cbBody) != nullptr;
}

LRESULT CHostRequests::Carry(HWND hWndFrame, const COPYDATASTRUCT* pData, const uint32_t key[2])
{
    size_t cbBody = 0;
    const void* pBody = RequestRules::BodyOf(pData->lpData, pData->cbData, key, &cbBody);
    if (!pBody)
        return 0; // not from the tool this host serves
    bool bDone = false;
    switch (pData->dwData)
    {
    case REQUEST_DROPFILE:
        bDone = DropFile(hWndFrame, pBody, cbBody);
        break;
    case REQUEST_APPENDPOPUP:
        bDone = AppendPopup(hWndFrame, pBody, cbBody);
        break;
    case REQUEST_REMOVEPOPUP:
        bDone = cbBody == 0 && RemovePopup(hWndFrame);
        break;
    case REQUEST_CHECKMENUITEM:
        bDone = CheckMenuItem(hWndFrame, pBody, cbBody);
        break;
    case REQUEST_CHOOSE:
        bDone = Choose(hWndFrame, pBody, cbBody);
        break;
    default:
        break;
    }
    return bDone ? 1 : 0;
}

// Drops ------------------------------------------------------------------------

bool CHostRequests::DropFile(HWND hWndFrame, const void* pBody, size_t cbBody)
{
    const char* pszPath = RequestRules::DropPathOf(pBody, cbBody);
    if (!pszPath || !IsLocalRegularFile(pszPath))
        return false;
    const SIZE_T nPath = cbBody - 1;

    // A DROPFILES header, the path, its NUL and the NUL that ends the list;
    // zero-filled, so both NULs are there already. The block is made here
    // because a drop block is memory of the process that reads it.
    GlobalBlock block(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, sizeof(DROPFILES) + nPath + 2));
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

bool CHostRequests::AppendPopup(HWND hWndFrame, const void* pBody, size_t cbBody)
{
    if (!RequestRules::IsValidPopupRequest(pBody, cbBody))
        return false;
    HostPopupRequest request;
    memcpy(&request, pBody, sizeof(request));
    const HostPopupRequest* pRequest = &request;
    if (FindSlot(hWndFrame) || IsMenuOpen())
        return false; // one popup per frame
    Appended* pSlot = FindSlot(nullptr);
    HMENU hMenuBar = GetMenu(hWndFrame);
    if (!pSlot || !hMenuBar || !IsMenu(hMenuBar))
        return false;
    // The host may have commands of the tool's numbers (a host built with a
    // framework numbers its own commands from 32771 too): the popup's items
    // get ids that the host's menus do not use.
    const UINT nFirstHostCommand = FindFreeCommandBlock(hMenuBar);
    if (!nFirstHostCommand)
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
            bAppended = AppendMenuA(popup.Get(), MF_STRING, nFirstHostCommand + nItem, item.szText);
        if (!bAppended)
            return false;
    }
    if (!AppendMenuA(hMenuBar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Get()), pRequest->szText))
        return false;
    pSlot->hWndFrame = hWndFrame;
    pSlot->hPopup = popup.Release(); // the menu bar holds it now
    pSlot->nFirstHostCommand = nFirstHostCommand;
    for (uint32_t nItem = 0; nItem < kMaxPopupItems; ++nItem)
        pSlot->toolCommands[nItem] = nItem < pRequest->nItems ? pRequest->items[nItem].nId : 0;
    DrawMenuBar(hWndFrame);
    return true;
}

bool CHostRequests::RemovePopup(HWND hWndFrame)
{
    Appended* pSlot = FindSlot(hWndFrame);
    if (!pSlot || IsMenuOpen())
        return false;
    const HMENU hPopup = pSlot->hPopup;
    *pSlot = Appended{};
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
        *pSlot = Appended{};
}

// Check marks ----------------------------------------------------------------------

bool CHostRequests::Choose(HWND hWndFrame, const void* pBody, size_t cbBody)
{
    uint32_t nCommand = 0;
    if (cbBody != sizeof(nCommand))
        return false;
    memcpy(&nCommand, pBody, sizeof(nCommand));
    const UINT nHostCommand = HostCommand(hWndFrame, nCommand);
    // Posted, as a menu choice is: the frame's subclass takes it to the tool.
    return nHostCommand && PostMessageA(hWndFrame, WM_COMMAND, nHostCommand, 0);
}

UINT CHostRequests::HostCommand(HWND hWndFrame, uint32_t nToolCommand) const
{
    const Appended* pSlot = FindSlot(hWndFrame);
    if (!pSlot || !RequestRules::IsPopupCommand(nToolCommand))
        return 0;
    for (UINT nItem = 0; nItem < kMaxPopupItems; ++nItem)
    {
        if (pSlot->toolCommands[nItem] == nToolCommand)
            return pSlot->nFirstHostCommand + nItem;
    }
    return 0;
}

UINT CHostRequests::ToolCommand(HWND hWndFrame, UINT nHostCommand) const
{
    const Appended* pSlot = FindSlot(hWndFrame);
    if (!pSlot || nHostCommand < pSlot->nFirstHostCommand || nHostCommand >= pSlot->nFirstHostCommand + kMaxPopupItems)
        return 0;
    return pSlot->toolCommands[nHostCommand - pSlot->nFirstHostCommand];
}

bool CHostRequests::CheckMenuItem(HWND hWndFrame, const void* pBody, size_t cbBody)
{
    if (!RequestRules::IsValidCheckRequest(pBody, cbBody))
        return false;
    HostCheckRequest request;
    memcpy(&request, pBody, sizeof(request));
    // Only the tool's own popup: the menu must be the one appended to this
    // frame, the item one of the tool's commands in it.
    const Appended* pSlot = FindSlot(hWndFrame);
    if (!pSlot || HandleFromWord<HMENU>(request.hMenu) != pSlot->hPopup)
        return false;
    const UINT nHostCommand = HostCommand(hWndFrame, request.nId);
    return nHostCommand &&
           ::CheckMenuItem(pSlot->hPopup, nHostCommand, MF_BYCOMMAND | (request.nCheck & kCheckOn)) !=
               static_cast<DWORD>(-1) &&
           ::EnableMenuItem(pSlot->hPopup, nHostCommand,
                            MF_BYCOMMAND | ((request.nCheck & kItemGrayed) ? MF_GRAYED : MF_ENABLED)) !=
               static_cast<BOOL>(-1);
}
