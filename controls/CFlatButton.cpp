#include "CFlatButton.h"

#include "ButtonLook.h"
#include "CIcon.h"
#include "CWindowDC.h"

BEGIN_MESSAGE_MAP(CFlatButton, CButton)
    ON_WM_CREATE()
    ON_WM_TIMER()
    ON_WM_NCHITTEST()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_DESTROY()
    ON_CONTROL_REFLECT_EX(BN_CLICKED, OnClicked)
    ON_WM_ERASEBKGND()
    ON_WM_SETFOCUS()
END_MESSAGE_MAP()

namespace
{
const UINT kHoverTimerId = 1;
const UINT kHoverPollMs = 20;
const int kTimerAttempts = 9999;

// Appends an icon of image nImage of source to target; the icon is only a
// carrier and is destroyed at once.
BOOL AppendImage(CImageList& target, const CImageList& source, int nImage)
{
    CIcon icon(source.GetIcon(nImage));
    if (!icon.m_hIcon)
        return FALSE;
    target.Add(icon.m_hIcon);
    return TRUE;
}

BOOL HasImage(const CImageList* pImageList, int nImage)
{
    return pImageList && nImage >= 0 && nImage < pImageList->GetImageCount();
}
} // namespace

CFlatButton::CFlatButton()
{
    ReadColors();
}

CFlatButton::~CFlatButton() = default;

void CFlatButton::ReadColors()
{
    m_colors = ButtonColors::Read();
}

void CFlatButton::InitButton()
{
    ModifyStyle(0, BS_OWNERDRAW);
    GetWindowText(m_strText);
    ReadColors();

    m_uTextFormat = ButtonTextFormat(GetStyle());
}

void CFlatButton::PreSubclassWindow()
{
    CButton::PreSubclassWindow();
    InitButton();
}

int CFlatButton::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CButton::OnCreate(lpCreateStruct) == -1)
        return -1;
    InitButton();
    return 0;
}

BOOL CFlatButton::SetImage(CImageList* pImageList, int nImage)
{
    return CopyButtonImage(pImageList, nImage, m_imageList, m_sizeImage);
}

BOOL CFlatButton::CreateImages(UINT nBitmapID, int cx, COLORREF crMask)
{
    const BOOL bResult = m_imageList.Create(nBitmapID, cx, 1, crMask);
    IMAGEINFO info = {};
    if (m_imageList.GetImageInfo(0, &info))
        m_sizeImage = CSize(info.rcImage.right - info.rcImage.left, info.rcImage.bottom - info.rcImage.top);
    return bResult;
}

BOOL CFlatButton::AddImage(CImageList* pImageList, int nImage)
{
    if (!HasImage(pImageList, nImage) || !AppendImage(m_imageList, *pImageList, nImage))
        return FALSE;
    m_nImagePressed++;
    return TRUE;
}

BOOL CFlatButton::AddImage(UINT nBitmapID, COLORREF crMask)
{
    CImageList images;
    if (!images.Create(nBitmapID, m_sizeImage.cx, 1, crMask) || !AppendImage(m_imageList, images, 0))
        return FALSE;
    m_nImagePressed++;
    return TRUE;
}

void CFlatButton::InvalidateButton()
{
    if (m_hWnd)
        Invalidate(TRUE);
}

void CFlatButton::SetImageIndex(int nImage, BOOL bPressed)
{
    (bPressed ? m_nImagePressed : m_nImage) = nImage;
    InvalidateButton();
}

void CFlatButton::SetType(int nType)
{
    m_nType = nType;
    InvalidateButton();
}

void CFlatButton::SetChecked(BOOL bChecked)
{
    m_bChecked = bChecked;
    InvalidateButton();
}

void CFlatButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    CDC dc(lpDrawItemStruct->hDC);
    const int nOldMode = dc.SetBkMode(TRANSPARENT);
    m_rcItem = lpDrawItemStruct->rcItem;
    const BOOL bHasText = !m_strText.IsEmpty();
    const UINT nState = lpDrawItemStruct->itemState;
    m_bEnabled = !(nState & ODS_DISABLED);
    m_bPressed = (nState & ODS_SELECTED) != 0;
    if (m_nType == 1)
        m_bPressed = m_bChecked != FALSE;

    if (!m_bTransparent)
        dc.FillSolidRect(&m_rcItem, m_colors.clrFace);

    // With a caption the image keeps equal margins at the left and the top;
    // alone it is centred. A button no larger than its image gets it at its
    // corner, clipped.
    CRect rcImage(m_rcItem.left, m_rcItem.top, m_rcItem.left + m_sizeImage.cx, m_rcItem.top + m_sizeImage.cy);
    if (m_rcItem.Width() > m_sizeImage.cx && m_rcItem.Height() > m_sizeImage.cy)
    {
        const int dx = (m_rcItem.Width() - m_sizeImage.cx) / 2;
        const int dy = (m_rcItem.Height() - m_sizeImage.cy) / 2;
        ::OffsetRect(&rcImage, bHasText ? dy : dx, dy);
    }
    else
    {
        rcImage = m_rcItem;
    }

    if (m_bEnabled)
    {
        if (m_bPressed)
            m_imageList.Draw(dc, m_nImagePressed, CPoint(rcImage.left + m_nPressOffset, rcImage.top + m_nPressOffset),
                             ILD_TRANSPARENT);
        else
            m_imageList.Draw(dc, m_nImage, CPoint(rcImage.left, rcImage.top), ILD_TRANSPARENT);
    }
    else
    {
        CIcon icon(m_imageList.GetIcon(0));
        if (icon.m_hIcon)
            dc.DrawState(CPoint(rcImage.left, rcImage.top), m_sizeImage, icon.m_hIcon, DSS_DISABLED);
    }

    if (bHasText)
    {
        CRect rcText = m_rcItem;
        rcText.left = rcImage.right;
        if (m_bEnabled)
        {
            if (m_bPressed)
                ::OffsetRect(&rcText, m_nPressOffset, m_nPressOffset);
            if (m_bTransparent)
            {
                // The parent must repaint behind a transparent button when
                // its text moves, or the old text stays visible.
                if (m_bPressed && !m_bParentInvalid)
                {
                    InvalidateParentArea();
                    m_bParentInvalid = TRUE;
                }
                else if (!m_bPressed && m_bParentInvalid)
                {
                    InvalidateParentArea();
                    m_bParentInvalid = FALSE;
                }
            }
            dc.DrawText(m_strText, &rcText, m_uTextFormat);
        }
        else
        {
            // Engraved: a highlight copy one pixel down and right, grey on top.
            const COLORREF clrOldText = dc.SetTextColor(m_colors.clrHighlight);
            CRect rcEngrave(rcText.left + 1, rcText.top + 1, rcText.right, rcText.bottom);
            dc.DrawText(m_strText, &rcEngrave, m_uTextFormat);
            dc.SetTextColor(m_colors.clrGrayText);
            dc.DrawText(m_strText, &rcText, m_uTextFormat);
            dc.SetTextColor(clrOldText);
        }
    }

    if (m_bEnabled)
    {
        if (m_bPressed)
            dc.Draw3dRect(&m_rcItem, m_colors.clrShadow, m_colors.clrHighlight);
        else if (lpDrawItemStruct->itemAction & ODA_FOCUS)
            dc.Draw3dRect(&m_rcItem, m_colors.clrHighlight, m_colors.clrShadow);
    }
    dc.SetBkMode(nOldMode);
}

LRESULT CFlatButton::OnNcHitTest(CPoint point)
{
    // The hover look is frozen while the button is pressed or the left
    // button is held (a press that started elsewhere must not light it up).
    if (!m_bPressed && m_bEnabled && !(GetAsyncKeyState(VK_LBUTTON) & 0x8000))
    {
        CPoint ptClient = point;
        ScreenToClient(&ptClient);
        if (m_rcItem.PtInRect(ptClient))
        {
            if (!m_bHot)
            {
                CWindowDC dc(this);
                dc.Draw3dRect(&m_rcItem, m_colors.clrHighlight, m_colors.clrShadow);
                m_bHot = true;
                SetHoverTimer(TRUE);
            }
        }
        else if (m_bHot)
        {
            if (m_bTransparent)
            {
                InvalidateParentArea();
                m_bParentInvalid = FALSE;
            }
            else
            {
                CWindowDC dc(this);
                dc.Draw3dRect(&m_rcItem, m_colors.clrFace, m_colors.clrFace);
            }
            m_bHot = false;
            SetHoverTimer(FALSE);
        }
    }
    return CButton::OnNcHitTest(point);
}

void CFlatButton::SetHoverTimer(BOOL bOn)
{
    if (bOn)
    {
        if (m_nTimer != 0)
            return;
        UINT_PTR nTimer = 0;
        for (int i = 0; i < kTimerAttempts && nTimer == 0; i++)
            nTimer = SetTimer(kHoverTimerId, kHoverPollMs);
        m_nTimer = static_cast<UINT>(nTimer);
    }
    else if (m_nTimer != 0)
    {
        KillTimer(m_nTimer);
        m_nTimer = 0;
    }
}

void CFlatButton::OnTimer(UINT_PTR nIDEvent)
{
    // The pointer over another window sends this button no hit tests: ask
    // where it is and run the hover tracking as if it had come here.
    if (nIDEvent == m_nTimer && m_nTimer != 0 && !m_bPressed)
    {
        POINT pt = {0, 0};
        GetCursorPos(&pt);
        SendMessage(WM_NCHITTEST, 0, MAKELPARAM(pt.x, pt.y));
    }
    CButton::OnTimer(nIDEvent);
}

void CFlatButton::InvalidateParentArea()
{
    HWND hWndParent = ::GetParent(m_hWnd);
    if (!hWndParent)
        return;
    CRect rect;
    GetWindowRect(&rect);
    ::MapWindowPoints(nullptr, hWndParent, reinterpret_cast<LPPOINT>(&rect), 2);
    ::InvalidateRect(hWndParent, &rect, TRUE);
}

BOOL CFlatButton::OnClicked()
{
    if (m_nType == 1)
    {
        m_bChecked = !m_bChecked;
        Invalidate(TRUE);
    }
    return FALSE; // the parent gets BN_CLICKED too
}

BOOL CFlatButton::OnEraseBkgnd(CDC* pDC)
{
    if (m_bTransparent)
        return TRUE;
    return CButton::OnEraseBkgnd(pDC);
}

void CFlatButton::OnSetFocus(CWnd* pOldWnd)
{
    CButton::OnSetFocus(pOldWnd);
    if (m_bFocusBorder)
    {
        CWindowDC dc(this);
        dc.Draw3dRect(&m_rcItem, m_colors.clrHighlight, m_colors.clrShadow);
    }
}

void CFlatButton::OnSysColorChange()
{
    CButton::OnSysColorChange();
    ReadColors();
}

void CFlatButton::OnDestroy()
{
    SetHoverTimer(FALSE);
    CButton::OnDestroy();
}
