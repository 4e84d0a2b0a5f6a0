#include "CChildWndItem.h"

#include "CApp.h"
#include "CWnd.h"
#include "HostIde.h"
#include "WindowText.h"


void CChildWndItem::OnHookMessageDone(const HookRecord* pRecord)
{
    switch (pRecord->nMessage)
    {
    case WM_KEYDOWN: OnKeyDown(pRecord); break;
    default: break;
    }
}

void CChildWndItem::OnKeyDown(const HookRecord* pRecord)
{
    // Wine: GetKeyState in the tool's thread reports the host's Ctrl while the
    // key's record is handled. Windows keeps a key state per thread, so the
    // library's word for the host's Ctrl counts as well.
    const bool bControl =
        (GetKeyState(VK_CONTROL) & 0x8000) != 0 || (pRecord->nFlags & HOOK_FLAG_CONTROL) != 0;
    if (!bControl)
        return;

    CApp* pApp = GetApp();
    switch (pRecord->wParam)
    {
    case VK_RETURN:
        if (HWND hWndFrame = GetHostFrame())
        {
            if (pApp->m_pMainWnd)
                pApp->m_pMainWnd->PostMessage(WM_OPENCOMMENTEDITOR, reinterpret_cast<WPARAM>(hWndFrame), 0);
        }
        break;
    case 'E':
        if (HWND hWndFrame = GetHostFrame())
        {
            if (!pApp)
                break;
            const CString strFileName = pApp->GetEditorFileName(m_hWnd);
            if (!strFileName.IsEmpty())
                pApp->RunCommand(hWndFrame, pApp->m_strExternalEditor, strFileName);
        }
        break;
    default:
        break;
    }
}

HWND CChildWndItem::GetHostFrame() const
{
    HWND hWndClient = GetParent(m_hWnd);
    if (GetWindowClassName(hWndClient, WINDOW_TEXT_LIMIT).Compare(HostIde::kClientClass) != 0)
        return nullptr;
    HWND hWndFrame = GetParent(hWndClient);
    if (GetWindowClassName(hWndFrame, WINDOW_TEXT_LIMIT).Compare(HostIde::kFrameClass) != 0)
        return nullptr;
    return hWndFrame;
}
