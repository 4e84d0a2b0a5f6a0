#include "ButtonLook.h"

#include "CIcon.h"

namespace
{
// nFirst or nSecond where the style has only dwFirst or only dwSecond of the
// pair, else (neither or both) nCentre.
UINT AlignOf(DWORD dwStyle, DWORD dwFirst, UINT nFirst, DWORD dwSecond, UINT nSecond, UINT nCentre)
{
    const DWORD dwSide = dwStyle & (dwFirst | dwSecond);
    return dwSide == dwFirst ? nFirst : dwSide == dwSecond ? nSecond : nCentre;
}
} // namespace

UINT ButtonTextFormat(DWORD dwStyle)
{
    const UINT nLines = (dwStyle & BS_MULTILINE) ? 0 : DT_SINGLELINE;
    return nLines | AlignOf(dwStyle, BS_LEFT, DT_LEFT, BS_RIGHT, DT_RIGHT, DT_CENTER) |
           AlignOf(dwStyle, BS_TOP, DT_TOP, BS_BOTTOM, DT_BOTTOM, DT_VCENTER);
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
