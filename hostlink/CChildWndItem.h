// The item of an MDI child of the host (an editor or a view): Ctrl+Enter for
// the Comment Editor and Ctrl+E for the external editor. The wheel policy for
// it is handed to the hook library, which scrolls inside the host.
#pragma once

#include "CItem.h"

// The wheel delta that scrolls one line of an MDI child: a notch (120) is
// four lines, less than this nothing. The hook library scrolls with it
// inside the host, on the wheel message itself (see HookWheelPolicy), so
// that the host never waits for the tool to scroll.
const uint32_t kWheelStep = 30;

class CChildWndItem : public CItem
{
public:
    using CItem::CItem;

    void OnHookMessageDone(const HookRecord* pRecord) override;

    // The host frame above this window when it sits in the "MDIClient" of a
    // "PFE_Frame", else NULL.
    HWND GetHostFrame() const;

private:
    void OnKeyDown(const HookRecord* pRecord);
};
