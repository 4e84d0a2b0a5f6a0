// An image list owned by this object (destroyed with it) unless detached.
// FromHandle wraps a list that someone else owns in a temporary object that
// never destroys it and lives until the message loop next goes idle.
#pragma once

#include "CObject.h"

#include <commctrl.h>

class CImageList : public CObject
{
public:
    CImageList() = default;
    ~CImageList() override { DeleteImageList(); }

    HIMAGELIST m_hImageList = nullptr;

    HIMAGELIST GetSafeHandle() const { return m_hImageList; }
    operator HIMAGELIST() const { return m_hImageList; }
    static CImageList* FromHandle(HIMAGELIST hImageList);
    static void DeleteTempMap();

    // From a bitmap strip of images cx wide; crMask is the transparent colour.
    BOOL Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    BOOL DeleteImageList();
    int GetImageCount() const { return m_hImageList ? ImageList_GetImageCount(m_hImageList) : 0; }
    BOOL GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const
    {
        return m_hImageList && ImageList_GetImageInfo(m_hImageList, nImage, pImageInfo);
    }
    // A new icon of one image; the caller destroys it.
    HICON GetIcon(int nImage) const { return ImageList_GetIcon(m_hImageList, nImage, ILD_NORMAL); }
    int Add(HICON hIcon) { return ImageList_AddIcon(m_hImageList, hIcon); }
    int Add(HBITMAP hBitmap, COLORREF crMask) { return ImageList_AddMasked(m_hImageList, hBitmap, crMask); }
    BOOL Draw(HDC hDC, int nImage, POINT pt, UINT nStyle) const
    {
        return ImageList_Draw(m_hImageList, nImage, hDC, pt.x, pt.y, nStyle);
    }
};
