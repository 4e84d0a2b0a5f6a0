// The item of the host frame's MDI client: a click in the empty MDI area gives
// it the focus, so the keyboard leaves whatever had it.
#pragma once

#include "CItem.h"

class CClientWndItem : public CItem
{
public:
    using CItem::CItem;

    void OnHookMessageDone(const HookRecord* pRecord) override;
};
