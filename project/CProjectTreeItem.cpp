#include "CProjectTreeItem.h"

#include "HostCommand.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CProjectTreeItem, CTreeItem)

namespace
{
const HostCommand kCommands[] = {
    {ID_NODE_NEW, 1018, FALSE},             // new project
    {ID_NODE_OPEN, 1019, FALSE},            // open project
    {ID_NODE_EDIT, 1032, TRUE},             // edit project
    {ID_NODE_CLOSE, 1030, TRUE},            // close project
    {ID_NODE_SAVE, 1031, TRUE},             // save project
    {ID_NODE_BUILD, 1033, TRUE},            // build
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, 1008, FALSE},
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
