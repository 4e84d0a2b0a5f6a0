// The stand-in host IDE in its own process, driven the way the tool drives
// the real one: messages sent and posted to its windows, real keys, the
// clipboard and dropped files. Effects are read from its log, its windows
// and the files it saves.
#include "Fixture.h"
#include "TestRunner.h"

#include <shlobj.h>

#include <algorithm>
#include <ctype.h>
#include <string.h>

using namespace qt;

namespace
{
// As DROPINJECTOR.dll expects them: a well-formed block, and one whose file
// list runs past the block's end.
const LPARAM kDropMark = 0x0D0F11E5;
const LPARAM kUnterminatedDropMark = 0x0D0F11E6;

std::string ClassOf(HWND hWnd)
{
    char szClass[256] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    return szClass;
}

std::string TitleOf(HWND hWnd)
{
    char szTitle[1024] = {};
    GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
    return szTitle;
}

HWND Client(const Host& host)
{
    return host.FindChildOfClass(host.Frame(), "MDIClient");
}

// The MDI children in window order (icon titles are owned, and left out).
std::vector<HWND> Children(const Host& host)
{
    std::vector<HWND> children;
    for (HWND hWnd = GetWindow(Client(host), GW_CHILD); hWnd; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
    {
        if (!GetWindow(hWnd, GW_OWNER))
            children.push_back(hWnd);
    }
    return children;
}

int CountChildrenTitled(const Host& host, const std::string& strTitle)
{
    const std::vector<HWND> children = Children(host);
    return static_cast<int>(
        std::count_if(children.begin(), children.end(), [&](HWND hWnd) { return TitleOf(hWnd) == strTitle; }));
}

HWND ActiveChild(const Host& host)
{
    return reinterpret_cast<HWND>(SendMessageA(Client(host), WM_MDIGETACTIVE, 0, 0));
}

RECT RectInFrame(HWND hWndFrame, HWND hWnd)
{
    RECT rc;
    GetWindowRect(hWnd, &rc);
    MapWindowPoints(nullptr, hWndFrame, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

void Command(const Host& host, UINT nCommand)
{
    SendMessageA(host.Frame(), WM_COMMAND, nCommand, 0);
}

// The host answers once everything posted before has been handled.
void Sync(const Host& host)
{
    PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
    host.WaitLog("BUILD 1033", 5000);
    host.ClearLog();
}

bool SetClipboardText(const std::string& strText)
{
    if (!OpenClipboard(nullptr))
        return false;
    EmptyClipboard();
    HGLOBAL hText = GlobalAlloc(GMEM_MOVEABLE, strText.size() + 1);
    memcpy(GlobalLock(hText), strText.c_str(), strText.size() + 1);
    GlobalUnlock(hText);
    const bool bOk = SetClipboardData(CF_TEXT, hText) != nullptr;
    CloseClipboard();
    return bOk;
}

void Keys(std::initializer_list<WORD> down, WORD key)
{
    std::vector<INPUT> inputs;
    auto add = [&](WORD vk, DWORD dwFlags) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = vk;
        input.ki.dwFlags = dwFlags;
        inputs.push_back(input);
    };
    for (WORD vk : down)
        add(vk, 0);
    add(key, 0);
    add(key, KEYEVENTF_KEYUP);
    for (WORD vk : down)
        add(vk, KEYEVENTF_KEYUP);
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

std::string Lines(std::initializer_list<const char*> lines)
{
    std::string strText;
    for (const char* pszLine : lines)
        strText += std::string(pszLine) + "\r\n";
    return strText;
}

// Saves the editor through the host's own command and returns the file.
std::string SaveAndRead(const Host& host, HWND hWndEditor, const std::string& strPath)
{
    SendMessageA(Client(host), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndEditor), 0);
    Command(host, 1006);
    return ReadTextFile(strPath);
}

// Drops files on the host frame the way the hook library will: the drop
// block is made inside the host (by DROPINJECTOR.dll, hooked into the host's
// thread for the time of the object).
class Dropper
{
public:
    explicit Dropper(HWND hWndFrame) : m_hWndFrame(hWndFrame)
    {
        m_hModule = LoadLibraryA((ExeDir() + "DROPINJECTOR.dll").c_str());
        HOOKPROC pfnHook = m_hModule ? reinterpret_cast<HOOKPROC>(
                                           reinterpret_cast<void*>(GetProcAddress(m_hModule, "DropInjectorHook")))
                                     : nullptr;
        if (pfnHook)
            m_hHook = SetWindowsHookExA(WH_GETMESSAGE, pfnHook, m_hModule,
                                        GetWindowThreadProcessId(hWndFrame, nullptr));
    }
    ~Dropper()
    {
        if (m_hHook)
            UnhookWindowsHookEx(m_hHook);
        if (m_hModule)
            FreeLibrary(m_hModule);
    }
    bool Ok() const { return m_hHook != nullptr; }
    void Drop(const std::string& strFiles, bool bWellFormed = true) // paths separated by '|'
    {
        const ATOM atom = GlobalAddAtomA(strFiles.c_str());
        PostMessageA(m_hWndFrame, WM_DROPFILES, atom, bWellFormed ? kDropMark : kUnterminatedDropMark);
        m_atoms.push_back(atom);
    }
    void ForgetAtoms()
    {
        for (ATOM atom : m_atoms)
            GlobalDeleteAtom(atom);
        m_atoms.clear();
    }

private:
    HWND m_hWndFrame;
    HMODULE m_hModule = nullptr;
    HHOOK m_hHook = nullptr;
    std::vector<ATOM> m_atoms;
};
} // namespace

TEST_CASE(windows_classes_titles_and_layout_follow_the_contract)
{
    const std::string strDir = MakeScratchDir("layout");
    WriteTextFile(strDir + "main.asm", Lines({"; main", "        nop"}));
    const std::string strProject = strDir + "demo.mcp";
    Host host(strDir);
    REQUIRE(host.Start("/project \"" + strProject + "\" /open \"" + strDir + "main.asm\" /open \"" + strDir +
                       "absent.inc\" /view 1117 /size 900x650 /pos 10,10"));

    const std::vector<std::string> log = host.Log();
    REQUIRE(!log.empty());
    CHECK_EQ(log.front(), "START pid=" + std::to_string(host.GetProcess().Id()));
    CHECK_EQ(log.back(), std::string("READY"));
    CHECK_EQ(host.CountLog("OPEN " + strDir + "main.asm"), 1);
    CHECK_EQ(host.CountLog("OPEN " + strDir + "absent.inc"), 1);
    CHECK_EQ(host.CountLog("VIEW 1117 Program Memory Window"), 1);

    // The frame's title carries the project path as its third token.
    HWND hWndFrame = host.Frame();
    REQUIRE(hWndFrame != nullptr);
    CHECK(IsWindowVisible(hWndFrame));
    CHECK_EQ(TitleOf(hWndFrame), "Host IDE - " + strProject);
    RECT rcFrame;
    GetWindowRect(hWndFrame, &rcFrame);
    CHECK_EQ(rcFrame.right - rcFrame.left, 900L);
    CHECK_EQ(rcFrame.top, 10L);

    // The tool bar along the top, the MDI client over all the rest.
    HWND hWndToolBar = host.FindChildOfClass(hWndFrame, "PFE_TBar");
    HWND hWndClient = Client(host);
    REQUIRE(hWndToolBar && hWndClient);
    CHECK(GetParent(hWndClient) == hWndFrame);
    RECT rcClientArea;
    GetClientRect(hWndFrame, &rcClientArea);
    const RECT rcBar = RectInFrame(hWndFrame, hWndToolBar);
    const RECT rcMdi = RectInFrame(hWndFrame, hWndClient);
    CHECK_EQ(rcBar.top, 0L);
    CHECK(rcBar.bottom >= 24 && rcBar.bottom <= 32);
    CHECK_EQ(rcMdi.top, rcBar.bottom);
    CHECK_EQ(rcMdi.left, 0L);
    CHECK_EQ(rcMdi.right, rcClientArea.right);
    CHECK_EQ(rcMdi.bottom, rcClientArea.bottom);

    // Editors are "PFE_Text" MDI children titled with the full path, each
    // with a "PFE_Num" gutter at its left; a view holds a "PFE_Text" filling it.
    for (const char* pszName : {"main.asm", "absent.inc"})
    {
        HWND hWndEditor = host.FindWindowByTitle(strDir + pszName);
        REQUIRE(hWndEditor != nullptr);
        CHECK_EQ(ClassOf(hWndEditor), std::string("PFE_Text"));
        CHECK(GetParent(hWndEditor) == hWndClient);
        HWND hWndGutter = host.FindChildOfClass(hWndEditor, "PFE_Num");
        REQUIRE(hWndGutter != nullptr);
        RECT rcGutter;
        GetWindowRect(hWndGutter, &rcGutter);
        MapWindowPoints(nullptr, hWndEditor, reinterpret_cast<POINT*>(&rcGutter), 2);
        CHECK_EQ(rcGutter.left, 0L);
        CHECK(rcGutter.right - rcGutter.left >= 30 && rcGutter.right - rcGutter.left <= 40);
    }
    HWND hWndView = host.FindWindowByTitle("Program Memory Window");
    REQUIRE(hWndView != nullptr);
    CHECK_EQ(ClassOf(hWndView), std::string("PFE_View"));
    CHECK(GetParent(hWndView) == hWndClient);
    HWND hWndText = host.FindChildOfClass(hWndView, "PFE_Text");
    REQUIRE(hWndText != nullptr);
    RECT rcView, rcText;
    GetClientRect(hWndView, &rcView);
    GetClientRect(hWndText, &rcText);
    CHECK_EQ(rcText.right, rcView.right);
    CHECK_EQ(rcText.bottom, rcView.bottom);

    // The frame lays its client out anew on its own WM_SIZE only, whatever
    // its lParam says; a narrower client set from outside stays as it is.
    MoveWindow(hWndClient, 200, rcMdi.top, rcMdi.right - 200, rcMdi.bottom - rcMdi.top, TRUE);
    Sync(host);
    CHECK_EQ(RectInFrame(hWndFrame, hWndClient).left, 200L);
    PostMessageA(hWndFrame, WM_SIZE, 0, 0);
    Sync(host);
    const RECT rcAgain = RectInFrame(hWndFrame, hWndClient);
    CHECK_EQ(rcAgain.left, 0L);
    CHECK_EQ(rcAgain.right, rcClientArea.right);
    CHECK_EQ(rcAgain.top, rcBar.bottom);
}

TEST_CASE(view_commands_open_each_view_once_under_its_exact_title)
{
    const std::string strDir = MakeScratchDir("views");
    const std::string strProject = strDir + "demo.mcp";
    Host host(strDir);
    REQUIRE(host.Start("/project \"" + strProject + "\""));

    struct Case
    {
        UINT nCommand;
        std::string strTitle;
    };
    const Case cases[] = {
        {1117, "Program Memory Window"},
        {1118, "Trace Memory Window"},
        {1119, "EEPROM Window"},
        {1120, strDir + "demo.lst"},
        {1164, strDir + "demo.map"},
        {1121, "Stack Window"},
        {1122, "File Register Window"},
        {1123, "Special Function Register Window"},
        {1128, "Project Window"},
    };
    for (const Case& c : cases)
    {
        host.ClearLog();
        PostMessageA(host.Frame(), WM_COMMAND, c.nCommand, 0);
        CHECK(host.WaitLog("VIEW " + std::to_string(c.nCommand) + " " + c.strTitle, 5000));
        HWND hWndView = host.FindWindowByTitle(c.strTitle);
        REQUIRE(hWndView != nullptr);
        CHECK_EQ(ClassOf(hWndView), std::string("PFE_View"));
        CHECK(host.FindChildOfClass(hWndView, "PFE_Text") != nullptr);
        CHECK(ActiveChild(host) == hWndView);
    }
    // Again: each view is brought forward, never opened twice.
    for (const Case& c : cases)
    {
        Command(host, c.nCommand);
        CHECK_EQ(CountChildrenTitled(host, c.strTitle), 1);
        CHECK(ActiveChild(host) == host.FindWindowByTitle(c.strTitle));
    }
    CHECK_EQ(static_cast<int>(Children(host).size()), 9);

    // A click at (0, 0) into a view's text brings that view forward.
    HWND hWndMemory = host.FindWindowByTitle("Program Memory Window");
    REQUIRE(ActiveChild(host) != hWndMemory);
    HWND hWndText = host.FindChildOfClass(hWndMemory, "PFE_Text");
    host.ClearLog();
    PostMessageA(hWndText, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    PostMessageA(hWndText, WM_LBUTTONUP, 0, 0);
    CHECK(host.WaitLog("ACTIVATE Program Memory Window", 3000));
    CHECK(ActiveChild(host) == hWndMemory);

    // Watch windows are new each time, numbered.
    Command(host, 1129);
    Command(host, 1130);
    CHECK(host.WaitLog("VIEW 1129 Watch 1", 3000));
    CHECK(host.WaitLog("VIEW 1130 Watch 2", 3000));
    CHECK_EQ(ClassOf(host.FindWindowByTitle("Watch 2")), std::string("PFE_View"));

    // The tenth view has no command; the command line opens it.
    Host second(MakeScratchDir("views2"));
    REQUIRE(second.Start("/view 0 /view bogus /view 4711"));
    CHECK_EQ(ClassOf(second.FindWindowByTitle("Build Results")), std::string("PFE_View"));
    CHECK_EQ(static_cast<int>(Children(second).size()), 1);
}

TEST_CASE(vscroll_scrolls_one_line_and_the_wheel_does_nothing)
{
    const std::string strDir = MakeScratchDir("scroll");
    std::string strText;
    for (int i = 1; i <= 60; ++i)
        strText += "line " + std::to_string(i) + "\r\n";
    const std::string strFile = strDir + "long.asm";
    WriteTextFile(strFile, strText);
    Host host(strDir);
    REQUIRE(host.Start("/view 1117 /open \"" + strFile + "\""));
    HWND hWndEditor = host.FindWindowByTitle(strFile);
    HWND hWndView = host.FindWindowByTitle("Program Memory Window");
    HWND hWndText = host.FindChildOfClass(hWndView, "PFE_Text");
    REQUIRE(hWndEditor && hWndView && hWndText);
    Sync(host);

    // Three lines down, one up, and the wheel in between: a click at the top
    // of the text then types into the line that stands at the top.
    for (UINT nCode : {SB_LINEDOWN, SB_LINEDOWN, SB_LINEDOWN, SB_LINEUP})
        SendMessageA(hWndEditor, WM_VSCROLL, nCode, 0);
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), MAKELPARAM(100, 100));
    PostMessageA(hWndEditor, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(100, 100));
    PostMessageA(hWndEditor, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(45, 2));
    PostMessageA(hWndEditor, WM_LBUTTONUP, 0, MAKELPARAM(45, 2));
    PostMessageA(hWndEditor, WM_CHAR, '#', 0);
    Sync(host);
    const std::vector<std::string> saved = SplitLines(SaveAndRead(host, hWndEditor, strFile));
    REQUIRE(saved.size() > 4);
    CHECK_EQ(saved[1], std::string("line 2"));
    CHECK_EQ(saved[2], std::string("#line 3"));

    PostMessageA(hWndEditor, WM_VSCROLL, SB_LINEDOWN, 0);
    PostMessageA(hWndView, WM_VSCROLL, SB_LINEUP, 0);
    PostMessageA(hWndView, WM_VSCROLL, SB_LINEDOWN, 0);
    PostMessageA(hWndText, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    PostMessageA(hWndEditor, WM_VSCROLL, 77, 0); // no such code: logged, nothing else
    Sync(host);
    PostMessageA(hWndEditor, WM_VSCROLL, SB_LINEDOWN, 0);
    PostMessageA(hWndView, WM_VSCROLL, SB_LINEUP, 0);
    PostMessageA(hWndView, WM_VSCROLL, SB_LINEDOWN, 0);
    PostMessageA(hWndText, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    PostMessageA(hWndEditor, WM_VSCROLL, 77, 0);
    PostMessageA(host.Frame(), WM_COMMAND, 1033, 0);
    REQUIRE(host.WaitLog("BUILD 1033", 5000));
    CHECK_EQ(host.CountLog("VSCROLL " + strFile + " 1"), 1);
    CHECK_EQ(host.CountLog("VSCROLL Program Memory Window 0"), 1);
    CHECK_EQ(host.CountLog("VSCROLL Program Memory Window 1"), 1);
    CHECK_EQ(host.CountLog("VSCROLL " + strFile + " 77"), 1);
    CHECK_EQ(host.CountLogPrefix("VSCROLL "), 4);
}

TEST_CASE(paste_is_in_the_editor_before_send_message_returns)
{
    const std::string strDir = MakeScratchDir("paste");
    const std::string strFile = strDir + "main.c";
    WriteTextFile(strFile, Lines({"int main;", "end"}));
    Host host(strDir);
    REQUIRE(host.Start("/open \"" + strFile + "\""));
    HWND hWndEditor = host.FindWindowByTitle(strFile);
    REQUIRE(hWndEditor != nullptr);
    Sync(host);

    // The insertion point starts at the top of the file.
    REQUIRE(SetClipboardText("/* abc */ "));
    Command(host, 1040);
    // No waiting: the sender's SendMessage returned, so the paste is done.
    CHECK_EQ(host.CountLog("PASTE /* abc */ "), 1);
    CHECK_EQ(host.CountLog("COMMAND 1040"), 1);
    Command(host, 1006);
    CHECK_EQ(host.CountLog("SAVE " + strFile), 1);
    CHECK_EQ(ReadTextFile(strFile), Lines({"/* abc */ int main;", "end"}));

    // Line breaks in the text split the line; the log shows them escaped.
    REQUIRE(SetClipboardText("x\r\ny"));
    Command(host, 1040);
    CHECK_EQ(host.CountLog("PASTE x\\r\\ny"), 1);
    CHECK_EQ(SaveAndRead(host, hWndEditor, strFile), Lines({"/* abc */ x", "yint main;", "end"}));

    // Nothing to paste into, or nothing to paste: nothing happens, nothing is lost.
    Command(host, 1117);
    REQUIRE(SetClipboardText("lost"));
    Command(host, 1040);
    OpenClipboard(nullptr);
    EmptyClipboard();
    CloseClipboard();
    SendMessageA(Client(host), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndEditor), 0);
    Command(host, 1040);
    CHECK_EQ(host.CountLogPrefix("PASTE lost"), 0);
    CHECK_EQ(host.CountLog("PASTE "), 0);
    CHECK_EQ(SaveAndRead(host, hWndEditor, strFile), Lines({"/* abc */ x", "yint main;", "end"}));
}

TEST_CASE(keys_reach_the_editor_and_ctrl_e_is_the_host_accelerator)
{
    const std::string strDir = MakeScratchDir("keys");
    const std::string strFile = strDir + "keys.asm";
    WriteTextFile(strFile, "nop");
    Host host(strDir);
    REQUIRE(host.Start("/open \"" + strFile + "\""));
    HWND hWndFrame = host.Frame();
    HWND hWndEditor = host.FindWindowByTitle(strFile);
    REQUIRE(hWndEditor != nullptr);
    SetForegroundWindow(hWndFrame);
    REQUIRE(WaitFor([&] { return GetForegroundWindow() == hWndFrame; }, 3000));
    Sync(host);

    // Real keys come through the input queue, after anything posted: the
    // last key's line in the log tells that all of them have arrived.
    Keys({}, 'A');
    Keys({VK_SHIFT}, 'B');
    Keys({}, VK_RETURN);
    Keys({VK_CONTROL}, VK_RETURN); // the tool's key: no line break
    Keys({VK_CONTROL}, 'E');       // the host's accelerator
    Keys({}, 'C');
    REQUIRE(host.WaitLog("KEYDOWN " + strFile + " 67 ctrl=0", 5000));
    CHECK_EQ(host.CountLog("KEYDOWN " + strFile + " 65 ctrl=0"), 1);
    CHECK_EQ(host.CountLog("KEYDOWN " + strFile + " 13 ctrl=0"), 1);
    CHECK_EQ(host.CountLog("KEYDOWN " + strFile + " 13 ctrl=1"), 1);
    CHECK_EQ(host.CountLog("HOSTKEY 1099"), 1);
    CHECK_EQ(host.CountLog("COMMAND 1099"), 1);
    // The accelerator took the E: it never reached the editor as a key.
    CHECK_EQ(host.CountLog("KEYDOWN " + strFile + " 69 ctrl=1"), 0);
    CHECK_EQ(SaveAndRead(host, hWndEditor, strFile), "aB\r\ncnop");
}

TEST_CASE(a_drop_opens_the_file_or_activates_its_window)
{
    const std::string strDir = MakeScratchDir("drop");
    const std::string strA = strDir + "a.asm";
    const std::string strB = strDir + "b.inc";
    WriteTextFile(strA, Lines({"; a"}));
    WriteTextFile(strB, Lines({"; b"}));
    Host host(strDir);
    REQUIRE(host.Start("/open \"" + strA + "\" /view 1121"));
    Dropper dropper(host.Frame());
    REQUIRE(dropper.Ok());
    Sync(host);

    // A file that is not open gets an editor of its own.
    dropper.Drop(strB);
    REQUIRE(host.WaitLog("OPEN " + strB, 5000));
    CHECK_EQ(host.CountLog("DROP " + strB), 1);
    CHECK(ActiveChild(host) == host.FindWindowByTitle(strB));

    // An open file, named in other letter case: its window comes forward.
    std::string strUpper = strA;
    std::transform(strUpper.begin(), strUpper.end(), strUpper.begin(), [](char ch) { return static_cast<char>(toupper(ch)); });
    Sync(host);
    dropper.Drop(strUpper);
    REQUIRE(host.WaitLog("DROP " + strUpper, 5000));
    Sync(host);
    CHECK(ActiveChild(host) == host.FindWindowByTitle(strA));
    CHECK_EQ(CountChildrenTitled(host, strA), 1);
    CHECK_EQ(host.CountLogPrefix("OPEN "), 0);

    // Several files in one drop, one of them already open.
    dropper.Drop(strB + "|" + strDir + "new.h");
    REQUIRE(host.WaitLog("OPEN " + strDir + "new.h", 5000));
    CHECK_EQ(CountChildrenTitled(host, strB), 1);
    CHECK_EQ(static_cast<int>(Children(host).size()), 4);
    dropper.ForgetAtoms();
}

TEST_CASE(close_commands_close_children_and_the_host_ends_cleanly)
{
    const std::string strDir = MakeScratchDir("close");
    const std::string strA = strDir + "a.asm";
    WriteTextFile(strA, "nop");
    Host host(strDir);
    REQUIRE(host.Start("/open \"" + strA + "\" /view 1117 /view 1123 /view 1121"));
    REQUIRE(Children(host).size() == 4u);
    Sync(host);

    Command(host, 1007); // the active one: the last opened
    CHECK_EQ(host.CountLog("CLOSE Stack Window"), 1);
    SendMessageA(host.FindWindowByTitle(strA), WM_CLOSE, 0, 0);
    CHECK_EQ(host.CountLog("CLOSE " + strA), 1);
    CHECK_EQ(static_cast<int>(Children(host).size()), 2);
    Command(host, 1008);
    CHECK(Children(host).empty());
    CHECK_EQ(host.CountLogPrefix("CLOSE "), 4);
    // With no window left, the document commands do nothing.
    for (UINT nCommand : {1006u, 1007u, 1008u, 1040u})
        Command(host, nCommand);
    CHECK_EQ(host.CountLogPrefix("SAVE"), 0);

    // The file was not touched by closing: nothing asks, nothing is written.
    CHECK_EQ(ReadTextFile(strA), std::string("nop"));
    CHECK(host.Close());
    CHECK_EQ(host.GetProcess().ExitCode(), 0ul);
    CHECK_EQ(host.Log().back(), std::string("EXIT"));
}

TEST_CASE(registered_messages_and_every_command_are_logged)
{
    const std::string strDir = MakeScratchDir("regmsg");
    Host host(strDir);
    REQUIRE(host.Start());
    Sync(host);
    const UINT nAnnouncement = RegisterWindowMessageA("49ED7A1D-5042-42B2-9095-89DBDA86205C");
    PostMessageA(host.Frame(), nAnnouncement, 0, 0);
    CHECK(host.WaitLog(kDockBarAnnouncement, 5000));
    for (UINT nCommand : {1002u, 1018u, 1019u, 1030u, 1031u, 1032u, 1097u, 1098u, 32771u, 4711u})
    {
        PostMessageA(host.Frame(), WM_COMMAND, nCommand, 0);
        CHECK(host.WaitLog("COMMAND " + std::to_string(nCommand), 3000));
    }
    CHECK(Children(host).empty()); // none of them opens a window, and no dialog
    PostMessageA(host.Frame(), WM_COMMAND, 1035, 0);
    CHECK(host.WaitLog("BUILD 1035", 3000));
}

TEST_CASE(bad_input_leaves_the_host_running_and_its_text_intact)
{
    const std::string strDir = MakeScratchDir("bad");
    const std::string strFile = strDir + "keep.asm";
    WriteTextFile(strFile, Lines({"keep"}));
    Host host(strDir);
    REQUIRE(host.Start("/open \"" + strFile + "\" /open \"" + strDir + "no\\such\\dir\\x.asm\" /size 0x0 /pos a,b"));
    HWND hWndFrame = host.Frame();

    // A drop block made in this process means nothing in the host.
    const std::string strPath = strDir + "other.asm";
    HGLOBAL hDrop = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, sizeof(DROPFILES) + strPath.size() + 2);
    DROPFILES* pDrop = static_cast<DROPFILES*>(GlobalLock(hDrop));
    pDrop->pFiles = sizeof(DROPFILES);
    memcpy(pDrop + 1, strPath.c_str(), strPath.size());
    GlobalUnlock(hDrop);
    PostMessageA(hWndFrame, WM_DROPFILES, reinterpret_cast<WPARAM>(hDrop), 0);
    PostMessageA(hWndFrame, WM_DROPFILES, 0, 0);
    PostMessageA(hWndFrame, WM_DROPFILES, 0x12345678, 0);
    // A block of the host's own whose list does not end inside it.
    Dropper dropper(hWndFrame);
    REQUIRE(dropper.Ok());
    dropper.Drop(strPath, false);
    // Saving where no file can be written, and commands out of any menu.
    SendMessageA(Client(host), WM_MDIACTIVATE,
                 reinterpret_cast<WPARAM>(host.FindWindowByTitle(strDir + "no\\such\\dir\\x.asm")), 0);
    PostMessageA(hWndFrame, WM_COMMAND, 1006, 0);
    PostMessageA(hWndFrame, WM_COMMAND, 0, 0);
    PostMessageA(hWndFrame, WM_COMMAND, 65535, 0);
    PostMessageA(hWndFrame, RegisterWindowMessageA("some other message"), 1, 2);
    PostMessageA(hWndFrame, WM_COMMAND, 1033, 0);
    REQUIRE(host.WaitLog("BUILD 1033", 5000));
    CHECK_EQ(host.CountLogPrefix("DROP"), 0);
    CHECK_EQ(host.CountLogPrefix("SAVE"), 0);
    CHECK_EQ(host.CountLog("REGMSG some other message"), 1);

    DWORD_PTR dwResult = 0;
    CHECK(SendMessageTimeoutA(hWndFrame, WM_NULL, 0, 0, SMTO_NORMAL, 2000, &dwResult) != 0);
    CHECK(host.GetProcess().IsRunning());
    CHECK(!FileExists(strDir + "no\\such\\dir\\x.asm"));
    CHECK_EQ(static_cast<int>(Children(host).size()), 2);
    CHECK_EQ(ReadTextFile(strFile), Lines({"keep"}));
    // "Untitled" has no file: saving it writes nothing anywhere.
    Command(host, 1001);
    Command(host, 1006);
    CHECK(!FileExists(strDir + "Untitled"));
    CHECK_EQ(host.CountLogPrefix("SAVE"), 0);
    dropper.ForgetAtoms();
}
