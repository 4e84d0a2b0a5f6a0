// The "Source Files" group under the project node. The page fills it with
// the project directory's files that match the "Source" patterns; the node
// itself only posts the host's file and build commands.
#pragma once

#include "CTreeItem.h"

class CSourceFilesTreeItem : public CTreeItem
{
    DECLARE_DYNAMIC(CSourceFilesTreeItem)
public:
    CSourceFilesTreeItem(HWND hWndHost, const CTreeCursor& parent, CString* pstrProject);
    ~CSourceFilesTreeItem() override;

    CString GetPath() const override;
    void OnCommand(UINT nID) override;
    void OnUpdateCommand(CCmdUI* pCmdUI) override;
    void Open() override;
    void OnReturn() override;

    CString* m_pstrProject; // the page's project path; not owned
};
