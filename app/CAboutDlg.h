// "About QUORVANT": the version and bitness of this build, the host IDE
// frames the tool is attached to and their bitness, and where the settings
// file lies. Modal, over the hidden main frame.
#pragma once

#include "CDialog.h"
#include "CItems.h"

class CAboutDlg : public CDialog
{
public:
    CAboutDlg(const CItems& items, CWnd* pParentWnd);

    // The dialog's text, built from the registry's frame items.
    static CString Describe(const CItems& items);

protected:
    BOOL OnInitDialog() override;

private:
    const CItems& m_items;
};
