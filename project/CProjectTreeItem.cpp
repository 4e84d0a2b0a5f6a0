#include "CProjectTreeItem.h"

#include "HostCommand.h"
#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CProjectTreeItem, CTreeItem)

namespace
{
const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewProject, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenProject, FALSE},
    {ID_NODE_EDIT, HostIde::kCmdEditProject, TRUE},
    {ID_NODE_CLOSE, HostIde::kCmdCloseProject, TRUE},
    {ID_NODE_SAVE, HostIde::kCmdSaveProject, TRUE},
    {ID_NODE_BUILD, HostIde::kCmdBuild, TRUE},
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, HostIde::kCmdCloseAll, FALSE},
};
}

CProjectTreeItem::CProjectTreeItem(HWND hWndHost, CTreeCtrl* pTree, CString* pstrProject)
    : CTreeItem(hWndHost, pTree, IDS_EMPTY, 6), m_pstrProject(pstrProject)
{
}

CProjectTreeItem::~CProjectTreeItem() = default;

CString CProjectTreeItem::GetPath() const
{
    return CString();
}

void CProjectTreeItem::OnCommand(UINT nID)
{
    if (const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), nID))
        PostHostCommand(m_hWndHost, pCommand->nHostCommand);
}

void CProjectTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), pCmdUI->m_nID);
    pCmdUI->Enable(pCommand && (!pCommand->bNeedsProject || (m_pstrProject && !m_pstrProject->IsEmpty())));
}

// A group has no default action: a double click only folds it.
void CProjectTreeItem::Open()
{
}

void CProjectTreeItem::OnReturn()
{
}
