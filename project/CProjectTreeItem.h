// The tree's root: the project open in the host IDE, labelled by the page
// with the project's name or "(Empty)". Its menu posts the host's project
// commands; those that act on the open project are greyed without one.
#pragma once

#include "CCommandTreeItem.h"

class CProjectTreeItem : public CCommandTreeItem
{
    DECLARE_DYNAMIC(CProjectTreeItem)
public:
    // pstrProject: the page's project path, empty when no project is open;
    // not owned, the page outlives its nodes.
    CProjectTreeItem(HWND hWndHost, CTreeCtrl* pTree, CString* pstrProject);
};
