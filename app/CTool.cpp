#include "CTool.h"

#include "CommandTemplate.h"
#include "PathNames.h"

BOOL CTool::NeedsFile() const
{
    return CommandTemplate::Uses(m_strCommand, "%FILENAME%", IsAnsiLeadByte);
}

BOOL CTool::NeedsProject() const
{
    return CommandTemplate::Uses(m_strCommand, "%PROJECT%", IsAnsiLeadByte) ||
           CommandTemplate::Uses(m_strCommand, "%PROJECTDIR%", IsAnsiLeadByte);
}
