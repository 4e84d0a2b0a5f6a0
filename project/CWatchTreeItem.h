// "Watch", the last node under "Windows": creates and opens the host's
// watch windows through the host's commands.
#pragma once

#include "CCommandTreeItem.h"

class CWatchTreeItem : public CCommandTreeItem
{
    DECLARE_DYNAMIC(CWatchTreeItem)
public:
    CWatchTreeItem(HWND hWndHost, const CTreeCursor& parent);
    // Opens a stored watch window, as "&Open Watch..." does.
    void Open() override;
    void OnReturn() override;
};
