// A top-level frame window: registers the framework's frame class, closes by
// destroying itself, deletes its object after its window is gone, and offers
// commands that it does not handle to the application object.
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

protected:
    void PostNcDestroy() override;
    void OnClose();

    DECLARE_MESSAGE_MAP()
};
