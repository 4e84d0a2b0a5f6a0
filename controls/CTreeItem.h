// A node record of the Project tree: the base of every node kind. A record
// knows its node (m_cursor) and the host IDE frame its commands go to, and
// reacts to the user through five operations; the page never asks a record
// what kind it is. The node's item data is the record's address.
//
// A record's class name (run-time class information) titles its context
// menu, so every kind declares its own. Records are made with new and owned
// by one CTreeItems list; deleting a record leaves its node in the tree (the
// list decides whether the node goes too).
#pragma once

#include "CCmdUI.h"
#include "CObject.h"
#include "CString.h"
#include "CTreeCursor.h"

class CTreeCtrl;

class CTreeItem : public CObject
{
    DECLARE_DYNAMIC(CTreeItem)
public:
    ~CTreeItem() override;

    // The record's key: a file's full path, a window's title or suffix;
    // empty for every other kind.
    virtual CString GetPath() const = 0;
    // A context-menu command (ids 32772 to 32793); ids of other menus are ignored.
    virtual void OnCommand(UINT nID) = 0;
    // Calls pCmdUI->Enable(TRUE or FALSE) for the command it carries.
    virtual void OnUpdateCommand(CCmdUI* pCmdUI) = 0;
    // The default action (double click, the "&Open" command).
    virtual void Open() = 0;
    // Enter on the page while the node is selected.
    virtual void OnReturn() = 0;
    // Adds what the node's kind offers beyond its popup of the resource
    // (items whose ids its OnCommand takes) before the popup is shown.
    virtual void ExtendContextMenu(HMENU /*hPopup*/) {}

    HWND m_hWndHost;     // the host IDE frame
    CTreeCursor m_cursor; // the record's node

protected:
    // A top-level node after the last one, labelled with string nIDLabel
    // (empty when there is none), showing nImage selected or not.
    CTreeItem(HWND hWndHost, CTreeCtrl* pTree, UINT nIDLabel, int nImage);
    // The last child of parent, labelled with string nIDLabel; a selected
    // image of -1 is the image.
    CTreeItem(HWND hWndHost, const CTreeCursor& parent, UINT nIDLabel, int nImage, int nSelectedImage);
    // The same with a literal label.
    CTreeItem(HWND hWndHost, const CTreeCursor& parent, LPCSTR lpszText, int nImage, int nSelectedImage);

private:
    void InitChild(const CTreeCursor& parent, LPCSTR lpszText, int nImage, int nSelectedImage);
};
