// A node whose context-menu commands each post one host IDE command, as its
// kind's table says: the project node, the groups and the watch node are
// only that. A command that needs an open project is greyed without one.
// A group has no default action: a double click only folds it.
#pragma once

#include "CTreeItem.h"
#include "HostCommand.h"

class CCommandTreeItem : public CTreeItem
{
    DECLARE_DYNAMIC(CCommandTreeItem)
public:
    CString GetPath() const override;
    void OnCommand(UINT nID) override;
    void OnUpdateCommand(CCmdUI* pCmdUI) override;
    void Open() override {}
    void OnReturn() override {}

protected:
    // The commands of a kind: a table that outlives the node. pstrProject
    // is the page's project path (not owned; the page outlives its nodes),
    // NULL for a kind without project commands.
    struct Commands
    {
        const HostCommand* pTable;
        int nCount;
        const CString* pstrProject;
    };
    template <int N>
    static Commands Table(const HostCommand (&table)[N], const CString* pstrProject = nullptr)
    {
        return Commands{table, N, pstrProject};
    }

    // A top-level node, or the last child of parent (see CTreeItem).
    CCommandTreeItem(HWND hWndHost, CTreeCtrl* pTree, UINT nIDLabel, int nImage, const Commands& commands);
    CCommandTreeItem(HWND hWndHost, const CTreeCursor& parent, UINT nIDLabel, int nImage, int nSelectedImage,
                     const Commands& commands);
    // A group, the last child of parent: a folder, open while selected.
    CCommandTreeItem(HWND hWndHost, const CTreeCursor& parent, UINT nIDLabel, const Commands& commands);

private:
    Commands m_commands;
};
