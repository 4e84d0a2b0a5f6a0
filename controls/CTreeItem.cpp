#include "CTreeItem.h"

#include "CTreeCtrl.h"

IMPLEMENT_DYNAMIC(CTreeItem, CObject)

CTreeItem::CTreeItem(HWND hWndHost, CTreeCtrl* pTree, UINT nIDLabel, int nImage) : m_hWndHost(hWndHost)
{
    CString strLabel;
    strLabel.LoadString(nIDLabel);
    HTREEITEM hItem = pTree && pTree->m_hWnd
                          ? pTree->InsertItem(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE, strLabel, nImage, nImage,
                                              0, 0, 0, TVI_ROOT, TVI_LAST)
                          : nullptr;
    m_cursor = CTreeCursor(hItem, pTree);
    m_cursor.SetData(reinterpret_cast<DWORD_PTR>(this));
}

CTreeItem::CTreeItem(HWND hWndHost, const CTreeCursor& parent, UINT nIDLabel, int nImage, int nSelectedImage)
    : m_hWndHost(hWndHost)
{
    CString strLabel;
    strLabel.LoadString(nIDLabel);
    InitChild(parent, strLabel, nImage, nSelectedImage);
}

CTreeItem::CTreeItem(HWND hWndHost, const CTreeCursor& parent, LPCSTR lpszText, int nImage, int nSelectedImage)
    : m_hWndHost(hWndHost)
{
    InitChild(parent, lpszText, nImage, nSelectedImage);
}

void CTreeItem::InitChild(const CTreeCursor& parent, LPCSTR lpszText, int nImage, int nSelectedImage)
{
    CTreeCursor cursorParent = parent;
    m_cursor = cursorParent.InsertChild(lpszText, -1, TVI_LAST);
    m_cursor.SetImages(nImage, nSelectedImage == -1 ? nImage : nSelectedImage);
    m_cursor.SetData(reinterpret_cast<DWORD_PTR>(this));
}

CTreeItem::~CTreeItem() = default;
