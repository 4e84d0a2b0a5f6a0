// The item of a text window inside an MDI child (a view's text): a click
// gives the view the focus (the hook library scrolls the view on the wheel).
#pragma once

#include "CItem.h"

class CTextWndItem : public CItem
{
public:
    using CItem::CItem;

    void OnHookMessageDone(const HookRecord* pRecord) override;
};
