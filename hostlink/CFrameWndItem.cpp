#include "CFrameWndItem.h"

#include "CApp.h"

CFrameWndItem::CFrameWndItem(HWND hWnd, CItems* pItems) : CItem(hWnd, pItems)
{
    PostMessageA(m_hWnd, WM_CREATEDOCKBAR, 0, 0);
}

void CFrameWndItem::OnHookMessage(const HookRecord* /*pRecord*/)
{
}

void CFrameWndItem::OnHookMessageDone(const HookRecord* /*pRecord*/)
{
}
