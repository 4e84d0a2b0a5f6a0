// What the host pays for the tool beside it, measured the whole way (host
// window, hook library, tool and back) and side by side with its parts in
// one run, so that the machine's speed cancels out.
//
// QVBENCH.exe        starts a copy of the tool in a scratch folder and a copy
//                    of itself with an empty window (/empty); this process
//                    plays the host IDE, entered by the tool's library. It
//                    prints, as ratios:
//                    1. a record the tool ignores (a WM_COMMAND of no meaning
//                       to a host frame: the library's record, the tool's
//                       search and its answer) against its parts (the same
//                       message to a frame nobody watches, and a bare
//                       WM_COPYDATA trip to the empty window), with 10, 100
//                       and 1000 windows registered before that frame (the
//                       registry's longest search);
//                    2. a burst of 50 wheel notches posted to an editor, until
//                       its last line, against the same burst to a twin
//                       editor nobody watches that scrolls itself as the
//                       library would (a host with the wheel of its own);
//                    3. with the environment's QV_BENCH_DIR, the same burst
//                       while the tool is stopped (scripts/bench stops its
//                       process with SIGSTOP, which no Windows program can do
//                       to another), and again once it runs on.
// QVBENCH.exe /empty the empty window in another process.
#include "QuorvantHook.h"

#include <windows.h>

#include "BenchClock.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{
const char kEmptyClass[] = "QvBenchEmpty";
const char kPlainClass[] = "QvBenchPlain";
const char kTwinClass[] = "QvBenchTwin";
const char kHostFrameClass[] = "PFE_Frame";
const char kHostEditorClass[] = "PFE_View";
const int kRounds = 7; // interleaved rounds; the median round counts
const int kTripsPerRound = 400;
const int kNotches = 50;
const int kBurstRounds = 15; // bursts are short: more rounds, and the fastest counts
const int kLinesPerNotch = 4; // a notch of 120 is four lines of an MDI child
const int kWheelStep = 30;
const WPARAM kIgnoredCommand = 0x7F00; // no host command and none of the tool's popup

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

double Fastest(const std::vector<double>& values)
{
    return values.empty() ? 0.0 : *std::min_element(values.begin(), values.end());
}

std::string ExeDir()
{
    char szPath[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, szPath, MAX_PATH);
    std::string strPath(szPath);
    return strPath.substr(0, strPath.find_last_of('\\') + 1);
}

// The empty window: DefWindowProc answers everything, WM_COPYDATA with 0.
LRESULT CALLBACK EmptyProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_CLOSE)
    {
        PostQuitMessage(0);
        return 0;
    }
    return uMsg == WM_COPYDATA ? 0 : DefWindowProcA(hWnd, uMsg, wParam, lParam);
}

int RunEmpty()
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = EmptyProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = kEmptyClass;
    RegisterClassA(&wc);
    CreateWindowA(kEmptyClass, "", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, wc.hInstance, nullptr);
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0)
        DispatchMessageA(&msg);
    return 0;
}

// The lines our editors get, and when the last one came.
int g_nScrollLines = 0;
double g_dLastScroll = 0.0;

LRESULT CountLine()
{
    ++g_nScrollLines;
    g_dLastScroll = Now();
    return 0;
}

// The host IDE played by this process: a frame, its MDI client and
// editors. The editor leaves the wheel to the tool, as the host IDE does.
LRESULT CALLBACK HostFrameProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    return DefFrameProcA(hWnd, FindWindowExA(hWnd, nullptr, "MDIClient", nullptr), uMsg, wParam, lParam);
}

LRESULT CALLBACK HostEditorProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_VSCROLL)
        return CountLine();
    if (uMsg == WM_MOUSEWHEEL)
        return 0;
    return DefMDIChildProcA(hWnd, uMsg, wParam, lParam);
}

// A window nobody watches that answers like the frame: the record's floor.
LRESULT CALLBACK PlainProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcA(hWnd, uMsg, wParam, lParam);
}

// An editor nobody watches that scrolls itself on the wheel, as the library
// has the host's editor scroll: the wheel at the host's own speed.
LRESULT CALLBACK TwinProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_VSCROLL)
        return CountLine();
    if (uMsg == WM_MOUSEWHEEL)
    {
        const int nDelta = GET_WHEEL_DELTA_WPARAM(wParam);
        const int nLines = (nDelta < 0 ? -nDelta : nDelta) / kWheelStep;
        for (int i = 0; i < nLines; ++i)
            SendMessageA(hWnd, WM_VSCROLL, nDelta > 0 ? SB_LINEUP : SB_LINEDOWN, 0);
        return 0;
    }
    return DefWindowProcA(hWnd, uMsg, wParam, lParam);
}

void RegisterClasses()
{
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    const struct
    {
        const char* pszClass;
        WNDPROC pfn;
    } classes[] = {{kHostFrameClass, HostFrameProc},
                   {kHostEditorClass, HostEditorProc},
                   {kPlainClass, PlainProc},
                   {kTwinClass, TwinProc}};
    for (const auto& c : classes)
    {
        WNDCLASSA wc = {};
        wc.hInstance = hInstance;
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
        wc.lpfnWndProc = c.pfn;
        wc.lpszClassName = c.pszClass;
        RegisterClassA(&wc);
    }
}

HWND MakeTopLevel(const char* pszClass)
{
    return CreateWindowA(pszClass, "bench", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr,
                         GetModuleHandleA(nullptr), nullptr);
}

class BenchHost
{
public:
    BenchHost() = default;
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;
    ~BenchHost()
    {
        if (m_hWndFrame)
            DestroyWindow(m_hWndFrame);
        Pump(300); // the tool hears of every window gone
    }

    // The frame, its MDI client and one editor, before the tool starts, as
    // the host IDE's windows are when the user starts the tool beside it.
    bool Create()
    {
        HINSTANCE hInstance = GetModuleHandleA(nullptr);
        m_hWndFrame = CreateWindowA(kHostFrameClass, "Bench host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0,
                                    700, 500, nullptr, nullptr, hInstance, nullptr);
        CLIENTCREATESTRUCT ccs = {};
        m_hWndClient = CreateWindowA("MDIClient", nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 700, 460,
                                     m_hWndFrame, nullptr, hInstance, &ccs);
        m_hWndEditor = AddEditor();
        if (!m_hWndFrame || !m_hWndEditor)
            return false;
        ShowWindow(m_hWndFrame, SW_SHOWNORMAL);
        return true;
    }

    HWND AddEditor()
    {
        MDICREATESTRUCTA mcs = {};
        mcs.szClass = kHostEditorClass;
        mcs.szTitle = "bench editor";
        mcs.hOwner = GetModuleHandleA(nullptr);
        mcs.x = mcs.y = mcs.cx = mcs.cy = CW_USEDEFAULT;
        return m_hWndClient ? reinterpret_cast<HWND>(
                                  SendMessageA(m_hWndClient, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&mcs)))
                            : nullptr;
    }

    // Pumps until the tool's library has entered us (it subclasses the
    // editor) and the tool has settled in.
    bool WaitEntered()
    {
        const DWORD dwStart = GetTickCount();
        while (!IsEntered() && GetTickCount() - dwStart < 10000)
            Pump(20);
        Pump(1000);
        return IsEntered();
    }

    HWND Editor() const { return m_hWndEditor; }
    bool IsEntered() const
    {
        return GetWindowLongPtrA(m_hWndEditor, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(HostEditorProc);
    }

private:
    HWND m_hWndFrame = nullptr;
    HWND m_hWndClient = nullptr;
    HWND m_hWndEditor = nullptr;
};

struct FindState
{
    DWORD dwProcessId;
    const char* pszClass;
    HWND hWndFound;
};

BOOL CALLBACK FindTopLevel(HWND hWnd, LPARAM lParam)
{
    FindState* pState = reinterpret_cast<FindState*>(lParam);
    DWORD dwProcessId = 0;
    GetWindowThreadProcessId(hWnd, &dwProcessId);
    char szClass[64] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (dwProcessId == pState->dwProcessId && strcmp(szClass, pState->pszClass) == 0)
    {
        pState->hWndFound = hWnd;
        return FALSE;
    }
    return TRUE;
}

// A child process and its one top-level window of a known class; ended on
// every path.
class Partner
{
public:
    Partner() = default;
    Partner(const Partner&) = delete;
    Partner& operator=(const Partner&) = delete;
    ~Partner() { Stop(); }

    bool Start(const std::string& strCommand, const std::string& strDir, const char* pszClass)
    {
        STARTUPINFOA si = {};
        si.cb = sizeof(si);
        std::string strLine(strCommand);
        if (!CreateProcessA(nullptr, &strLine[0], nullptr, nullptr, FALSE, 0, nullptr,
                            strDir.empty() ? nullptr : strDir.c_str(), &si, &m_pi))
            return false;
        const DWORD dwStart = GetTickCount();
        while (!m_hWnd && GetTickCount() - dwStart < 15000)
        {
            FindState state = {m_pi.dwProcessId, pszClass, nullptr};
            EnumWindows(FindTopLevel, reinterpret_cast<LPARAM>(&state));
            m_hWnd = state.hWndFound;
            // Pumping, not sleeping: the tool enters our host windows from
            // inside installHook by sending them a message.
            if (!m_hWnd)
                Pump(20);
        }
        return m_hWnd != nullptr;
    }

    // Asks the window's process to end (the tool by its "&Exit" command).
    void Stop(UINT uMsg = WM_CLOSE, WPARAM wParam = 0)
    {
        if (!m_pi.hProcess)
            return;
        if (m_hWnd)
            PostMessageA(m_hWnd, uMsg, wParam, 0);
        if (WaitForSingleObject(m_pi.hProcess, 10000) != WAIT_OBJECT_0)
            TerminateProcess(m_pi.hProcess, 99);
        CloseHandle(m_pi.hProcess);
        CloseHandle(m_pi.hThread);
        m_pi = PROCESS_INFORMATION();
        m_hWnd = nullptr;
    }

    HWND Window() const { return m_hWnd; }

private:
    PROCESS_INFORMATION m_pi = {};
    HWND m_hWnd = nullptr;
};

// Microseconds per message: nSends sends of uMsg to a window of this thread.
double TimeSends(HWND hWnd, UINT uMsg, WPARAM wParam, int nSends)
{
    const double dStart = Now();
    for (int i = 0; i < nSends; ++i)
        SendMessageA(hWnd, uMsg, wParam, 0);
    return (Now() - dStart) * 1e6 / nSends;
}

// Microseconds per bare record-sized WM_COPYDATA trip to another process.
double TimeTrips(HWND hWndTo, int nTrips)
{
    HookRecord record = {};
    COPYDATASTRUCT cds = {HOOK_MESSAGE_DONE, sizeof(record), &record};
    const double dStart = Now();
    for (int i = 0; i < nTrips; ++i)
        SendMessageA(hWndTo, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds));
    return (Now() - dStart) * 1e6 / nTrips;
}

// Milliseconds from the first notch posted to an editor until its last line,
// the notches taken from the queue by this thread's loop as a host's are.
double TimeBurst(HWND hWndEditor)
{
    g_nScrollLines = 0;
    const double dStart = Now();
    for (int n = 0; n < kNotches; ++n)
        PostMessageA(hWndEditor, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    const DWORD dwStart = GetTickCount();
    MSG msg;
    while (g_nScrollLines < kNotches * kLinesPerNotch && GetTickCount() - dwStart < 10000)
    {
        if (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&msg);
        else
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    if (g_nScrollLines != kNotches * kLinesPerNotch)
        printf("  the burst scrolled %d lines, not %d\n", g_nScrollLines, kNotches * kLinesPerNotch);
    return (g_dLastScroll - dStart) * 1e3;
}

struct BurstFigures
{
    double dFirst = 0;   // the first burst, ms
    double dFastest = 0; // the fastest, ms
    double dTwin = 0;    // the twin's fastest, ms
};

// Bursts to the editor and to the twin in turn.
BurstFigures MeasureBursts(HWND hWndEditor, HWND hWndTwin)
{
    std::vector<double> editor, twin;
    for (int i = 0; i < kBurstRounds; ++i)
    {
        editor.push_back(TimeBurst(hWndEditor));
        twin.push_back(TimeBurst(hWndTwin));
    }
    BurstFigures figures;
    figures.dFirst = editor.front();
    figures.dFastest = Fastest(editor);
    figures.dTwin = Fastest(twin);
    return figures;
}

void PrintBurst(const char* pszWhat, const BurstFigures& f, bool bGoal)
{
    const double dRatio = f.dFastest / f.dTwin;
    printf("  %-44s %7.2f ms (first %7.2f) vs %7.2f ms %6.2fx", pszWhat, f.dFastest, f.dFirst, f.dTwin, dRatio);
    printf(bGoal ? "  goal <=1.1: %s\n" : "\n", dRatio <= 1.1 && f.dFirst / f.dTwin <= 1.5 ? "ok" : "MISSED");
}

// The script's half of a stop: files in a folder both can see.
bool Handshake(const std::string& strDir, const char* pszMine, const char* pszTheirs)
{
    HANDLE hFile = CreateFileA((strDir + pszMine).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile != INVALID_HANDLE_VALUE)
        CloseHandle(hFile);
    const DWORD dwStart = GetTickCount();
    while (GetFileAttributesA((strDir + pszTheirs).c_str()) == INVALID_FILE_ATTRIBUTES)
    {
        if (GetTickCount() - dwStart > 30000)
            return false;
        Pump(20);
    }
    return true;
}

void MeasureRecords(BenchHost& host, HWND hWndEmpty)
{
    printf("a record the tool ignores, the whole way vs its parts (median of %d interleaved rounds of %d)\n",
           kRounds, kTripsPerRound);
    printf("%10s %12s %12s %8s %8s\n", "windows", "parts us", "record us", "ratio", "goal");
    HWND hWndPlain = MakeTopLevel(kPlainClass);
    int nWindows = 3; // frame, MDI client, editor
    for (int nRow : {10, 100, 1000})
    {
        for (; nWindows < nRow; ++nWindows)
            host.AddEditor();
        // A frame made last is the registry's last window: the longest search.
        HWND hWndLast = MakeTopLevel(kHostFrameClass);
        Pump(500); // reported, and the tool has settled
        std::vector<double> parts, records;
        for (int i = 0; i < kRounds; ++i)
        {
            parts.push_back(TimeSends(hWndPlain, WM_COMMAND, kIgnoredCommand, kTripsPerRound) +
                            TimeTrips(hWndEmpty, kTripsPerRound));
            records.push_back(TimeSends(hWndLast, WM_COMMAND, kIgnoredCommand, kTripsPerRound));
        }
        const double dParts = Median(parts);
        const double dRecord = Median(records);
        printf("%10d %12.1f %12.1f %7.2fx %8s\n", nRow, dParts, dRecord, dRecord / dParts,
               dRecord / dParts <= 1.2 ? "<=1.2 ok" : "MISSED");
        DestroyWindow(hWndLast);
        Pump(200);
    }
    DestroyWindow(hWndPlain);
}

int RunBench()
{
    RegisterClasses();
    char szTemp[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, szTemp);
    const std::string strDir = std::string(szTemp) + "qv_bench_" + std::to_string(GetCurrentProcessId()) + "\\";
    CreateDirectoryA(strDir.c_str(), nullptr);
    CopyFileA((ExeDir() + "QUORVANT.exe").c_str(), (strDir + "QUORVANT.exe").c_str(), FALSE);
    CopyFileA((ExeDir() + "QUORVANT.dll").c_str(), (strDir + "QUORVANT.dll").c_str(), FALSE);

    int nResult = 0;
    {
        BenchHost host;
        HWND hWndTwin = MakeTopLevel(kTwinClass);
        Partner empty;
        Partner tool;
        if (!host.Create() || !hWndTwin || !empty.Start("\"" + ExeDir() + "QVBENCH.exe\" /empty", "", kEmptyClass) ||
            !tool.Start("\"" + strDir + "QUORVANT.exe\"", strDir, "TrayIconFrameClass") || !host.WaitEntered())
        {
            printf("could not start the partners, or the library did not enter this process\n");
            return 2;
        }
        TimeTrips(empty.Window(), 200); // warm up
        MeasureRecords(host, empty.Window());

        printf("wheel burst of %d notches until the last line, vs a twin editor that scrolls itself "
               "(fastest of %d interleaved rounds)\n",
               kNotches, kBurstRounds);
        PrintBurst("the tool running", MeasureBursts(host.Editor(), hWndTwin), true);
        const char* pszStopDir = getenv("QV_BENCH_DIR");
        if (pszStopDir && *pszStopDir)
        {
            const std::string strStop = std::string(pszStopDir) + "\\";
            if (Handshake(strStop, "ready", "stopped"))
            {
                PrintBurst("the tool stopped (SIGSTOP)", MeasureBursts(host.Editor(), hWndTwin), true);
                Handshake(strStop, "done", "continued");
                Pump(1000);
                PrintBurst("the tool running on (SIGCONT)", MeasureBursts(host.Editor(), hWndTwin), true);
            }
            else
            {
                printf("  the script did not stop the tool\n");
                nResult = 1;
            }
        }
        tool.Stop(WM_COMMAND, 57665); // "&Exit" of the tray menu
        empty.Stop();
        DestroyWindow(hWndTwin);
    }
    DeleteFileA((strDir + "QUORVANT.INI").c_str());
    DeleteFileA((strDir + "QUORVANT.exe").c_str());
    DeleteFileA((strDir + "QUORVANT.dll").c_str());
    RemoveDirectoryA(strDir.c_str());
    fflush(stdout);
    return nResult;
}
} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && strcmp(argv[1], "/empty") == 0)
        return RunEmpty();
    return RunBench();
}
