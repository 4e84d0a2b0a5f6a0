// One of the host IDE's view windows under "Windows". A view is an MDI
// child of the host known by its title, or for views of a file (listing,
// map) by the end of its title. Opening an open view brings it to the top
// and clicks into its text; a closed one is opened with the host's command.
#pragma once

#include "CTreeItem.h"

// A row of the host view table: the node's text (string id), its image,
// the host command that opens the view (0: none) and the view's title or
// title ending.
struct HostView
{
    UINT nIDText;
    int nImage;
    UINT nCommand;
    LPCSTR pszTitle;
};

const int HOST_VIEW_COUNT = 10;
// The host's views in the order the Windows group shows them.
extern const HostView g_hostViews[HOST_VIEW_COUNT];

class CWindowTreeItem : public CTreeItem
{
    DECLARE_DYNAMIC(CWindowTreeItem)
public:
    CWindowTreeItem(HWND hWndHost, const CTreeCursor& parent, const HostView& view);
    ~CWindowTreeItem() override;

    CString GetPath() const override;
    void OnCommand(UINT nID) override;
    void OnUpdateCommand(CCmdUI* pCmdUI) override;
    void Open() override;
    void OnReturn() override;

    // The MDI child titled m_strTitle, else the first whose title ends with
    // it (case-insensitive); NULL when the view is closed.
    HWND FindHostWindow() const;

    UINT m_nCommand;    // the host command that opens the view; 0 for none
    CString m_strTitle; // the view's title, or the end of it
};
