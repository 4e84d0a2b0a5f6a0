#include "CTool.h"

#include "CWinApp.h"

void CTool::Exchange(int nMode, CWinApp* pApp, int nIndex)
{
    CString strSection;
    strSection.Format("Tool%02d", nIndex + 1);
    if (nMode == 0)
    {
        pApp->WriteProfileString(strSection, "Caption", m_strCaption);
        pApp->WriteProfileString(strSection, "Command", m_strCommand);
    }
    else if (nMode == 1)
    {
        m_strCaption = pApp->GetProfileString(strSection, "Caption", m_strCaption);
        m_strCommand = pApp->GetProfileString(strSection, "Command", m_strCommand);
    }
}
