// The item of any other window inside an MDI child (a line-number gutter): a
// click gives the MDI child the focus.
#pragma once

#include "CItem.h"

class CNumWndItem : public CItem
{
public:
    using CItem::CItem;

    void OnHookMessageDone(const HookRecord* pRecord) override;
};
