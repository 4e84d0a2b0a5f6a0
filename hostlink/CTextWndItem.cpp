#include "CTextWndItem.h"

void CTextWndItem::OnHookMessageDone(const HookRecord* pRecord)
{
    switch (pRecord->nMessage)
    {
    case WM_LBUTTONDOWN:
    case WM_MBUTTONDOWN:
        RequestHostFocus(GetParent(m_hWnd));
        break;
    case WM_MOUSEWHEEL:
    {
        // One line per wheel message, whatever the size of the delta.
        const short nDelta = static_cast<short>(HIWORD(pRecord->wParam));
        SendMessageA(GetParent(m_hWnd), WM_VSCROLL, nDelta > 0 ? SB_LINEUP : SB_LINEDOWN, 0);
        break;
    }
    default:
        break;
    }
}
