// A source or header file of the open project, under "Source Files" or
// "Header Files". The host IDE shows a file in an MDI child titled with the
// file's full path; the node opens the file by dropping it on the host
// frame, closes and builds it through the host's commands, and keeps the
// file's modification time so that the page can reload files that another
// program changed while the host was in the background.
#pragma once

#include "CTime.h"
#include "CTreeItem.h"

class CFileTreeItem : public CTreeItem
{
    DECLARE_DYNAMIC(CFileTreeItem)
public:
    // The last child of parent, labelled with the file's name and showing
    // nImage selected or not (CImages::kSource or kHeader).
    CFileTreeItem(HWND hWndHost, const CTreeCursor& parent, LPCSTR lpszPath, int nImage);
    ~CFileTreeItem() override;

    // Name and extension of a path: C:\work\main.asm gives main.asm.
    static CString GetFileName(LPCSTR lpszPath);

    CString GetPath() const override;
    void OnCommand(UINT nID) override;
    void OnUpdateCommand(CCmdUI* pCmdUI) override;
    // Drops the file on the host frame: the host opens it, or activates its
    // window when it is open already.
    void Open() override;
    void OnReturn() override;
    // A "Tools" submenu with the shown user tools, after "&External Editor".
    void ExtendContextMenu(HMENU hPopup) override;

    // The host's MDI child titled with the path (case-insensitive, the whole
    // title), the first in window order; NULL when the file is not open.
    HWND FindHostWindow() const;

    // Records the file's modification time. A file that cannot be read
    // keeps the time recorded before.
    void UpdateTime();
    // TRUE when the file is open in the host and its modification time
    // differs from the recorded one, earlier or later. A file that cannot
    // be read (deleted or moved) is not changed: reloading it would close
    // the user's window and drop a file that is not there.
    BOOL IsChanged() const;
    // Closes the file's window (sent: the host has closed it on return) and
    // drops the file again, when IsChanged. The recorded time stays.
    void Reload();

    CString m_strPath;     // full path, as the directory scan found it
    CTime m_timeModified;  // last recorded modification time
};
