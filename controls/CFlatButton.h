// A flat owner-drawn push button: no border while the pointer is away, a
// raised one-pixel border while it is over the button, a sunken border while
// the button is pressed. It draws an image from its own image list and, when
// it has a caption, the caption beside the image.
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

    // Makes the button owner-drawn and reads its caption, the system colours
    // and the caption's alignment. Runs by itself when the window is created
    // or subclassed.
    void InitButton();

    // The button's list becomes one copy of image nImage of pImageList.
    // FALSE, and nothing changes, when pImageList has no such image.
    BOOL SetImage(CImageList* pImageList, int nImage);
    // The button's list from a bitmap strip of images cx wide.
    BOOL CreateImages(UINT nBitmapID, int cx, COLORREF crMask);
    // Appends an image and makes the last one the pressed image.
    BOOL AddImage(CImageList* pImageList, int nImage);
    BOOL AddImage(UINT nBitmapID, COLORREF crMask);

    void SetImageIndex(int nImage, BOOL bPressed = FALSE);
    int GetImageIndex(BOOL bPressed = FALSE) const { return bPressed ? m_nImagePressed : m_nImage; }
    // 0 push button, 1 toggle button (each click flips the checked state).
    void SetType(int nType);
    int GetType() const { return m_nType; }
    void SetChecked(BOOL bChecked);
    BOOL GetChecked() const { return m_bChecked; }
    void SetTransparent(BOOL bTransparent) { m_bTransparent = bTransparent; }
    BOOL GetTransparent() const { return m_bTransparent; }
    void SetFocusBorder(BOOL bFocusBorder) { m_bFocusBorder = bFocusBorder; }
    BOOL GetFocusBorder() const { return m_bFocusBorder; }
    void SetPressOffset(int nPressOffset) { m_nPressOffset = nPressOffset; }
    int GetPressOffset() const { return m_nPressOffset; }

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void PreSubclassWindow() override;
    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    void OnTimer(UINT_PTR nIDEvent);
    LRESULT OnNcHitTest(CPoint point);
    void OnSysColorChange();
    void OnDestroy();
    BOOL OnClicked();
    BOOL OnEraseBkgnd(CDC* pDC);
    void OnSetFocus(CWnd* pOldWnd);

    void ReadColors();
    void SetHoverTimer(BOOL bOn);
    void InvalidateParentArea();
    void InvalidateButton();

    int m_nType = 0;
    BOOL m_bChecked = FALSE;
    BOOL m_bTransparent = FALSE;   // no background; the parent shows through
    BOOL m_bParentInvalid = FALSE; // the parent behind was invalidated for the pressed look
    BOOL m_bFocusBorder = FALSE;   // raised border when the button gets the focus
    CString m_strText;
    CImageList m_imageList;
    CSize m_sizeImage;
    UINT m_uTextFormat = DT_SINGLELINE | DT_CENTER | DT_VCENTER;
    CRect m_rcItem;                // item rectangle of the last draw
    bool m_bHot = false;           // the hover border is drawn
    bool m_bPressed = false;       // pressed look, set by every draw
    bool m_bEnabled = false;       // set by every draw: no hover before the first one
    UINT m_nTimer = 0;             // hover polling timer, 0 when none runs
    ButtonColors m_colors;
    int m_nImagePressed = 0;
    int m_nImage = 0;
    int m_nPressOffset = 1;

    DECLARE_MESSAGE_MAP()
};
