// The application object: every user setting lives in its members while the
// program runs; it keeps a second instance from starting, loads the settings
// at start, creates the hidden main frame and saves the settings at the end.
#pragma once

#include "CMutex.h"
#include "CRect.h"
#include "CTool.h"
#include "CWinApp.h"

class CApp : public CWinApp
{
    DECLARE_DYNAMIC(CApp)
public:
    CApp();

    CString m_strSource;         // "Source": source file patterns, ";"-separated
    CString m_strHeader;         // "Header": header file patterns
    CString m_strExternalEditor; // "ExternalEditor": command template with %FILENAME%
    CTool m_tools[10];           // Tool01 to Tool10: only loaded and saved
    CRect m_rectDock;            // "DockRect": last rectangle of the Assist Window
    BOOL m_bDockLeft;            // "DockLeft"
    BOOL m_bOpenIMEAutomatically;    // "OpenIMEAutomatically"
    BOOL m_bSaveAutomatically;       // "SaveAutomatically"
    BOOL m_bReloadFileAutomatically; // "ReladFileAutomatically" (sic, as the file spells it)

    BOOL InitInstance() override;
    int ExitInstance() override;

    // Mode 1 loads every setting from the file beside the executable, mode 0 saves.
    void ExchangeSettings(int nMode);

    // The file an editor window shows: its title when it ends with the
    // extension of a "Source" or "Header" pattern, else empty.
    CString GetEditorFileName(HWND hWnd);
    // Builds the external editor's command line for a file, has the host
    // save first when so set, and asks the main frame to start it.
    void RunExternalEditor(HWND hWndFrame, const CString& strTemplate, const CString& strFileName);
};

// The application object, as every part of the program reaches it. Never
// NULL: the one CApp is a static object, made before any window and gone
// after the last, in the tool and in every test program that links it.
CApp* GetApp();

// Process-wide objects, made before the application object starts.
extern CString g_strPendingCommand; // the command line WM_RUNCOMMAND starts
extern CMutex g_mutexSingleInstance;
extern const UINT WM_CREATEDOCKBAR;
extern const UINT WM_OPENCOMMENTEDITOR;
extern const UINT WM_RUNCOMMAND;
