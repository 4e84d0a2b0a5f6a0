#include "CTreeCursor.h"

#include "CTreeCtrl.h"

BOOL CTreeCursor::IsNode() const
{
    // A null item means "the whole tree" to several tree messages (delete,
    // sort): a record whose insertion was refused must not reach them.
    return m_hTreeItem && m_pTree && m_pTree->m_hWnd;
}

DWORD_PTR CTreeCursor::GetData() const
{
    return IsNode() ? m_pTree->GetItemData(m_hTreeItem) : 0;
}

BOOL CTreeCursor::SetData(DWORD_PTR dwData)
{
    return IsNode() && m_pTree->SetItemData(m_hTreeItem, dwData);
}

BOOL CTreeCursor::SetText(LPCSTR lpszText)
{
    return IsNode() && m_pTree->SetItemText(m_hTreeItem, lpszText);
}

BOOL CTreeCursor::SetImages(int nImage, int nSelectedImage)
{
    return IsNode() && m_pTree->SetItemImage(m_hTreeItem, nImage, nSelectedImage);
}

BOOL CTreeCursor::Expand(UINT nCode)
{
    return IsNode() && m_pTree->Expand(m_hTreeItem, nCode);
}

BOOL CTreeCursor::Select()
{
    return IsNode() && m_pTree->Select(m_hTreeItem, TVGN_CARET);
}

BOOL CTreeCursor::SortChildren()
{
    return IsNode() && m_pTree->SortChildren(m_hTreeItem);
}

BOOL CTreeCursor::Delete()
{
    return IsNode() && m_pTree->DeleteItem(m_hTreeItem);
}

CTreeCursor CTreeCursor::InsertChild(LPCSTR lpszText, int nImage, HTREEITEM hInsertAfter)
{
    if (!IsNode())
        return CTreeCursor(nullptr, m_pTree);
    UINT nMask = TVIF_TEXT;
    if (nImage != -1)
        nMask |= TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    HTREEITEM hItem = m_pTree->InsertItem(nMask, lpszText, nImage, nImage, 0, 0, 0, m_hTreeItem, hInsertAfter);
    return CTreeCursor(hItem, m_pTree);
}
