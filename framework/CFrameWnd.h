// A top-level frame window: registers the framework's frame class, closes by
// destroying itself, deletes its object after its window is gone, and offers
// commands that it does not handle to the application object. Before one of
// its popup menus opens, each item is offered to the command routing as an
// update request (CCmdUI), so that update handlers enable, check or rename
// it; with m_bAutoMenuEnable an item nobody updates is enabled exactly when
// some target has a handler for its command.
#pragma once

#include "CWnd.h"

class CFrameWnd : public CWnd
{
    DECLARE_DYNCREATE(CFrameWnd)
public:
    CFrameWnd() = default;

    // Position and size that let the system choose.
    static const CRect rectDefault;

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;

    BOOL m_bAutoMenuEnable = TRUE;

protected:
    void PostNcDestroy() override;
    void OnClose();
    void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);

    DECLARE_MESSAGE_MAP()
};
