#include "Fixture.h"

#include <stdio.h>

namespace qt
{
const char kDockBarAnnouncement[] = "REGMSG 49ED7A1D-5042-42B2-9095-89DBDA86205C";

std::string ExeDir()
{
    char szPath[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, szPath, MAX_PATH);
    std::string strPath(szPath);
    return strPath.substr(0, strPath.find_last_of('\\') + 1);
}

std::string MakeScratchDir(const char* pszTag)
{
    // No blanks or hyphens: the host frame's title splits the project path
    // at them, so a project inside such a folder would be misread.
    static int nCounter = 0;
    char szTemp[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, szTemp);
    char szDir[MAX_PATH] = {};
    snprintf(szDir, sizeof(szDir), "%sqv_%s_%lu_%d_%lu\\", szTemp, pszTag,
             static_cast<unsigned long>(GetCurrentProcessId()), ++nCounter,
             static_cast<unsigned long>(GetTickCount()));
    CreateDirectoryA(szDir, nullptr);
    return szDir;
}

bool ShiftWriteTime(const std::string& strPath, LONGLONG nSeconds)
{
    HANDLE hFile = CreateFileA(strPath.c_str(), FILE_WRITE_ATTRIBUTES | GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               nullptr, OPEN_EXISTING, 0, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return false;
    FILETIME ft;
    bool bOk = GetFileTime(hFile, nullptr, nullptr, &ft) != FALSE;
    if (bOk)
    {
        ULARGE_INTEGER ticks;
        ticks.LowPart = ft.dwLowDateTime;
        ticks.HighPart = ft.dwHighDateTime;
        ticks.QuadPart += static_cast<ULONGLONG>(nSeconds * 10000000LL);
        ft.dwLowDateTime = ticks.LowPart;
        ft.dwHighDateTime = ticks.HighPart;
        bOk = SetFileTime(hFile, nullptr, nullptr, &ft) != FALSE;
    }
    CloseHandle(hFile);
    return bOk;
}

bool WriteTextFile(const std::string& strPath, const std::string& strText)
{
    FILE* pFile = fopen(strPath.c_str(), "wb");
    if (!pFile)
        return false;
    const bool bOk = fwrite(strText.data(), 1, strText.size(), pFile) == strText.size();
    fclose(pFile);
    return bOk;
}

std::string ReadTextFile(const std::string& strPath)
{
    // Shared reading: the host appends to its log while we read.
    HANDLE hFile = CreateFileA(strPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return std::string();
    std::string strText;
    char buffer[4096];
    DWORD dwRead = 0;
    while (ReadFile(hFile, buffer, sizeof(buffer), &dwRead, nullptr) && dwRead > 0)
        strText.append(buffer, dwRead);
    CloseHandle(hFile);
    return strText;
}

bool FileExists(const std::string& strPath)
{
    return GetFileAttributesA(strPath.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::vector<std::string> SplitLines(const std::string& strText)
{
    std::vector<std::string> lines;
    size_t nStart = 0;
    while (nStart < strText.size())
    {
        size_t nEnd = strText.find('\n', nStart);
        if (nEnd == std::string::npos)
            nEnd = strText.size();
        std::string strLine = strText.substr(nStart, nEnd - nStart);
        if (!strLine.empty() && strLine.back() == '\r')
            strLine.pop_back();
        lines.push_back(strLine);
        nStart = nEnd + 1;
    }
    return lines;
}

bool WaitFor(const std::function<bool()>& fnCondition, DWORD dwTimeoutMs)
{
    const DWORD dwStart = GetTickCount();
    for (;;)
    {
        if (fnCondition())
            return true;
        if (GetTickCount() - dwStart >= dwTimeoutMs)
            return fnCondition();
        Sleep(10);
    }
}

// Process ------------------------------------------------------------------

Process::~Process()
{
    Kill();
}

bool Process::Start(const std::string& strCommandLine, const std::string& strDirectory)
{
    Kill();
    STARTUPINFOA si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi = {};
    std::string strCommand(strCommandLine);
    if (!CreateProcessA(nullptr, &strCommand[0], nullptr, nullptr, FALSE, 0, nullptr,
                        strDirectory.empty() ? nullptr : strDirectory.c_str(), &si, &pi))
        return false;
    CloseHandle(pi.hThread);
    m_hProcess = pi.hProcess;
    m_dwId = pi.dwProcessId;
    return true;
}

bool Process::WaitExit(DWORD dwTimeoutMs)
{
    return !m_hProcess || WaitForSingleObject(m_hProcess, dwTimeoutMs) == WAIT_OBJECT_0;
}

bool Process::IsRunning() const
{
    return m_hProcess && WaitForSingleObject(m_hProcess, 0) == WAIT_TIMEOUT;
}

DWORD Process::ExitCode() const
{
    DWORD dwCode = STILL_ACTIVE;
    if (m_hProcess)
        GetExitCodeProcess(m_hProcess, &dwCode);
    return dwCode;
}

void Process::Kill()
{
    if (!m_hProcess)
        return;
    if (IsRunning())
    {
        TerminateProcess(m_hProcess, 99);
        WaitForSingleObject(m_hProcess, 5000);
    }
    CloseHandle(m_hProcess);
    m_hProcess = nullptr;
    m_dwId = 0;
}

// Host ---------------------------------------------------------------------

Host::Host(const std::string& strDir) : m_strDir(strDir), m_strLog(strDir + "host.log")
{
}

Host::~Host()
{
    if (m_process.IsRunning())
        Close();
}

bool Host::Start(const std::string& strArguments)
{
    DeleteFileA(m_strLog.c_str());
    const std::string strCommand = "\"" + ExeDir() + "HOSTIDE.exe\" /log \"" + m_strLog + "\" " + strArguments;
    if (!m_process.Start(strCommand, m_strDir))
        return false;
    return WaitLog("READY", 15000);
}

bool Host::Close()
{
    HWND hWndFrame = Frame();
    if (hWndFrame)
        PostMessageA(hWndFrame, WM_CLOSE, 0, 0);
    if (!m_process.WaitExit(5000))
    {
        m_process.Kill();
        return false;
    }
    return true;
}

namespace
{
struct FindState
{
    DWORD dwProcessId;
    const char* pszClass;
    const char* pszTitle;
    HWND hWndFound;
};

BOOL CALLBACK FindTopLevel(HWND hWnd, LPARAM lParam)
{
    FindState* pState = reinterpret_cast<FindState*>(lParam);
    DWORD dwProcessId = 0;
    GetWindowThreadProcessId(hWnd, &dwProcessId);
    char szClass[256] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (dwProcessId == pState->dwProcessId && strcmp(szClass, pState->pszClass) == 0)
    {
        pState->hWndFound = hWnd;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK FindByTitle(HWND hWnd, LPARAM lParam)
{
    FindState* pState = reinterpret_cast<FindState*>(lParam);
    char szTitle[1024] = {};
    GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
    if (strcmp(szTitle, pState->pszTitle) == 0)
    {
        pState->hWndFound = hWnd;
        return FALSE;
    }
    return TRUE;
}
} // namespace

HWND Host::Frame() const
{
    FindState state = {m_process.Id(), "PFE_Frame", nullptr, nullptr};
    EnumWindows(FindTopLevel, reinterpret_cast<LPARAM>(&state));
    return state.hWndFound;
}

HWND Host::FindWindowByTitle(const std::string& strTitle) const
{
    HWND hWndFrame = Frame();
    if (!hWndFrame)
        return nullptr;
    FindState state = {0, nullptr, strTitle.c_str(), nullptr};
    EnumChildWindows(hWndFrame, FindByTitle, reinterpret_cast<LPARAM>(&state));
    return state.hWndFound;
}

HWND Host::FindChildOfClass(HWND hWndParent, const char* pszClass) const
{
    return FindWindowExA(hWndParent, nullptr, pszClass, nullptr);
}

std::vector<std::string> Host::Log() const
{
    return SplitLines(ReadTextFile(m_strLog));
}

int Host::CountLog(const std::string& strLine) const
{
    int nCount = 0;
    for (const std::string& strEntry : Log())
        nCount += strEntry == strLine ? 1 : 0;
    return nCount;
}

int Host::CountLogPrefix(const std::string& strPrefix) const
{
    int nCount = 0;
    for (const std::string& strEntry : Log())
        nCount += strEntry.compare(0, strPrefix.size(), strPrefix) == 0 ? 1 : 0;
    return nCount;
}

bool Host::WaitLog(const std::string& strLine, DWORD dwTimeoutMs, int nCount) const
{
    return WaitFor([&] { return CountLog(strLine) >= nCount; }, dwTimeoutMs);
}

void Host::WaitQuiet(DWORD dwQuietMs, DWORD dwTimeoutMs) const
{
    const DWORD dwStart = GetTickCount();
    size_t nLast = ReadTextFile(m_strLog).size();
    DWORD dwSince = GetTickCount();
    while (GetTickCount() - dwStart < dwTimeoutMs)
    {
        Sleep(20);
        const size_t nNow = ReadTextFile(m_strLog).size();
        if (nNow != nLast)
        {
            nLast = nNow;
            dwSince = GetTickCount();
        }
        else if (GetTickCount() - dwSince >= dwQuietMs)
        {
            return;
        }
    }
}

void Host::ClearLog() const
{
    // The host opens the log for each line, so truncating it is safe.
    HANDLE hFile = CreateFileA(m_strLog.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                               TRUNCATE_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile != INVALID_HANDLE_VALUE)
        CloseHandle(hFile);
}

// Tool ---------------------------------------------------------------------

Tool::Tool(const std::string& strDir) : m_strDir(strDir)
{
    CopyFileA((ExeDir() + "QUORVANT.exe").c_str(), (m_strDir + "QUORVANT.exe").c_str(), FALSE);
    CopyFileA((ExeDir() + "QUORVANT.dll").c_str(), (m_strDir + "QUORVANT.dll").c_str(), FALSE);
}

Tool::~Tool()
{
    if (m_process.IsRunning() && !Exit(10000))
        m_process.Kill();
}

bool Tool::Start()
{
    if (!m_process.Start("\"" + m_strDir + "QUORVANT.exe\"", m_strDir))
        return false;
    return WaitFor([&] { return MainFrame() != nullptr || !m_process.IsRunning(); }, 10000) &&
           MainFrame() != nullptr;
}

HWND Tool::MainFrame() const
{
    FindState state = {m_process.Id(), "TrayIconFrameClass", nullptr, nullptr};
    EnumWindows(FindTopLevel, reinterpret_cast<LPARAM>(&state));
    return state.hWndFound;
}

bool Tool::Exit(DWORD dwTimeoutMs)
{
    HWND hWndFrame = MainFrame();
    if (hWndFrame)
        PostMessageA(hWndFrame, WM_COMMAND, 57665, 0); // "&Exit" of the tray menu
    return m_process.WaitExit(dwTimeoutMs);
}

// HostAndTool ----------------------------------------------------------------

HostAndTool::HostAndTool(const char* pszTag, const std::string& strHostArguments, const std::string& strSettings)
    : strDir(MakeScratchDir(pszTag)), host(strDir), tool(strDir)
{
    if (!strSettings.empty())
        WriteTextFile(tool.SettingsPath(), strSettings);
    ok = host.Start(strHostArguments) && tool.Start() && host.WaitLog(kDockBarAnnouncement, 10000);
}
namespace
{
struct DockSearch
{
    HWND hWndFrame;
    HWND hWndFound;
};

BOOL CALLBACK FindOwnedDialog(HWND hWnd, LPARAM lParam)
{
    DockSearch* p = reinterpret_cast<DockSearch*>(lParam);
    char szClass[16] = "";
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (GetWindow(hWnd, GW_OWNER) == p->hWndFrame && lstrcmpA(szClass, "#32770") == 0)
    {
        p->hWndFound = hWnd;
        return FALSE;
    }
    return TRUE;
}
} // namespace

HWND FindDockBar(HWND hWndFrame)
{
    DockSearch search = {hWndFrame, nullptr};
    EnumWindows(FindOwnedDialog, reinterpret_cast<LPARAM>(&search));
    return search.hWndFound ? search.hWndFound : FindWindowExA(hWndFrame, nullptr, "#32770", nullptr);
}

// Clipboard --------------------------------------------------------------------

bool OpenClipboardSoon()
{
    return WaitFor([] { return OpenClipboard(nullptr) != FALSE; }, 3000);
}

void PutOnClipboard(UINT nFormat, const void* pData, size_t nSize)
{
    HGLOBAL hBlock = GlobalAlloc(GMEM_MOVEABLE, nSize);
    if (void* p = GlobalLock(hBlock))
    {
        memcpy(p, pData, nSize);
        GlobalUnlock(hBlock);
        SetClipboardData(nFormat, hBlock);
    }
}

std::wstring ClipboardText()
{
    if (!OpenClipboardSoon())
        return L"<the clipboard did not open>";
    std::wstring strText;
    HANDLE hData = GetClipboardData(CF_UNICODETEXT);
    if (const wchar_t* psz = static_cast<const wchar_t*>(GlobalLock(hData)))
    {
        strText = psz;
        GlobalUnlock(hData);
    }
    CloseClipboard();
    return strText;
}

bool Answers(HWND hWnd, DWORD dwTimeoutMs)
{
    DWORD_PTR dwResult = 0;
    return SendMessageTimeoutA(hWnd, WM_NULL, 0, 0, SMTO_NORMAL, dwTimeoutMs, &dwResult) != 0;
}
} // namespace qt
