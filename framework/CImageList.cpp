#include "CImageList.h"

BOOL CImageList::Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
{
    DeleteImageList();
    m_hImageList = ImageList_LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(nBitmapID), cx,
                                        nGrow, crMask, IMAGE_BITMAP, LR_CREATEDIBSECTION);
    return m_hImageList != nullptr;
}

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    DeleteImageList();
    m_hImageList = ImageList_Create(cx, cy, nFlags, nInitial, nGrow);
    return m_hImageList != nullptr;
}

BOOL CImageList::DeleteImageList()
{
    if (!m_hImageList)
        return FALSE;
    const BOOL bResult = ImageList_Destroy(m_hImageList);
    m_hImageList = nullptr;
    return bResult;
}
