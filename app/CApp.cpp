#include "CApp.h"

#include "CMainFrame.h"
#include "CommandTemplate.h"
#include "CLogFile.h"
#include "DockRect.h"
#include "HostIde.h"
#include "PathNames.h"
#include "TextWords.h"
#include "WindowText.h"
#include "resource.h"

#include <stdlib.h>
#include <string.h>

// The process-wide objects in the order they must be made: all in this one
// file, because only within one file is the order of construction certain.
CString g_strPendingCommand;
CMutex g_mutexSingleInstance(FALSE, "FB158FC3-9789-4437-A4A3-FDF00E1D4AA0");
const UINT WM_CREATEDOCKBAR = RegisterWindowMessageA(HostIde::kCreateDockBarMessage);
const UINT WM_OPENCOMMENTEDITOR = RegisterWindowMessageA("2F97529E-BB7E-4092-A931-737E1D078F32");
const UINT WM_RUNCOMMAND = RegisterWindowMessageA("2499DBED-8D31-4A4B-A027-4D03A330CE0B");
CLogFile g_log;
CApp theApp;

namespace
{
const char kLogName[] = "QUORVANT.log";
const DWORD kLogLimit = 1024 * 1024; // and one older copy
} // namespace

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
      m_bReloadFileAutomatically(TRUE),
      m_bLog(FALSE)
{
}

BOOL CApp::InitInstance()
{
    AfxEnableControlContainer();

    // Another instance holds the mutex: end without a window or a file access.
    if (!g_mutexSingleInstance.Lock(0))
        return FALSE;

    // A plain name would be looked for in the Windows directory: the profile
    // functions get the file beside the executable, whatever the current
    // directory is.
    const CString strPath = GetModuleDirectory(nullptr) + m_pszProfileName;
    free(m_pszProfileName);
    m_pszProfileName = _strdup(strPath);
    LoadSettings();
    g_log.Write("start: QUORVANT %s, %d-bit build, settings in %s", static_cast<LPCSTR>(GetVersionText()),
                static_cast<int>(sizeof(void*) * 8), static_cast<LPCSTR>(GetSettingsPath()));

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
    {
        SaveSettings();
        g_log.Write("exit");
    }
    g_log.Close();
    return CWinApp::ExitInstance();
}

// One key of the settings file and the member that holds it. Every value
// goes through its text as the file keeps it, so that what the user changed
// in the file is told from what this program changed by comparing texts.
struct CApp::Setting
{
    CString strSection;
    CString strKey;
    CString* pText;
    BOOL* pFlag;
    CRect* pRect;

    CString Get() const
    {
        if (pText)
            return *pText;
        if (pFlag)
        {
            CString strFlag;
            strFlag.Format("%d", *pFlag);
            return strFlag;
        }
        long fields[4] = {pRect->left, pRect->top, pRect->right, pRect->bottom};
        return CString(DockRect::Format(fields).c_str());
    }

    void Set(const CString& strText) const
    {
        if (pText)
        {
            *pText = strText;
        }
        else if (pFlag)
        {
            *pFlag = static_cast<BOOL>(atoi(strText));
        }
        else
        {
            long fields[4] = {pRect->left, pRect->top, pRect->right, pRect->bottom};
            DockRect::Parse(strText, fields);
            *pRect = CRect(fields[0], fields[1], fields[2], fields[3]);
        }
    }
};

std::vector<CApp::Setting> CApp::GetSettings()
{
    const char kSettings[] = "Settings";
    std::vector<Setting> settings = {
        {kSettings, "Source", &m_strSource, nullptr, nullptr},
        {kSettings, "Header", &m_strHeader, nullptr, nullptr},
        {kSettings, "ExternalEditor", &m_strExternalEditor, nullptr, nullptr},
        {kSettings, "DockRect", nullptr, nullptr, &m_rectDock},
        {kSettings, "DockLeft", nullptr, &m_bDockLeft, nullptr},
        {kSettings, "OpenIMEAutomatically", nullptr, &m_bOpenIMEAutomatically, nullptr},
        {kSettings, "SaveAutomatically", nullptr, &m_bSaveAutomatically, nullptr},
        {kSettings, "ReladFileAutomatically", nullptr, &m_bReloadFileAutomatically, nullptr},
        {kSettings, "Log", nullptr, &m_bLog, nullptr},
    };
    for (int i = 0; i < kToolCount; ++i)
    {
        CString strSection;
        strSection.Format("Tool%02d", i + 1);
        settings.push_back({strSection, "Caption", &m_tools[i].m_strCaption, nullptr, nullptr});
        settings.push_back({strSection, "Command", &m_tools[i].m_strCommand, nullptr, nullptr});
    }
    return settings;
}

CString CApp::GetVersionText()
{
    char szPath[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, szPath, MAX_PATH);
    DWORD dwHandle = 0;
    const DWORD cbInfo = GetFileVersionInfoSizeA(szPath, &dwHandle);
    std::vector<BYTE> info(cbInfo ? cbInfo : 1);
    VS_FIXEDFILEINFO* pFixed = nullptr;
    UINT cbFixed = 0;
    if (!cbInfo || !GetFileVersionInfoA(szPath, 0, cbInfo, info.data()) ||
        !VerQueryValueA(info.data(), "\\", reinterpret_cast<void**>(&pFixed), &cbFixed) || !pFixed)
        return CString("?");
    CString strVersion;
    strVersion.Format("%u.%u.%u", HIWORD(pFixed->dwFileVersionMS), LOWORD(pFixed->dwFileVersionMS),
                      HIWORD(pFixed->dwFileVersionLS));
    return strVersion;
}

CString CApp::GetSettingsPath() const
{
    return m_pszProfileName ? m_pszProfileName : "";
}

std::vector<CString> CApp::ReadSettingsFile()
{
    std::vector<CString> texts;
    for (const Setting& setting : GetSettings())
    {
        // Each current value is the default: a missing key changes nothing.
        // A flag is read as the system reads a number, then kept as text.
        CString strText = setting.Get();
        if (setting.pFlag)
            strText.Format("%d", static_cast<int>(GetProfileInt(setting.strSection, setting.strKey, *setting.pFlag)));
        else
            strText = GetProfileString(setting.strSection, setting.strKey, strText);
        texts.push_back(strText);
    }
    return texts;
}

void CApp::LoadSettings()
{
    m_settingsRead = ReadSettingsFile();
    const std::vector<Setting> settings = GetSettings();
    for (size_t i = 0; i < settings.size(); ++i)
        settings[i].Set(m_settingsRead[i]);
    ApplyLogSetting();
    g_log.Write("settings read from %s", static_cast<LPCSTR>(GetSettingsPath()));
}

BOOL CApp::ReloadSettings()
{
    const std::vector<CString> texts = ReadSettingsFile();
    const std::vector<Setting> settings = GetSettings();
    BOOL bChanged = FALSE;
    for (size_t i = 0; i < settings.size(); ++i)
    {
        if (texts[i] != m_settingsRead[i] && texts[i] != settings[i].Get())
        {
            settings[i].Set(texts[i]);
            bChanged = TRUE;
        }
    }
    m_settingsRead = texts;
    ApplyLogSetting();
    if (bChanged)
        g_log.Write("settings read again from %s", static_cast<LPCSTR>(GetSettingsPath()));
    return bChanged;
}

void CApp::ApplyLogSetting()
{
    if (m_bLog && !g_log.IsOpen())
        g_log.Open(GetModuleDirectory(nullptr) + kLogName, kLogLimit);
    else if (!m_bLog)
        g_log.Close();
}

void CApp::SaveSettings()
{
    ReloadSettings();
    for (const Setting& setting : GetSettings())
    {
        if (setting.pFlag)
            WriteProfileInt(setting.strSection, setting.strKey, *setting.pFlag);
        else
            WriteProfileString(setting.strSection, setting.strKey, setting.Get());
    }
    // The file holds this program's values now: only what changes from
    // here on is the user's.
    m_settingsRead.clear();
    for (const Setting& setting : GetSettings())
        m_settingsRead.push_back(setting.Get());
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

void CApp::RunCommand(HWND hWndFrame, const CString& strTemplate, const CString& strFileName)
{
    g_strPendingCommand.Empty();
    if (strTemplate.IsEmpty())
        return;

    const CString strProject = GetProjectPathOfFrame(hWndFrame);
    // The project's folder without its last backslash, as a user writes
    // "%PROJECTDIR%\out.hex".
    CString strProjectDir = GetDirectoryOfPath(strProject);
    if (strProjectDir.GetLength() > 3 && strProjectDir.Right(1) == "\\")
        strProjectDir = strProjectDir.Left(strProjectDir.GetLength() - 1);
    const std::vector<CommandTemplate::Field> fields = {
        {"%FILENAME%", static_cast<LPCSTR>(strFileName)},
        {"%PROJECT%", static_cast<LPCSTR>(strProject)},
        {"%PROJECTDIR%", static_cast<LPCSTR>(strProjectDir)},
    };
    g_strPendingCommand = CommandTemplate::Expand(strTemplate, fields, IsAnsiLeadByte).c_str();

    SetFocus(GetDesktopWindow());
    // The host's own save command, sent so that the file on disk is current
    // before the command opens it.
    if (m_bSaveAutomatically)
        ::SendMessageA(hWndFrame, WM_COMMAND, HostIde::kCmdSaveAll, 0);
    // Started later by the main frame, after the record that asked for it.
    if (m_pMainWnd)
        m_pMainWnd->PostMessage(WM_RUNCOMMAND, 0, 0);
}

void CApp::EditSettings()
{
    SaveSettings();
    const std::vector<CommandTemplate::Field> fields = {{"%FILENAME%", static_cast<LPCSTR>(GetSettingsPath())}};
    g_strPendingCommand = CommandTemplate::Expand(m_strExternalEditor, fields, IsAnsiLeadByte).c_str();
    if (m_pMainWnd)
        m_pMainWnd->PostMessage(WM_RUNCOMMAND, 0, 0);
}

BOOL CApp::CanRunTool(int nTool, HWND hWndFrame, const CString& strFileName) const
{
    if (nTool < 0 || nTool >= kToolCount || !m_tools[nTool].IsShown())
        return FALSE;
    const CTool& tool = m_tools[nTool];
    if (tool.NeedsFile() && strFileName.IsEmpty())
        return FALSE;
    return !tool.NeedsProject() || !GetProjectPathOfFrame(hWndFrame).IsEmpty();
}
