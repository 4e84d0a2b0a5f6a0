#include "CNumWndItem.h"

void CNumWndItem::OnHookMessageDone(const HookRecord* pRecord)
{
    // The right button is left to the host.
    if (pRecord->nMessage == WM_LBUTTONDOWN || pRecord->nMessage == WM_MBUTTONDOWN)
        RequestHostFocus(GetParent(m_hWnd));
}
