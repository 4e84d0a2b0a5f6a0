#include "CAboutDlg.h"

#include "CApp.h"
#include "CFrameWndItem.h"
#include "resource.h"

CAboutDlg::CAboutDlg(const CItems& items, CWnd* pParentWnd) : CDialog(IDD_ABOUTBOX, pParentWnd), m_items(items)
{
}

CString CAboutDlg::Describe(const CItems& items)
{
    int nFrames = 0;
    int nFrames32 = 0;
    for (const CItem* pItem : items)
    {
        if (const CFrameWndItem* pFrame = dynamic_cast<const CFrameWndItem*>(pItem))
        {
            ++nFrames;
            if (pFrame->m_nHostBitness == 32)
                ++nFrames32;
        }
    }
    CString strHosts("Host IDE frames attached: none");
    if (nFrames > 0)
        strHosts.Format("Host IDE frames attached: %d (%d of 32 bits, %d of 64 bits)", nFrames, nFrames32,
                        nFrames - nFrames32);
    CString strText;
    strText.Format("QUORVANT %s, %d-bit build\r\n\r\n%s\r\n\r\nSettings: %s",
                   static_cast<LPCSTR>(CApp::GetVersionText()), static_cast<int>(sizeof(void*) * 8),
                   static_cast<LPCSTR>(strHosts), static_cast<LPCSTR>(GetApp()->GetSettingsPath()));
    return strText;
}

BOOL CAboutDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    ::SetDlgItemTextA(m_hWnd, IDC_ABOUT_TEXT, Describe(m_items));
    return TRUE;
}
