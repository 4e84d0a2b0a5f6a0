#include "CTrayIconFrame.h"

#include "CMenu.h"
#include "CWinApp.h"

#include <mbstring.h>
#include <string.h>

const UINT WM_TRAYICON_NOTIFY = RegisterWindowMessageA("CTrayIconFrame::WM_TRAYICON_NOTIFY");
// The shell sends this to every top-level window when it (re)starts: the
// icon must then be added again or it is gone for good.
static const UINT WM_TASKBARCREATED = RegisterWindowMessageA("TaskbarCreated");

IMPLEMENT_DYNCREATE(CTrayIconFrame, CFrameWnd)

BEGIN_MESSAGE_MAP(CTrayIconFrame, CFrameWnd)
    ON_WM_CREATE()
    ON_REGISTERED_MESSAGE(WM_TRAYICON_NOTIFY, OnTrayIconNotify)
    ON_REGISTERED_MESSAGE(WM_TASKBARCREATED, OnTaskbarCreated)
END_MESSAGE_MAP()

namespace
{
const size_t kTipBytes = 63; // the first form of the icon record holds 63 bytes and a zero
}

CTrayIconFrame::CTrayIconFrame() : m_nid(), m_bIconShown(FALSE)
{
}

CTrayIconFrame::~CTrayIconFrame()
{
    RemoveTrayIcon();
}

void CTrayIconFrame::GetFrameClassName(LPSTR lpszBuffer, int nSize)
{
    _mbsnbcpy(reinterpret_cast<unsigned char*>(lpszBuffer),
              reinterpret_cast<const unsigned char*>("TrayIconFrameClass"), static_cast<size_t>(nSize));
}

BOOL CTrayIconFrame::CreateTrayFrame(UINT nIconID)
{
    CREATESTRUCT cs = {};
    cs.style = WS_OVERLAPPEDWINDOW;
    cs.x = rectDefault.left;
    cs.y = rectDefault.top;
    cs.cx = rectDefault.right;
    cs.cy = rectDefault.bottom;
    cs.hInstance = GetModuleHandleA(nullptr);
    if (!CFrameWnd::PreCreateWindow(cs))
    {
        PostNcDestroy();
        return FALSE;
    }

    char szClassName[1024] = {};
    GetFrameClassName(szClassName, sizeof(szClassName));

    // The framework's class under our own name, with the program's icon.
    WNDCLASSA wc = {};
    if (!GetClassInfoA(cs.hInstance, cs.lpszClass, &wc))
        return FALSE;
    wc.lpszMenuName = nullptr;
    wc.hIcon = LoadIconA(cs.hInstance, MAKEINTRESOURCEA(nIconID));
    wc.lpszClassName = szClassName;
    RegisterClassA(&wc); // already registered: fine

    AfxHookWindowCreate(this);
    HWND hWnd = CreateWindowExA(cs.dwExStyle, szClassName, cs.lpszName, cs.style, cs.x, cs.y, cs.cx, cs.cy,
                                cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    if (!AfxUnhookWindowCreate())
    {
        PostNcDestroy();
        return FALSE;
    }
    return hWnd != nullptr; // never shown
}

int CTrayIconFrame::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    (void)lpCreateStruct;
    if (Default() == -1)
        return -1;
    m_nid = NOTIFYICONDATAA();
    m_nid.cbSize = NOTIFYICONDATAA_V1_SIZE; // 88 bytes in the 32-bit build
    m_nid.hWnd = m_hWnd;
    m_nid.uID = 1001;
    m_nid.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    m_nid.uCallbackMessage = WM_TRAYICON_NOTIFY;
    m_nid.hIcon = nullptr;
    return 0;
}

void CTrayIconFrame::SetTrayIcon(HICON hIcon, LPCSTR lpszTip)
{
    const DWORD dwAction = (m_nid.hIcon && m_bIconShown) ? NIM_MODIFY : NIM_ADD;
    m_nid.hIcon = hIcon;
    memset(m_nid.szTip, 0, sizeof(m_nid.szTip));
    const size_t nTip = lpszTip ? strlen(lpszTip) : 0;
    memcpy(m_nid.szTip, lpszTip ? lpszTip : "", nTip < kTipBytes ? nTip : kTipBytes);
    Shell_NotifyIconA(dwAction, &m_nid);
    m_bIconShown = TRUE;
}

void CTrayIconFrame::SetTrayIcon(HICON hIcon, UINT nTipID)
{
    char szTip[256] = {};
    LoadStringA(GetModuleHandleA(nullptr), nTipID, szTip, sizeof(szTip));
    SetTrayIcon(hIcon, szTip);
}

void CTrayIconFrame::RemoveTrayIcon()
{
    if (m_nid.hIcon && m_bIconShown)
        Shell_NotifyIconA(NIM_DELETE, &m_nid);
    m_bIconShown = FALSE;
}

void CTrayIconFrame::TrackTrayMenu(UINT nMenuID, int nPos)
{
    POINT pt = {};
    GetCursorPos(&pt);
    CMenu menu;
    if (!menu.LoadMenu(nMenuID))
        return;
    HMENU hPopup = menu.GetSubMenu(nPos);
    if (!hPopup)
        return;
    CWinApp* pApp = AfxGetApp();
    HWND hWndOwner = pApp && pApp->m_pMainWnd ? pApp->m_pMainWnd->m_hWnd : m_hWnd;
    // The owner in front first: otherwise the menu gets no keys and does
    // not close when the user clicks elsewhere.
    ::SetForegroundWindow(hWndOwner);
    TrackPopupMenu(hPopup, TPM_RIGHTBUTTON, pt.x, pt.y, 0, hWndOwner, nullptr);
    // Without a message to the owner after the menu, a second click on the
    // icon may not open the menu again (the owner never saw the menu end).
    ::PostMessageA(hWndOwner, WM_NULL, 0, 0);
}

LRESULT CTrayIconFrame::OnTrayIconNotify(WPARAM /*wParam*/, LPARAM lParam)
{
    switch (static_cast<UINT>(lParam))
    {
    case WM_MOUSEMOVE: OnTrayMouseMove(); break;
    case WM_LBUTTONDOWN: OnTrayLButtonDown(); break;
    case WM_LBUTTONUP: OnTrayLButtonUp(); break;
    case WM_LBUTTONDBLCLK: OnTrayLButtonDblClk(); break;
    case WM_RBUTTONDOWN: OnTrayRButtonDown(); break;
    case WM_RBUTTONUP: OnTrayRButtonUp(); break;
    case WM_RBUTTONDBLCLK: OnTrayRButtonDblClk(); break;
    case WM_MBUTTONDOWN: OnTrayMButtonDown(); break;
    case WM_MBUTTONUP: OnTrayMButtonUp(); break;
    case WM_MBUTTONDBLCLK: OnTrayMButtonDblClk(); break;
    default: break;
    }
    return 0;
}

LRESULT CTrayIconFrame::OnTaskbarCreated(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    if (m_bIconShown)
        Shell_NotifyIconA(NIM_ADD, &m_nid);
    return 0;
}
