#include "CWatchTreeItem.h"

#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CWatchTreeItem, CCommandTreeItem)

namespace
{
const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewWatch, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenWatch, FALSE},
};
} // namespace

CWatchTreeItem::CWatchTreeItem(HWND hWndHost, const CTreeCursor& parent)
    : CCommandTreeItem(hWndHost, parent, IDS_WATCH, 21, -1, Table(kCommands))
{
}

void CWatchTreeItem::Open()
{
    PostHostCommand(m_hWndHost, HostIde::kCmdOpenWatch);
}

void CWatchTreeItem::OnReturn()
{
    Open();
}
