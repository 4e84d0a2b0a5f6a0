#include "CDockPage.h"

CDockPage::CDockPage(UINT nIDTemplate, CWnd* pParentWnd, HWND hWndHost)
    : CModelessDialogEx(nIDTemplate, pParentWnd), m_hWndHost(hWndHost)
{
}

CDockPage::~CDockPage() = default;

void CDockPage::DoDataExchange(CDataExchange* pDX)
{
    CModelessDialogEx::DoDataExchange(pDX);
    if (!m_bInitialized)
    {
        // Set first: an exchange started from inside OnInitPage must not
        // start it again.
        m_bInitialized = TRUE;
        OnInitPage();
    }
}
