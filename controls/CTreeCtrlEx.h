// The Project page's tree control: hands out CTreeCursor values instead of
// bare item handles, and takes the tree's begin-drag notification for itself
// so that the parent never sees it. Whether a node may be dragged is asked of
// CanDrag, which refuses; no drag ever starts in this class (a kind of tree
// that allowed one would have to carry it out itself).
#pragma once

#include "CTreeCtrl.h"
#include "CTreeCursor.h"

class CTreeCtrlEx : public CTreeCtrl
{
public:
    CTreeCtrlEx();
    ~CTreeCtrlEx() override;

    CTreeCursor GetSelectedCursor() const { return Cursor(GetSelectedItem()); }
    CTreeCursor GetRootCursor() const { return Cursor(GetRootItem()); }
    // The node at a point of the client area; pFlags gets TVHT_*.
    CTreeCursor HitTestCursor(POINT pt, UINT* pFlags = nullptr) const { return Cursor(HitTest(pt, pFlags)); }
    CTreeCursor InsertCursor(LPTVINSERTSTRUCTA lpInsertStruct) { return Cursor(InsertItem(lpInsertStruct)); }
    CTreeCursor GetChildCursor(HTREEITEM hItem) const { return Cursor(GetChildItem(hItem)); }
    CTreeCursor GetNextSiblingCursor(HTREEITEM hItem) const { return Cursor(GetNextSiblingItem(hItem)); }
    CTreeCursor GetParentCursor(HTREEITEM hItem) const { return Cursor(GetParentItem(hItem)); }

    virtual BOOL CanDrag(CTreeCursor cursorItem);
    virtual BOOL CanDrop(CTreeCursor cursorDrag, CTreeCursor cursorDrop);
    virtual void OnDrop(CTreeCursor cursorDrag, CTreeCursor cursorDrop);
    virtual void OnItemCopied(CTreeCursor cursorSource, CTreeCursor cursorCopy);

    CImageList* m_pDragImage = nullptr;
    BOOL m_bDragging = FALSE;
    HTREEITEM m_hItemDrag = nullptr;
    HTREEITEM m_hItemDrop = nullptr;

protected:
    CTreeCursor Cursor(HTREEITEM hItem) const { return CTreeCursor(hItem, const_cast<CTreeCtrlEx*>(this)); }

    void OnBeginDrag(NMHDR* pNMHDR, LRESULT* pResult);
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);

    DECLARE_MESSAGE_MAP()
};
