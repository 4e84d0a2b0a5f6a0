#include "CLBitmapButton.h"

#include "ButtonLook.h"
#include "CDC.h"

BEGIN_MESSAGE_MAP(CLBitmapButton, CButton)
    ON_WM_CREATE()
    ON_WM_SYSCOLORCHANGE()
END_MESSAGE_MAP()

namespace
{
// Draws one ring of the frame and moves the rectangle one pixel inwards.
void DrawRing(CDC& dc, CRect& rect, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    dc.Draw3dRect(&rect, clrTopLeft, clrBottomRight);
    InflateRect(&rect, -1, -1);
}
} // namespace

BOOL CLBitmapButton::SetImage(CImageList* pImageList, int nImage)
{
    const BOOL bCreated = CopyButtonImage(pImageList, nImage, m_imageList, m_sizeImage);
    if (m_hWnd)
        Invalidate();
    return bCreated;
}

void CLBitmapButton::PreSubclassWindow()
{
    CButton::PreSubclassWindow();
    InitButton();
}

int CLBitmapButton::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CButton::OnCreate(lpCreateStruct) == -1)
        return -1;
    InitButton();
    return 0;
}

LRESULT CLBitmapButton::WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    // The text is taken before the button repaints itself for the new one.
    if (nMessage == WM_SETTEXT)
        m_strText = lParam ? reinterpret_cast<LPCSTR>(lParam) : "";
    return CButton::WindowProc(nMessage, wParam, lParam);
}

void CLBitmapButton::OnSysColorChange()
{
    CButton::OnSysColorChange();
    ReadColors();
}

void CLBitmapButton::InitButton()
{
    ModifyStyle(0, BS_OWNERDRAW);
    GetWindowText(m_strText);
    ReadColors();

    m_nFormat = ButtonTextFormat(GetStyle());
}

void CLBitmapButton::ReadColors()
{
    m_colors = ButtonColors::Read();
}

void CLBitmapButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    CDC dc(lpDrawItemStruct->hDC);
    const CRect rectItem(lpDrawItemStruct->rcItem);
    const UINT nState = lpDrawItemStruct->itemState;
    const bool bText = !m_strText.IsEmpty();
    const bool bPressed = (nState & ODS_SELECTED) != 0;
    // Any state at all marks the button (focus, pressed). Newer systems add
    // the two keyboard-cue bits to every button while the cues are hidden;
    // they would mark the unfocused button too.
    const bool bMarked = (nState & ~static_cast<UINT>(ODS_NOACCEL | ODS_NOFOCUSRECT)) != 0;

    const int nOldMode = dc.SetBkMode(TRANSPARENT);
    dc.FillSolidRect(&rectItem, m_colors.clrFace);

    // The image keeps the same margin at the left as at the top, so the text
    // follows close by; without text it sits in the middle.
    CRect rectImage(rectItem.left, rectItem.top, rectItem.left + m_sizeImage.cx, rectItem.top + m_sizeImage.cy);
    if (rectItem.Width() > m_sizeImage.cx && rectItem.Height() > m_sizeImage.cy)
    {
        const int dx = (rectItem.Width() - m_sizeImage.cx) / 2;
        const int dy = (rectItem.Height() - m_sizeImage.cy) / 2;
        OffsetRect(&rectImage, bText ? dy : dx, dy);
    }
    else
    {
        rectImage = rectItem;
    }

    const int nShift = bPressed ? kPressOffset : 0;
    if (m_imageList.GetSafeHandle())
        ImageList_Draw(m_imageList, 0, dc, rectImage.left + nShift, rectImage.top + nShift, ILD_TRANSPARENT);

    if (bText)
    {
        CRect rectText(rectItem);
        rectText.left = rectImage.right;
        OffsetRect(&rectText, nShift, nShift);
        dc.DrawText(m_strText, &rectText, m_nFormat);
    }

    CRect rectFrame(rectItem);
    if (bMarked)
    {
        CRect rectFocus(rectItem);
        InflateRect(&rectFocus, -4, -4);
        dc.DrawFocusRect(&rectFocus);
        if (bPressed)
        {
            DrawRing(dc, rectFrame, m_colors.clrDkShadow, m_colors.clrDkShadow);
            DrawRing(dc, rectFrame, m_colors.clrShadow, m_colors.clrShadow);
        }
        else
        {
            DrawRing(dc, rectFrame, m_colors.clrDkShadow, m_colors.clrDkShadow);
            DrawRing(dc, rectFrame, m_colors.clrHighlight, m_colors.clrDkShadow);
            DrawRing(dc, rectFrame, m_colors.clrFace, m_colors.clrShadow);
        }
    }
    else
    {
        DrawRing(dc, rectFrame, m_colors.clrHighlight, m_colors.clrDkShadow);
        DrawRing(dc, rectFrame, m_colors.clrFace, m_colors.clrShadow);
    }

    dc.SetBkMode(nOldMode);
}
