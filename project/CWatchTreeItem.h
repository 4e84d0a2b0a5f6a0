// "Watch", the last node under "Windows": creates and opens the host's
// watch windows through the host's commands.
#pragma once

#include "CTreeItem.h"

class CWatchTreeItem : public CTreeItem
{
    DECLARE_DYNAMIC(CWatchTreeItem)
public:
    CWatchTreeItem(HWND hWndHost, const CTreeCursor& parent);
    ~CWatchTreeItem() override;

    CString GetPath() const override;
    void OnCommand(UINT nID) override;
    void OnUpdateCommand(CCmdUI* pCmdUI) override;
    // Opens a stored watch window, as "&Open Watch..." does.
    void Open() override;
    void OnReturn() override;
};
