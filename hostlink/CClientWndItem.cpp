#include "CClientWndItem.h"

void CClientWndItem::OnHookMessageDone(const HookRecord* pRecord)
{
    switch (pRecord->nMessage)
    {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        RequestHostFocus(m_hWnd);
        break;
    default:
        break;
    }
}
