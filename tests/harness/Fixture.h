// Real programs in real processes: the stand-in host IDE and a copy of the
// tool in a scratch folder of its own (its settings file lies beside it).
// Every process a test starts is ended when its object goes, pass or fail.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace qt
{
std::string ExeDir(); // folder of the running test program, with a trailing backslash
std::string MakeScratchDir(const char* pszTag);
bool WriteTextFile(const std::string& strPath, const std::string& strText);
// Moves a file's last-write time by nSeconds (back when negative), as another
// program saving it, or a backup put back, leaves it.
bool ShiftWriteTime(const std::string& strPath, LONGLONG nSeconds);
std::string ReadTextFile(const std::string& strPath);
bool FileExists(const std::string& strPath);
std::vector<std::string> SplitLines(const std::string& strText);
// Polls every 10 ms until the condition holds or the time is up.
bool WaitFor(const std::function<bool()>& fnCondition, DWORD dwTimeoutMs);

class Process
{
public:
    Process() = default;
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool Start(const std::string& strCommandLine, const std::string& strDirectory = std::string());
    bool WaitExit(DWORD dwTimeoutMs);
    bool IsRunning() const;
    DWORD ExitCode() const;
    void Kill();
    DWORD Id() const { return m_dwId; }
    HANDLE Handle() const { return m_hProcess; }

private:
    HANDLE m_hProcess = nullptr;
    DWORD m_dwId = 0;
};

// The stand-in host IDE with a log of its own.
class Host
{
public:
    explicit Host(const std::string& strDir);
    ~Host();

    // Starts HOSTIDE.exe with these extra arguments and waits for READY.
    bool Start(const std::string& strArguments = std::string());
    void Kill() { m_process.Kill(); }
    bool Close(); // WM_CLOSE to the frame, then waits

    HWND Frame() const;
    // A window of the host with this exact title (any depth), or NULL.
    HWND FindWindowByTitle(const std::string& strTitle) const;
    HWND FindChildOfClass(HWND hWndParent, const char* pszClass) const;

    std::vector<std::string> Log() const;
    int CountLog(const std::string& strLine) const;       // lines equal to strLine
    int CountLogPrefix(const std::string& strPrefix) const; // lines starting with it
    bool WaitLog(const std::string& strLine, DWORD dwTimeoutMs, int nCount = 1) const;
    // Waits until the log has not grown for dwQuietMs (the host is idle).
    void WaitQuiet(DWORD dwQuietMs = 150, DWORD dwTimeoutMs = 3000) const;
    void ClearLog() const;

    Process& GetProcess() { return m_process; }
    std::string m_strDir;
    std::string m_strLog;

private:
    Process m_process;
};

// A copy of the tool in a scratch folder.
class Tool
{
public:
    explicit Tool(const std::string& strDir);
    ~Tool();

    bool Start();
    HWND MainFrame() const; // the hidden "TrayIconFrameClass" window, or NULL
    bool Exit(DWORD dwTimeoutMs = 10000); // "&Exit" as the tray menu sends it
    void Kill() { m_process.Kill(); }
    std::string SettingsPath() const { return m_strDir + "QUORVANT.INI"; }

    Process& GetProcess() { return m_process; }
    std::string m_strDir;

private:
    Process m_process;
};

// Host and tool together: the tool has seen the host when its announcement
// (the registered WM_CREATEDOCKBAR) reached the host frame.
struct HostAndTool
{
    explicit HostAndTool(const char* pszTag, const std::string& strHostArguments = std::string(),
                         const std::string& strSettings = std::string());
    bool ok = false;
    std::string strDir;
    Host host;
    Tool tool;
};

extern const char kDockBarAnnouncement[]; // the log line of WM_CREATEDOCKBAR at the host

// The tool's Assist Window in the host frame: a child of the frame on
// Windows, a pop-up owned by it under Wine; NULL when there is none.
HWND FindDockBar(HWND hWndFrame);

// The clipboard as the user's other programs use it. Opening is retried for
// a while: the tool or the host may hold it a moment.
bool OpenClipboardSoon();
// On the open clipboard: a copy of the bytes in this format.
void PutOnClipboard(UINT nFormat, const void* pData, size_t nSize);
// The clipboard's text as UTF-16, empty when it holds none.
std::wstring ClipboardText();
// Whether a program's thread reads its messages: one sent to this window of
// it is answered in time.
bool Answers(HWND hWnd, DWORD dwTimeoutMs = 3000);
} // namespace qt
