// The hook library in real processes under Wine: the stand-in host IDE, the
// fake tool (FAKETOOL.exe, which logs every record it gets) and this program,
// which drives the host's windows and reads both logs.
#include <windows.h>

#include <stdio.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Fixture.h"
#include "HostInput.h"
#include "QuorvantHook.h"
#include "TestRunner.h"

namespace
{
const UINT kHangMessage = WM_APP + 1; // FAKETOOL.exe: stop answering for wParam ms
const WPARAM kWheelUp = MAKEWPARAM(0, 120);

struct Record
{
    std::string strWhat; // READY, CREATE, BEFORE, AFTER, DESTROY, BAD, HANG, AWAKE, EXIT
    HWND hWnd = nullptr;
    unsigned nMessage = 0, nWParam = 0, nFlags = 0; // nMessage: the kind of a CREATE, what is left at EXIT
};

std::string ClassOf(HWND hWnd)
{
    char szClass[64] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    return szClass + std::string(" ") + std::to_string(HookWindowWord(hWnd));
}

// FAKETOOL.exe in a process of its own, with its record log.
class FakeTool
{
public:
    FakeTool(const std::string& strDir, const char* pszTag) : m_strLog(strDir + pszTag + ".log") {}

    bool Start(const std::string& strOptions = std::string())
    {
        DeleteFileA(m_strLog.c_str());
        if (!process.Start("\"" + qt::ExeDir() + "FAKETOOL.exe\" /log \"" + m_strLog + "\" " + strOptions) ||
            !qt::WaitFor([&] { return Count("READY") > 0; }, 10000))
            return false;
        for (const Record& r : Records())
            if (r.strWhat == "READY")
                hWnd = r.hWnd, key[0] = r.nWParam, key[1] = r.nFlags;
        return true;
    }

    std::vector<Record> Records() const
    {
        std::vector<Record> records;
        for (const std::string& strLine : qt::SplitLines(qt::ReadTextFile(m_strLog)))
        {
            char szWhat[16] = {};
            unsigned nWindow = 0;
            Record r;
            if (sscanf(strLine.c_str(), "%15s %x %u %u %u", szWhat, &nWindow, &r.nMessage, &r.nWParam, &r.nFlags) >= 2)
                r.strWhat = szWhat, r.hWnd = HandleFromWord<HWND>(nWindow), records.push_back(r);
        }
        return records;
    }

    // Records of this kind, window and message (none given: any), from the nFrom-th on.
    int Count(const char* pszWhat, HWND hWndOf = nullptr, unsigned nMessage = 0, size_t nFrom = 0) const
    {
        const std::vector<Record> records = Records();
        return static_cast<int>(std::count_if(records.begin() + std::min(nFrom, records.size()), records.end(), [&](const Record& r) {
            return r.strWhat == pszWhat && (!hWndOf || r.hWnd == hWndOf) && (!nMessage || r.nMessage == nMessage);
        }));
    }

    bool WaitCount(const char* pszWhat, int nCount, HWND hWndOf = nullptr, unsigned nMessage = 0,
                   DWORD dwTimeoutMs = 5000) const
    {
        return qt::WaitFor([&] { return Count(pszWhat, hWndOf, nMessage) >= nCount; }, dwTimeoutMs);
    }

    // Windows with a CREATE and no DESTROY after it, with their kinds; fails
    // the case on a second CREATE without a DESTROY between (two items in
    // the tool for one window) or a record of a window the tool does not know.
    std::map<HWND, unsigned> Reported() const
    {
        std::map<HWND, unsigned> reported;
        for (const Record& r : Records())
        {
            if (r.strWhat == "CREATE" && !reported.emplace(r.hWnd, r.nMessage).second)
                qt::Fail(__FILE__, __LINE__, "a second CREATE without DESTROY for " + ClassOf(r.hWnd));
            else if (r.strWhat == "DESTROY") // also harmless for a window never reported
                reported.erase(r.hWnd);
            else if ((r.strWhat == "BEFORE" || r.strWhat == "AFTER") && !reported.count(r.hWnd))
                qt::Fail(__FILE__, __LINE__, "a message record of an unreported window " + ClassOf(r.hWnd));
        }
        return reported;
    }

    void Hang(DWORD dwMs) const { PostMessageA(hWnd, kHangMessage, dwMs, 0); }
    bool Close() { return PostMessageA(hWnd, WM_CLOSE, 0, 0) && process.WaitExit(10000); } // uninstallHook, the destroys

    qt::Process process;
    HWND hWnd = nullptr;
    uint32_t key[2] = {}; // of its installHook

private:
    std::string m_strLog;
};

// A request to a host window as the tool sends it, with the key (none: as a
// stranger sends it); the host's answer.
BOOL Request(HWND hWnd, uint32_t nCode, const uint32_t* pKey, const void* pData = "", DWORD cbData = 0)
{
    static const uint32_t kNoKey[2] = {};
    std::string strData(8 + cbData, '\0');
    memcpy(&strData[0], pKey ? pKey : kNoKey, 8);
    memcpy(&strData[8], pData, cbData);
    COPYDATASTRUCT cds = {nCode, static_cast<DWORD>(strData.size()), &strData[0]};
    DWORD_PTR dwResult = 0;
    return SendMessageTimeoutA(hWnd, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000, &dwResult) &&
           dwResult;
}

// Every window of the host the library must watch, with its kind, worked out
// from the outside: the frame, its MDI client, the MDI children and theirs.
std::map<HWND, unsigned> ExpectedWindows(HWND hWndFrame)
{
    HWND hWndClient = FindWindowExA(hWndFrame, nullptr, "MDIClient", nullptr);
    std::map<HWND, unsigned> expected = {{hWndFrame, KIND_FRAME}, {hWndClient, KIND_CLIENT}};
    for (HWND hWndChild = GetWindow(hWndClient, GW_CHILD); hWndChild; hWndChild = GetWindow(hWndChild, GW_HWNDNEXT))
    {
        expected[hWndChild] = KIND_CHILD;
        for (HWND hWndIn = GetWindow(hWndChild, GW_CHILD); hWndIn; hWndIn = GetWindow(hWndIn, GW_HWNDNEXT))
            expected[hWndIn] = ClassOf(hWndIn).compare(0, 9, "PFE_Text ") == 0 ? KIND_TEXT : KIND_NUM;
    }
    return expected;
}

// The tool knows exactly the host's watched windows, each with its kind, and
// heard of every parent before its children. A host still making windows or a
// library still catching a slow tool up comes into step within the bound.
void CheckInStep(const FakeTool& tool, HWND hWndFrame)
{
    CHECK(qt::WaitFor([&] { return tool.Reported() == ExpectedWindows(hWndFrame); }, 5000));
    std::set<HWND> seen;
    for (const Record& r : tool.Records())
    {
        // (A window destroyed since has no parent to ask for.)
        if (r.strWhat == "CREATE" && r.nMessage != KIND_FRAME && IsWindow(r.hWnd) && !seen.count(GetParent(r.hWnd)))
            qt::Fail(__FILE__, __LINE__, "reported before its parent: " + ClassOf(r.hWnd));
        seen.insert(r.hWnd);
    }
    CHECK_EQ(tool.Count("BAD"), 0);
}

// Posts a WM_VSCROLL behind whatever was posted to the window before and
// waits until the host has logged it: everything before it is handled, and
// its records are in the tool's log.
bool Drain(const qt::Host& host, HWND hWnd)
{
    char szTitle[MAX_PATH] = {};
    GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
    const std::string strLine = std::string("VSCROLL ") + szTitle + " 1";
    const int nBefore = host.CountLog(strLine);
    PostMessageA(hWnd, WM_VSCROLL, SB_LINEDOWN, 0);
    return host.WaitLog(strLine, 10000, nBefore + 1);
}

// Ten wheel notches posted to an editor: the time until the host has handled them all.
DWORD TimeWheelBurst(const qt::Host& host, HWND hWndEditor)
{
    const DWORD dwStart = GetTickCount();
    for (int i = 0; i < 10; ++i)
        PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    Drain(host, hWndEditor);
    return GetTickCount() - dwStart;
}

// Another program that sends the host frame WM_NULL every few milliseconds
// (as hung-window checks and broadcasts do): not the tool at work.
std::atomic<HWND> g_hWndPestered{nullptr};
DWORD WINAPI Pester(LPVOID)
{
    for (DWORD_PTR dwResult = 0; g_hWndPestered.load(); Sleep(2))
        SendMessageTimeoutA(g_hWndPestered, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &dwResult);
    return 0;
}

struct Session
{
    explicit Session(const char* pszTag) : strDir(qt::MakeScratchDir(pszTag)), host(strDir), tool(strDir, "tool") {}
    // The host with these files open (they need not exist), and more arguments.
    bool StartHost(std::initializer_list<const char*> files, std::string strArguments = "")
    {
        for (const char* pszFile : files)
            strArguments += " /open \"" + File(pszFile) + "\"";
        return host.Start(strArguments);
    }
    std::string File(const char* pszName) const { return strDir + pszName; }
    HWND Editor(const char* pszName) const { return host.FindWindowByTitle(File(pszName)); }
    std::string strDir;
    qt::Host host;
    FakeTool tool;
};

// The item of command 32771 in the host's menus as the host logs it (command
// 1197): "checked", "unchecked", or "absent" while the tool's popup is not there.
std::string MenuState(const qt::Host& host)
{
    const int nBefore = host.CountLogPrefix("MENUCHECK ");
    PostMessageA(host.Frame(), WM_COMMAND, 1197, 32771);
    std::string strState = "no answer";
    if (qt::WaitFor([&] { return host.CountLogPrefix("MENUCHECK ") > nBefore; }, 5000))
        for (const std::string& strLine : host.Log())
            strState = strLine.compare(0, 16, "MENUCHECK 32771 ") == 0 ? strLine.substr(16) : strState;
    return strState;
}

// The user opens "&Assist" on the host's menu bar and chooses "&Assist
// Window" with real keys: whether the tool got the choice (the host never
// sees it). A key typed into the editor after it is the marker.
bool UserChooses(Session& s)
{
    const std::string strMarker = "KEYDOWN " + s.File("a.c") + " 88 ctrl=0";
    const int nMarks = s.host.CountLog(strMarker);
    const size_t nFrom = s.tool.Records().size();
    if (!qt::FocusEditor(s.host, s.Editor("a.c")))
        return false;
    qt::SendKeys({VK_MENU, 'A'});
    for (WORD wKey : std::initializer_list<WORD>{'A', VK_ESCAPE, VK_ESCAPE, 'X'})
        qt::SendKeys({wKey});
    s.host.WaitLog(strMarker, 5000, nMarks + 1);
    const std::vector<Record> records = s.tool.Records();
    int nChoices = 0;
    for (size_t i = nFrom; i < records.size(); ++i)
        nChoices += records[i].nMessage == WM_COMMAND && records[i].nWParam == 32771 && records[i].nFlags == HOOK_FLAG_POPUP;
    return nChoices == 1 && !s.host.CountLog("COMMAND 32771");
}
} // namespace

TEST_CASE(a_host_busy_during_install_holds_it_up_a_second_at_most_and_is_entered_when_activated)
{
    Session s("hook-busyhost");
    REQUIRE(s.StartHost({"a.c", "b.c"}, "/view 1117"));
    HANDLE hThread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(s.host.Frame(), nullptr));
    REQUIRE(hThread && SuspendThread(hThread) == 0);
    const DWORD dwStart = GetTickCount();
    const bool bStarted = s.tool.Start();
    const DWORD dwInstall = GetTickCount() - dwStart;
    ResumeThread(hThread);
    CloseHandle(hThread);
    CHECK(bStarted && dwInstall < 3000);
    // The user turns to another program and back to the host: it is entered then.
    HWND hWndOther = CreateWindowA("STATIC", "other", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(hWndOther);
    CHECK(qt::WaitFor([&] { return GetForegroundWindow() == hWndOther; }, 3000));
    SetForegroundWindow(s.host.Frame());
    CheckInStep(s.tool, s.host.Frame());
    DestroyWindow(hWndOther);
}

TEST_CASE(a_host_started_after_install_reports_its_windows_then_what_the_tool_acts_on_and_works_as_before)
{
    Session s("hook-records");
    REQUIRE(s.tool.Start() && s.StartHost({"a.c"}, "/view 1117"));
    HWND hWndFrame = s.host.Frame(), hWndEditor = s.Editor("a.c"), hWndView = s.host.FindWindowByTitle("Program Memory Window");
    REQUIRE(hWndEditor && hWndView);
    CheckInStep(s.tool, hWndFrame); // the tool bar, the frame's child, is no window of the tool's
    // The host must not notice us: typing into its subclassed editor and saving work.
    PostMessageA(hWndEditor, WM_CHAR, 'q', 0);
    PostMessageA(hWndFrame, WM_COMMAND, 1006, 0);
    CHECK(s.host.WaitLog("SAVE " + s.File("a.c"), 5000) && qt::ReadTextFile(s.File("a.c")).find('q') != std::string::npos);
    REQUIRE(Drain(s.host, hWndEditor));
    HWND hWndClient = GetParent(hWndEditor), hWndGutter = FindWindowExA(hWndEditor, nullptr, "PFE_Num", nullptr),
         hWndText = FindWindowExA(hWndView, nullptr, "PFE_Text", nullptr);
    const size_t nFrom = s.tool.Records().size();
    // The frame is put behind (nothing: no more than activation, which comes
    // by the dozen), moved, sized, hidden, shown and retitled; an MDI child
    // moves (nothing).
    SetWindowPos(hWndFrame, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowPos(hWndFrame, nullptr, 60, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(hWndFrame, nullptr, 0, 0, 800, 600, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(hWndFrame, SW_HIDE);
    ShowWindow(hWndFrame, SW_SHOWNA);
    SetWindowTextA(hWndFrame, "Host IDE - retitled");
    SetWindowPos(hWndEditor, nullptr, 5, 5, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    // A command, wheel notches and buttons: the text windows and the MDI
    // children scroll, the client takes all three buttons, text and gutter
    // the left and middle one.
    const struct { HWND hWnd; UINT uMsg; WPARAM wParam; } posts[] = {
        {hWndFrame, WM_COMMAND, 1033}, {hWndEditor, WM_MOUSEWHEEL, kWheelUp}, {hWndText, WM_MOUSEWHEEL, MAKEWPARAM(0, -120)},
        {hWndGutter, WM_MOUSEWHEEL, kWheelUp}, {hWndClient, WM_RBUTTONDOWN, 0}, {hWndGutter, WM_RBUTTONDOWN, 0},
        {hWndGutter, WM_MBUTTONDOWN, 0}, {hWndText, WM_LBUTTONDOWN, 0}};
    for (const auto& post : posts)
        PostMessageA(post.hWnd, post.uMsg, post.wParam, 0);
    REQUIRE(Drain(s.host, hWndEditor));
    const struct { const char* pszWhat; HWND hWnd; UINT uMsg; int nCount; } expected[] = {
        {"AFTER", hWndFrame, WM_WINDOWPOSCHANGED, 4}, {"AFTER", hWndFrame, WM_SHOWWINDOW, 2},
        {"BEFORE", hWndFrame, WM_MOVE, 0}, {"AFTER", hWndFrame, WM_SETTEXT, 1}, {"BEFORE", hWndFrame, WM_SETTEXT, 0},
        {"AFTER", hWndFrame, WM_COMMAND, 1}, {"BEFORE", hWndFrame, WM_COMMAND, 0}, {"AFTER", hWndEditor, WM_MOVE, 0},
        {"AFTER", hWndEditor, WM_WINDOWPOSCHANGED, 0}, {"AFTER", hWndEditor, WM_MOUSEWHEEL, 1},
        {"BEFORE", hWndEditor, 0, 0}, {"AFTER", hWndText, WM_MOUSEWHEEL, 1}, {"AFTER", hWndView, WM_MOUSEWHEEL, 0},
        {"AFTER", hWndGutter, WM_MOUSEWHEEL, 0}, {"AFTER", hWndClient, WM_RBUTTONDOWN, 1},
        {"AFTER", hWndGutter, WM_RBUTTONDOWN, 0}, {"AFTER", hWndGutter, WM_MBUTTONDOWN, 1},
        {"AFTER", hWndText, WM_LBUTTONDOWN, 1}};
    for (const auto& e : expected)
        if (s.tool.Count(e.pszWhat, e.hWnd, e.uMsg, nFrom) != e.nCount)
            qt::Fail(__FILE__, __LINE__, std::string("not ") + std::to_string(e.nCount) + " " + e.pszWhat + " " +
                                             std::to_string(e.uMsg) + " of " + ClassOf(e.hWnd));
    CHECK(s.tool.Count("AFTER", hWndFrame, WM_MOVE, nFrom) >= 1);
    // A size comes before and after the host handles it; nothing says Ctrl.
    std::string strSizes;
    for (const Record& r : s.tool.Records())
    {
        strSizes += r.hWnd == hWndFrame && r.nMessage == WM_SIZE ? r.strWhat.substr(0, 1) : "";
        CHECK(r.nFlags == 0 || r.strWhat == "READY");
    }
    CHECK(strSizes.size() >= 2 && strSizes.substr(strSizes.size() - 2) == "BA");
}

TEST_CASE(ctrl_enter_gives_one_record_however_it_reaches_the_editor_and_other_keys_none)
{
    Session s("hook-keys");
    REQUIRE(s.StartHost({"a.c"}) && s.tool.Start());
    HWND hWndEditor = s.Editor("a.c");
    const std::string strKey = "KEYDOWN " + s.File("a.c") + " ";
    REQUIRE(qt::FocusEditor(s.host, hWndEditor));
    // Real keys: Ctrl+Enter reaches the editor (Ctrl+E, the host's
    // accelerator, does not). Without Ctrl, or other keys with it: nothing.
    qt::SendKeys({VK_CONTROL, VK_RETURN});
    qt::SendKeys({'E'});
    qt::SendKeys({VK_RETURN});
    qt::SendKeys({VK_CONTROL, 'K'});
    CHECK(s.host.WaitLog(strKey + "75 ctrl=1", 5000));
    // Posted keys bypass the keyboard hook: with Ctrl held for real, the
    // editor's procedure reports Ctrl+Enter. A wheel says its own keys.
    const int nCtrl = s.host.CountLog(strKey + "17 ctrl=1");
    keybd_event(VK_CONTROL, 0, 0, 0);
    CHECK(s.host.WaitLog(strKey + "17 ctrl=1", 5000, nCtrl + 1));
    PostMessageA(hWndEditor, WM_KEYDOWN, VK_RETURN, 0x001C0001);
    PostMessageA(hWndEditor, WM_KEYDOWN, 'X', 0x002D0001);
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, 120), 0);
    REQUIRE(Drain(s.host, hWndEditor));
    keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
    qt::SendKeys({'X'}); // the host has taken the release when it logs this
    CHECK(s.host.WaitLog(strKey + "88 ctrl=0", 5000));
    PostMessageA(hWndEditor, WM_KEYDOWN, VK_RETURN, 0x001C0001);
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, 120), 0);
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    REQUIRE(Drain(s.host, hWndEditor));
    std::string strSeen;
    for (const Record& r : s.tool.Records())
        if (r.hWnd == hWndEditor && r.strWhat == "AFTER")
            strSeen += (r.nMessage == WM_KEYDOWN ? " key" + std::to_string(r.nWParam) : std::string(" wheel")) +
                       (r.nFlags == HOOK_FLAG_CONTROL ? "+ctrl" : r.nFlags ? "+?" : "");
    CHECK_EQ(strSeen, std::string(" key13+ctrl key13+ctrl wheel+ctrl wheel+ctrl wheel"));
}

TEST_CASE(windows_gone_are_reported_inner_first_when_closed_left_or_the_host_ends)
{
    Session s("hook-gone");
    REQUIRE(s.StartHost({"a.c", "b.c"}, "/view 1117") && s.tool.Start());
    HWND hWndFrame = s.host.Frame(), hWndA = s.Editor("a.c"), hWndB = s.Editor("b.c");
    HWND hWndGutter = FindWindowExA(hWndA, nullptr, "PFE_Num", nullptr);
    PostMessageA(hWndA, WM_CLOSE, 0, 0);
    REQUIRE(s.tool.WaitCount("DESTROY", 2));
    std::string strGone;
    for (const Record& r : s.tool.Records())
        strGone += r.strWhat == "DESTROY" ? ClassOf(r.hWnd) + ";" : "";
    CHECK_EQ(strGone, ClassOf(hWndGutter) + ";" + ClassOf(hWndA) + ";"); // the MDI child last
    CheckInStep(s.tool, hWndFrame);
    // The tool leaves: every window is reported gone before it ends, and the host runs on.
    REQUIRE(s.tool.Close());
    CHECK(s.tool.Reported().empty() && s.tool.Count("EXIT", nullptr, 0) == 1 && s.tool.Records().back().nMessage == 0);
    CHECK(Drain(s.host, hWndB));
    // A second tool enters the same host, also the windows whose subclass stayed.
    FakeTool second(s.strDir, "second");
    REQUIRE(second.Start());
    CheckInStep(second, hWndFrame);
    PostMessageA(hWndB, WM_MOUSEWHEEL, kWheelUp, 0);
    REQUIRE(Drain(s.host, hWndB));
    CHECK_EQ(second.Count("AFTER", hWndB, WM_MOUSEWHEEL), 1);
    // The host closes: every window is gone, the tool runs on.
    REQUIRE(s.host.Close());
    CHECK_EQ(s.host.GetProcess().ExitCode(), 0u);
    CHECK(qt::WaitFor([&] { return second.Reported().empty(); }, 5000));
    CHECK(second.process.IsRunning());
}

TEST_CASE(a_hung_tool_stalls_the_host_once_and_is_in_step_with_it_when_it_answers_again)
{
    Session s("hook-hung");
    REQUIRE(s.StartHost({"a.c", "b.c"}) && s.tool.Start());
    HWND hWndFrame = s.host.Frame(), hWndA = s.Editor("a.c");
    // The first record the hung tool does not take is a creation: whether it
    // will still handle it is unknown. While another program talks to the
    // host, windows come and go and the wheel turns at the host's own speed.
    s.tool.Hang(2500);
    REQUIRE(s.tool.WaitCount("HANG", 1));
    g_hWndPestered = hWndFrame;
    HANDLE hPester = CreateThread(nullptr, 0, Pester, nullptr, 0, nullptr);
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000));
    const DWORD dwBurst = TimeWheelBurst(s.host, hWndA);
    PostMessageA(s.Editor("b.c"), WM_CLOSE, 0, 0);
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000, 2));
    const DWORD dwSecondBurst = TimeWheelBurst(s.host, hWndA);
    g_hWndPestered = nullptr;
    CHECK(WaitForSingleObject(hPester, 10000) == WAIT_OBJECT_0 && CloseHandle(hPester));
    CHECK(dwBurst < 1000 && dwSecondBurst < 1000);
    REQUIRE(s.tool.WaitCount("AWAKE", 1, nullptr, 0, 10000));
    CheckInStep(s.tool, hWndFrame);
    // Hung for longer than the system waits before it calls a program hung:
    // a send to it then fails at once, and never reached it.
    s.tool.Hang(7000);
    REQUIRE(qt::WaitFor([&] { return IsHungAppWindow(s.tool.hWnd) != FALSE; }, 10000));
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000, 3));
    REQUIRE(s.tool.WaitCount("AWAKE", 2, nullptr, 0, 10000));
    CheckInStep(s.tool, hWndFrame);
    // And records flow again.
    PostMessageA(hWndA, WM_MOUSEWHEEL, kWheelUp, 0);
    CHECK(s.tool.WaitCount("AFTER", 1, hWndA, WM_MOUSEWHEEL));
}

TEST_CASE(a_slow_tool_is_waited_for_and_a_killed_or_false_one_costs_the_host_nothing)
{
    // Slow: each wheel record keeps the tool at work for the host for longer
    // than a record may take; all arrive, and creations flow at once.
    Session s("hook-costs");
    REQUIRE(s.StartHost({"a.c"}) && s.tool.Start("/busy 700"));
    HWND hWndEditor = s.Editor("a.c"), hWndFrame = s.host.Frame();
    for (int i = 0; i < 3; ++i)
        PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    CHECK(s.tool.WaitCount("AFTER", 3, hWndEditor, WM_MOUSEWHEEL, 10000));
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CheckInStep(s.tool, hWndFrame);
    // Killed while the host waits inside a record to it.
    s.tool.Hang(10000);
    REQUIRE(s.tool.WaitCount("HANG", 1));
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    s.tool.process.Kill();
    CHECK(TimeWheelBurst(s.host, hWndEditor) < 1000);
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000, 2));
    CHECK(TimeWheelBurst(s.host, hWndEditor) < 1000);
    // A tool that gives installHook a handle that is no window costs nothing either.
    REQUIRE(s.tool.Start("/badwindow"));
    CHECK(TimeWheelBurst(s.host, hWndEditor) < 1000);
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000, 3));
}

// Requests (what makes a request well formed is tested natively) -----------------

TEST_CASE(a_drop_request_opens_a_local_file_in_the_host_and_any_other_changes_nothing)
{
    Session s("hook-drop");
    REQUIRE(s.StartHost({"a.c"}) && s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    const auto Drop = [&](HWND hWnd, const std::string& strPath, const uint32_t* pKey) {
        return Request(hWnd, REQUEST_DROPFILE, pKey, strPath.c_str(), static_cast<DWORD>(strPath.size() + 1));
    };
    std::string strLongest = s.strDir; // the longest name the host takes
    strLongest.resize(MAX_PATH - 3, 'n');
    strLongest += ".c";
    for (const std::string& strPath : {s.File("b.c"), strLongest})
        CHECK(qt::WriteTextFile(strPath, "; a file\r\n") && Drop(hWndFrame, strPath, s.tool.key) &&
              s.host.WaitLog("OPEN " + strPath, 5000));
    // Refused: a missing file, a folder; to a window that is not the frame;
    // without the key or with a guessed one (the path's form is tested natively).
    const uint32_t guess[2] = {0x12345678u, 0x9ABCDEF0u};
    CHECK(!Drop(hWndFrame, s.File("x.c"), s.tool.key) && !Drop(hWndFrame, s.strDir, s.tool.key));
    CHECK(!Drop(s.Editor("b.c"), strLongest, s.tool.key));
    CHECK(!Drop(hWndFrame, strLongest, nullptr) && !Drop(hWndFrame, strLongest, guess));
    // A good drop after them, posted as every drop is, is the next to arrive.
    CHECK(Drop(hWndFrame, s.File("b.c"), s.tool.key) && s.host.WaitLog("DROP " + s.File("b.c"), 5000, 2));
    CHECK_EQ(s.host.CountLogPrefix("DROP "), 3);
}

TEST_CASE(the_popup_request_puts_one_menu_on_the_host_bar_until_removed_or_the_tool_leaves)
{
    Session s("hook-popup");
    REQUIRE(s.StartHost({"a.c"}) && s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    HMENU hMenu = CreatePopupMenu();
    AppendMenuA(hMenu, MF_STRING, 32771, "&Assist Window");
    AppendMenuA(hMenu, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(hMenu, MF_STRING, 32772, "&Other");
    HostPopupRequest request = MakePopupRequest(hMenu, "&Assist");
    DestroyMenu(hMenu);
    const auto Append = [&](HWND hWnd, const uint32_t* pKey) {
        return Request(hWnd, REQUEST_APPENDPOPUP, pKey, &request, sizeof(request));
    };
    // Refused: to a window that is not the frame, from a stranger (sizes are tested natively).
    CHECK(!Append(s.Editor("a.c"), s.tool.key) && !Append(hWndFrame, nullptr));
    CHECK_EQ(MenuState(s.host), std::string("absent"));
    // One per frame.
    CHECK(Append(hWndFrame, s.tool.key) && !Append(hWndFrame, s.tool.key));
    CHECK_EQ(MenuState(s.host), std::string("unchecked"));
    CHECK(UserChooses(s));
    // Check marks through the host's handle of the popup, which came with its
    // WM_INITMENUPOPUP record (how the tool uses them is tested with it).
    // Refused: a menu that is not the tool's popup, a stranger's check or removal.
    HostCheckRequest check = {0, 32771, MF_CHECKED}, other = {0x7ff4, 32771, MF_CHECKED};
    for (const Record& r : s.tool.Records())
        check.hMenu = r.hWnd == hWndFrame && r.nMessage == WM_INITMENUPOPUP ? r.nWParam : check.hMenu;
    CHECK(!Request(hWndFrame, REQUEST_CHECKMENUITEM, s.tool.key, &other, sizeof(other)));
    CHECK(!Request(hWndFrame, REQUEST_CHECKMENUITEM, nullptr, &check, sizeof(check)) && !Request(hWndFrame, REQUEST_REMOVEPOPUP, nullptr));
    CHECK_EQ(MenuState(s.host), std::string("unchecked"));
    CHECK(Request(hWndFrame, REQUEST_CHECKMENUITEM, s.tool.key, &check, sizeof(check)));
    CHECK_EQ(MenuState(s.host), std::string("checked"));
    // Removed once, by the tool; appended again, it goes when the tool leaves.
    CHECK(Request(hWndFrame, REQUEST_REMOVEPOPUP, s.tool.key) && !Request(hWndFrame, REQUEST_REMOVEPOPUP, s.tool.key));
    CHECK_EQ(MenuState(s.host), std::string("absent"));
    CHECK(Append(hWndFrame, s.tool.key));
    REQUIRE(s.tool.Close());
    CHECK_EQ(MenuState(s.host), std::string("absent"));
    // A killed tool never hears a choice again: the popup is gone before the
    // user's menu shows, though nothing was sent to the tool since its death.
    REQUIRE(s.tool.Start());
    CHECK(Append(hWndFrame, s.tool.key));
    REQUIRE(Drain(s.host, s.Editor("a.c"))); // the frame has repainted where the menu was
    s.host.WaitQuiet();
    s.tool.process.Kill();
    CHECK(!UserChooses(s));
    CHECK_EQ(MenuState(s.host), std::string("absent"));
}

// Other programs may load the library and send the host's windows what they
// like; only the tool that entered the host is obeyed.
TEST_CASE(only_the_tool_that_entered_the_host_is_obeyed)
{
    Session s("hook-stranger");
    REQUIRE(s.StartHost({"a.c", "b.c"}) && s.tool.Start());
    HWND hWndA = s.Editor("a.c"), hWndB = s.Editor("b.c");
    // The tool moves the focus; a stranger, without the key, does not.
    PostMessageA(hWndA, HostSetFocusMessage(), s.tool.key[0], s.tool.key[1]);
    CHECK(s.host.WaitLog("SETFOCUS PFE_Text " + s.File("a.c"), 5000));
    const int nFocusB = s.host.CountLog("SETFOCUS PFE_Text " + s.File("b.c"));
    PostMessageA(hWndB, HostSetFocusMessage(), 0, 0);
    // This program loads the library and ends "its" hook: the host hears a
    // leave without the tool's key. And a WM_NCDESTROY sent to a live editor.
    HMODULE hLibrary = LoadLibraryA((qt::ExeDir() + "QUORVANT.dll").c_str());
    REQUIRE(hLibrary);
    reinterpret_cast<BOOL(__cdecl*)()>(reinterpret_cast<void*>(GetProcAddress(hLibrary, "uninstallHook")))();
    FreeLibrary(hLibrary);
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutA(hWndA, WM_NCDESTROY, 0, 0, SMTO_NORMAL, 5000, &dwResult);
    REQUIRE(Drain(s.host, hWndB));
    CHECK_EQ(s.host.CountLog("SETFOCUS PFE_Text " + s.File("b.c")), nFocusB);
    // Both editors are still watched and served; a real close goes through
    // the host's own procedure and is reported once.
    for (HWND hWnd : {hWndA, hWndB})
        PostMessageA(hWnd, WM_MOUSEWHEEL, kWheelUp, 0);
    CHECK(s.tool.WaitCount("AFTER", 1, hWndA, WM_MOUSEWHEEL) && s.tool.WaitCount("AFTER", 1, hWndB, WM_MOUSEWHEEL));
    CHECK_EQ(s.tool.Count("DESTROY"), 0);
    PostMessageA(hWndA, WM_CLOSE, 0, 0);
    CHECK(s.host.WaitLog("CLOSE " + s.File("a.c"), 5000));
    CHECK(s.tool.WaitCount("DESTROY", 1, hWndA));
}
