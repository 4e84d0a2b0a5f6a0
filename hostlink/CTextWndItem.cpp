#include "CTextWndItem.h"

void CTextWndItem::OnHookMessageDone(const HookRecord* pRecord)
{
    switch (pRecord->nMessage)
    {
    case WM_LBUTTONDOWN:
    case WM_MBUTTONDOWN:
        RequestHostFocus(GetParent(m_hWnd));
        break;
    default:
        break;
    }
}
