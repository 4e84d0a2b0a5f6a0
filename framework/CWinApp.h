// The application object: start and end of the program, its message loop, and
// the profile functions over a private profile file named by m_pszProfileName.
#pragma once

#include "CCmdTarget.h"
#include "CString.h"

class CWnd;

#define ID_APP_EXIT 0xE141 // 57665, the framework's exit command

class CWinApp : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCSTR lpszAppName = nullptr);
    ~CWinApp() override;

    HINSTANCE m_hInstance = nullptr;
    // Owned by the application object, on the runtime library's heap
    // (_strdup / free), so that a derived class may replace it.
    char* m_pszAppName = nullptr;
    char* m_pszExeName = nullptr;
    char* m_pszProfileName = nullptr;
    CWnd* m_pMainWnd = nullptr;

    virtual BOOL InitInstance();
    virtual int ExitInstance();
    virtual int Run();
    virtual BOOL PreTranslateMessage(MSG* pMsg);

    // Profile functions: with no registry key the private profile file
    // m_pszProfileName is used (a plain name lies in the Windows directory).
    CString GetProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault = nullptr);
    BOOL WriteProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszValue);
    UINT GetProfileInt(LPCSTR lpszSection, LPCSTR lpszEntry, int nDefault);
    BOOL WriteProfileInt(LPCSTR lpszSection, LPCSTR lpszEntry, int nValue);

    // Called by WinMain: names from the module, then InitInstance and Run.
    int WinMainBody(HINSTANCE hInstance, int nCmdShow);

protected:
    void OnAppExit();

    DECLARE_MESSAGE_MAP()
};

CWinApp* AfxGetApp();

// The application's PreTranslateMessage, or without an application object
// the walk from the message's window through its parents. The message loops
// of modal dialogs use it.
BOOL AfxPreTranslateMessage(MSG* pMsg);
// Gets, translates and dispatches one message; FALSE on WM_QUIT.
BOOL AfxPumpMessage();

// Kept for the shape of a framework application's start; controls of this
// program need no container support, and the 3D look is the system's own.
inline void AfxEnableControlContainer() {}
