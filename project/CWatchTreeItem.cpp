#include "CWatchTreeItem.h"

#include "HostCommand.h"
#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CWatchTreeItem, CTreeItem)

namespace
{

const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewWatch, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenWatch, FALSE},
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, HostIde::kCmdCloseAll, FALSE},
};
}

CWatchTreeItem::CWatchTreeItem(HWND hWndHost, const CTreeCursor& parent)
    : CTreeItem(hWndHost, parent, IDS_WATCH, 21, -1)
{
}

CWatchTreeItem::~CWatchTreeItem() = default;

CString CWatchTreeItem::GetPath() const
{
    return CString();
}

void CWatchTreeItem::OnCommand(UINT nID)
{
    if (const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), nID))
        PostHostCommand(m_hWndHost, pCommand->nHostCommand);
}

void CWatchTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), pCmdUI->m_nID);
    pCmdUI->Enable(pCommand != nullptr);
}

void CWatchTreeItem::Open()
{
    PostHostCommand(m_hWndHost, HostIde::kCmdOpenWatch);
}

void CWatchTreeItem::OnReturn()
{
    Open();
}
