// The "Windows" group under the project node: it holds the ten view nodes
// and the Watch node, and its menu opens and saves the host's window sets.
#pragma once

#include "CTreeItem.h"

class CWindowsTreeItem : public CTreeItem
{
    DECLARE_DYNAMIC(CWindowsTreeItem)
public:
    CWindowsTreeItem(HWND hWndHost, const CTreeCursor& parent);
    ~CWindowsTreeItem() override;

    CString GetPath() const override;
    void OnCommand(UINT nID) override;
    void OnUpdateCommand(CCmdUI* pCmdUI) override;
    void Open() override;
    void OnReturn() override;
};
