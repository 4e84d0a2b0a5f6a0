#include "CFrameWnd.h"

#include "CWinApp.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_WM_CLOSE()
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

namespace
{
const char kFrameClassName[] = "AfxFrameOrView";
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (!cs.lpszClass)
    {
        WNDCLASSA wc = {};
        HINSTANCE hInstance = GetModuleHandleA(nullptr);
        if (!GetClassInfoA(hInstance, kFrameClassName, &wc))
        {
            wc.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
            wc.lpfnWndProc = AfxWndProc;
            wc.hInstance = hInstance;
            wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
            wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
            wc.lpszClassName = kFrameClassName;
            if (!RegisterClassA(&wc))
                return FALSE;
        }
        cs.lpszClass = kFrameClassName;
    }
    return TRUE;
}

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinApp* pApp = AfxGetApp();
    return pApp && pApp->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CFrameWnd::OnClose()
{
    DestroyWindow();
}

void CFrameWnd::PostNcDestroy()
{
    delete this; // frames are created with new and own themselves
}
