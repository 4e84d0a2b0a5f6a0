// Names one node of a tree control: the item handle and the control that
// holds it. A plain value, copied freely; a copy names the same node. A
// cursor with no item (a refused insertion) changes nothing in the tree.
#pragma once

#include "CString.h"

#include <commctrl.h>

class CTreeCtrl;

class CTreeCursor
{
public:
    CTreeCursor() = default;
    CTreeCursor(HTREEITEM hTreeItem, CTreeCtrl* pTree) : m_hTreeItem(hTreeItem), m_pTree(pTree) {}

    HTREEITEM GetHandle() const { return m_hTreeItem; }
    CTreeCtrl* GetTreeCtrl() const { return m_pTree; }

    // The item's data (its node record's address in the Project tree).
    DWORD_PTR GetData() const;
    BOOL SetData(DWORD_PTR dwData);
    BOOL SetText(LPCSTR lpszText);
    BOOL SetImages(int nImage, int nSelectedImage);
    BOOL Expand(UINT nCode = TVE_EXPAND);
    // Makes the item the selection.
    BOOL Select();
    // Sorts the direct children by their text.
    BOOL SortChildren();
    // Deletes the item and its descendants from the control.
    BOOL Delete();
    // A new last (or after hInsertAfter) child with the text and, unless
    // nImage is -1, nImage as image and selected image. A cursor with no
    // item when the control refused it.
    CTreeCursor InsertChild(LPCSTR lpszText, int nImage = -1, HTREEITEM hInsertAfter = TVI_LAST);

private:
    BOOL IsNode() const;

    HTREEITEM m_hTreeItem = nullptr;
    CTreeCtrl* m_pTree = nullptr; // not owned
};
