#include "CSourceFilesTreeItem.h"

#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CSourceFilesTreeItem, CCommandTreeItem)

const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewFile, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenFile, FALSE},
    {ID_NODE_SAVEALL, HostIde::kCmdSaveAll, TRUE},
    {ID_NODE_BUILD, HostIde::kCmdBuild, TRUE},
};

CSourceFilesTreeItem::CSourceFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject)
    : CCommandTreeItem(hWndHost, parent, IDS_SOURCEFILES, Table(kCommands, pstrProject))
{
}
