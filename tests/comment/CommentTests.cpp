// The Comment Editor beside the stand-in host IDE: Ctrl+Enter in a host
// editor opens it, the comment reaches the host through the clipboard, and
// whatever the clipboard held before comes back.
#include "Fixture.h"
#include "HostInput.h"
#include "IniFile.h"
#include "TestRunner.h"
#include "Tray.h"
#include "resource.h"

#include <imm.h>
#include <string.h>

using namespace qt;

namespace
{
const UINT kPrivateFormat = RegisterClipboardFormatA("QuorvantTestFormat");

// Empties the clipboard and puts on it text (unless NULL), and with bMore a
// private format and a picture.
bool FillClipboard(const wchar_t* pszText, bool bMore = false)
{
    if (!OpenClipboardSoon() || !EmptyClipboard())
        return false;
    if (pszText)
        PutOnClipboard(CF_UNICODETEXT, pszText, (wcslen(pszText) + 1) * sizeof(wchar_t));
    if (bMore)
    {
        PutOnClipboard(kPrivateFormat, "private", 8);
        SetClipboardData(CF_BITMAP, CreateBitmap(8, 8, 1, 32, nullptr));
    }
    return CloseClipboard() != FALSE;
}

// The tool's visible dialog with a comment field (the Assist Window is a
// top-level dialog too under Wine), or NULL.
HWND CommentEditor(DWORD dwToolId)
{
    for (HWND hWnd = GetTopWindow(nullptr); hWnd; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
    {
        DWORD dwId = 0;
        GetWindowThreadProcessId(hWnd, &dwId);
        if (dwId == dwToolId && IsWindowVisible(hWnd) && GetDlgItem(hWnd, IDC_COMMENT_TEXT))
            return hWnd;
    }
    return nullptr;
}

// Host and tool with a source file open in the host's editor.
struct Session
{
    explicit Session(const char* pszTag, const std::string& strSettings = std::string())
        : strFile(MakeSource(MakeScratchDir(pszTag), "main.asm", 2)),
          ht(pszTag, "/open \"" + strFile + "\"", strSettings)
    {
    }
    // Ctrl+Enter in the editor: the Comment Editor in front, or NULL.
    HWND Open()
    {
        if (!ht.ok || !FocusEditor(ht.host, ht.host.FindWindowByTitle(strFile)))
            return nullptr;
        ht.host.WaitQuiet();
        SendKeys({VK_CONTROL, VK_RETURN});
        HWND hWnd = nullptr;
        WaitFor([&] { return (hWnd = CommentEditor(ht.tool.GetProcess().Id())) != nullptr; }, 5000);
        SetForegroundWindow(hWnd); // typed keys go to its field
        return WaitFor([&] { return hWnd && GetForegroundWindow() == hWnd; }, 3000) ? hWnd : nullptr;
    }
    bool Gone() { return WaitFor([&] { return !CommentEditor(ht.tool.GetProcess().Id()); }, 10000); }

    std::string strFile;
    HostAndTool ht;
};
} // namespace

TEST_CASE(enter_and_the_paste_button_paste_the_comment_and_the_clipboard_gets_back_whatever_it_held)
{
    // The clipboard's text before (NULL: none) and with it a private format
    // and a picture or not; Paste clicked or Enter.
    const struct { const wchar_t* pszText; bool bMore, bButton; } cases[] = {
        {L"abc", true, false},
        {nullptr, false, true}, // nothing, so the comment is gone again
        {L"\x03A9\x03BC\x03AD\x03B3\x03B1", false, true}, // outside the ANSI code page
    };
    Session s("paste");
    for (const auto& c : cases)
    {
        REQUIRE(FillClipboard(c.pszText, c.bMore));
        HWND hWndDialog = s.Open();
        REQUIRE(hWndDialog != nullptr);
        CHECK(!IsWindowEnabled(s.ht.host.Frame())); // modal over the host
        s.ht.host.ClearLog();
        TypeText(L"; checked");
        c.bButton ? ClickMiddle(GetDlgItem(hWndDialog, IDOK)) : SendKeys({VK_RETURN});
        CHECK(s.Gone());
        CHECK(s.ht.host.WaitLog("PASTE ; checked", 5000));
        CHECK_EQ(s.ht.host.CountLog("COMMAND 1040"), 1);
        CHECK(ClipboardText() == std::wstring(c.pszText ? c.pszText : L""));
        CHECK_EQ(IsClipboardFormatAvailable(kPrivateFormat) && IsClipboardFormatAvailable(CF_BITMAP), c.bMore);
    }
}

TEST_CASE(an_empty_field_cancel_escape_and_alt_f4_paste_nothing_and_leave_the_clipboard_alone)
{
    Session s("cancel");
    for (int nWay = 0; nWay < 4; ++nWay)
    {
        REQUIRE(FillClipboard(L"abc", true));
        const DWORD dwSequence = GetClipboardSequenceNumber();
        HWND hWndDialog = s.Open();
        REQUIRE(hWndDialog != nullptr);
        s.ht.host.ClearLog();
        if (nWay > 0)
            TypeText(L"never pasted");
        if (nWay == 1)
            ClickMiddle(GetDlgItem(hWndDialog, IDCANCEL));
        else
            nWay == 3 ? SendKeys({VK_MENU, VK_F4}) : SendKeys({static_cast<WORD>(nWay ? VK_ESCAPE : VK_RETURN)});
        CHECK(s.Gone());
        PostMessageA(s.ht.host.Frame(), WM_COMMAND, 1033, 0); // the marker: behind anything the tool sent
        REQUIRE(s.ht.host.WaitLog("BUILD 1033", 5000));
        CHECK_EQ(s.ht.host.CountLog("COMMAND 1040") + s.ht.host.CountLogPrefix("PASTE"), 0);
        CHECK_EQ(GetClipboardSequenceNumber(), dwSequence);
        if (CurrentFailed())
            printf("  way %d\n", nWay);
    }
}

TEST_CASE(a_host_that_hangs_on_the_paste_or_dies_stops_neither_the_tool_nor_the_comment)
{
    for (bool bHung : {true, false})
    {
        Session s(bHung ? "hung" : "killed");
        REQUIRE(FillClipboard(L"abc"));
        HWND hWndDialog = s.Open();
        REQUIRE(hWndDialog != nullptr);
        TypeText(L"late");
        HWND hWndFrame = s.ht.host.Frame();
        HANDLE hThread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(hWndFrame, nullptr));
        REQUIRE(hThread != nullptr);
        bHung ? static_cast<void>(SuspendThread(hThread)) : s.ht.host.Kill();
        // Wine may take the dialog with a killed owner; if not, the user pastes.
        REQUIRE(bHung || WaitFor([&] { return !IsWindow(hWndFrame); }, 5000));
        if (SetForegroundWindow(hWndDialog))
            SendKeys({VK_RETURN});
        // The tool gives up on a hung host within its bound, leaving the
        // comment for the host to find should it come back and paste (Wine
        // drops a sent message whose sender gave up; Windows delivers it); a
        // host that is gone pastes nothing, and the earlier text comes back.
        CHECK(s.Gone());
        CHECK(Answers(s.ht.tool.MainFrame()));
        CHECK(ClipboardText() == (bHung ? L"late" : L"abc"));
        ResumeThread(hThread);
        CloseHandle(hThread);
        CHECK(!bHung || WaitFor([&] { return IsWindowEnabled(hWndFrame) != FALSE; }, 3000));
        CHECK(s.ht.tool.Exit());
        CHECK_EQ(s.ht.tool.GetProcess().ExitCode(), 0ul);
    }
}

TEST_CASE(the_ime_box_shows_the_setting_and_a_changed_tick_is_kept_and_saved_at_exit)
{
    // Wine reports an IME for its plain US layout; without one the box is
    // disabled and the setting goes back to the file unchanged.
    const bool bIME = ImmIsIME(GetKeyboardLayout(0)) != FALSE;
    const auto ticked = [](HWND hWndDialog) { return IsDlgButtonChecked(hWndDialog, IDC_OPEN_IME) == BST_CHECKED; };
    Session s("ime", "[Settings]\r\nOpenIMEAutomatically=0\r\n");
    HWND hWndDialog = s.Open();
    REQUIRE(hWndDialog != nullptr);
    CHECK_EQ(IsWindowEnabled(GetDlgItem(hWndDialog, IDC_OPEN_IME)) != FALSE, bIME);
    CHECK(!ticked(hWndDialog));
    if (bIME)
        ClickMiddle(GetDlgItem(hWndDialog, IDC_OPEN_IME));
    CHECK(WaitFor([&] { return ticked(hWndDialog) == bIME; }, 3000));
    SendKeys({VK_ESCAPE});
    REQUIRE(s.Gone());
    REQUIRE((hWndDialog = s.Open()) != nullptr); // the next time it shows the choice
    CHECK_EQ(ticked(hWndDialog), bIME);
    SendKeys({VK_ESCAPE});
    REQUIRE(s.Gone() && s.ht.tool.Exit());
    CHECK_EQ(IniValue(ReadIni(s.ht.tool.SettingsPath()), "Settings", "OpenIMEAutomatically"),
             std::string(bIME ? "1" : "0"));
}

TEST_CASE(double_byte_text_typed_in_code_page_932_reaches_the_host_intact)
{
    // The entry test_comment_932 runs this with LC_ALL=ja_JP.UTF-8, from
    // which Wine gives us, the host and the tool code page 932; a plain run
    // of every case has the prefix's code page and passes it by.
    if (GetACP() != 932 && !strstr(GetCommandLineA(), "double_byte_text"))
        return;
    REQUIRE(GetACP() == 932);
    Session s("dbcs");
    HWND hWndDialog = s.Open();
    REQUIRE(hWndDialog != nullptr);
    s.ht.host.ClearLog();
    // "; 日本語のコメント ok"
    const wchar_t szComment[] = L"; \x65E5\x672C\x8A9E\x306E\x30B3\x30E1\x30F3\x30C8 ok";
    char szExpected[64] = {};
    WideCharToMultiByte(932, 0, szComment, -1, szExpected, sizeof(szExpected), nullptr, nullptr);
    TypeText(szComment);
    SendKeys({VK_RETURN});
    CHECK(s.Gone());
    CHECK(s.ht.host.WaitLog(std::string("PASTE ") + szExpected, 5000));
}
