// A tab control that puts its tabs at the bottom on request, whether it is
// created by the program or taken over from a dialog template, inserts tabs
// with text and image, and hands out images from an image list.
#pragma once

#include "CTabCtrl.h"

class CTabCtrlEx : public CTabCtrl
{
    DECLARE_DYNAMIC(CTabCtrlEx)
public:
    // Must be set before the control is created or subclassed.
    BOOL m_bTabsAtBottom = FALSE;
    // Adds TCS_BOTTOM when m_bTabsAtBottom.
    void ApplyStyles();
    using CTabCtrl::InsertItem;
    // nImage -1: text only. The new tab's index, or -1.
    LONG InsertItem(int nItem, LPCSTR lpszText, int nImage);
    using CTabCtrl::SetImageList;
    // Sets the image list; with bAssignImages every existing tab i shows
    // image i. The previous list comes back as a temporary object.
    virtual CImageList* SetImageList(CImageList* pImageList, BOOL bAssignImages);

protected:
    void PreSubclassWindow() override;
    int OnCreate(LPCREATESTRUCT lpCreateStruct);

    DECLARE_MESSAGE_MAP()
};
