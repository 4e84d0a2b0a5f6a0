#include "CFlatButton.h"

#include "CWindowDC.h"

BEGIN_MESSAGE_MAP(CFlatButton, CButton)
    ON_WM_CREATE()
    ON_WM_TIMER()
    ON_WM_NCHITTEST()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

namespace
{
const UINT kHoverTimerId = 1;
const UINT kHoverPollMs = 20;
const int kTimerAttempts = 9999;
} // namespace

CFlatButton::CFlatButton() : m_colors(ButtonColors::Read())
{
}

CFlatButton::~CFlatButton() = default;

void CFlatButton::InitButton()
{
    ModifyStyle(0, BS_OWNERDRAW);
    m_colors = ButtonColors::Read();
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

void CFlatButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    CDC dc(lpDrawItemStruct->hDC);
    m_rcItem = lpDrawItemStruct->rcItem;
    m_bPressed = (lpDrawItemStruct->itemState & ODS_SELECTED) != 0;
    m_bDrawn = true;
    dc.FillSolidRect(&m_rcItem, m_colors.clrFace);

    // Centred; a button no larger than its image gets it at its corner, clipped.
    int x = m_rcItem.left;
    int y = m_rcItem.top;
    if (m_rcItem.Width() > m_sizeImage.cx && m_rcItem.Height() > m_sizeImage.cy)
    {
        x += (m_rcItem.Width() - m_sizeImage.cx) / 2;
        y += (m_rcItem.Height() - m_sizeImage.cy) / 2;
    }
    const int nOffset = m_bPressed ? kPressOffset : 0;
    m_imageList.Draw(dc, 0, CPoint(x + nOffset, y + nOffset), ILD_TRANSPARENT);

    if (m_bPressed)
        dc.Draw3dRect(&m_rcItem, m_colors.clrShadow, m_colors.clrHighlight);
    else if (lpDrawItemStruct->itemAction & ODA_FOCUS)
        dc.Draw3dRect(&m_rcItem, m_colors.clrHighlight, m_colors.clrShadow);
}

LRESULT CFlatButton::OnNcHitTest(CPoint point)
{
    // The hover look is frozen while the button is pressed or the left
    // button is held (a press that started elsewhere must not light it up).
    if (!m_bPressed && m_bDrawn && !(GetAsyncKeyState(VK_LBUTTON) & 0x8000))
    {
        CPoint ptClient = point;
        ScreenToClient(&ptClient);
        const bool bOver = m_rcItem.PtInRect(ptClient) != FALSE;
        if (bOver != m_bHot)
        {
            CWindowDC dc(this);
            if (bOver)
                dc.Draw3dRect(&m_rcItem, m_colors.clrHighlight, m_colors.clrShadow);
            else
                dc.Draw3dRect(&m_rcItem, m_colors.clrFace, m_colors.clrFace);
            m_bHot = bOver;
            SetHoverTimer(bOver);
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

void CFlatButton::OnSysColorChange()
{
    CButton::OnSysColorChange();
    m_colors = ButtonColors::Read();
}

void CFlatButton::OnDestroy()
{
    SetHoverTimer(FALSE);
    CButton::OnDestroy();
}
