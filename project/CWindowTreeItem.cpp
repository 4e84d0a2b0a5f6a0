#include "CWindowTreeItem.h"

#include "CImages.h"
#include "HostCommand.h"
#include "HostIde.h"
#include "WindowText.h"
#include "resource.h"

#include <mbstring.h>

IMPLEMENT_DYNAMIC(CWindowTreeItem, CTreeItem)

const HostView g_hostViews[HOST_VIEW_COUNT] = {
    {IDS_PROGRAMMEMORY, CImages::kProgramMemory, 1117, "Program Memory Window"},
    {IDS_TRACEMEMORY, CImages::kTraceMemory, 1118, "Trace Memory Window"},
    {IDS_EEPROM, CImages::kEeprom, 1119, "EEPROM Window"},
    {IDS_ABSOLUTELISTING, CImages::kListing, 1120, ".lst"},
    {IDS_MAPFILE, CImages::kMap, 1164, ".map"},
    {IDS_STACK, CImages::kStack, 1121, "Stack Window"},
    {IDS_FILEREGISTER, CImages::kFileRegisters, 1122, "File Register Window"},
    {IDS_SPECIALFUNCTIONREGISTER, CImages::kSpecialRegisters, 1123, "Special Function Register Window"},
    {IDS_PROJECTWINDOW, CImages::kProjectView, 1128, "Project Window"},
    // The host has no command that opens its build results.
    {IDS_BUILDRESULTS, CImages::kBuild, 0, "Build Results"},
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
    if (nID == ID_NODE_OPEN)
    {
        Open();
    }
    else if (nID == ID_NODE_CLOSE)
    {
        if (HWND hWnd = FindHostWindow())
            PostMessageA(hWnd, WM_CLOSE, 0, 0);
    }
}

void CWindowTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    // A view can be closed only while it is open.
    const UINT nID = pCmdUI->m_nID;
    pCmdUI->Enable(nID == ID_NODE_OPEN || (nID == ID_NODE_CLOSE && FindHostWindow() != nullptr));
}
