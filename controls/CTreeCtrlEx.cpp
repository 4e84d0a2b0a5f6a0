#include "CTreeCtrlEx.h"

BEGIN_MESSAGE_MAP(CTreeCtrlEx, CTreeCtrl)
    ON_NOTIFY_REFLECT(TVN_BEGINDRAGA, OnBeginDrag)
    // A parent that asked for Unicode notifications gets this code instead.
    ON_NOTIFY_REFLECT(TVN_BEGINDRAGW, OnBeginDrag)
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

CTreeCtrlEx::CTreeCtrlEx() = default;

CTreeCtrlEx::~CTreeCtrlEx() = default;

BOOL CTreeCtrlEx::CanDrag(CTreeCursor /*cursorItem*/)
{
    return FALSE;
}

BOOL CTreeCtrlEx::CanDrop(CTreeCursor /*cursorDrag*/, CTreeCursor /*cursorDrop*/)
{
    return FALSE;
}

void CTreeCtrlEx::OnDrop(CTreeCursor /*cursorDrag*/, CTreeCursor /*cursorDrop*/)
{
}

void CTreeCtrlEx::OnItemCopied(CTreeCursor /*cursorSource*/, CTreeCursor /*cursorCopy*/)
{
}

void CTreeCtrlEx::OnBeginDrag(NMHDR* pNMHDR, LRESULT* pResult)
{
    *pResult = 0;
    // The item sits at the same place in the ANSI and the Unicode structure.
    const NMTREEVIEWA* pNMTreeView = reinterpret_cast<const NMTREEVIEWA*>(pNMHDR);
    if (!CanDrag(Cursor(pNMTreeView->itemNew.hItem)))
        return;
}

void CTreeCtrlEx::OnMouseMove(UINT nFlags, CPoint point)
{
    CTreeCtrl::OnMouseMove(nFlags, point);
}

void CTreeCtrlEx::OnLButtonUp(UINT nFlags, CPoint point)
{
    CTreeCtrl::OnLButtonUp(nFlags, point);
}
