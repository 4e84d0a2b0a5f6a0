#include "CWindowTreeItem.h"

#include "HostCommand.h"
#include "HostIde.h"
#include "WindowText.h"
#include "resource.h"

#include <mbstring.h>

IMPLEMENT_DYNAMIC(CWindowTreeItem, CTreeItem)

const HostView g_hostViews[HOST_VIEW_COUNT] = {
    {IDS_PROGRAMMEMORY, 11, 1117, "Program Memory Window"},
    {IDS_TRACEMEMORY, 12, 1118, "Trace Memory Window"},
    {IDS_EEPROM, 13, 1119, "EEPROM Window"},
    {IDS_ABSOLUTELISTING, 14, 1120, ".lst"},
    {IDS_MAPFILE, 15, 1164, ".map"},
    {IDS_STACK, 16, 1121, "Stack Window"},
    {IDS_FILEREGISTER, 17, 1122, "File Register Window"},
    {IDS_SPECIALFUNCTIONREGISTER, 18, 1123, "Special Function Register Window"},
    {IDS_PROJECTWINDOW, 19, 1128, "Project Window"},
    // The host has no command that opens its build results.
    {IDS_BUILDRESULTS, 20, 0, "Build Results"},
};

CWindowTreeItem::CWindowTreeItem(HWND hWndHost, const CTreeCursor& parent, const HostView& view)
    : CTreeItem(hWndHost, parent, view.nIDText, view.nImage, -1), m_nCommand(view.nCommand),
      m_strTitle(view.pszTitle)
{
}

CWindowTreeItem::~CWindowTreeItem() = default;

CString CWindowTreeItem::GetPath() const
{
    return m_strTitle;
}

HWND CWindowTreeItem::FindHostWindow() const
{
    HWND hWndClient = HostIde::FindMdiClient(m_hWndHost);
    if (!hWndClient)
        return nullptr;
    if (HWND hWnd = FindWindowExA(hWndClient, nullptr, nullptr, m_strTitle))
        return hWnd;
    // Views of a file are titled with the file's path: the listing's title
    // ends in ".lst", the map's in ".map".
    return FindChildTitled(hWndClient, m_strTitle, TRUE);
}

void CWindowTreeItem::Open()
{
    if (HWND hWnd = FindHostWindow())
    {
        BringWindowToTop(hWnd);
        // The host activates a view when its text is clicked; SetFocus and
        // activation from this process do not reach the host's MDI logic.
        if (HWND hWndText = HostIde::FindTextPane(hWnd))
        {
            PostMessageA(hWndText, WM_LBUTTONDOWN, 0, 0);
            PostMessageA(hWndText, WM_LBUTTONUP, 0, 0);
        }
        return;
    }
    if (m_nCommand != 0)
        PostHostCommand(m_hWndHost, m_nCommand);
}

void CWindowTreeItem::OnReturn()
{
    Open();
}

void CWindowTreeItem::OnCommand(UINT nID)
{
    if (PostEveryNodeCommand(m_hWndHost, nID))
        return;
    switch (nID)
    {
    case ID_NODE_OPEN:
        Open();
        break;
    case ID_NODE_CLOSE:
        if (HWND hWnd = FindHostWindow())
            PostMessageA(hWnd, WM_CLOSE, 0, 0);
        break;
    default:
        break;
    }
}

void CWindowTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    if (IsEveryNodeCommand(pCmdUI->m_nID))
    {
        pCmdUI->Enable(TRUE);
        return;
    }
    switch (pCmdUI->m_nID)
    {
    case ID_NODE_OPEN:
        pCmdUI->Enable(TRUE);
        break;
    case ID_NODE_CLOSE:
        pCmdUI->Enable(FindHostWindow() != nullptr);
        break;
    default:
        pCmdUI->Enable(FALSE);
        break;
    }
}
