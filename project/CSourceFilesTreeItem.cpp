#include "CSourceFilesTreeItem.h"

#include "HostCommand.h"
#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CSourceFilesTreeItem, CTreeItem)

namespace
{
const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewFile, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenFile, FALSE},
    {ID_NODE_SAVEALL, HostIde::kCmdSaveAll, TRUE},
    {ID_NODE_BUILD, HostIde::kCmdBuild, TRUE},
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, HostIde::kCmdCloseAll, FALSE},
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
