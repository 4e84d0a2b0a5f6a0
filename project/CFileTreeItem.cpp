#include "CFileTreeItem.h"

#include "CApp.h"
#include "CFile.h"
#include "HostCommand.h"
#include "HostIde.h"
#include "QuorvantHook.h"
#include "WindowText.h"
#include "resource.h"

#include <mbstring.h>
#include <stdlib.h>

IMPLEMENT_DYNAMIC(CFileTreeItem, CTreeItem)

CFileTreeItem::CFileTreeItem(HWND hWndHost, const CTreeCursor& parent, LPCSTR lpszPath, int nImage)
    : CTreeItem(hWndHost, parent, GetFileName(lpszPath), nImage, nImage), m_strPath(lpszPath)
{
    UpdateTime();
}

CFileTreeItem::~CFileTreeItem() = default;

CString CFileTreeItem::GetFileName(LPCSTR lpszPath)
{
    char szDrive[_MAX_DRIVE];
    char szDir[_MAX_DIR];
    char szName[_MAX_FNAME];
    char szExt[_MAX_EXT];
    _splitpath(lpszPath ? lpszPath : "", szDrive, szDir, szName, szExt);
    CString strName;
    strName.Format("%s%s", szName, szExt);
    return strName;
}

CString CFileTreeItem::GetPath() const
{
    return m_strPath;
}

HWND CFileTreeItem::FindHostWindow() const
{
    // Window order, so that of two windows of the same file the one the
    // host lists first is taken. The whole title must match: the host marks
    // a modified file by appending to its title, and that window is not
    // taken for the file.
    HWND hWndClient = HostIde::FindMdiClient(m_hWndHost);
    return hWndClient ? FindChildTitled(hWndClient, m_strPath, FALSE) : nullptr;
}

void CFileTreeItem::Open()
{
    // The drop block is built inside the host by the hook library: a block
    // allocated here is memory of this process, which the host cannot read
    // (it sees garbage) and which its DragFinish would free as one of its
    // own. The request is sent, not posted, so a command posted after it
    // (Close's 1007) reaches the host after the drop.
    if (!RequestHostDropFile(m_hWndHost, m_strPath))
        g_log.Write("request refused: open %s (not an existing file on a local drive, or the host did not answer)",
                    static_cast<LPCSTR>(m_strPath));
}

void CFileTreeItem::OnReturn()
{
    Open();
}

void CFileTreeItem::ExtendContextMenu(HMENU hPopup)
{
    HMENU hTools = CreatePopupMenu();
    if (!hTools)
        return;
    const CApp* pApp = GetApp();
    for (int i = 0; i < CApp::kToolCount; ++i)
    {
        if (pApp->m_tools[i].IsShown())
            AppendMenuA(hTools, MF_STRING, ID_TOOL_FIRST + i, pApp->m_tools[i].m_strCaption);
    }
    // Below "&External Editor"; the popup owns the submenu from here on.
    const int nCount = GetMenuItemCount(hPopup);
    int nAt = 0;
    while (nAt < nCount && GetMenuItemID(hPopup, nAt) != ID_NODE_EXTERNALEDITOR)
        ++nAt;
    if (GetMenuItemCount(hTools) <= 0 ||
        !InsertMenuA(hPopup, static_cast<UINT>(nAt + 1), MF_BYPOSITION | MF_POPUP,
                     reinterpret_cast<UINT_PTR>(hTools), "&Tools"))
        DestroyMenu(hTools);
}

void CFileTreeItem::OnCommand(UINT nID)
{
    if (nID >= ID_TOOL_FIRST && nID <= ID_TOOL_LAST)
    {
        CApp* pApp = GetApp();
        const int nTool = static_cast<int>(nID - ID_TOOL_FIRST);
        if (pApp->CanRunTool(nTool, m_hWndHost, m_strPath))
            pApp->RunCommand(m_hWndHost, pApp->m_tools[nTool].m_strCommand, m_strPath);
        return;
    }
    switch (nID)
    {
    case ID_NODE_OPEN:
        Open();
        break;
    case ID_NODE_CLOSE:
        // The drop makes the file's window the active one, so the host's
        // close command that follows closes this file and no other.
        if (FindHostWindow())
        {
            Open();
            PostHostCommand(m_hWndHost, HostIde::kCmdCloseActive);
        }
        break;
    case ID_NODE_EXTERNALEDITOR:
        GetApp()->RunCommand(m_hWndHost, GetApp()->m_strExternalEditor, m_strPath);
        break;
    case ID_NODE_BUILD:
        if (FindHostWindow())
            PostHostCommand(m_hWndHost, HostIde::kCmdBuildActive);
        break;
    default:
        break;
    }
}

void CFileTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    if (pCmdUI->m_nID >= ID_TOOL_FIRST && pCmdUI->m_nID <= ID_TOOL_LAST)
    {
        pCmdUI->Enable(GetApp()->CanRunTool(static_cast<int>(pCmdUI->m_nID - ID_TOOL_FIRST), m_hWndHost, m_strPath));
        return;
    }
    switch (pCmdUI->m_nID)
    {
    case ID_NODE_OPEN:
    case ID_NODE_EXTERNALEDITOR:
        pCmdUI->Enable(TRUE);
        break;
    case ID_NODE_CLOSE:
    case ID_NODE_BUILD:
        pCmdUI->Enable(FindHostWindow() != nullptr);
        break;
    default:
        pCmdUI->Enable(FALSE);
        break;
    }
}

void CFileTreeItem::UpdateTime()
{
    CFileStatus status;
    if (CFile::GetStatus(m_strPath, status))
        m_timeModified = status.m_mtime;
}

BOOL CFileTreeItem::IsChanged() const
{
    if (!FindHostWindow())
        return FALSE;
    CFileStatus status;
    if (!CFile::GetStatus(m_strPath, status))
        return FALSE;
    return status.m_mtime != m_timeModified;
}

void CFileTreeItem::Reload()
{
    if (!IsChanged())
        return;
    // Sent so that the host has closed the old window before the drop
    // arrives; a drop of an open file would only activate it.
    if (HWND hWnd = FindHostWindow())
        SendMessageA(hWnd, WM_CLOSE, 0, 0);
    Open();
}
