#include "ButtonLook.h"

#include "CIcon.h"

UINT ButtonTextFormat(DWORD dwStyle)
{
    UINT nFormat = (dwStyle & BS_MULTILINE) ? 0 : DT_SINGLELINE;
    switch (dwStyle & (BS_LEFT | BS_RIGHT))
    {
    case BS_LEFT:
        nFormat |= DT_LEFT;
        break;
    case BS_RIGHT:
        nFormat |= DT_RIGHT;
        break;
    default:
        nFormat |= DT_CENTER;
        break;
    }
    switch (dwStyle & (BS_TOP | BS_BOTTOM))
    {
    case BS_TOP:
        nFormat |= DT_TOP;
        break;
    case BS_BOTTOM:
        nFormat |= DT_BOTTOM;
        break;
    default:
        nFormat |= DT_VCENTER;
        break;
    }
    return nFormat;
}

ButtonColors ButtonColors::Read()
{
    ButtonColors colors;
    colors.clrHighlight = GetSysColor(COLOR_3DHILIGHT);
    colors.clrShadow = GetSysColor(COLOR_3DSHADOW);
    colors.clrDkShadow = GetSysColor(COLOR_3DDKSHADOW);
    colors.clrFace = GetSysColor(COLOR_3DFACE);
    colors.clrGrayText = GetSysColor(COLOR_GRAYTEXT);
    return colors;
}

BOOL CopyButtonImage(const CImageList* pSource, int nImage, CImageList& target, CSize& size)
{
    IMAGEINFO info = {};
    if (!pSource || nImage < 0 || nImage >= pSource->GetImageCount() || !pSource->GetImageInfo(nImage, &info))
        return FALSE;
    size = CSize(info.rcImage.right - info.rcImage.left, info.rcImage.bottom - info.rcImage.top);
    if (!target.Create(size.cx, size.cy, ILC_COLORDDB | ILC_MASK, 0, 1))
        return FALSE;
    // An icon carries the image with its mask from one list to the other.
    CIcon icon(pSource->GetIcon(nImage));
    if (icon.m_hIcon)
        target.Add(icon.m_hIcon);
    return TRUE;
}
