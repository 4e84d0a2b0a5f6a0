// A hidden frame that owns one notification-area icon and turns the icon's
// mouse notifications into ten overridable operations.
#pragma once

#include "CFrameWnd.h"

#include <shellapi.h>

extern const UINT WM_TRAYICON_NOTIFY;

class CTrayIconFrame : public CFrameWnd
{
    DECLARE_DYNCREATE(CTrayIconFrame)
public:
    CTrayIconFrame();
    ~CTrayIconFrame() override;

    // Creates the never-shown frame with its own window class carrying the icon.
    BOOL CreateTrayFrame(UINT nIconID);

    void SetTrayIcon(HICON hIcon, LPCSTR lpszTip);
    void SetTrayIcon(HICON hIcon, UINT nTipID);
    void RemoveTrayIcon();
    // Shows popup nPos of a menu resource at the mouse, owned by the main window.
    void TrackTrayMenu(UINT nMenuID, int nPos);

protected:
    virtual void GetFrameClassName(LPSTR lpszBuffer, int nSize);
    virtual void OnTrayMouseMove() {}
    virtual void OnTrayLButtonDown() { SetForegroundWindow(); }
    virtual void OnTrayLButtonUp() {}
    virtual void OnTrayLButtonDblClk() { SetForegroundWindow(); }
    virtual void OnTrayRButtonDown() { SetForegroundWindow(); }
    virtual void OnTrayRButtonUp() {}
    virtual void OnTrayRButtonDblClk() { SetForegroundWindow(); }
    virtual void OnTrayMButtonDown() { SetForegroundWindow(); }
    virtual void OnTrayMButtonUp() {}
    virtual void OnTrayMButtonDblClk() { SetForegroundWindow(); }

    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    LRESULT OnTrayIconNotify(WPARAM wParam, LPARAM lParam);
    LRESULT OnTaskbarCreated(WPARAM wParam, LPARAM lParam);

    NOTIFYICONDATAA m_nid;
    BOOL m_bIconShown;

    DECLARE_MESSAGE_MAP()
};
