#include "CWindowsTreeItem.h"

#include "HostCommand.h"
#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CWindowsTreeItem, CTreeItem)

namespace
{
const HostCommand kCommands[] = {
    {ID_NODE_OPEN, HostIde::kCmdOpenWindowSet, FALSE},
    {ID_NODE_SAVE, HostIde::kCmdSaveWindowSet, FALSE},
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, HostIde::kCmdCloseAll, FALSE},
};
}

CWindowsTreeItem::CWindowsTreeItem(HWND hWndHost, const CTreeCursor& parent)
    : CTreeItem(hWndHost, parent, IDS_WINDOWS, 7, 8)
{
}

CWindowsTreeItem::~CWindowsTreeItem() = default;

CString CWindowsTreeItem::GetPath() const
{
    return CString();
}

void CWindowsTreeItem::OnCommand(UINT nID)
{
    if (const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), nID))
        PostHostCommand(m_hWndHost, pCommand->nHostCommand);
}

void CWindowsTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), pCmdUI->m_nID);
    pCmdUI->Enable(pCommand != nullptr);
}

// A group has no default action: a double click only folds it.
void CWindowsTreeItem::Open()
{
}

void CWindowsTreeItem::OnReturn()
{
}
