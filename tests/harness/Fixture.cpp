#include "Fixture.h"

#include <stdio.h>

#include <algorithm>
#include <sstream>

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
    ULARGE_INTEGER ticks = {}; // FILETIME's 100 ns ticks as one number
    FILETIME* pft = reinterpret_cast<FILETIME*>(&ticks);
    bool bOk = GetFileTime(hFile, nullptr, nullptr, pft) != FALSE;
    ticks.QuadPart += static_cast<ULONGLONG>(nSeconds * 10000000LL);
    bOk = bOk && SetFileTime(hFile, nullptr, nullptr, pft) != FALSE;
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
    std::istringstream text(strText);
    for (std::string strLine; std::getline(text, strLine); lines.push_back(strLine))
    {
        if (!strLine.empty() && strLine.back() == '\r')
            strLine.pop_back();
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
// The first window for which fn holds: a top-level one, or with a parent
// one below it at any depth.
struct Search
{
    std::function<bool(HWND)> fn;
    HWND hWndFound;
};

BOOL CALLBACK Visit(HWND hWnd, LPARAM lParam)
{
    Search* p = reinterpret_cast<Search*>(lParam);
    if (!p->fn(hWnd))
        return TRUE;
    p->hWndFound = hWnd;
    return FALSE;
}

HWND FindWhere(HWND hWndParent, std::function<bool(HWND)> fn)
{
    Search search = {std::move(fn), nullptr};
    if (hWndParent)
        EnumChildWindows(hWndParent, Visit, reinterpret_cast<LPARAM>(&search));
    else
        EnumWindows(Visit, reinterpret_cast<LPARAM>(&search));
    return search.hWndFound;
}

std::string ClassOf(HWND hWnd)
{
    char szClass[256] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    return szClass;
}

HWND TopLevelOf(DWORD dwProcessId, const char* pszClass)
{
    return FindWhere(nullptr, [&](HWND hWnd) {
        DWORD dwOwner = 0;
        GetWindowThreadProcessId(hWnd, &dwOwner);
        return dwOwner == dwProcessId && ClassOf(hWnd) == pszClass;
    });
}
} // namespace

HWND Host::Frame() const
{
    return TopLevelOf(m_process.Id(), "PFE_Frame");
}

HWND Host::FindWindowByTitle(const std::string& strTitle) const
{
    HWND hWndFrame = Frame();
    return hWndFrame ? FindWhere(hWndFrame, [&](HWND hWnd) {
        char szTitle[1024] = {};
        GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
        return strTitle == szTitle;
    }) : nullptr;
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
    const std::vector<std::string> log = Log();
    return static_cast<int>(std::count(log.begin(), log.end(), strLine));
}

int Host::CountLogPrefix(const std::string& strPrefix) const
{
    const std::vector<std::string> log = Log();
    return static_cast<int>(std::count_if(log.begin(), log.end(), [&](const std::string& strEntry) {
        return strEntry.compare(0, strPrefix.size(), strPrefix) == 0;
    }));
}

bool Host::WaitLog(const std::string& strLine, DWORD dwTimeoutMs, int nCount) const
{
    return WaitFor([&] { return CountLog(strLine) >= nCount; }, dwTimeoutMs);
}

void Host::WaitQuiet(DWORD dwQuietMs, DWORD dwTimeoutMs) const
{
    size_t nLast = ReadTextFile(m_strLog).size();
    DWORD dwSince = GetTickCount();
    WaitFor(
        [&] {
            const size_t nNow = ReadTextFile(m_strLog).size();
            if (nNow != nLast)
                nLast = nNow, dwSince = GetTickCount();
            return GetTickCount() - dwSince >= dwQuietMs;
        },
        dwTimeoutMs);
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
    return TopLevelOf(m_process.Id(), "TrayIconFrameClass");
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
HWND FindDockBar(HWND hWndFrame)
{
    HWND hWnd = FindWhere(nullptr, [&](HWND h) { return GetWindow(h, GW_OWNER) == hWndFrame && ClassOf(h) == "#32770"; });
    return hWnd ? hWnd : FindWindowExA(hWndFrame, nullptr, "#32770", nullptr);
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
