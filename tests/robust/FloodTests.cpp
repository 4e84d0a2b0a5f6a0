// A flood of well- and ill-formed records from a foreign process. Our own
// throw-away windows play host windows: what the tool's items do to them
// (WM_VSCROLL lines, to the window itself or to its parent) shows which
// item stands first for each, so the registry's meaning is checked from
// outside while the flood goes on.
#include "Fixture.h"
#include "QuorvantHook.h"
#include "TestRunner.h"

#include <psapi.h>
#include <stdio.h>

#include <map>
#include <random>
#include <vector>

using namespace qt;

namespace
{
const char kPlayClass[] = "RobustPlayWindow";
const int kRecords = 100000;
const int kCheckEvery = 5000;
const int kPool = 48; // throw-away windows alive at a time

std::map<HWND, int> g_lines; // WM_VSCROLL lines received, per window

LRESULT CALLBACK PlayProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_VSCROLL)
    {
        ++g_lines[hWnd];
        return 0;
    }
    return DefWindowProcA(hWnd, nMessage, wParam, lParam);
}

HWND MakeWindow(HWND hWndParent)
{
    static bool s_bRegistered = false;
    if (!s_bRegistered)
    {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = PlayProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = kPlayClass;
        RegisterClassA(&wc);
        s_bRegistered = true;
    }
    return CreateWindowExA(0, kPlayClass, "play", hWndParent ? WS_CHILD : WS_OVERLAPPED, 0, 0, 20, 20, hWndParent,
                           nullptr, GetModuleHandleA(nullptr), nullptr);
}

// Posted messages the tool sends our windows (focus requests, the frame
// item's announcement) are taken off the queue and dropped.
void DrainQueue()
{
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&msg);
}

bool Send(HWND hWndTool, ULONG_PTR dwCode, const HookRecord& record, DWORD dwSize = sizeof(HookRecord))
{
    char buffer[64] = {};
    memcpy(buffer, &record, sizeof(record));
    COPYDATASTRUCT cds = {dwCode, dwSize, buffer};
    DWORD_PTR dwResult = 0;
    return SendMessageTimeoutA(hWndTool, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000,
                               &dwResult) != 0;
}

HookRecord Record(HWND hWnd, uint32_t nKind, uint32_t nMessage, uint32_t wParam)
{
    return HookRecord{nKind, HookWindowWord(hWnd), nMessage, wParam, 0};
}

SIZE_T WorkingSet(HANDLE hProcess)
{
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof(counters);
    if (!GetProcessMemoryInfo(hProcess, &counters, sizeof(counters)))
        return 0;
    return counters.WorkingSetSize;
}

// The registry as the tool should hold it, for our windows: the kinds of
// the items of each handle, in creation order. Only the first one answers.
class Model
{
public:
    void Create(HWND hWnd, uint32_t nKind)
    {
        if (nKind >= KIND_FRAME && nKind <= KIND_NUM)
            m_items[hWnd].push_back(nKind);
    }
    void Destroy(HWND hWnd)
    {
        auto it = m_items.find(hWnd);
        if (it == m_items.end())
            return;
        it->second.erase(it->second.begin());
        if (it->second.empty())
            m_items.erase(it);
    }
    uint32_t First(HWND hWnd) const
    {
        auto it = m_items.find(hWnd);
        return it == m_items.end() ? 0 : it->second.front();
    }
    size_t Count(HWND hWnd) const
    {
        auto it = m_items.find(hWnd);
        return it == m_items.end() ? 0 : it->second.size();
    }
    std::vector<HWND> Handles() const
    {
        std::vector<HWND> handles;
        for (const auto& entry : m_items)
            handles.push_back(entry.first);
        return handles;
    }

private:
    std::map<HWND, std::vector<uint32_t>> m_items;
};

// One wheel notch on hWnd: an MDI child item scrolls the window itself by
// four lines, a text item its parent by one, every other kind nothing.
bool AnswersAsModelSays(HWND hWndTool, HWND hWnd, HWND hWndParent, const Model& model)
{
    g_lines.clear();
    Send(hWndTool, HOOK_MESSAGE_DONE, Record(hWnd, 0, WM_MOUSEWHEEL, MAKEWPARAM(0, 120)));
    const uint32_t nFirst = model.First(hWnd);
    const int nSelf = nFirst == KIND_CHILD ? 4 : 0;
    const int nParent = nFirst == KIND_TEXT ? 1 : 0;
    const bool bOk = g_lines[hWnd] == nSelf && g_lines[hWndParent] == nParent;
    if (!bOk)
        printf("  window %p: first kind %u, lines %d to itself and %d to its parent\n", static_cast<void*>(hWnd),
               nFirst, g_lines[hWnd], g_lines[hWndParent]);
    return bOk;
}
} // namespace

TEST_CASE(a_flood_of_random_records_keeps_the_registry_meaning_and_the_tool_up)
{
    Tool tool(MakeScratchDir("flood"));
    REQUIRE(tool.Start());
    HWND hWndTool = tool.MainFrame();
    // All throw-away windows are children of one parent of ours, where a
    // text item's lines land.
    HWND hWndParent = MakeWindow(nullptr);
    REQUIRE(hWndParent != nullptr);
    std::vector<HWND> pool;
    for (int i = 0; i < kPool; ++i)
        pool.push_back(MakeWindow(hWndParent));
    std::vector<HWND> dead; // ours, destroyed, some still with items
    Model model;

    std::mt19937 random(20261123); // fixed seed: the same flood every run
    auto pick = [&](size_t n) { return static_cast<size_t>(random() % n); };
    const uint32_t messages[] = {WM_MOUSEWHEEL, WM_KEYDOWN,      WM_LBUTTONDOWN,   WM_MBUTTONDOWN, WM_RBUTTONDOWN,
                                 WM_SIZE,       WM_PAINT,        WM_ACTIVATEAPP,   WM_SETTEXT,     WM_INITMENUPOPUP,
                                 WM_MOUSEMOVE,  WM_TIMER,        WM_NCHITTEST,     WM_SETCURSOR,   WM_USER + 5};
    const DWORD sizes[] = {0, 1, 16, 19, 21, 24, 64};
    HWND hWndForeign = GetDesktopWindow();

    SIZE_T nWorkingSetEarly = 0;
    int nChecks = 0;
    int nBadChecks = 0;
    int nUnanswered = 0;
    const DWORD dwStart = GetTickCount();
    for (int n = 1; n <= kRecords; ++n)
    {
        const size_t nWhat = pick(100);
        if (nWhat < 8)
        {
            // Creation, for a live throw-away window only; kinds 0 to 7.
            HWND hWnd = pool[pick(pool.size())];
            const uint32_t nKind = static_cast<uint32_t>(pick(8));
            nUnanswered += Send(hWndTool, HOOK_CREATE, Record(hWnd, nKind, 0, 0)) ? 0 : 1;
            model.Create(hWnd, nKind);
        }
        else if (nWhat < 14)
        {
            // Destruction: of our windows, live or dead, with or without an
            // item, and of handles that were never ours.
            HWND hWnd = nullptr;
            switch (pick(4))
            {
            case 0: hWnd = pool[pick(pool.size())]; break;
            case 1: hWnd = dead.empty() ? hWndForeign : dead[pick(dead.size())]; break;
            case 2: hWnd = hWndForeign; break;
            default: hWnd = reinterpret_cast<HWND>(static_cast<INT_PTR>(random() & 0x7FFFFFF0)); break;
            }
            nUnanswered += Send(hWndTool, HOOK_DESTROY, Record(hWnd, 0, 0, 0)) ? 0 : 1;
            model.Destroy(hWnd);
        }
        else if (nWhat < 16)
        {
            // A throw-away window goes without a word, as a host's window may
            // while its records are on their way; a new one takes its place.
            const size_t nIndex = pick(pool.size());
            DestroyWindow(pool[nIndex]);
            dead.push_back(pool[nIndex]);
            pool[nIndex] = MakeWindow(hWndParent);
            REQUIRE(pool[nIndex] != nullptr);
        }
        else if (nWhat < 30)
        {
            // Malformed: wrong sizes, unknown codes, any words at all.
            HookRecord record = {static_cast<uint32_t>(random()), static_cast<uint32_t>(random()),
                                 static_cast<uint32_t>(random()), static_cast<uint32_t>(random()), 0};
            if (pick(2) == 0)
                record.hWnd = HookWindowWord(pool[pick(pool.size())]);
            const bool bBadSize = pick(2) == 0;
            const ULONG_PTR dwCode = bBadSize ? 1 + pick(4) : (pick(2) ? 0 : 5 + pick(1000));
            nUnanswered +=
                Send(hWndTool, dwCode, record, bBadSize ? sizes[pick(sizeof(sizes) / sizeof(sizes[0]))] : 20) ? 0 : 1;
        }
        else
        {
            // Message records, before and after, for every sort of handle.
            HWND hWnd = nullptr;
            switch (pick(5))
            {
            case 0:
            case 1: hWnd = pool[pick(pool.size())]; break;
            case 2: hWnd = dead.empty() ? hWndForeign : dead[pick(dead.size())]; break;
            case 3: hWnd = pick(2) ? hWndForeign : hWndTool; break;
            default: hWnd = reinterpret_cast<HWND>(static_cast<INT_PTR>(random() & 0x7FFFFFF0)); break;
            }
            const uint32_t nMessage = pick(10) == 0 ? static_cast<uint32_t>(random() & 0xBFFF)
                                                    : messages[pick(sizeof(messages) / sizeof(messages[0]))];
            uint32_t wParam = static_cast<uint32_t>(random());
            if (nMessage == WM_MOUSEWHEEL)
                wParam = MAKEWPARAM(0, static_cast<WORD>((static_cast<int>(pick(9)) - 4) * 120));
            HookRecord record = Record(hWnd, static_cast<uint32_t>(random()), nMessage, wParam);
            record.nFlags = static_cast<uint32_t>(random()); // Ctrl or not; no editor frame to act on
            nUnanswered += Send(hWndTool, pick(2) ? HOOK_MESSAGE : HOOK_MESSAGE_DONE, record) ? 0 : 1;
        }
        DrainQueue();

        if (n == 10000)
            nWorkingSetEarly = WorkingSet(tool.GetProcess().Handle());
        if (n % kCheckEvery == 0)
        {
            // The first item of each live window answers, and only it.
            for (HWND hWnd : pool)
            {
                ++nChecks;
                nBadChecks += AnswersAsModelSays(hWndTool, hWnd, hWndParent, model) ? 0 : 1;
            }
            REQUIRE(tool.GetProcess().IsRunning());
        }
    }
    const SIZE_T nWorkingSetLate = WorkingSet(tool.GetProcess().Handle());
    printf("  %d records in %lu ms, %d unanswered; %d checks of the first item, %d wrong\n", kRecords,
           static_cast<unsigned long>(GetTickCount() - dwStart), nUnanswered, nChecks, nBadChecks);
    printf("  working set after 10,000 records %lu KB, at the end %lu KB\n",
           static_cast<unsigned long>(nWorkingSetEarly / 1024), static_cast<unsigned long>(nWorkingSetLate / 1024));
    CHECK_EQ(nUnanswered, 0);
    CHECK_EQ(nBadChecks, 0);
    CHECK(nWorkingSetEarly > 0);
    // The registry holds at most a few hundred items at any time: anything
    // beyond a few megabytes more is a leak per record.
    CHECK(nWorkingSetLate <= nWorkingSetEarly + 4 * 1024 * 1024);

    // Every item reported gone, dead windows' too: the registry ends empty,
    // and our live windows get nothing any more.
    for (HWND hWnd : model.Handles())
    {
        const size_t nCount = model.Count(hWnd);
        for (size_t i = 0; i < nCount; ++i)
        {
            Send(hWndTool, HOOK_DESTROY, Record(hWnd, 0, 0, 0));
            model.Destroy(hWnd);
        }
    }
    for (HWND hWnd : pool)
        CHECK(AnswersAsModelSays(hWndTool, hWnd, hWndParent, model));
    // Our windows still live and answer: the tool's close would wait for
    // any item left of them, so a prompt exit shows the registry is empty.
    const DWORD dwExit = GetTickCount();
    CHECK(tool.Exit(3000));
    printf("  exit took %lu ms\n", static_cast<unsigned long>(GetTickCount() - dwExit));
    CHECK_EQ(tool.GetProcess().ExitCode(), 0u);
    DestroyWindow(hWndParent);
}

TEST_CASE(items_left_for_windows_that_live_on_hold_the_exit_until_reported_gone)
{
    // The counterpart of the prompt exit above: without this, a quick exit
    // would prove nothing about the registry.
    Tool tool(MakeScratchDir("heldexit"));
    REQUIRE(tool.Start());
    HWND hWndTool = tool.MainFrame();
    HWND hWnd = MakeWindow(nullptr);
    Send(hWndTool, HOOK_CREATE, Record(hWnd, KIND_CHILD, 0, 0));
    Send(hWndTool, HOOK_CREATE, Record(hWnd, KIND_CHILD, 0, 0));
    Send(hWndTool, HOOK_DESTROY, Record(hWnd, 0, 0, 0)); // one of two
    PostMessageA(hWndTool, WM_COMMAND, 57665, 0);
    // Keep answering (the tool may ask whether we are alive) while it waits.
    const DWORD dwStart = GetTickCount();
    while (GetTickCount() - dwStart < 2500 && tool.GetProcess().IsRunning())
    {
        DrainQueue();
        Sleep(5);
    }
    CHECK(tool.GetProcess().IsRunning());
    Send(hWndTool, HOOK_DESTROY, Record(hWnd, 0, 0, 0));
    CHECK(tool.GetProcess().WaitExit(3000));
    DestroyWindow(hWnd);
}
