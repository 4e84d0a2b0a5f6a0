#include "CWindowsTreeItem.h"

#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CWindowsTreeItem, CCommandTreeItem)

const HostCommand kCommands[] = {
    {ID_NODE_OPEN, HostIde::kCmdOpenWindowSet, FALSE},
    {ID_NODE_SAVE, HostIde::kCmdSaveWindowSet, FALSE},
};

CWindowsTreeItem::CWindowsTreeItem(HWND hWndHost, const CTreeCursor& parent)
    : CCommandTreeItem(hWndHost, parent, IDS_WINDOWS, Table(kCommands))
{
}
