// A flat owner-drawn push button showing one image: no border while the
// pointer is away, a raised one-pixel border while it is over the button, a
// sunken border and the image one pixel down and right while it is pressed.
//
// Hovering is tracked without capturing the mouse: the button watches its own
// hit tests and, while the pointer is over it, polls the cursor every 20 ms
// so that it notices the pointer leaving. The hover border is drawn straight
// onto the window, outside DrawItem; a redraw while the pointer stays paints
// it over, and it comes back when the pointer leaves and returns.
#pragma once

#include "ButtonLook.h"
#include "CButton.h"
#include "CImageList.h"

class CFlatButton : public CButton
{
public:
    CFlatButton();
    ~CFlatButton() override;

    // Makes the button owner-drawn and reads the system colours. Runs by
    // itself when the window is created or subclassed.
    void InitButton();

    // The button's image becomes a copy of image nImage of pImageList.
    // FALSE, and nothing changes, when pImageList has no such image.
    BOOL SetImage(CImageList* pImageList, int nImage);

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void PreSubclassWindow() override;
    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    void OnTimer(UINT_PTR nIDEvent);
    LRESULT OnNcHitTest(CPoint point);
    void OnSysColorChange();
    void OnDestroy();

    void SetHoverTimer(BOOL bOn);

    CImageList m_imageList;
    CSize m_sizeImage;
    CRect m_rcItem;      // item rectangle of the last draw
    bool m_bHot = false;     // the hover border is drawn
    bool m_bPressed = false; // pressed look, set by every draw
    bool m_bDrawn = false;   // no hover before the first draw
    UINT m_nTimer = 0;   // hover polling timer, 0 when none runs
    ButtonColors m_colors;

    DECLARE_MESSAGE_MAP()
};
