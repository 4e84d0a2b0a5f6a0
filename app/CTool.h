// One of the ten user tools of the settings file: a caption and a command
// line, only loaded, kept and saved.
#pragma once

#include "CString.h"

class CWinApp;

class CTool
{
public:
    CTool() = default;
    virtual ~CTool() = default;

    CString m_strCaption;
    CString m_strCommand;

    // Mode 1 loads, mode 0 saves, in section Tool01 to Tool10 for index 0 to 9.
    void Exchange(int nMode, CWinApp* pApp, int nIndex);
};
