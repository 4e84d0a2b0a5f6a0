// An owner-drawn push button that shows a small image and its text in the
// classic three-dimensional look: the image at the left followed by the
// text (centred when there is no text); pressed, the contents move one pixel
// down and right.
//
// The button keeps a copy of its one image, so the list it was given may be
// destroyed right after SetImage. It becomes owner-drawn by itself, whether
// it is created (WM_CREATE) or bound to a dialog's control (subclassing).
#pragma once

#include "ButtonLook.h"
#include "CButton.h"
#include "CImageList.h"
#include "CRect.h"
#include "CString.h"

class CLBitmapButton : public CButton
{
public:
    CLBitmapButton() = default;

    // Copies image nImage of pImageList. FALSE, changing nothing, when the
    // list does not hold that image.
    BOOL SetImage(CImageList* pImageList, int nImage);

    void PreSubclassWindow() override;
    LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    void OnSysColorChange();

    CString m_strText;       // the window text, kept for drawing
    CImageList m_imageList;  // the button's one image, index 0
    CSize m_sizeImage;
    UINT m_nFormat = DT_SINGLELINE | DT_CENTER | DT_VCENTER; // DrawText flags from the style
    ButtonColors m_colors;

    DECLARE_MESSAGE_MAP()

private:
    void InitButton();
    void ReadColors();
};
