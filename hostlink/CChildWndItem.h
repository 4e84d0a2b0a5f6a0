// The item of an MDI child of the host (an editor or a view): wheel scrolling,
// Ctrl+Enter for the Comment Editor and Ctrl+E for the external editor.
#pragma once

#include "CItem.h"

class CChildWndItem : public CItem
{
public:
    using CItem::CItem;
    ~CChildWndItem() override = default;

    void OnHookMessage(const HookRecord* /*pRecord*/) override {}
    void OnHookMessageDone(const HookRecord* pRecord) override;

    // The host frame above this window when it sits in the "MDIClient" of a
    // "PFE_Frame", else NULL.
    HWND GetHostFrame() const;

private:
    void OnMouseWheel(const HookRecord* pRecord);
    void OnKeyDown(const HookRecord* pRecord);
};
