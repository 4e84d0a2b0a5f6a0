#include "CWatchTreeItem.h"

#include "HostCommand.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CWatchTreeItem, CTreeItem)

namespace
{
const UINT kOpenWatch = 1130;

const HostCommand kCommands[] = {
    {ID_NODE_NEW, 1129, FALSE},  // new watch window
    {ID_NODE_OPEN, kOpenWatch, FALSE},
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, 1008, FALSE},
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
    PostHostCommand(m_hWndHost, kOpenWatch);
}

void CWatchTreeItem::OnReturn()
{
    Open();
}
