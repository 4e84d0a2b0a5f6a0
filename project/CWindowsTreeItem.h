// The "Windows" group under the project node: it holds the ten view nodes
// and the Watch node, and its menu opens and saves the host's window sets.
#pragma once

#include "CCommandTreeItem.h"

class CWindowsTreeItem : public CCommandTreeItem
{
    DECLARE_DYNAMIC(CWindowsTreeItem)
public:
    CWindowsTreeItem(HWND hWndHost, const CTreeCursor& parent);
};
