// The item of the host IDE's frame window ("PFE_Frame"). It announces itself
// to the host frame with WM_CREATEDOCKBAR, which the hook library reports back
// once the host has taken it: from then on the frame is ours to work with.
#pragma once

#include "CItem.h"

class CFrameWndItem : public CItem
{
public:
    CFrameWndItem(HWND hWnd, CItems* pItems);
    ~CFrameWndItem() override = default;

    void OnHookMessage(const HookRecord* pRecord) override;
    void OnHookMessageDone(const HookRecord* pRecord) override;
};
