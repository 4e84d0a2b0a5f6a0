// One of the ten user tools of the settings file ([Tool01] to [Tool10]): a
// caption for the menus and a command line template. A tool without a
// caption is not shown anywhere.
#pragma once

#include "CString.h"

class CTool
{
public:
    CString m_strCaption; // "Caption"
    CString m_strCommand; // "Command", with the placeholders of CommandTemplate

    BOOL IsShown() const { return !m_strCaption.IsEmpty(); }
    // The command names the chosen file, so it cannot run without one.
    BOOL NeedsFile() const;
    // The command names the project or its folder.
    BOOL NeedsProject() const;
};
