// The "Header Files" group under the project node, filled by the page from
// the "Header" patterns. Unlike Source Files it offers no build, and its
// Save All does not depend on a project.
#pragma once

#include "CTreeItem.h"

class CHeaderFilesTreeItem : public CTreeItem
{
    DECLARE_DYNAMIC(CHeaderFilesTreeItem)
public:
    CHeaderFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject);
    ~CHeaderFilesTreeItem() override;

    CString GetPath() const override;
    void OnCommand(UINT nID) override;
    void OnUpdateCommand(CCmdUI* pCmdUI) override;
    void Open() override;
    void OnReturn() override;

    CString* m_pstrProject; // the page's project path; not owned, never read
};
