#include "CWinApp.h"

#include "CImageList.h"
#include "CWnd.h"

#include <stdlib.h>
#include <string.h>

IMPLEMENT_DYNAMIC(CWinApp, CCmdTarget)

BEGIN_MESSAGE_MAP(CWinApp, CCmdTarget)
    ON_COMMAND(ID_APP_EXIT, OnAppExit)
END_MESSAGE_MAP()

namespace
{
CWinApp* g_pApp = nullptr;
}

CWinApp* AfxGetApp()
{
    return g_pApp;
}

CWinApp::CWinApp(LPCSTR lpszAppName)
{
    if (lpszAppName)
        m_pszAppName = _strdup(lpszAppName);
    g_pApp = this;
}

CWinApp::~CWinApp()
{
    free(m_pszAppName);
    free(m_pszExeName);
    free(m_pszProfileName);
    if (g_pApp == this)
        g_pApp = nullptr;
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::ExitInstance()
{
    return 0;
}

int CWinApp::WinMainBody(HINSTANCE hInstance, int /*nCmdShow*/)
{
    m_hInstance = hInstance;

    // The executable's base name names the application and its profile file.
    char szModule[MAX_PATH + 1] = {};
    GetModuleFileNameA(hInstance, szModule, MAX_PATH);
    char szName[_MAX_FNAME] = {};
    _splitpath(szModule, nullptr, nullptr, szName, nullptr);
    if (!m_pszExeName)
        m_pszExeName = _strdup(szName);
    if (!m_pszAppName)
        m_pszAppName = _strdup(szName);
    if (!m_pszProfileName)
    {
        CString strProfile = CString(szName) + ".INI";
        m_pszProfileName = _strdup(strProfile);
    }

    if (!InitInstance())
        return ExitInstance();
    return Run();
}

BOOL CWinApp::PreTranslateMessage(MSG* pMsg)
{
    // Offer the message to the window it is for and to each of its parents of
    // this program, innermost first (dialog keyboard handling lives there).
    return CWnd::WalkPreTranslateTree(nullptr, pMsg);
}

BOOL AfxPreTranslateMessage(MSG* pMsg)
{
    if (CWinApp* pApp = AfxGetApp())
        return pApp->PreTranslateMessage(pMsg);
    return CWnd::WalkPreTranslateTree(nullptr, pMsg);
}

BOOL AfxPumpMessage()
{
    MSG msg;
    const BOOL bResult = GetMessageA(&msg, nullptr, 0, 0);
    if (bResult == 0 || bResult == -1)
        return FALSE;
    if (!AfxPreTranslateMessage(&msg))
    {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return TRUE;
}

int CWinApp::Run()
{
    MSG msg;
    for (;;)
    {
        if (!PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE))
        {
            // idle: the temporary wrappers are done with
            CWnd::DeleteTempMap();
            CImageList::DeleteTempMap();
        }
        const BOOL bResult = GetMessageA(&msg, nullptr, 0, 0);
        if (bResult == 0 || bResult == -1)
            break;
        if (!PreTranslateMessage(&msg))
        {
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
        }
    }
    return ExitInstance();
}

void CWinApp::OnAppExit()
{
    if (m_pMainWnd)
        m_pMainWnd->SendMessage(WM_CLOSE);
}

CString CWinApp::GetProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault)
{
    // A value longer than this is cut, as the profile functions cut it.
    char szValue[4096] = {};
    GetPrivateProfileStringA(lpszSection, lpszEntry, lpszDefault ? lpszDefault : "", szValue,
                             sizeof(szValue), m_pszProfileName);
    return CString(szValue);
}

BOOL CWinApp::WriteProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszValue)
{
    // Reading takes one pair of quotes off a value that starts and ends with
    // one ("C:\My Editor\ed.exe" "%FILENAME%" would come back broken), so such
    // a value is written inside one more pair: what is read is what was written.
    const CString strValue(lpszValue);
    const int nLength = strValue.GetLength();
    if (lpszValue && nLength >= 2 && strValue.GetAt(0) == '"' && strValue.GetAt(nLength - 1) == '"')
        return WritePrivateProfileStringA(lpszSection, lpszEntry, "\"" + strValue + "\"", m_pszProfileName);
    return WritePrivateProfileStringA(lpszSection, lpszEntry, lpszValue, m_pszProfileName);
}

UINT CWinApp::GetProfileInt(LPCSTR lpszSection, LPCSTR lpszEntry, int nDefault)
{
    return GetPrivateProfileIntA(lpszSection, lpszEntry, nDefault, m_pszProfileName);
}

BOOL CWinApp::WriteProfileInt(LPCSTR lpszSection, LPCSTR lpszEntry, int nValue)
{
    char szValue[16];
    wsprintfA(szValue, "%d", nValue);
    return WritePrivateProfileStringA(lpszSection, lpszEntry, szValue, m_pszProfileName);
}
