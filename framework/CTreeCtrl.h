// A tree view control ("SysTreeView32").
#pragma once

#include "CImageList.h"
#include "CWnd.h"

#include <commctrl.h>

class CTreeCtrl : public CWnd
{
    DECLARE_DYNAMIC(CTreeCtrl)
public:
    CTreeCtrl() = default;

    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // The new item, or NULL when the control refused it.
    HTREEITEM InsertItem(LPTVINSERTSTRUCTA lpInsertStruct)
    {
        return reinterpret_cast<HTREEITEM>(SendMessage(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(lpInsertStruct)));
    }
    HTREEITEM InsertItem(UINT nMask, LPCSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                         UINT nStateMask, LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter);
    HTREEITEM InsertItem(LPCSTR lpszItem, HTREEITEM hParent = TVI_ROOT, HTREEITEM hInsertAfter = TVI_LAST);
    HTREEITEM InsertItem(LPCSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent = TVI_ROOT,
                         HTREEITEM hInsertAfter = TVI_LAST);
    BOOL DeleteItem(HTREEITEM hItem)
    {
        return static_cast<BOOL>(SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(hItem)));
    }
    BOOL DeleteAllItems() { return DeleteItem(TVI_ROOT); }
    UINT GetCount() const { return static_cast<UINT>(SendMessage(TVM_GETCOUNT)); }

    HTREEITEM GetNextItem(HTREEITEM hItem, UINT nCode) const
    {
        return reinterpret_cast<HTREEITEM>(SendMessage(TVM_GETNEXTITEM, nCode, reinterpret_cast<LPARAM>(hItem)));
    }
    HTREEITEM GetRootItem() const { return GetNextItem(nullptr, TVGN_ROOT); }
    HTREEITEM GetSelectedItem() const { return GetNextItem(nullptr, TVGN_CARET); }
    HTREEITEM GetChildItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_CHILD); }
    HTREEITEM GetNextSiblingItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_NEXT); }
    HTREEITEM GetParentItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_PARENT); }
    HTREEITEM GetDropHilightItem() const { return GetNextItem(nullptr, TVGN_DROPHILITE); }
    BOOL Select(HTREEITEM hItem, UINT nCode)
    {
        return static_cast<BOOL>(SendMessage(TVM_SELECTITEM, nCode, reinterpret_cast<LPARAM>(hItem)));
    }
    BOOL SelectItem(HTREEITEM hItem) { return Select(hItem, TVGN_CARET); }
    BOOL Expand(HTREEITEM hItem, UINT nCode)
    {
        return static_cast<BOOL>(SendMessage(TVM_EXPAND, nCode, reinterpret_cast<LPARAM>(hItem)));
    }
    BOOL EnsureVisible(HTREEITEM hItem)
    {
        return static_cast<BOOL>(SendMessage(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(hItem)));
    }
    BOOL SortChildren(HTREEITEM hItem)
    {
        return static_cast<BOOL>(SendMessage(TVM_SORTCHILDREN, 0, reinterpret_cast<LPARAM>(hItem)));
    }

    BOOL GetItem(TVITEMA* pItem) const
    {
        return static_cast<BOOL>(SendMessage(TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(pItem)));
    }
    BOOL SetItem(TVITEMA* pItem) { return static_cast<BOOL>(SendMessage(TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(pItem))); }
    CString GetItemText(HTREEITEM hItem) const;
    BOOL SetItemText(HTREEITEM hItem, LPCSTR lpszItem);
    BOOL GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const;
    BOOL SetItemImage(HTREEITEM hItem, int nImage, int nSelectedImage);
    DWORD_PTR GetItemData(HTREEITEM hItem) const;
    BOOL SetItemData(HTREEITEM hItem, DWORD_PTR dwData);
    BOOL GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const;
    // The item at a point of the client area, or NULL; pFlags gets TVHT_*.
    HTREEITEM HitTest(POINT pt, UINT* pFlags = nullptr) const;

    // Image lists are not owned by the control: the previous one comes back
    // as a temporary object. nImageList is TVSIL_NORMAL or TVSIL_STATE.
    CImageList* GetImageList(int nImageList) const;
    CImageList* SetImageList(CImageList* pImageList, int nImageList);

private:
    // A description of hItem that asks for, or sets, the fields of nMask.
    static TVITEMA ItemFields(HTREEITEM hItem, UINT nMask);
};
