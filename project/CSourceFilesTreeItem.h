// The "Source Files" group under the project node. The page fills it with
// the project directory's files that match the "Source" patterns; the node
// itself only posts the host's file and build commands.
#pragma once

#include "CCommandTreeItem.h"

class CSourceFilesTreeItem : public CCommandTreeItem
{
    DECLARE_DYNAMIC(CSourceFilesTreeItem)
public:
    CSourceFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject);
};
