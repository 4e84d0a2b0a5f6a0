// The Project page of the Assist Window: a tree of the project that is open
// in the host IDE. The project comes from the host frame's title (its third
// token); the file groups are refilled from the project directory at every
// loading data exchange, which a 500 ms timer runs while a project is open.
// Every user action on a node (context menu, its commands, double click,
// Enter) goes to the node's record; the page never asks a record its kind.
//
// The context menu is owned by the application's main window, so its update
// requests and its command come back through the main frame's command
// routing, which offers them to g_pCommandPage first.
//
// Created with new by the Assist Window and deleted by itself when its
// window is gone; its lists own the node records.
#pragma once

#include "CDockPage.h"
#include "CImages.h"
#include "CTreeCtrlEx.h"
#include "CTreeCursor.h"
#include "CTreeItems.h"

class CDataExchange;
struct HookRecord;

class CProjectDlg : public CDockPage
{
public:
    CProjectDlg(CWnd* pParentWnd, HWND hWndHost);
    ~CProjectDlg() override;

    CTreeCtrlEx m_tree;
    CString m_strProject; // the project path from the host frame's title; empty: none
    CTreeCursor m_cursorProject;
    CTreeCursor m_cursorSourceFiles;
    CTreeCursor m_cursorHeaderFiles;
    CTreeCursor m_cursorWindows;
    CTreeItems m_groups;      // project, Source Files, Header Files, Windows
    CTreeItems m_sourceFiles; // file records under Source Files
    CTreeItems m_headerFiles; // file records under Header Files
    CTreeItems m_windows;     // the ten view records, then Watch
    CImages m_images;
    UINT_PTR m_nTimer = 0;    // the refresh timer; 0 when there is none
    // What the last refresh by the timer saw, so that a poll of a directory
    // that has not changed since can be skipped (see OnTimer).
    CString m_strPolledDirectory;
    FILETIME m_ftPolledDirectory = {0, 0};
    int m_nSkippedPolls = 0;

    // The record of the selected node, or NULL.
    CTreeItem* GetSelectedItem() const;
    // Brings a group in step with the project directory: a record for every
    // file that one of the ";"-separated patterns finds there with the
    // archive attribute, none for the others; records of files still there
    // are left alone. The group's nodes are sorted by name afterwards.
    void FillGroup(CTreeItems& group, CTreeCursor cursorGroup, LPCSTR lpszPatterns, int nImage);

    BOOL OnReturnKey() override;
    void OnInitPage() override;
    void OnHostMessage(const HookRecord* pRecord) override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;

    void OnSize(UINT nType, int cx, int cy);
    void OnTimer(UINT_PTR nIDEvent);
    // TRUE when the project directory's last-write time is what the last
    // searching poll saw, and that poll is recent enough to stand in for one.
    BOOL IsDirectoryUnchanged();
    void OnDestroy();
    void OnContextMenu(CWnd* pWnd, CPoint point);
    void OnDblClkTree(NMHDR* pNMHDR, LRESULT* pResult);
    void OnRClickTree(NMHDR* pNMHDR, LRESULT* pResult);
    void OnNodeCommand(UINT nID);
    void OnUpdateNodeCommand(CCmdUI* pCmdUI);

    DECLARE_MESSAGE_MAP()
};

// The Project page that last opened a context menu, NULL when none; cleared
// when that page's window is destroyed. The main frame offers commands to it
// before anyone else.
extern CProjectDlg* g_pCommandPage;
