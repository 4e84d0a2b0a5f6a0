#include "CCommandTreeItem.h"

IMPLEMENT_DYNAMIC(CCommandTreeItem, CTreeItem)

CCommandTreeItem::CCommandTreeItem(HWND hWndHost, CTreeCtrl* pTree, UINT nIDLabel, int nImage,
                                   const Commands& commands)
    : CTreeItem(hWndHost, pTree, nIDLabel, nImage), m_commands(commands)
{
}

CCommandTreeItem::CCommandTreeItem(HWND hWndHost, const CTreeCursor& parent, UINT nIDLabel, int nImage,
                                   int nSelectedImage, const Commands& commands)
    : CTreeItem(hWndHost, parent, nIDLabel, nImage, nSelectedImage), m_commands(commands)
{
}

CString CCommandTreeItem::GetPath() const
{
    return CString();
}

void CCommandTreeItem::OnCommand(UINT nID)
{
    if (PostEveryNodeCommand(m_hWndHost, nID))
        return;
    if (const HostCommand* pCommand = FindHostCommand(m_commands.pTable, m_commands.nCount, nID))
        PostHostCommand(m_hWndHost, pCommand->nHostCommand);
}

void CCommandTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    if (IsEveryNodeCommand(pCmdUI->m_nID))
    {
        pCmdUI->Enable(TRUE);
        return;
    }
    const HostCommand* pCommand = FindHostCommand(m_commands.pTable, m_commands.nCount, pCmdUI->m_nID);
    const BOOL bProjectOpen = m_commands.pstrProject && !m_commands.pstrProject->IsEmpty();
    pCmdUI->Enable(pCommand && (!pCommand->bNeedsProject || bProjectOpen));
}
