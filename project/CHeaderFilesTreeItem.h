// The "Header Files" group under the project node, filled by the page from
// the "Header" patterns. Unlike Source Files it offers no build, and its
// Save All does not depend on a project.
#pragma once

#include "CCommandTreeItem.h"

class CHeaderFilesTreeItem : public CCommandTreeItem
{
    DECLARE_DYNAMIC(CHeaderFilesTreeItem)
public:
    CHeaderFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject);
};
