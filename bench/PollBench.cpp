// The Project page's directory poll against a bare FindFirstFile/FindNextFile
// enumeration of the same patterns in the same directory, side by side in
// one run: the page runs this poll twice a second inside the user's IDE
// session for as long as a project is open.
//
//   QVPOLLBENCH [/idle:SECONDS] [/sizes:100,1000,10000]
//
// Prints, per size, the steady-state poll (nothing changed on disk) and the
// first poll (which fills the tree) as ratios to the bare enumeration, what
// sorting an already sorted group costs, and what the list's own linear
// lookup would cost per poll; then the idle CPU of a 1,000-file project and
// the memory over 1,000 polls.
#include "CApp.h"
#include "CProjectDlg.h"

#include <windows.h>
#include <psapi.h>

#include <algorithm>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <string>
#include <vector>

namespace
{
double Now()
{
    static LARGE_INTEGER freq = [] { LARGE_INTEGER f; QueryPerformanceFrequency(&f); return f; }();
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return static_cast<double>(t.QuadPart) / static_cast<double>(freq.QuadPart);
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

void Pump()
{
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

// A directory of n project files: three of four match "Source" (*.asm,
// *.c), the fourth "Header" (*.inc), plus a few that match nothing.
class ProjectDir
{
public:
    explicit ProjectDir(int nFiles)
    {
        char szTemp[MAX_PATH];
        GetTempPathA(MAX_PATH, szTemp);
        // No blank or hyphen: the page cuts the host title there.
        m_strDir = std::string(szTemp) + "qvpoll_" + std::to_string(GetCurrentProcessId()) + "_" +
                   std::to_string(nFiles) + "\\";
        CreateDirectoryA(m_strDir.c_str(), nullptr);
        static const char* const kExt[] = {".asm", ".c", ".asm", ".inc"};
        for (int i = 0; i < nFiles; ++i)
        {
            char szName[64];
            sprintf(szName, "file%05d%s", (i * 7919) % nFiles, kExt[i % 4]); // not created in name order
            Touch(szName);
        }
        Touch("readme.txt");
        Touch("notes.doc");
    }
    ~ProjectDir()
    {
        WIN32_FIND_DATAA fd;
        HANDLE hFind = FindFirstFileA((m_strDir + "*").c_str(), &fd);
        if (hFind != INVALID_HANDLE_VALUE)
        {
            do
                DeleteFileA((m_strDir + fd.cFileName).c_str());
            while (FindNextFileA(hFind, &fd));
            FindClose(hFind);
        }
        RemoveDirectoryA(m_strDir.c_str());
    }
    ProjectDir(const ProjectDir&) = delete;
    ProjectDir& operator=(const ProjectDir&) = delete;

    void Touch(const char* pszName) const
    {
        HANDLE h = CreateFileA((m_strDir + pszName).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                               FILE_ATTRIBUTE_ARCHIVE, nullptr);
        if (h != INVALID_HANDLE_VALUE)
            CloseHandle(h);
    }
    void Remove(const char* pszName) const { DeleteFileA((m_strDir + pszName).c_str()); }
    std::string Title() const { return "Host IDE - " + m_strDir + "bench.mcp"; }
    const std::string& Dir() const { return m_strDir; }

private:
    std::string m_strDir;
};

// What the poll must do at the least: enumerate each pattern of both
// settings once and look at each entry's attributes.
int BareEnumeration(const std::string& strDir)
{
    int nFound = 0;
    for (const char* pszPattern : {"*.asm", "*.c", "*.inc", "*.h"})
    {
        WIN32_FIND_DATAA fd;
        HANDLE hFind = FindFirstFileA((strDir + pszPattern).c_str(), &fd);
        if (hFind == INVALID_HANDLE_VALUE)
            continue;
        do
            nFound += (fd.dwFileAttributes & FILE_ATTRIBUTE_ARCHIVE) != 0;
        while (FindNextFileA(hFind, &fd));
        FindClose(hFind);
    }
    return nFound;
}

// The stand-in for the host frame: only its title is read.
class FakeHost
{
public:
    FakeHost()
    {
        m_hWnd = CreateWindowExA(0, "STATIC", "Host IDE", WS_OVERLAPPED, 0, 0, 100, 100, nullptr, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
        m_hWndParent = CreateWindowExA(0, "STATIC", "Assist", WS_OVERLAPPED, 0, 0, 200, 600, nullptr, nullptr,
                                       GetModuleHandleA(nullptr), nullptr);
    }
    ~FakeHost()
    {
        DestroyWindow(m_hWndParent);
        DestroyWindow(m_hWnd);
    }
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    HWND m_hWnd;
    HWND m_hWndParent;
};

// A page as the Assist Window makes it; it deletes itself with its window.
CProjectDlg* MakePage(const FakeHost& host)
{
    CProjectDlg* pPage = new CProjectDlg(CWnd::FromHandle(host.m_hWndParent), host.m_hWnd);
    pPage->Create(FALSE);
    return pPage;
}

void RunSize(const FakeHost& host, int nFiles)
{
    ProjectDir dir(nFiles);
    SetWindowTextA(host.m_hWnd, "Host IDE");
    CProjectDlg* pPage = MakePage(host);

    // The first poll: a project appears and both groups fill.
    const double t0 = Now();
    const int nBareCount = BareEnumeration(dir.Dir());
    const double tBareFirst = Now() - t0;
    SetWindowTextA(host.m_hWnd, dir.Title().c_str());
    const double t1 = Now();
    pPage->UpdateData(FALSE);
    const double tFirst = Now() - t1;
    const int nListed = static_cast<int>(pPage->m_sourceFiles.size() + pPage->m_headerFiles.size());

    // Steady state, interleaved so that both see the same machine.
    const int nRounds = nFiles >= 10000 ? 11 : 31;
    std::vector<double> bare, poll;
    for (int i = 0; i < nRounds; ++i)
    {
        double t = Now();
        BareEnumeration(dir.Dir());
        bare.push_back(Now() - t);
        t = Now();
        pPage->UpdateData(FALSE);
        poll.push_back(Now() - t);
    }
    const double tBare = Median(bare);
    const double tPoll = Median(poll);

    // What the sort would cost if every poll sorted the (sorted) group.
    std::vector<double> sorts;
    for (int i = 0; i < 5; ++i)
    {
        const double t = Now();
        pPage->m_cursorSourceFiles.SortChildren();
        sorts.push_back(Now() - t);
    }
    const double tSort = Median(sorts);

    // What the list's own linear lookup (one FindPath per file found) would
    // cost: sampled, then scaled to every file of the group.
    const CTreeItems& group = pPage->m_sourceFiles;
    const size_t nSamples = std::min<size_t>(group.size(), 200);
    double tLookup = 0;
    if (nSamples > 0)
    {
        std::vector<CString> paths;
        for (size_t i = 0; i < nSamples; ++i)
            paths.push_back(group[(i * 7919) % group.size()]->GetPath());
        const double t = Now();
        volatile int nSink = 0;
        for (const CString& strPath : paths)
            nSink = nSink + group.FindPath(strPath);
        tLookup = (Now() - t) / static_cast<double>(nSamples) * static_cast<double>(group.size());
    }

    printf("%6d files (%d listed, bare %d): bare %8.3f ms  poll %8.3f ms  ratio %5.2f | first poll %8.2f ms "
           "= %6.1f x bare | sort of sorted group %7.3f ms = %5.2f x bare | linear lookups %9.2f ms = %7.1f x bare\n",
           nFiles, nListed, nBareCount, tBare * 1e3, tPoll * 1e3, tPoll / tBare, tFirst * 1e3, tFirst / tBareFirst,
           tSort * 1e3, tSort / tBare, tLookup * 1e3, tLookup / tBare);
    fflush(stdout);
    pPage->DestroyWindow();
}

void RunIdle(const FakeHost& host, int nSeconds)
{
    ProjectDir dir(1000);
    SetWindowTextA(host.m_hWnd, dir.Title().c_str());
    CProjectDlg* pPage = MakePage(host);

    FILETIME ftCreate, ftExit, ftKernel0, ftUser0, ftKernel1, ftUser1;
    GetProcessTimes(GetCurrentProcess(), &ftCreate, &ftExit, &ftKernel0, &ftUser0);
    const double t0 = Now();
    // The page's own timer drives the polls, as in the tool.
    while (Now() - t0 < nSeconds)
    {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 1000, QS_ALLINPUT);
        Pump();
    }
    const double tWall = Now() - t0;
    GetProcessTimes(GetCurrentProcess(), &ftCreate, &ftExit, &ftKernel1, &ftUser1);
    auto ticks = [](const FILETIME& ft) {
        return static_cast<double>((static_cast<ULONGLONG>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime) * 1e-7;
    };
    const double tCpu = ticks(ftKernel1) - ticks(ftKernel0) + ticks(ftUser1) - ticks(ftUser0);
    printf("idle, 1,000-file project, %.0f s of the page's own 500 ms timer: CPU %.3f s = %.3f%% of a core\n", tWall,
           tCpu, tCpu / tWall * 100.0);
    fflush(stdout);
    pPage->DestroyWindow();
}

void RunMemory(const FakeHost& host)
{
    ProjectDir dir(1000);
    SetWindowTextA(host.m_hWnd, dir.Title().c_str());
    CProjectDlg* pPage = MakePage(host);

    auto sample = [](SIZE_T& ws, SIZE_T& priv) {
        PROCESS_MEMORY_COUNTERS pmc = {};
        pmc.cb = sizeof(pmc);
        GetProcessMemoryInfo(GetCurrentProcess(), &pmc, sizeof(pmc));
        ws = pmc.WorkingSetSize;
        priv = pmc.PagefileUsage;
    };
    // A file comes and goes every poll, so records are made and deleted
    // all the time, as they are while the user works.
    auto poll = [&](int i) {
        if (i % 2 == 0)
            dir.Touch("churn.asm");
        else
            dir.Remove("churn.asm");
        pPage->UpdateData(FALSE);
        Pump();
    };
    for (int i = 0; i < 20; ++i)
        poll(i);
    SIZE_T ws0, priv0, ws1, priv1, wsMid, privMid;
    sample(ws0, priv0);
    for (int i = 0; i < 500; ++i)
        poll(i);
    sample(wsMid, privMid);
    for (int i = 0; i < 500; ++i)
        poll(i);
    sample(ws1, priv1);
    auto kb = [](SIZE_T n) { return static_cast<unsigned>(n / 1024); };
    printf("memory over 1,000 polls of a 1,000-file project (a file added and removed every poll): working set "
           "%u KB -> %u KB -> %u KB, private %u KB -> %u KB -> %u KB\n",
           kb(ws0), kb(wsMid), kb(ws1), kb(priv0), kb(privMid), kb(priv1));
    fflush(stdout);
    pPage->DestroyWindow();
}
} // namespace

int main(int argc, char** argv)
{
    int nIdleSeconds = 60;
    std::vector<int> sizes = {100, 1000, 10000};
    for (int i = 1; i < argc; ++i)
    {
        if (strncmp(argv[i], "/idle:", 6) == 0)
            nIdleSeconds = atoi(argv[i] + 6);
        else if (strncmp(argv[i], "/sizes:", 7) == 0)
        {
            sizes.clear();
            for (char* p = strtok(argv[i] + 7, ","); p; p = strtok(nullptr, ","))
                sizes.push_back(atoi(p));
        }
    }

    // The settings as the tool starts with them.
    CApp* pApp = GetApp();
    if (!pApp)
        return 1;
    pApp->m_strSource = "*.asm;*.c";
    pApp->m_strHeader = "*.inc;*.h";

    FakeHost host;
    printf("steady-state poll = a refresh that finds nothing changed; ratios are to the bare enumeration of the "
           "same four patterns\n");
    for (int nFiles : sizes)
        RunSize(host, nFiles);
    if (nIdleSeconds > 0)
        RunIdle(host, nIdleSeconds);
    RunMemory(host);
    return 0;
}
