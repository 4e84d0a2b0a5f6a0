// The Assist Window as a child of the host frame: the frame moves, hides,
// activates and destroys it with itself, so there is nothing to follow.
#pragma once

#include "CDockAttachment.h"

class CChildAttachment : public CDockAttachment
{
public:
    explicit CChildAttachment(CModelessDialogEx& bar) : m_bar(bar) {}

    void Create(BOOL bShow) override;
    BOOL IsShown() const override;
    void Show(BOOL bShow) override;
    void Place(const CRect& rect) override;
    void FollowHost() override {}
    LRESULT OnMouseActivate() override { return -1; }
    void OnActivate(WPARAM) override {}
    BOOL OnTimer(UINT_PTR) override { return FALSE; }
    void OnDestroy() override {}

private:
    CModelessDialogEx& m_bar;
};
