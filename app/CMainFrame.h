// The program's hidden main window: the notification-area icon and its menu,
// the hook library's records (through the window item registry), and the
// program's own requests (run a command line, open the Comment Editor).
#pragma once

#include "CIcon.h"
#include "CImageList.h"
#include "CItems.h"
#include "CTrayIconFrame.h"

class CMainFrame : public CTrayIconFrame
{
    DECLARE_DYNCREATE(CMainFrame)
public:
    CMainFrame();
    ~CMainFrame() override;

    // The Project page that opened a context menu gets its commands and
    // update requests first (g_pCommandPage); the rest take the frame's way.
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;

protected:
    void OnTrayLButtonDown() override;

    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    BOOL OnCopyData(CWnd* pWnd, COPYDATASTRUCT* pCopyDataStruct);
    void OnClose();
    // The tray menu's "Start with Windows": this copy in the user's Run key.
    void OnStartWithWindows();
    void OnUpdateStartWithWindows(CCmdUI* pCmdUI);
    LRESULT OnOpenCommentEditor(WPARAM wParam, LPARAM lParam);
    LRESULT OnRunCommand(WPARAM wParam, LPARAM lParam);

    CIcon m_iconTray; // made from image 0; the shell keeps its own copy
    CImageList m_images;
    CItems m_items;

    DECLARE_MESSAGE_MAP()
};
