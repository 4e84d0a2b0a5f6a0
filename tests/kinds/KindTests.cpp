// Each kind of node of the Project tree in the real tool's Assist Window,
// driven as a user drives it (right click and menu keys, double click,
// Enter) beside the stand-in host IDE. What reached the host is read from
// its log up to a marker; greyed menu items are counted on the screen.
#include "RealMouse.h"
#include "Scenario.h"
#include "TestRunner.h"

#include <stdlib.h>

#include <functional>

using namespace qt;

namespace
{
// Clears the host's log, acts, waits for the last line wanted and returns
// everything that reached the host before a marker posted then.
std::string Reached(Scene& s, const std::function<bool()>& fnAction, const std::string& strWant)
{
    s.host.ClearLog();
    if (!fnAction())
        return "no menu, click or key";
    const size_t nLast = strWant.rfind(" | ");
    if (!strWant.empty())
        s.host.WaitLog(nLast == std::string::npos ? strWant : strWant.substr(nLast + 3), 5000);
    return Joined(UntilMarker(s.host));
}

struct Row
{
    const char* pszNode;
    const char* pszKey;
    std::string strWant; // the host's lines, " | " between
    int nGreyed;         // items greyed in the node's menu
};

void CheckRows(Scene& s, std::initializer_list<Row> rows)
{
    for (const Row& row : rows)
    {
        const std::string strGot = Reached(s, [&] { return s.ChooseFromMenu(row.pszNode, row.pszKey); }, row.strWant);
        if (strGot != row.strWant || s.nGreyed != row.nGreyed)
            Fail(__FILE__, __LINE__, std::string(row.pszNode) + " '" + row.pszKey + "': " + strGot + ", " +
                                         std::to_string(s.nGreyed) + " greyed");
    }
}
} // namespace

TEST_CASE(project_and_group_nodes_send_their_commands_and_grey_the_project_ones_without_a_project)
{
    const std::string d = MakeProject("projnode", {"main.asm"});
    Scene s("projnode", "/pos 20,20 /size 900x600 /project " + d + "demo.mcp");
    REQUIRE(s.ok);
    CheckRows(s, {{"Source Files", "N", "COMMAND 1001 | OPEN Untitled", 0},
                  {"Source Files", "O", "COMMAND 1002", 0},
                  {"Source Files", "S", "COMMAND 1006", 0},
                  {"Source Files", "B", "COMMAND 1033 | BUILD 1033", 0},
                  {"Header Files", "N", "COMMAND 1001 | OPEN Untitled", 0},
                  {"Header Files", "O", "COMMAND 1002", 0},
                  {"Header Files", "S", "COMMAND 1006", 0},
                  {"Windows", "O", "COMMAND 1098", 0},
                  {"Windows", "S", "COMMAND 1097", 0},
                  {"", "N", "COMMAND 1018", 0},
                  {"", "O", "COMMAND 1019", 0},
                  {"", "E", "COMMAND 1032", 0},
                  {"", "S", "COMMAND 1031", 0},
                  {"", "B", "COMMAND 1033 | BUILD 1033", 0},
                  {"", "C", "COMMAND 1030 | PROJECT CLOSE", 0}});
    // Without a project the project node's Edit, Close, Save and Build and
    // the Save and Build of Source Files are greyed.
    REQUIRE(WaitFor([&] { return NodeText(s.hWndTree, FindNode(s.hWndTree, "")) == "(Empty)"; }, 5000));
    CheckRows(s, {{"", "O", "COMMAND 1019", 4}, {"Source Files", "O", "COMMAND 1002", 2}, {"Header Files", "O", "COMMAND 1002", 0}});
}

TEST_CASE(file_nodes_open_close_and_build_the_file_whose_window_has_their_whole_path_in_any_case)
{
    const std::string d = MakeProject("filenode", {"main.asm", "lib.asm", "defs.inc", "main.asm.bak", "with blank.asm"});
    const std::string strMain = d + "main.asm", strLib = d + "lib.asm";
    Scene s("filenode",
            "/pos 20,20 /size 900x600 /project " + d + "demo.mcp /open " + strLib + " /open " + d +
                "DEFS.INC /open " + strMain + ".bak",
            "[Settings]\r\nSaveAutomatically=1\r\nExternalEditor=\"" + ExeDir() + "RECORDER.exe\" \"" + d +
                "editor.txt\" %FILENAME%\r\n[Tool01]\r\nCaption=&Assemble\r\nCommand=\"" + ExeDir() +
                "RECORDER.exe\" \"" + d + "tool.txt\" %FILENAME% /p:%PROJECT%\r\n");
    REQUIRE(s.ok);
    REQUIRE(WaitFor([&] { return FindNode(s.hWndTree, "Source Files/main.asm") != nullptr; }, 5000));
    // Only "main.asm.bak" is open: Close and Build are greyed, Open drops the file.
    CheckRows(s, {{"Source Files/with blank.asm", "O", "DROP " + d + "with blank.asm | OPEN " + d + "with blank.asm", 2},
                  {"Source Files/main.asm", "O", "DROP " + strMain + " | OPEN " + strMain, 2}});
    // The right click selected the node and opened its menu at the pointer.
    const POINT pt = s.NodePoint(FindNode(s.hWndTree, "Source Files/main.asm"));
    CHECK(SendMessageA(s.hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0) ==
          reinterpret_cast<LRESULT>(FindNode(s.hWndTree, "Source Files/main.asm")));
    CHECK(abs(s.ptMenu.x - pt.x) <= 2 && abs(s.ptMenu.y - pt.y) <= 2);
    // Open again, by Enter: the host activates the window it has.
    CHECK_EQ(Reached(s, [&] { return s.EnterOn("Source Files/main.asm"); }, "DROP " + strMain), "DROP " + strMain);
    // Close makes the file active first, so that 1007 closes it and no
    // other; External Editor saves first.
    CheckRows(s, {{"Source Files/main.asm", "B", "COMMAND 1035 | BUILD 1035", 0},
                  {"Source Files/lib.asm", "C", "DROP " + strLib + " | COMMAND 1007 | CLOSE " + strLib, 0},
                  {"Header Files/defs.inc", "C", "DROP " + d + "defs.inc | COMMAND 1007 | CLOSE " + d + "DEFS.INC", 0},
                  {"Source Files/main.asm", "E", "COMMAND 1006 | SAVE " + strMain, 0}});
    CHECK(WaitFor([&] { return ReadTextFile(d + "editor.txt").find(strMain) != std::string::npos; }, 5000));
    // The user tools come in a submenu.
    CHECK(s.ChooseFromMenu("Source Files/main.asm", "TA"));
    CHECK(WaitFor([&] { return ReadTextFile(d + "tool.txt").find(strMain + " /p:" + d + "demo.mcp") != std::string::npos; },
                  5000));
    CHECK_EQ(Reached(s, [&] { return s.ChooseFromMenu("Source Files/main.asm", "A"); }, "COMMAND 1008").substr(0, 12),
             std::string("COMMAND 1008"));
}

TEST_CASE(view_and_watch_nodes_open_closed_views_bring_open_ones_forward_and_close_them)
{
    const std::string d = MakeProject("viewnode", {"main.asm"});
    Scene s("viewnode", "/pos 20,20 /size 900x600 /project " + d + "demo.mcp /view 1121 /view 1120 /open " + d + "main.asm");
    REQUIRE(s.ok);
    // An open view comes forward with a click into its text.
    CHECK_EQ(Reached(s, [&] { return s.ClickNode("Windows/Stack", 2); }, "LBUTTONUP Stack Window 0,0"),
             std::string("LBUTTONDOWN Stack Window 0,0 | LBUTTONUP Stack Window 0,0"));
    CHECK_EQ(Reached(s, [&] { return s.EnterOn("Windows/Program Memory"); }, "VIEW 1117 Program Memory Window"),
             std::string("COMMAND 1117 | VIEW 1117 Program Memory Window"));
    // A group does nothing on Enter and only folds on a double click: the
    // Watch's Enter after them is all that reaches the host.
    HTREEITEM hSources = FindNode(s.hWndTree, "Source Files");
    const LRESULT nExpanded = SendMessageA(s.hWndTree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(hSources), TVIS_EXPANDED);
    CHECK_EQ(Reached(s,
                     [&] {
                         return s.ClickNode("Source Files", 2) && s.EnterOn("Source Files") && s.EnterOn("Windows/Watch");
                     },
                     "VIEW 1130 Watch 1"),
             std::string("COMMAND 1130 | VIEW 1130 Watch 1"));
    CHECK(SendMessageA(s.hWndTree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(hSources), TVIS_EXPANDED) != nExpanded);
    CheckRows(s, {{"Windows/Watch", "N", "COMMAND 1129 | VIEW 1129 Watch 2", 0},
                  {"Windows/EEPROM", "O", "COMMAND 1119 | VIEW 1119 EEPROM Window", 1},
                  {"Windows/EEPROM", "C", "CLOSE EEPROM Window", 0},
                  {"Windows/Absolute Listing", "C", "CLOSE " + d + "demo.lst", 0},
                  {"Windows/Build Results", "O", "", 1},
                  {"Windows/Stack", "H", "", 0}}); // Hide Assist Window is our popup's: the host never sees it
    CHECK(WaitFor([&] { return !IsWindowVisible(s.hWndDock); }, 3000));
    PostMessageA(s.hWndFrame, WM_COMMAND, 32771, 0);
    REQUIRE(WaitFor([&] { return IsWindowVisible(s.hWndTree) != FALSE; }, 3000));
    CHECK_EQ(Reached(s, [&] { return s.ChooseFromMenu("Windows/Stack", "A"); }, "COMMAND 1008").substr(0, 12),
             std::string("COMMAND 1008"));
}

TEST_CASE(an_open_file_changed_in_the_background_is_closed_and_dropped_again_when_the_host_returns)
{
    const std::string d = MakeProject("reloadp", {"main.asm", "defs.inc", "lone.asm"});
    const std::string strMain = d + "main.asm";
    Scene s("reload", "/pos 20,20 /size 900x600 /project " + d + "demo.mcp /open " + strMain + " /open " + d + "defs.inc");
    REQUIRE(s.ok);
    HWND hWndOther = CreateWindowExA(0, "STATIC", "elsewhere", WS_POPUP | WS_VISIBLE | WS_BORDER, 600, 650, 200, 80,
                                     nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(hWndOther);
    REQUIRE(WaitFor([&] { return GetForegroundWindow() == hWndOther; }, 3000));
    // A title change after it: once the tree shows it, the tool has had the
    // host's deactivation before it and taken the times of the open files.
    SetWindowTextA(s.hWndFrame, ("Host IDE - " + d + "other.mcp").c_str());
    REQUIRE(WaitFor([&] { return NodeText(s.hWndTree, FindNode(s.hWndTree, "")) == "other"; }, 5000));
    // Older counts as changed too; a file not open in the host is left alone.
    REQUIRE(ShiftWriteTime(strMain, -3600));
    REQUIRE(ShiftWriteTime(d + "lone.asm", 60));
    CHECK_EQ(Reached(s, [&] { return s.ClickIntoHost(); }, "OPEN " + strMain),
             "CLOSE " + strMain + " | DROP " + strMain + " | OPEN " + strMain);
    DestroyWindow(hWndOther);
}
