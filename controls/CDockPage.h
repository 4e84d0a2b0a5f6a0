// A page of the Assist Window's tab control: a modeless dialog that knows the
// host IDE's frame window (a window of another process, only a handle here).
// A page gets one call for its one-time set-up, at its first data exchange
// (in practice while its window is being created), and one call for every
// message record of the host frame that the Assist Window passes on.
#pragma once

#include "CModelessDialogEx.h"

struct HookRecord;

class CDockPage : public CModelessDialogEx
{
public:
    // Pages are constructed with the Assist Window's tab control as parent.
    CDockPage(UINT nIDTemplate, CWnd* pParentWnd, HWND hWndHost);
    ~CDockPage() override;

    HWND m_hWndHost;              // the host IDE frame
    BOOL m_bInitialized = FALSE;  // OnInitPage has been called

    // Once, from the first data exchange in either direction.
    virtual void OnInitPage() = 0;
    // A message record of the host frame (its message and wParam words are
    // the ones pages read). Valid only during the call.
    virtual void OnHostMessage(const HookRecord* pRecord) = 0;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
};
