#include "CProjectTreeItem.h"

#include "CImages.h"
#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CProjectTreeItem, CCommandTreeItem)

const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewProject, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenProject, FALSE},
    {ID_NODE_EDIT, HostIde::kCmdEditProject, TRUE},
    {ID_NODE_CLOSE, HostIde::kCmdCloseProject, TRUE},
    {ID_NODE_SAVE, HostIde::kCmdSaveProject, TRUE},
    {ID_NODE_BUILD, HostIde::kCmdBuild, TRUE},
};

CProjectTreeItem::CProjectTreeItem(HWND hWndHost, CTreeCtrl* pTree, CString* pstrProject)
    : CCommandTreeItem(hWndHost, pTree, IDS_EMPTY, CImages::kProject, Table(kCommands, pstrProject))
{
}
