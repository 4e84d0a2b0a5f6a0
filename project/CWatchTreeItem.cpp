#include "CWatchTreeItem.h"

#include "CImages.h"
#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CWatchTreeItem, CCommandTreeItem)

const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewWatch, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenWatch, FALSE},
};

CWatchTreeItem::CWatchTreeItem(HWND hWndHost, const CTreeCursor& parent)
    : CCommandTreeItem(hWndHost, parent, IDS_WATCH, CImages::kWatch, -1, Table(kCommands))
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
