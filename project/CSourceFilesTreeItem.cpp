#include "CSourceFilesTreeItem.h"

#include "HostCommand.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CSourceFilesTreeItem, CTreeItem)

namespace
{
const HostCommand kCommands[] = {
    {ID_NODE_NEW, 1001, FALSE},     // new file
    {ID_NODE_OPEN, 1002, FALSE},    // open file
    {ID_NODE_SAVEALL, 1006, TRUE},  // save all
    {ID_NODE_BUILD, 1033, TRUE},    // build
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, 1008, FALSE},
};
}

CSourceFilesTreeItem::CSourceFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject)
    : CTreeItem(hWndHost, parent, IDS_SOURCEFILES, 7, 8), m_pstrProject(pstrProject)
{
}

CSourceFilesTreeItem::~CSourceFilesTreeItem() = default;

CString CSourceFilesTreeItem::GetPath() const
{
    return CString();
}

void CSourceFilesTreeItem::OnCommand(UINT nID)
{
    if (const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), nID))
        PostHostCommand(m_hWndHost, pCommand->nHostCommand);
}

void CSourceFilesTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), pCmdUI->m_nID);
    pCmdUI->Enable(pCommand && (!pCommand->bNeedsProject || (m_pstrProject && !m_pstrProject->IsEmpty())));
}

// A group has no default action: a double click only folds it.
void CSourceFilesTreeItem::Open()
{
}

void CSourceFilesTreeItem::OnReturn()
{
}
