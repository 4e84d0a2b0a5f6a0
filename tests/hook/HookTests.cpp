// The hook library in real processes under Wine: the stand-in host IDE, the
// fake tool (FAKETOOL.exe, which logs every record it gets) and this program,
// which drives the host's windows and reads both logs.
#include <windows.h>

#include <stdio.h>
#include <stdlib.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Fixture.h"
#include "HostInput.h"
#include "QuorvantHook.h"
#include "TestRunner.h"

namespace
{
const UINT kHangMessage = WM_APP + 1; // FAKETOOL.exe: stop answering for wParam ms
const UINT kWheelUp = MAKEWPARAM(0, 120);

struct Record
{
    std::string strWhat; // CREATE, BEFORE, AFTER, DESTROY, BAD, READY, HANG, AWAKE, EXIT
    unsigned nKind = 0;
    HWND hWnd = nullptr;
    unsigned nMessage = 0;
    unsigned nWParam = 0;
    unsigned nFlags = 0;
    unsigned nNumber = 0; // READY: installHook's result; EXIT: windows left
};

HWND ParseWindow(const std::string& strWord)
{
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(static_cast<int32_t>(strtoul(strWord.c_str(), nullptr, 16))));
}

std::string Hex(HWND hWnd)
{
    char szText[16];
    snprintf(szText, sizeof(szText), "%08X", HookWindowWord(hWnd));
    return szText;
}

// FAKETOOL.exe in a process of its own, with its record log.
class FakeTool
{
public:
    explicit FakeTool(const std::string& strDir, const char* pszTag = "tool")
        : m_strLog(strDir + pszTag + ".log")
    {
    }

    bool Start(const std::string& strOptions = std::string())
    {
        DeleteFileA(m_strLog.c_str());
        const std::string strCommand =
            "\"" + qt::ExeDir() + "FAKETOOL.exe\" /log \"" + m_strLog + "\" " + strOptions;
        if (!m_process.Start(strCommand))
            return false;
        if (!qt::WaitFor([&] { return Count("READY") > 0 || !m_process.IsRunning(); }, 10000))
            return false;
        for (const Record& record : Records())
            if (record.strWhat == "READY")
                m_hWnd = record.hWnd;
        return m_hWnd != nullptr;
    }

    std::vector<Record> Records() const
    {
        std::vector<Record> records;
        for (const std::string& strLine : qt::SplitLines(qt::ReadTextFile(m_strLog)))
        {
            std::istringstream words(strLine);
            Record record;
            std::string strA, strB, strC, strD;
            words >> record.strWhat >> strA >> strB >> strC >> strD;
            if (record.strWhat == "CREATE")
            {
                record.nKind = static_cast<unsigned>(atoi(strA.c_str()));
                record.hWnd = ParseWindow(strB);
            }
            else if (record.strWhat == "BEFORE" || record.strWhat == "AFTER")
            {
                record.hWnd = ParseWindow(strA);
                record.nMessage = static_cast<unsigned>(strtoul(strB.c_str(), nullptr, 10));
                record.nWParam = static_cast<unsigned>(strtoul(strC.c_str(), nullptr, 10));
                record.nFlags = static_cast<unsigned>(strtoul(strD.c_str(), nullptr, 10));
            }
            else if (record.strWhat == "DESTROY")
            {
                record.hWnd = ParseWindow(strA);
            }
            else if (record.strWhat == "READY")
            {
                record.hWnd = ParseWindow(strA);
                record.nNumber = static_cast<unsigned>(atoi(strB.c_str()));
            }
            else if (record.strWhat == "EXIT")
            {
                record.nNumber = static_cast<unsigned>(atoi(strA.c_str()));
            }
            if (!record.strWhat.empty())
                records.push_back(record);
        }
        return records;
    }

    int Count(const std::string& strWhat, HWND hWnd = nullptr, unsigned nMessage = 0) const
    {
        int nCount = 0;
        for (const Record& record : Records())
            nCount += record.strWhat == strWhat && (!hWnd || record.hWnd == hWnd) &&
                              (!nMessage || record.nMessage == nMessage)
                          ? 1
                          : 0;
        return nCount;
    }

    bool WaitCount(const std::string& strWhat, int nCount, HWND hWnd = nullptr, unsigned nMessage = 0,
                   DWORD dwTimeoutMs = 5000) const
    {
        return qt::WaitFor([&] { return Count(strWhat, hWnd, nMessage) >= nCount; }, dwTimeoutMs);
    }

    // Windows with a CREATE and no DESTROY after it; fails the test when a
    // window is created twice without a destroy between (two items in the
    // tool for one window), destroyed without being created, or reported
    // after its destroy.
    std::map<HWND, unsigned> Reported() const
    {
        std::map<HWND, unsigned> reported;
        std::set<HWND> destroyed;
        for (const Record& record : Records())
        {
            if (record.strWhat == "CREATE")
            {
                if (reported.count(record.hWnd))
                    qt::Fail(__FILE__, __LINE__, "a second CREATE without DESTROY for " + Hex(record.hWnd));
                reported[record.hWnd] = record.nKind;
                destroyed.erase(record.hWnd);
            }
            else if (record.strWhat == "DESTROY")
            {
                // A destroy of a window the tool never had is harmless (it
                // happens after a hang); one after a destroy is too.
                reported.erase(record.hWnd);
                destroyed.insert(record.hWnd);
            }
            else if ((record.strWhat == "BEFORE" || record.strWhat == "AFTER") && !reported.count(record.hWnd))
            {
                qt::Fail(__FILE__, __LINE__, "a message record for an unreported window " + Hex(record.hWnd));
            }
        }
        return reported;
    }

    void Hang(DWORD dwMs) const { PostMessageA(m_hWnd, kHangMessage, dwMs, 0); }

    // uninstallHook, then the wait for the destroys; true when it ended.
    bool Close()
    {
        PostMessageA(m_hWnd, WM_CLOSE, 0, 0);
        return m_process.WaitExit(10000);
    }

    HWND Window() const { return m_hWnd; }
    qt::Process& GetProcess() { return m_process; }

private:
    std::string m_strLog;
    qt::Process m_process;
    HWND m_hWnd = nullptr;
};

std::string ClassOf(HWND hWnd)
{
    char szClass[128] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    return szClass;
}

// Every window of the host the library must watch, with its kind, worked out
// from the outside from the classes and the parents.
std::map<HWND, unsigned> ExpectedWindows(HWND hWndFrame)
{
    std::map<HWND, unsigned> expected;
    if (!hWndFrame)
        return expected;
    expected[hWndFrame] = KIND_FRAME;
    HWND hWndClient = FindWindowExA(hWndFrame, nullptr, "MDIClient", nullptr);
    if (!hWndClient)
        return expected;
    expected[hWndClient] = KIND_CLIENT;
    for (HWND hWndChild = GetWindow(hWndClient, GW_CHILD); hWndChild; hWndChild = GetWindow(hWndChild, GW_HWNDNEXT))
    {
        expected[hWndChild] = KIND_CHILD;
        for (HWND hWndInner = GetWindow(hWndChild, GW_CHILD); hWndInner; hWndInner = GetWindow(hWndInner, GW_HWNDNEXT))
            expected[hWndInner] = ClassOf(hWndInner) == "PFE_Text" ? KIND_TEXT : KIND_NUM;
    }
    return expected;
}

// The tool knows the same windows with the same kinds as the host has.
bool InStep(const FakeTool& tool, HWND hWndFrame)
{
    return tool.Reported() == ExpectedWindows(hWndFrame);
}

// The tool knows exactly the host's watched windows, each with its kind, and
// heard of every parent before its children.
void CheckReportsMatchHost(const FakeTool& tool, HWND hWndFrame)
{
    // A host still making windows, or a library still catching a slow tool
    // up, comes into step within the bound; what differs after it is a fault.
    qt::WaitFor([&] { return InStep(tool, hWndFrame); }, 5000);
    const std::map<HWND, unsigned> expected = ExpectedWindows(hWndFrame);
    const std::map<HWND, unsigned> reported = tool.Reported();
    CHECK_EQ(reported.size(), expected.size());
    for (const auto& window : expected)
    {
        const auto found = reported.find(window.first);
        if (found == reported.end())
            qt::Fail(__FILE__, __LINE__, "not reported: " + Hex(window.first) + " " + ClassOf(window.first));
        else
            CHECK_EQ(found->second, window.second);
    }
    std::set<HWND> seen;
    for (const Record& record : tool.Records())
    {
        if (record.strWhat != "CREATE")
            continue;
        // (A window destroyed since has no parent to ask for.)
        if (record.nKind != KIND_FRAME && IsWindow(record.hWnd) && !seen.count(GetParent(record.hWnd)))
            qt::Fail(__FILE__, __LINE__, "reported before its parent: " + Hex(record.hWnd));
        seen.insert(record.hWnd);
    }
    CHECK_EQ(tool.Count("BAD"), 0);
}

// Posts a WM_VSCROLL behind whatever was posted to the window before and
// waits until the host has logged it: everything before it is handled.
bool Drain(const qt::Host& host, HWND hWnd, DWORD dwTimeoutMs = 5000)
{
    char szTitle[1024] = {};
    GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
    const std::string strLine = std::string("VSCROLL ") + szTitle + " 1";
    const int nBefore = host.CountLog(strLine);
    PostMessageA(hWnd, WM_VSCROLL, SB_LINEDOWN, 0);
    return host.WaitLog(strLine, dwTimeoutMs, nBefore + 1);
}

// Ten wheel notches posted to an editor, then the time until the host has
// handled them all.
DWORD TimeWheelBurst(const qt::Host& host, HWND hWndEditor)
{
    const DWORD dwStart = GetTickCount();
    for (int i = 0; i < 10; ++i)
        PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    Drain(host, hWndEditor);
    return GetTickCount() - dwStart;
}

void SendKey(WORD wKey, bool bUp)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = wKey;
    input.ki.dwFlags = bUp ? KEYEVENTF_KEYUP : 0;
    SendInput(1, &input, sizeof(input));
}

// Real input to the host: the frame in the foreground, the keys through the
// system's input queue, so the host's accelerator table sees them.
bool PressWithControl(const qt::Host& host, WORD wKey)
{
    SetForegroundWindow(host.Frame());
    if (!qt::WaitFor([&] { return GetForegroundWindow() == host.Frame(); }, 3000))
        return false;
    SendKey(VK_CONTROL, false);
    SendKey(wKey, false);
    SendKey(wKey, true);
    SendKey(VK_CONTROL, true);
    return true;
}

struct Session
{
    explicit Session(const char* pszTag) : strDir(qt::MakeScratchDir(pszTag)), host(strDir), tool(strDir) {}
    std::string File(const char* pszName) const { return strDir + pszName; }
    std::string strDir;
    qt::Host host;
    FakeTool tool;
};

// Requests go to the host from the fake tool, the one process with the key
// (see FAKETOOL.exe); nCode 0 is the focus request.
const ULONG_PTR kProxyRequest = 0x50525859;

BOOL ToolRawRequest(const FakeTool& tool, HWND hWnd, uint32_t nCode, const void* pData, DWORD cbData)
{
    std::vector<char> data(8 + cbData);
    const uint32_t head[2] = {HookWindowWord(hWnd), nCode};
    memcpy(data.data(), head, sizeof(head));
    if (cbData)
        memcpy(data.data() + 8, pData, cbData);
    COPYDATASTRUCT cds = {kProxyRequest, static_cast<DWORD>(data.size()), data.data()};
    DWORD_PTR dwResult = 0;
    if (!SendMessageTimeoutA(tool.Window(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000,
                             &dwResult))
        return FALSE;
    return dwResult != 0;
}

void ToolFocus(const FakeTool& tool, HWND hWnd)
{
    ToolRawRequest(tool, hWnd, 0, nullptr, 0);
}

BOOL ToolDrop(const FakeTool& tool, HWND hWndFrame, const char* pszPath)
{
    return ToolRawRequest(tool, hWndFrame, REQUEST_DROPFILE, pszPath, static_cast<DWORD>(strlen(pszPath) + 1));
}

BOOL ToolAppendPopup(const FakeTool& tool, HWND hWndFrame, HMENU hPopup, const char* pszText)
{
    const HostPopupRequest request = MakePopupRequest(hPopup, pszText);
    return ToolRawRequest(tool, hWndFrame, REQUEST_APPENDPOPUP, &request, sizeof(request));
}

BOOL ToolCheck(const FakeTool& tool, HWND hWndFrame, HMENU hMenu, UINT nId, UINT nCheck)
{
    const HostCheckRequest request = {HandleWord(hMenu), nId, nCheck};
    return ToolRawRequest(tool, hWndFrame, REQUEST_CHECKMENUITEM, &request, sizeof(request));
}

BOOL ToolRemovePopup(const FakeTool& tool, HWND hWndFrame)
{
    return ToolRawRequest(tool, hWndFrame, REQUEST_REMOVEPOPUP, nullptr, 0);
}

// The same request from a program that is not the tool: no key, or a guess.
BOOL StrangerRequest(HWND hWnd, uint32_t nCode, const void* pData, DWORD cbData, uint32_t nGuess = 0)
{
    std::vector<char> data(sizeof(HostRequestHeader) + cbData);
    const HostRequestHeader header = {{nGuess, nGuess}};
    memcpy(data.data(), &header, sizeof(header));
    if (cbData)
        memcpy(data.data() + sizeof(header), pData, cbData);
    COPYDATASTRUCT cds = {nCode, static_cast<DWORD>(data.size()), data.data()};
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutA(hWnd, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000, &dwResult);
    return dwResult != 0;
}
} // namespace

TEST_CASE(entering_a_running_host_reports_its_windows_parents_first)
{
    Session s("hook-enter");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /open \"" + s.File("b.c") + "\" /view 1117"));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    // Entering happens inside installHook: every window is known when it returns.
    CHECK_EQ(s.tool.Count("CREATE"), 8); // frame, client, 2 editors + gutters, a view + its text
    CheckReportsMatchHost(s.tool, hWndFrame);
    CHECK_EQ(s.tool.Records().front().strWhat, std::string("CREATE"));
    // The tool's dock bar message comes back as a code 3 record after the host handled it.
    CHECK(s.host.WaitLog(qt::kDockBarAnnouncement, 5000));
    const UINT uDockBar = RegisterWindowMessageA("49ED7A1D-5042-42B2-9095-89DBDA86205C");
    CHECK(s.tool.WaitCount("AFTER", 1, hWndFrame, uDockBar));
    // The tool bar is the frame's child but no window of the tool's.
    HWND hWndToolBar = FindWindowExA(hWndFrame, nullptr, "PFE_TBar", nullptr);
    CHECK(hWndToolBar != nullptr);
    CHECK(s.tool.Reported().count(hWndToolBar) == 0);
    CHECK_EQ(s.tool.Records()[0].nKind, 1u);
}

TEST_CASE(a_host_busy_during_install_holds_it_up_one_second_and_is_entered_when_activated)
{
    Session s("hook-busyhost");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    HWND hWndFrame = s.host.Frame();
    HANDLE hThread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(hWndFrame, nullptr));
    REQUIRE(hThread);
    SuspendThread(hThread);
    const DWORD dwStart = GetTickCount();
    const bool bStarted = s.tool.Start();
    const DWORD dwInstall = GetTickCount() - dwStart;
    ResumeThread(hThread);
    CloseHandle(hThread);
    REQUIRE(bStarted);
    printf("  installHook with a suspended host: about %lu ms\n", static_cast<unsigned long>(dwInstall));
    CHECK(dwInstall < 3000);
    CHECK(Drain(s.host, s.host.FindWindowByTitle(s.File("a.c"))));
    // The user turns to another program, then back to the host: it is
    // entered then (or already when it got the activation back from the
    // windows of an earlier test).
    HWND hWndOther = CreateWindowA("STATIC", "other program", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                   GetModuleHandleA(nullptr), nullptr);
    SetForegroundWindow(hWndOther);
    CHECK(qt::WaitFor([&] { return GetForegroundWindow() == hWndOther; }, 3000));
    SetForegroundWindow(hWndFrame);
    CHECK(s.tool.WaitCount("CREATE", 4));
    CheckReportsMatchHost(s.tool, hWndFrame);
    DestroyWindow(hWndOther);
}

TEST_CASE(a_host_started_after_install_reports_its_windows_as_they_come)
{
    Session s("hook-later");
    REQUIRE(s.tool.Start());
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /view 1118"));
    HWND hWndFrame = s.host.Frame();
    REQUIRE(s.tool.WaitCount("CREATE", 6));
    CHECK(s.host.WaitLog(qt::kDockBarAnnouncement, 5000));
    CheckReportsMatchHost(s.tool, hWndFrame);
    // Windows made later, by a command, are reported too.
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.tool.WaitCount("CREATE", 8));
    CheckReportsMatchHost(s.tool, hWndFrame);
}

TEST_CASE(the_host_works_as_before_with_its_windows_subclassed)
{
    // The host must not notice us: its own commands on its own windows still
    // work once the library has put its procedure in front of theirs.
    Session s("hook-unnoticed");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    REQUIRE(s.tool.WaitCount("CREATE", 4));
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    PostMessageA(hWndEditor, WM_CHAR, 'q', 0);
    PostMessageA(s.host.Frame(), WM_COMMAND, 1006, 0);
    CHECK(s.host.WaitLog("SAVE " + s.File("a.c"), 5000));
    CHECK(qt::ReadTextFile(s.File("a.c")).find('q') != std::string::npos);
}

TEST_CASE(frame_size_comes_before_and_after_the_host_handles_it)
{
    Session s("hook-size");
    REQUIRE(s.host.Start());
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    const int nBefore = s.tool.Count("AFTER", hWndFrame, WM_SIZE);
    SetWindowPos(hWndFrame, nullptr, 0, 0, 900, 640, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    REQUIRE(s.tool.WaitCount("AFTER", nBefore + 1, hWndFrame, WM_SIZE));
    // The last two frame WM_SIZE records: code 2, then code 3.
    std::vector<std::string> sizes;
    for (const Record& record : s.tool.Records())
        if (record.hWnd == hWndFrame && record.nMessage == WM_SIZE)
            sizes.push_back(record.strWhat);
    REQUIRE(sizes.size() >= 2);
    CHECK_EQ(sizes[sizes.size() - 2], std::string("BEFORE"));
    CHECK_EQ(sizes[sizes.size() - 1], std::string("AFTER"));
    // Title changes and commands of the frame come as code 3 only.
    SetWindowTextA(hWndFrame, "Host IDE - retitled");
    PostMessageA(hWndFrame, WM_COMMAND, 1033, 0);
    CHECK(s.tool.WaitCount("AFTER", 1, hWndFrame, WM_SETTEXT));
    CHECK(s.tool.WaitCount("AFTER", 1, hWndFrame, WM_COMMAND));
    CHECK_EQ(s.tool.Count("BEFORE", hWndFrame, WM_SETTEXT), 0);
    CHECK_EQ(s.tool.Count("BEFORE", hWndFrame, WM_COMMAND), 0);
}

TEST_CASE(a_wheel_notch_gives_one_record_of_the_window_under_it)
{
    Session s("hook-wheel");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /view 1117"));
    REQUIRE(s.tool.Start());
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    HWND hWndView = s.host.FindWindowByTitle("Program Memory Window");
    REQUIRE(hWndEditor && hWndView);
    HWND hWndViewText = FindWindowExA(hWndView, nullptr, "PFE_Text", nullptr);
    HWND hWndGutter = FindWindowExA(hWndEditor, nullptr, "PFE_Num", nullptr);
    REQUIRE(hWndViewText && hWndGutter);

    PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    PostMessageA(hWndViewText, WM_MOUSEWHEEL, MAKEWPARAM(0, -120), 0);
    PostMessageA(hWndGutter, WM_MOUSEWHEEL, kWheelUp, 0); // kind 5: not acted on
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_MOUSEWHEEL), 1);
    CHECK_EQ(s.tool.Count("AFTER", hWndViewText, WM_MOUSEWHEEL), 1);
    for (const Record& record : s.tool.Records())
        if (record.strWhat == "AFTER" || record.strWhat == "BEFORE")
            CHECK_EQ(record.nFlags, 0u); // Ctrl was not held
    CHECK_EQ(s.tool.Count("AFTER", hWndView, WM_MOUSEWHEEL), 0);
    CHECK_EQ(s.tool.Count("AFTER", hWndGutter, WM_MOUSEWHEEL), 0);
    CHECK_EQ(s.tool.Count("BEFORE", hWndEditor), 0);
    for (const Record& record : s.tool.Records())
        if (record.nMessage == WM_MOUSEWHEEL && record.hWnd == hWndEditor)
            CHECK_EQ(record.nWParam, static_cast<unsigned>(kWheelUp));

    // Buttons by kind: the client takes all three, text and gutter left and middle.
    HWND hWndClient = FindWindowExA(s.host.Frame(), nullptr, "MDIClient", nullptr);
    PostMessageA(hWndClient, WM_RBUTTONDOWN, 0, 0);
    PostMessageA(hWndGutter, WM_RBUTTONDOWN, 0, 0);
    PostMessageA(hWndGutter, WM_MBUTTONDOWN, 0, 0);
    PostMessageA(hWndViewText, WM_LBUTTONDOWN, 0, 0);
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndClient, WM_RBUTTONDOWN), 1);
    CHECK_EQ(s.tool.Count("AFTER", hWndGutter, WM_RBUTTONDOWN), 0);
    CHECK_EQ(s.tool.Count("AFTER", hWndGutter, WM_MBUTTONDOWN), 1);
    CHECK_EQ(s.tool.Count("AFTER", hWndViewText, WM_LBUTTONDOWN), 1);
}

TEST_CASE(ctrl_e_is_reported_once_although_the_host_takes_it_as_an_accelerator)
{
    Session s("hook-ctrle");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    REQUIRE(PressWithControl(s.host, 'E'));
    CHECK(s.host.WaitLog("HOSTKEY 1099", 5000));
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_KEYDOWN), 1);
    for (const Record& record : s.tool.Records())
    {
        if (record.nMessage == WM_KEYDOWN)
        {
            CHECK_EQ(record.nWParam, 69u);
            CHECK_EQ(record.nFlags, static_cast<unsigned>(HOOK_FLAG_CONTROL));
        }
    }

    // Ctrl+Enter reaches the editor's procedure as well: still one record.
    REQUIRE(PressWithControl(s.host, VK_RETURN));
    CHECK(s.host.WaitLog("KEYDOWN " + s.File("a.c") + " 13 ctrl=1", 5000));
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_KEYDOWN), 2);

    // Keys without Ctrl, and other keys with it, are the host's alone.
    SendKey('E', false);
    SendKey('E', true);
    SendKey(VK_RETURN, false);
    SendKey(VK_RETURN, true);
    REQUIRE(PressWithControl(s.host, 'K'));
    CHECK(s.host.WaitLog("KEYDOWN " + s.File("a.c") + " 75 ctrl=1", 5000));
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_KEYDOWN), 2);
}

TEST_CASE(a_posted_ctrl_enter_is_reported_from_the_window_procedure)
{
    Session s("hook-postkey");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    // Posted keys bypass the keyboard hook; Ctrl is held for real meanwhile.
    SetForegroundWindow(s.host.Frame());
    REQUIRE(qt::WaitFor([&] { return GetForegroundWindow() == s.host.Frame(); }, 3000));
    SendKey(VK_CONTROL, false);
    CHECK(s.host.WaitLog("KEYDOWN " + s.File("a.c") + " 17 ctrl=1", 5000));
    PostMessageA(hWndEditor, WM_KEYDOWN, VK_RETURN, 0x001C0001);
    PostMessageA(hWndEditor, WM_KEYDOWN, 'X', 0x002D0001);
    // A notch made with Ctrl held says so itself, as real wheel input does.
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, 120), 0);
    REQUIRE(Drain(s.host, hWndEditor));
    SendKey(VK_CONTROL, true);
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_KEYDOWN), 1);
    // Every record carries the host's Ctrl state, the wheel's too.
    for (const Record& record : s.tool.Records())
        if (record.hWnd == hWndEditor && (record.nMessage == WM_KEYDOWN || record.nMessage == WM_MOUSEWHEEL))
            CHECK_EQ(record.nFlags, static_cast<unsigned>(HOOK_FLAG_CONTROL));
    // Without Ctrl: nothing. A key after the release shows that the host has
    // taken the release from its input queue.
    SendKey('X', false);
    SendKey('X', true);
    CHECK(s.host.WaitLog("KEYDOWN " + s.File("a.c") + " 88 ctrl=0", 5000));
    PostMessageA(hWndEditor, WM_KEYDOWN, VK_RETURN, 0x001C0001);
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_KEYDOWN), 1);
    // A mouse message's own keys count, not the keys at the time the host
    // takes it from its queue: Ctrl is up by now.
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, 120), 0);
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    REQUIRE(Drain(s.host, hWndEditor));
    std::vector<unsigned> flags;
    for (const Record& record : s.tool.Records())
        if (record.hWnd == hWndEditor && record.nMessage == WM_MOUSEWHEEL)
            flags.push_back(record.nFlags);
    REQUIRE(flags.size() == 3u);
    CHECK_EQ(flags[1], static_cast<unsigned>(HOOK_FLAG_CONTROL));
    CHECK_EQ(flags[2], 0u);
}

TEST_CASE(uninstall_reports_every_window_gone_and_a_new_tool_enters_again)
{
    Session s("hook-leave");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /view 1117"));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(s.tool.WaitCount("CREATE", 6));
    REQUIRE(s.tool.Close());
    const std::vector<Record> records = s.tool.Records();
    REQUIRE(!records.empty());
    CHECK_EQ(records.back().strWhat, std::string("EXIT"));
    CHECK_EQ(records.back().nNumber, 0u);
    CHECK(s.tool.Reported().empty());
    CHECK_EQ(s.tool.Count("DESTROY"), 6);

    // The host runs on without us: its windows still work, and it answers.
    CHECK(s.host.GetProcess().IsRunning());
    CHECK(Drain(s.host, hWndEditor));
    DWORD_PTR dwResult = 0;
    CHECK(SendMessageTimeoutA(hWndFrame, WM_NULL, 0, 0, SMTO_NORMAL, 2000, &dwResult) != 0);

    // A second tool finds the same host and every window again, also those
    // whose subclass stayed in place under the host's own.
    FakeTool second(s.strDir, "second");
    REQUIRE(second.Start());
    CheckReportsMatchHost(second, hWndFrame);
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(second.Count("AFTER", hWndEditor, WM_MOUSEWHEEL), 1);
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_MOUSEWHEEL), 0);
    REQUIRE(second.Close());
    CHECK(second.Reported().empty());
}

TEST_CASE(closing_an_mdi_child_reports_it_and_its_inner_windows_gone)
{
    Session s("hook-close");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /open \"" + s.File("b.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    HWND hWndGutter = FindWindowExA(hWndEditor, nullptr, "PFE_Num", nullptr);
    PostMessageA(hWndEditor, WM_CLOSE, 0, 0);
    REQUIRE(s.host.WaitLog("CLOSE " + s.File("a.c"), 5000));
    REQUIRE(s.tool.WaitCount("DESTROY", 2));
    const std::vector<Record> records = s.tool.Records();
    std::vector<HWND> destroyed;
    for (const Record& record : records)
        if (record.strWhat == "DESTROY")
            destroyed.push_back(record.hWnd);
    REQUIRE(destroyed.size() == 2u);
    CHECK(destroyed[0] == hWndGutter); // the inner window first, its MDI child last
    CHECK(destroyed[1] == hWndEditor);
    CheckReportsMatchHost(s.tool, s.host.Frame());
}

TEST_CASE(the_focus_request_moves_the_focus_inside_the_host)
{
    Session s("hook-focus");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /open \"" + s.File("b.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    const std::string strLine = "SETFOCUS PFE_Text " + s.File("a.c");
    const int nBefore = s.host.CountLog(strLine);
    ToolFocus(s.tool, hWndEditor);
    CHECK(s.host.WaitLog(strLine, 5000, nBefore + 1));
    // A stranger's request, without the key, moves nothing: the marker
    // posted after it arrives with the focus still where it was.
    HWND hWndB = s.host.FindWindowByTitle(s.File("b.c"));
    const std::string strB = "SETFOCUS PFE_Text " + s.File("b.c");
    const int nB = s.host.CountLog(strB);
    PostMessageA(hWndB, HostSetFocusMessage(), 0, 0);
    CHECK(Drain(s.host, hWndB));
    CHECK_EQ(s.host.CountLog(strB), nB);
    // A window that is gone, or one the library does not watch: nothing, and the host runs on.
    HWND hWndToolBar = FindWindowExA(s.host.Frame(), nullptr, "PFE_TBar", nullptr);
    ToolFocus(s.tool, hWndToolBar);
    PostMessageA(hWndEditor, WM_CLOSE, 0, 0);
    ToolFocus(s.tool, hWndEditor);
    HWND hWndOther = s.host.FindWindowByTitle(s.File("b.c"));
    REQUIRE(hWndOther);
    CHECK(Drain(s.host, hWndOther));
    CHECK(s.host.GetProcess().IsRunning());
}

TEST_CASE(a_killed_tool_stops_costing_the_host_at_once)
{
    Session s("hook-killed");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    // The tool stops answering; the host is inside a record to it when the
    // tool is killed.
    s.tool.Hang(10000);
    REQUIRE(s.tool.WaitCount("HANG", 1));
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    Sleep(100);
    s.tool.GetProcess().Kill();
    const DWORD dwBurst = TimeWheelBurst(s.host, hWndEditor);
    printf("  10 wheel notches after the kill: %lu ms\n", static_cast<unsigned long>(dwBurst));
    CHECK(dwBurst < 1000);
    CHECK(s.host.GetProcess().IsRunning());
    // Windows made and closed afterwards cost nothing either.
    PostMessageA(s.host.Frame(), WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000));
    CHECK(TimeWheelBurst(s.host, hWndEditor) < 1000);
}

TEST_CASE(a_hung_tool_stalls_the_host_once_and_loses_no_window_when_it_wakes)
{
    Session s("hook-hung");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /open \"" + s.File("b.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    HWND hWndA = s.host.FindWindowByTitle(s.File("a.c"));
    HWND hWndB = s.host.FindWindowByTitle(s.File("b.c"));
    REQUIRE(hWndA && hWndB);
    REQUIRE(s.tool.WaitCount("CREATE", 6));

    s.tool.Hang(3000);
    REQUIRE(s.tool.WaitCount("HANG", 1));
    const DWORD dwBurst = TimeWheelBurst(s.host, hWndA);
    printf("  10 wheel notches with a hung tool: %lu ms\n", static_cast<unsigned long>(dwBurst));
    CHECK(dwBurst < 1000);
    // While it hangs, windows come and go.
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000));
    PostMessageA(hWndB, WM_CLOSE, 0, 0);
    CHECK(s.host.WaitLog("CLOSE " + s.File("b.c"), 5000));
    CHECK(TimeWheelBurst(s.host, hWndA) < 1000);

    REQUIRE(s.tool.WaitCount("AWAKE", 1, nullptr, 0, 10000));
    // Once it answers again it hears of both, and then is in step with the host.
    CHECK(qt::WaitFor([&] { return InStep(s.tool, hWndFrame); }, 5000));
    CheckReportsMatchHost(s.tool, hWndFrame);
    CHECK(s.tool.Reported().count(hWndB) == 0);
    // And its records flow again.
    const int nWheels = s.tool.Count("AFTER", hWndA, WM_MOUSEWHEEL);
    PostMessageA(hWndA, WM_MOUSEWHEEL, kWheelUp, 0);
    CHECK(s.tool.WaitCount("AFTER", nWheels + 1, hWndA, WM_MOUSEWHEEL));
    REQUIRE(s.tool.Close());
    CHECK(s.tool.Reported().empty());
}

TEST_CASE(a_creation_unanswered_by_a_hung_tool_ends_as_exactly_one_window)
{
    Session s("hook-hungcreate");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    REQUIRE(s.tool.WaitCount("CREATE", 4));
    // The first record the hung tool does not answer is a creation: whether
    // the tool will still handle it is unknown to the host.
    s.tool.Hang(1500);
    REQUIRE(s.tool.WaitCount("HANG", 1));
    PostMessageA(hWndFrame, WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000));
    HWND hWndNew = s.host.FindWindowByTitle("Untitled");
    REQUIRE(hWndNew);
    REQUIRE(s.tool.WaitCount("AWAKE", 1, nullptr, 0, 10000));
    CHECK(s.tool.WaitCount("CREATE", 1, hWndNew));
    CHECK(qt::WaitFor([&] { return InStep(s.tool, hWndFrame); }, 5000));
    CheckReportsMatchHost(s.tool, hWndFrame);
    printf("  records of the new editor:");
    for (const Record& record : s.tool.Records())
        if (record.hWnd == hWndNew)
            printf(" %s", record.strWhat.c_str());
    printf("\n");
    // Its later records reach the tool.
    PostMessageA(hWndNew, WM_MOUSEWHEEL, kWheelUp, 0);
    CHECK(s.tool.WaitCount("AFTER", 1, hWndNew, WM_MOUSEWHEEL));
    REQUIRE(s.tool.Close());
    CHECK(s.tool.Reported().empty());
}

TEST_CASE(a_slow_tool_that_works_for_the_host_is_not_taken_for_hung)
{
    Session s("hook-busy");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start("/busy 700"));
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    // Each wheel record keeps the tool busy sending the host messages for
    // longer than a record may take: all three still arrive.
    for (int i = 0; i < 3; ++i)
        PostMessageA(hWndEditor, WM_MOUSEWHEEL, kWheelUp, 0);
    CHECK(s.tool.WaitCount("AFTER", 3, hWndEditor, WM_MOUSEWHEEL, 10000));
    // And creations keep flowing at once.
    PostMessageA(s.host.Frame(), WM_COMMAND, 1001, 0);
    CHECK(qt::WaitFor([&] { return InStep(s.tool, s.host.Frame()); }, 5000));
}

TEST_CASE(a_tool_handle_that_is_no_window_leaves_the_host_alone)
{
    Session s("hook-badwindow");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start("/badwindow"));
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    CHECK(TimeWheelBurst(s.host, hWndEditor) < 1000);
    PostMessageA(s.host.Frame(), WM_COMMAND, 1001, 0);
    CHECK(s.host.WaitLog("OPEN Untitled", 5000));
    CHECK(s.host.GetProcess().IsRunning());
    CHECK_EQ(s.tool.Count("CREATE"), 0);
    CHECK_EQ(s.host.CountLog(qt::kDockBarAnnouncement), 0);
}

TEST_CASE(a_host_that_closes_reports_every_window_gone_and_ends_cleanly)
{
    Session s("hook-hostexit");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /view 1119"));
    REQUIRE(s.tool.Start());
    REQUIRE(s.tool.WaitCount("CREATE", 6));
    REQUIRE(s.host.Close());
    CHECK_EQ(s.host.GetProcess().ExitCode(), 0u);
    CHECK(s.host.WaitLog("EXIT", 2000));
    CHECK(qt::WaitFor([&] { return s.tool.Reported().empty(); }, 5000));
    CHECK(s.tool.GetProcess().IsRunning());
}

// Requests ---------------------------------------------------------------------

namespace
{

// A full path of exactly nLength characters in strDir.
std::string PathOfLength(const std::string& strDir, size_t nLength)
{
    std::string strPath = strDir;
    while (strPath.size() < nLength - 2)
        strPath += 'n';
    return strPath + ".c";
}
} // namespace

TEST_CASE(a_drop_request_opens_the_file_in_the_host_and_bad_ones_change_nothing)
{
    Session s("hook-drop");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);

    // The stand-in checks the block's header and list before it reads a name.
    // Only files that exist are dropped.
    const std::string strPlain = s.File("b.c");
    const std::string strSpaces = s.File("two words here.c");
    const std::string strLongest = PathOfLength(s.strDir, MAX_PATH - 1);
    for (const std::string& strPath : {strPlain, strSpaces, strLongest, s.File("a.c"), s.File("d.c")})
        REQUIRE(qt::WriteTextFile(strPath, "; a file\r\n"));
    for (const std::string& strPath : {strPlain, strSpaces, strLongest})
    {
        CHECK(ToolDrop(s.tool, hWndFrame, strPath.c_str()));
        CHECK(s.host.WaitLog("DROP " + strPath, 5000));
        CHECK(s.host.WaitLog("OPEN " + strPath, 5000));
    }
    // Dropping an open file makes it active; a close the tool posts right
    // after the request closes that file, not the one active before.
    CHECK(ToolDrop(s.tool, hWndFrame, s.File("a.c").c_str()));
    PostMessageA(hWndFrame, WM_COMMAND, 1007, 0);
    CHECK(s.host.WaitLog("CLOSE " + s.File("a.c"), 5000));
    CHECK_EQ(s.host.CountLog("CLOSE " + strLongest), 0);
    CHECK_EQ(s.host.CountLogPrefix("DROP "), 4);

    // Refused, and nothing reaches the host: a name the host would cut, a
    // path without its NUL, one with a NUL inside, an empty one, no data,
    // and a drop sent to a window that is not the frame.
    const std::string strTooLong = PathOfLength(s.strDir, MAX_PATH);
    CHECK(!ToolDrop(s.tool, hWndFrame, strTooLong.c_str()));
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_DROPFILE, strPlain.c_str(), static_cast<DWORD>(strPlain.size())));
    const std::string strInner = strPlain + '\0' + "x.c";
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_DROPFILE, strInner.c_str(), static_cast<DWORD>(strInner.size() + 1)));
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_DROPFILE, "", 1));
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_DROPFILE, nullptr, 0));
    // Nor from a program that is not the tool, with no key or a guessed one.
    CHECK(!StrangerRequest(hWndFrame, REQUEST_DROPFILE, strPlain.c_str(), static_cast<DWORD>(strPlain.size() + 1)));
    CHECK(!StrangerRequest(hWndFrame, REQUEST_DROPFILE, strPlain.c_str(), static_cast<DWORD>(strPlain.size() + 1),
                           0x12345678u));
    // Nor a path that is not a file on a local drive: a share, a pipe, a
    // device, a folder.
    for (const char* pszPath : {"\\\\localhost\\c$\\x.c", "\\\\.\\pipe\\x", "C:\\NUL", "C:\\windows"})
        CHECK(!ToolDrop(s.tool, hWndFrame, pszPath));
    HWND hWndOther = s.host.FindWindowByTitle(strPlain);
    REQUIRE(hWndOther);
    CHECK(!ToolDrop(s.tool, hWndOther, s.File("c.c").c_str()));
    CHECK(Drain(s.host, hWndOther));
    s.host.WaitQuiet();
    CHECK_EQ(s.host.CountLogPrefix("DROP "), 4);
    CHECK(s.host.GetProcess().IsRunning());
    // Still serving: a good request after the bad ones works.
    CHECK(ToolDrop(s.tool, hWndFrame, s.File("d.c").c_str()));
    CHECK(s.host.WaitLog("DROP " + s.File("d.c"), 5000));
}

namespace
{
// The tool's "&Assist" popup, as the tool loads it from its resources.
class ToolPopup
{
public:
    ToolPopup() : m_hMenu(CreatePopupMenu())
    {
        AppendMenuA(m_hMenu, MF_STRING, 32771, "&Assist Window");
        AppendMenuA(m_hMenu, MF_SEPARATOR, 0, nullptr);
        AppendMenuA(m_hMenu, MF_STRING, 32772, "&Other");
    }
    ~ToolPopup() { DestroyMenu(m_hMenu); }
    ToolPopup(const ToolPopup&) = delete;
    ToolPopup& operator=(const ToolPopup&) = delete;
    HMENU Get() const { return m_hMenu; }

private:
    HMENU m_hMenu;
};

// The pop-up menu window the host shows, or NULL.
HWND ShownMenu()
{
    HWND hWnd = FindWindowA("#32768", nullptr);
    return hWnd && IsWindowVisible(hWnd) ? hWnd : nullptr;
}

// The user opens the frame's menu with this mnemonic (Alt+key), as real input.
bool OpenMenu(const qt::Host& host, WORD wKey)
{
    SetForegroundWindow(host.Frame());
    if (!qt::WaitFor([&] { return GetForegroundWindow() == host.Frame(); }, 3000))
        return false;
    qt::SendKeys({VK_MENU, wKey});
    // A menu shows within a few milliseconds; the wait is long only where
    // no menu is the expected outcome.
    return qt::WaitFor([] { return ShownMenu() != nullptr; }, 600);
}

void CloseMenus()
{
    for (int i = 0; i < 3 && ShownMenu(); ++i)
    {
        qt::SendKeys({VK_ESCAPE});
        qt::WaitFor([] { return ShownMenu() == nullptr; }, 500);
    }
    qt::SendKeys({VK_ESCAPE}); // out of the menu bar as well
}

// Pixels of the check-mark column of the shown menu's first item that differ
// from the item's background (the item may be drawn highlighted or not).
int CheckColumnInk()
{
    HWND hWndMenu = ShownMenu();
    if (!hWndMenu)
        return -1;
    Sleep(150); // drawn
    RECT rect = {};
    GetWindowRect(hWndMenu, &rect);
    HDC hDC = GetDC(nullptr);
    const COLORREF background = GetPixel(hDC, rect.left + 4, rect.top + 4);
    int nInk = 0;
    for (int y = rect.top + 4; y < rect.top + 18; ++y)
        for (int x = rect.left + 4; x < rect.left + 16; ++x)
            nInk += GetPixel(hDC, x, y) != background ? 1 : 0;
    ReleaseDC(nullptr, hDC);
    return nInk;
}

// Opens the "&Assist" menu and chooses "&Assist Window": true when the tool
// got its command, as a choice in its popup. The host's own procedure never
// sees it: its log has no COMMAND 32771, whatever was chosen.
int PopupChoices(const FakeTool& tool)
{
    int nCount = 0;
    for (const Record& record : tool.Records())
        if (record.strWhat == "AFTER" && record.nMessage == WM_COMMAND && record.nWParam == 32771 &&
            (record.nFlags & HOOK_FLAG_POPUP) != 0)
            ++nCount;
    return nCount;
}

bool ChooseAssistWindow(const Session& s)
{
    const int nBefore = PopupChoices(s.tool);
    if (!OpenMenu(s.host, 'A'))
        return false;
    qt::SendKeys({'A'});
    const bool bChosen = qt::WaitFor([&] { return PopupChoices(s.tool) > nBefore; }, 1500);
    CloseMenus();
    return bChosen && s.host.CountLog("COMMAND 32771") == 0;
}

// The host's own "&File" menu still works: "&New" makes an editor.
bool HostMenusWork(const qt::Host& host)
{
    const int nBefore = host.CountLog("COMMAND 1001");
    if (!OpenMenu(host, 'F'))
        return false;
    qt::SendKeys({'N'});
    const bool bChosen = host.WaitLog("COMMAND 1001", 2000, nBefore + 1);
    CloseMenus();
    return bChosen;
}
} // namespace

TEST_CASE(the_popup_request_puts_one_menu_on_the_host_bar_until_removed_or_the_tool_leaves)
{
    Session s("hook-popup");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    ToolPopup popup;
    CHECK(!ChooseAssistWindow(s)); // not there before the request

    CHECK(ToolAppendPopup(s.tool, hWndFrame, popup.Get(), "&Assist"));
    CHECK(!ToolAppendPopup(s.tool, hWndFrame, popup.Get(), "&Assist")); // one per frame
    CHECK(ChooseAssistWindow(s));
    CHECK(s.tool.WaitCount("AFTER", 1, hWndFrame, WM_COMMAND));
    CHECK_EQ(PopupChoices(s.tool), 1);

    // The host's handle of the popup comes with its WM_INITMENUPOPUP record;
    // the check mark set through it is drawn in the host's menu.
    HMENU hHostPopup = nullptr;
    for (const Record& record : s.tool.Records())
        if (record.hWnd == hWndFrame && record.nMessage == WM_INITMENUPOPUP)
            hHostPopup = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(static_cast<int32_t>(record.nWParam)));
    REQUIRE(hHostPopup);
    CHECK(ToolCheck(s.tool, hWndFrame, hHostPopup, 32771, MF_CHECKED));
    REQUIRE(OpenMenu(s.host, 'A'));
    const int nChecked = CheckColumnInk();
    CloseMenus();
    CHECK(ToolCheck(s.tool, hWndFrame, hHostPopup, 32771, MF_UNCHECKED));
    REQUIRE(OpenMenu(s.host, 'A'));
    const int nUnchecked = CheckColumnInk();
    CloseMenus();
    printf("  check column ink: %d checked, %d unchecked\n", nChecked, nUnchecked);
    CHECK(nChecked > nUnchecked + 10);
    // Greyed, the item cannot be chosen; enabled again, it can.
    CHECK(ToolCheck(s.tool, hWndFrame, hHostPopup, 32771, MF_UNCHECKED | MF_GRAYED));
    CHECK(!ChooseAssistWindow(s));
    CHECK(ToolCheck(s.tool, hWndFrame, hHostPopup, 32771, MF_UNCHECKED));
    // Refused: an item the menu lacks, a handle that is no menu, a state
    // other than checked, unchecked and greyed, a request of the wrong size.
    CHECK(!ToolCheck(s.tool, hWndFrame, hHostPopup, 9999, MF_CHECKED));
    CHECK(!ToolCheck(s.tool, hWndFrame, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(0x7ff4)), 32771,
                                    MF_CHECKED));
    CHECK(!ToolCheck(s.tool, hWndFrame, hHostPopup, 32771, MF_DISABLED));
    CHECK(!ToolCheck(s.tool, hWndFrame, hHostPopup, 32771, MF_BYPOSITION));
    const HostCheckRequest check = {HookWindowWord(reinterpret_cast<HWND>(hHostPopup)), 32771, MF_CHECKED};
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_CHECKMENUITEM, &check, sizeof(check) - 1));

    // A stranger can neither take it out nor check what it likes.
    CHECK(!StrangerRequest(hWndFrame, REQUEST_REMOVEPOPUP, nullptr, 0));
    CHECK(ChooseAssistWindow(s));
    CHECK(!StrangerRequest(hWndFrame, REQUEST_CHECKMENUITEM, &check, sizeof(check)));
    // Removed: the command is gone, the host's own menus stay.
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_REMOVEPOPUP, "x", 1));
    CHECK(ToolRemovePopup(s.tool, hWndFrame));
    CHECK(!ToolRemovePopup(s.tool, hWndFrame));
    CHECK(!ChooseAssistWindow(s));
    CHECK(HostMenusWork(s.host));
    CHECK_EQ(PopupChoices(s.tool), 2);

    // Appended again, then the tool leaves: the library takes it out.
    CHECK(ToolAppendPopup(s.tool, hWndFrame, popup.Get(), "&Assist"));
    REQUIRE(s.tool.Close());
    CHECK(!ChooseAssistWindow(s));
    CHECK(HostMenusWork(s.host));
    CHECK_EQ(PopupChoices(s.tool), 2);
    // And a request to a host the library has left is refused.
    CHECK(!ToolAppendPopup(s.tool, hWndFrame, popup.Get(), "&Assist"));
    CHECK(s.host.GetProcess().IsRunning());
}

TEST_CASE(bad_popup_requests_change_nothing_and_a_killed_tool_leaves_no_dead_menu)
{
    Session s("hook-popupbad");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    ToolPopup popup;

    // Wrong size, texts without their NUL, too many items, no title, a
    // window that is not the frame.
    HostPopupRequest request = {};
    lstrcpyA(request.szText, "&Assist");
    request.nItems = 1;
    request.items[0].nId = 32771;
    lstrcpyA(request.items[0].szText, "&Assist Window");
    HostPopupRequest bad = request;
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_APPENDPOPUP, &bad, sizeof(bad) - 4));
    memset(bad.szText, 'x', sizeof(bad.szText));
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_APPENDPOPUP, &bad, sizeof(bad)));
    bad = request;
    memset(bad.items[0].szText, 'x', sizeof(bad.items[0].szText));
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_APPENDPOPUP, &bad, sizeof(bad)));
    bad = request;
    bad.nItems = kMaxPopupItems + 1;
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_APPENDPOPUP, &bad, sizeof(bad)));
    // Commands only of the tool's range: none of the host's own.
    bad = request;
    bad.items[0].nId = 1008;
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_APPENDPOPUP, &bad, sizeof(bad)));
    bad = request;
    bad.szText[0] = 0;
    CHECK(!ToolRawRequest(s.tool, hWndFrame, REQUEST_APPENDPOPUP, &bad, sizeof(bad)));
    CHECK(!ToolRawRequest(s.tool, hWndEditor, REQUEST_APPENDPOPUP, &request, sizeof(request)));
    CHECK(!ChooseAssistWindow(s));
    // The good one still works after all that.
    CHECK(ToolRawRequest(s.tool, hWndFrame, REQUEST_APPENDPOPUP, &request, sizeof(request)));
    CHECK(ChooseAssistWindow(s));

    // Killed, the tool never hears the command again: the host must not
    // keep offering it. Nothing is sent to the dead tool before the user
    // opens a menu, and the popup is gone by then.
    REQUIRE(Drain(s.host, hWndEditor)); // the frame has repainted where the menu was
    s.host.WaitQuiet();
    s.tool.GetProcess().Kill();
    // Not even shown: a menu the host had opened already would lose its
    // popup under the user's eyes.
    CHECK(!OpenMenu(s.host, 'A'));
    CloseMenus();
    CHECK(!ChooseAssistWindow(s));
    CHECK(HostMenusWork(s.host));
    CHECK_EQ(PopupChoices(s.tool), 1);
    CHECK(s.host.GetProcess().IsRunning());
}

TEST_CASE(frame_moves_shows_and_hides_are_reported_but_not_activation_or_z_order)
{
    Session s("hook-framemove");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndFrame = s.host.Frame();
    HWND hWndEditor = s.host.FindWindowByTitle(s.File("a.c"));
    REQUIRE(hWndEditor);
    REQUIRE(Drain(s.host, hWndEditor));
    const int nPositions = s.tool.Count("AFTER", hWndFrame, WM_WINDOWPOSCHANGED);

    // Another window comes to the front and goes back: activation and
    // z-order only.
    HWND hWndOther = CreateWindowA("STATIC", "other program", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                   GetModuleHandleA(nullptr), nullptr);
    SetForegroundWindow(hWndOther);
    CHECK(qt::WaitFor([&] { return GetForegroundWindow() == hWndOther; }, 3000));
    SetForegroundWindow(hWndFrame);
    CHECK(qt::WaitFor([&] { return GetForegroundWindow() == hWndFrame; }, 3000));
    SetWindowPos(hWndFrame, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    DestroyWindow(hWndOther);
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndFrame, WM_WINDOWPOSCHANGED), nPositions);
    CHECK_EQ(s.tool.Count("AFTER", hWndFrame, WM_MOVE), 0);

    // A move: the move and the position change, after the host handled them.
    SetWindowPos(hWndFrame, nullptr, 60, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    CHECK(s.tool.WaitCount("AFTER", 1, hWndFrame, WM_MOVE));
    CHECK(s.tool.WaitCount("AFTER", nPositions + 1, hWndFrame, WM_WINDOWPOSCHANGED));
    CHECK_EQ(s.tool.Count("BEFORE", hWndFrame, WM_MOVE), 0);
    // A size change.
    SetWindowPos(hWndFrame, nullptr, 0, 0, 800, 600, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CHECK(s.tool.WaitCount("AFTER", nPositions + 2, hWndFrame, WM_WINDOWPOSCHANGED));
    // Hidden and shown.
    ShowWindow(hWndFrame, SW_HIDE);
    CHECK(s.tool.WaitCount("AFTER", 1, hWndFrame, WM_SHOWWINDOW));
    CHECK(s.tool.WaitCount("AFTER", nPositions + 3, hWndFrame, WM_WINDOWPOSCHANGED));
    ShowWindow(hWndFrame, SW_SHOWNA);
    CHECK(s.tool.WaitCount("AFTER", 2, hWndFrame, WM_SHOWWINDOW));
    CHECK(s.tool.WaitCount("AFTER", nPositions + 4, hWndFrame, WM_WINDOWPOSCHANGED));
    // Only the frame's: an MDI child's move is not reported.
    SetWindowPos(hWndEditor, nullptr, 5, 5, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    REQUIRE(Drain(s.host, hWndEditor));
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_MOVE), 0);
    CHECK_EQ(s.tool.Count("AFTER", hWndEditor, WM_WINDOWPOSCHANGED), 0);
}

// Other programs may load the library and send the host's windows what they
// like; only the tool that entered the host is obeyed.
TEST_CASE(a_strangers_uninstall_and_forged_destroys_leave_the_host_served_and_its_procedure_in_place)
{
    Session s("hook-stranger");
    REQUIRE(s.host.Start("/open \"" + s.File("a.c") + "\" /open \"" + s.File("b.c") + "\""));
    REQUIRE(s.tool.Start());
    HWND hWndA = s.host.FindWindowByTitle(s.File("a.c"));
    HWND hWndB = s.host.FindWindowByTitle(s.File("b.c"));
    REQUIRE(hWndA && hWndB);

    // This program loads the library itself and ends "its" hook: the hosts
    // hear a leave without the tool's key and stay with the tool.
    HMODULE hLibrary = LoadLibraryA((qt::ExeDir() + "QUORVANT.dll").c_str());
    REQUIRE(hLibrary);
    typedef BOOL(__cdecl * UninstallProc)();
    UninstallProc pfnUninstall = reinterpret_cast<UninstallProc>(reinterpret_cast<void*>(GetProcAddress(hLibrary, "uninstallHook")));
    REQUIRE(pfnUninstall);
    pfnUninstall();
    FreeLibrary(hLibrary);

    // A WM_NCDESTROY sent to a live editor: dropped, the editor stays watched.
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutA(hWndA, WM_NCDESTROY, 0, 0, SMTO_NORMAL, 5000, &dwResult);
    REQUIRE(Drain(s.host, hWndA));
    const int nWheels = s.tool.Count("AFTER", hWndA, WM_MOUSEWHEEL);
    PostMessageA(hWndA, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    CHECK(s.tool.WaitCount("AFTER", nWheels + 1, hWndA, WM_MOUSEWHEEL));
    CHECK_EQ(s.tool.Count("DESTROY", hWndA), 0);

    // Its close still goes through the host's own procedure (the stand-in
    // logs it there), and its real destruction is reported once.
    PostMessageA(hWndA, WM_CLOSE, 0, 0);
    CHECK(s.host.WaitLog("CLOSE " + s.File("a.c"), 5000));
    CHECK(s.tool.WaitCount("DESTROY", 1, hWndA));
    // The other editor too: the library still serves the host.
    const int nWheelsB = s.tool.Count("AFTER", hWndB, WM_MOUSEWHEEL);
    PostMessageA(hWndB, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    CHECK(s.tool.WaitCount("AFTER", nWheelsB + 1, hWndB, WM_MOUSEWHEEL));
    CHECK(s.host.GetProcess().IsRunning());
}

TEST_CASE(the_library_shares_no_memory_another_program_could_write)
{
    // Every program that loads the library would share a writable shared
    // section: none may exist.
    HMODULE hLibrary = LoadLibraryExA((qt::ExeDir() + "QUORVANT.dll").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    REQUIRE(hLibrary);
    const BYTE* pBase = reinterpret_cast<const BYTE*>(hLibrary);
    const IMAGE_DOS_HEADER* pDos = reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase);
    const IMAGE_NT_HEADERS* pNt = reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + pDos->e_lfanew);
    const IMAGE_SECTION_HEADER* pSection = IMAGE_FIRST_SECTION(pNt);
    int nShared = 0;
    for (WORD i = 0; i < pNt->FileHeader.NumberOfSections; ++i)
        if ((pSection[i].Characteristics & IMAGE_SCN_MEM_SHARED) != 0)
            ++nShared;
    CHECK_EQ(nShared, 0);
    FreeLibrary(hLibrary);
}
