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
    void OnAbout();
    // Opens the settings file with the external editor.
    void OnEditSettings();
    // Looks whether the settings file changed on disk.
    void OnTimer(UINT_PTR nIDEvent);
    LRESULT OnOpenCommentEditor(WPARAM wParam, LPARAM lParam);
    LRESULT OnRunCommand(WPARAM wParam, LPARAM lParam);

    CIcon m_iconTray; // made from image 0; the shell keeps its own copy
    CImageList m_images;
    CItems m_items;
    // The settings file's time and size at the last look.
    WIN32_FILE_ATTRIBUTE_DATA m_settingsFile = {};
    // Records refused since the last line the log has of them.
    unsigned long m_nRefusedRecords = 0;
    DWORD m_dwRefusedLogged = 0;

    DECLARE_MESSAGE_MAP()
};
