#include "CHeaderFilesTreeItem.h"

#include "HostCommand.h"
#include "HostIde.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CHeaderFilesTreeItem, CTreeItem)

namespace
{
// Save All stays enabled without a project here, unlike under Source Files.
const HostCommand kCommands[] = {
    {ID_NODE_NEW, HostIde::kCmdNewFile, FALSE},
    {ID_NODE_OPEN, HostIde::kCmdOpenFile, FALSE},
    {ID_NODE_SAVEALL, HostIde::kCmdSaveAll, FALSE},
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, HostIde::kCmdCloseAll, FALSE},
};
}

CHeaderFilesTreeItem::CHeaderFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject)
    : CTreeItem(hWndHost, parent, IDS_HEADERFILES, 7, 8), m_pstrProject(pstrProject)
{
}

CHeaderFilesTreeItem::~CHeaderFilesTreeItem() = default;

CString CHeaderFilesTreeItem::GetPath() const
{
    return CString();
}

void CHeaderFilesTreeItem::OnCommand(UINT nID)
{
    if (const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), nID))
        PostHostCommand(m_hWndHost, pCommand->nHostCommand);
}

void CHeaderFilesTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    const HostCommand* pCommand = FindHostCommand(kCommands, ARRAYSIZE(kCommands), pCmdUI->m_nID);
    pCmdUI->Enable(pCommand != nullptr);
}

// A group has no default action: a double click only folds it.
void CHeaderFilesTreeItem::Open()
{
}

void CHeaderFilesTreeItem::OnReturn()
{
}
