#include "CCommandTreeItem.h"

#include "CImages.h"

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

CCommandTreeItem::CCommandTreeItem(HWND hWndHost, const CTreeCursor& parent, UINT nIDLabel, const Commands& commands)
    : CCommandTreeItem(hWndHost, parent, nIDLabel, CImages::kFolder, CImages::kOpenFolder, commands)
{
}

CString CCommandTreeItem::GetPath() const
{
    return CString();
}

void CCommandTreeItem::OnCommand(UINT nID)
{
    if (const HostCommand* pCommand = FindHostCommand(m_commands.pTable, m_commands.nCount, nID))
        PostHostCommand(m_hWndHost, pCommand->nHostCommand);
}

void CCommandTreeItem::OnUpdateCommand(CCmdUI* pCmdUI)
{
    const HostCommand* pCommand = FindHostCommand(m_commands.pTable, m_commands.nCount, pCmdUI->m_nID);
    const BOOL bProjectOpen = m_commands.pstrProject && !m_commands.pstrProject->IsEmpty();
    pCmdUI->Enable(pCommand && (!pCommand->bNeedsProject || bProjectOpen));
}
