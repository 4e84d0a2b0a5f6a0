// The application object: every user setting lives in its members while the
// program runs; it keeps a second instance from starting, loads the settings
// at start, creates the hidden main frame and saves the settings at the end.
#pragma once

#include "CLogFile.h"
#include "CMutex.h"
#include "CRect.h"
#include "CTool.h"
#include "CWinApp.h"

#include <vector>

class CApp : public CWinApp
{
    DECLARE_DYNAMIC(CApp)
public:
    static const int kToolCount = 10;

    CApp();

    CString m_strSource;         // "Source": source file patterns, ";"-separated
    CString m_strHeader;         // "Header": header file patterns
    CString m_strExternalEditor; // "ExternalEditor": command template with %FILENAME%
    CTool m_tools[kToolCount];   // Tool01 to Tool10
    CRect m_rectDock;            // "DockRect": last rectangle of the Assist Window
    BOOL m_bDockLeft;            // "DockLeft"
    BOOL m_bOpenIMEAutomatically;    // "OpenIMEAutomatically"
    BOOL m_bSaveAutomatically;       // "SaveAutomatically"
    BOOL m_bReloadFileAutomatically; // "ReladFileAutomatically" (sic, as the file spells it)

    BOOL InitInstance() override;
    int ExitInstance() override;

    BOOL m_bLog;                     // "Log": QUORVANT.log beside the executable

    // "1.2.3" from the executable's version resource.
    static CString GetVersionText();

    // The settings file beside the executable.
    CString GetSettingsPath() const;
    // Reads every setting; a key the file lacks keeps its current value.
    void LoadSettings();
    // Reads the file again after it changed on disk: what the user changed
    // in it since the last read replaces the value here, everything else
    // stays as this program has it. TRUE when a value changed.
    BOOL ReloadSettings();
    // Writes every setting back, after taking in what the user changed in
    // the file meanwhile: the user's edits win over this program's values.
    void SaveSettings();

    // The file an editor window shows: its title when it ends with the
    // extension of a "Source" or "Header" pattern, else empty.
    CString GetEditorFileName(HWND hWnd);
    // Has the host save first when so set, and asks the main frame to start
    // the command strTemplate names for a file (see CommandTemplate): the
    // external editor's or a user tool's. The project is the host frame's.
    void RunCommand(HWND hWndFrame, const CString& strTemplate, const CString& strFileName);
    // Opens the settings file with the external editor, written first so
    // that it holds every key.
    void EditSettings();
    // TRUE when user tool nTool can run for a file (may be empty) of the
    // host frame's project.
    BOOL CanRunTool(int nTool, HWND hWndFrame, const CString& strFileName) const;

private:
    struct Setting;
    std::vector<Setting> GetSettings();
    std::vector<CString> ReadSettingsFile();
    // Opens or closes the log as "Log" says.
    void ApplyLogSetting();

    std::vector<CString> m_settingsRead; // the file's texts at the last read, key by key
};

// The application object, as every part of the program reaches it. Never
// NULL: the one CApp is a static object, made before any window and gone
// after the last, in the tool and in every test program that links it.
CApp* GetApp();

// Process-wide objects, made before the application object starts.
extern CString g_strPendingCommand; // the command line WM_RUNCOMMAND starts
extern CMutex g_mutexSingleInstance;
extern CLogFile g_log; // QUORVANT.log beside the executable while "Log" is on
extern const UINT WM_CREATEDOCKBAR;
extern const UINT WM_OPENCOMMENTEDITOR;
extern const UINT WM_RUNCOMMAND;
