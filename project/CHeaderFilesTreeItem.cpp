#include "CHeaderFilesTreeItem.h"

#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CHeaderFilesTreeItem, CCommandTreeItem)

const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewFile, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenFile, FALSE},
    {ID_NODE_SAVEALL, HostIde::kCmdSaveAll, FALSE},
};

CHeaderFilesTreeItem::CHeaderFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject)
    : CCommandTreeItem(hWndHost, parent, IDS_HEADERFILES, Table(kCommands, pstrProject))
{
}
