#include "CApp.h"

#include "CMainFrame.h"
#include "DockRect.h"
#include "HostIde.h"
#include "PathNames.h"
#include "TextWords.h"
#include "WindowText.h"
#include "resource.h"

#include <mbstring.h>
#include <stdlib.h>
#include <string.h>

// The process-wide objects in the order they must be made: all in this one
// file, because only within one file is the order of construction certain.
CString g_strPendingCommand;
CMutex g_mutexSingleInstance(FALSE, "FB158FC3-9789-4437-A4A3-FDF00E1D4AA0");
const UINT WM_CREATEDOCKBAR = RegisterWindowMessageA(HostIde::kCreateDockBarMessage);
const UINT WM_OPENCOMMENTEDITOR = RegisterWindowMessageA("2F97529E-BB7E-4092-A931-737E1D078F32");
const UINT WM_RUNCOMMAND = RegisterWindowMessageA("2499DBED-8D31-4A4B-A027-4D03A330CE0B");
CApp theApp;

IMPLEMENT_DYNAMIC(CApp, CWinApp)

CApp* GetApp()
{
    return DYNAMIC_DOWNCAST(CApp, AfxGetApp());
}

CApp::CApp()
    : CWinApp(nullptr),
      m_strSource("*.asm;*.c"),
      m_strHeader("*.inc;*.h"),
      m_strExternalEditor("notepad %FILENAME%"),
      m_rectDock(0, 0, 0, 0),
      m_bDockLeft(TRUE),
      m_bOpenIMEAutomatically(TRUE),
      m_bSaveAutomatically(TRUE),
      m_bReloadFileAutomatically(TRUE)
{
}

BOOL CApp::InitInstance()
{
    AfxEnableControlContainer();

    // Another instance holds the mutex: end without a window or a file access.
    if (!g_mutexSingleInstance.Lock(0))
        return FALSE;

    ExchangeSettings(1);

    CMainFrame* pFrame = new CMainFrame;
    if (!pFrame->CreateTrayFrame(IDR_MAINFRAME))
        return FALSE;
    m_pMainWnd = pFrame;
    return TRUE;
}

int CApp::ExitInstance()
{
    // Only the instance that owns the mutex saves (an owner may take it again).
    if (g_mutexSingleInstance.Lock(0))
        ExchangeSettings(0);
    return CWinApp::ExitInstance();
}

void CApp::ExchangeSettings(int nMode)
{
    // The profile functions work on m_pszProfileName; a plain name would be
    // looked for in the Windows directory, so point it beside the executable
    // for the exchange, whatever the current directory is.
    char* pszProfileKept = _strdup(m_pszProfileName ? m_pszProfileName : "");
    free(m_pszProfileName);
    m_pszProfileName = _strdup(GetModuleDirectory(nullptr) + pszProfileKept);

    long fields[4] = {m_rectDock.left, m_rectDock.top, m_rectDock.right, m_rectDock.bottom};
    CString strRect(DockRect::Format(fields).c_str());

    const char kSettings[] = "Settings";
    if (nMode == 0)
    {
        WriteProfileString(kSettings, "Source", m_strSource);
        WriteProfileString(kSettings, "Header", m_strHeader);
        WriteProfileString(kSettings, "ExternalEditor", m_strExternalEditor);
        for (int i = 0; i < 10; ++i)
            m_tools[i].Exchange(0, this, i);
        WriteProfileString(kSettings, "DockRect", strRect);
        WriteProfileInt(kSettings, "DockLeft", m_bDockLeft);
        WriteProfileInt(kSettings, "OpenIMEAutomatically", m_bOpenIMEAutomatically);
        WriteProfileInt(kSettings, "SaveAutomatically", m_bSaveAutomatically);
        WriteProfileInt(kSettings, "ReladFileAutomatically", m_bReloadFileAutomatically);
    }
    else if (nMode == 1)
    {
        // Each current value is the default: a missing key changes nothing.
        m_strSource = GetProfileString(kSettings, "Source", m_strSource);
        m_strHeader = GetProfileString(kSettings, "Header", m_strHeader);
        m_strExternalEditor = GetProfileString(kSettings, "ExternalEditor", m_strExternalEditor);
        for (int i = 0; i < 10; ++i)
            m_tools[i].Exchange(1, this, i);
        strRect = GetProfileString(kSettings, "DockRect", strRect);
        m_bDockLeft = static_cast<BOOL>(GetProfileInt(kSettings, "DockLeft", m_bDockLeft));
        m_bOpenIMEAutomatically =
            static_cast<BOOL>(GetProfileInt(kSettings, "OpenIMEAutomatically", m_bOpenIMEAutomatically));
        m_bSaveAutomatically =
            static_cast<BOOL>(GetProfileInt(kSettings, "SaveAutomatically", m_bSaveAutomatically));
        m_bReloadFileAutomatically =
            static_cast<BOOL>(GetProfileInt(kSettings, "ReladFileAutomatically", m_bReloadFileAutomatically));
    }

    DockRect::Parse(strRect, fields);
    m_rectDock = CRect(fields[0], fields[1], fields[2], fields[3]);

    free(m_pszProfileName);
    m_pszProfileName = _strdup(pszProfileKept);
    free(pszProfileKept);
}

CString CApp::GetEditorFileName(HWND hWnd)
{
    // The host titles its editor windows with the file's full path.
    const CString strTitle = GetWindowTitle(hWnd, WINDOW_TEXT_LIMIT);
    const CString* const pLists[2] = {&m_strSource, &m_strHeader};
    for (const CString* pList : pLists)
    {
        for (const std::string& pattern : TextWords::PatternList(*pList, IsAnsiLeadByte))
        {
            // Only the pattern's extension counts ("*" in "*.asm" is never looked at).
            const CString strExt = GetFileExtension(pattern.c_str());
            if (strTitle.GetLength() > strExt.GetLength() &&
                strTitle.Right(strExt.GetLength()).CompareNoCase(strExt) == 0)
                return strTitle;
        }
    }
    return CString();
}

void CApp::RunExternalEditor(HWND hWndFrame, const CString& strTemplate, const CString& strFileName)
{
    g_strPendingCommand = strTemplate;
    if (strTemplate.IsEmpty())
        return;

    // Each placeholder from the left is replaced once; the search goes on
    // after the inserted name, so a name that itself holds the placeholder
    // still gives a finite command line.
    static const char kPlaceholder[] = "%FILENAME%";
    const int nPlaceholder = static_cast<int>(sizeof(kPlaceholder) - 1);
    CString strCommand;
    int nFrom = 0;
    for (int nAt; (nAt = strTemplate.Find(kPlaceholder, nFrom)) >= 0; nFrom = nAt + nPlaceholder)
        strCommand += strTemplate.Mid(nFrom, nAt - nFrom) + strFileName;
    strCommand += strTemplate.Mid(nFrom);
    g_strPendingCommand = strCommand;

    SetFocus(GetDesktopWindow());
    // The host's own save command, sent so that the file on disk is current
    // before the external editor opens it.
    if (m_bSaveAutomatically)
        ::SendMessageA(hWndFrame, WM_COMMAND, HostIde::kCmdSaveAll, 0);
    // Started later by the main frame, after the record that asked for it.
    if (m_pMainWnd)
        m_pMainWnd->PostMessage(WM_RUNCOMMAND, 0, 0);
}
