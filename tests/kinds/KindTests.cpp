// The Project tree's node kinds against the stand-in host IDE: the nodes
// live in a tree window of this process, the host and the real tool (whose
// hook library makes the drops inside the host) run in two others, and
// every check reads what reached the host from its log.
#include "CApp.h"
#include "CFileTreeItem.h"
#include "CHeaderFilesTreeItem.h"
#include "CProjectTreeItem.h"
#include "CSourceFilesTreeItem.h"
#include "CWatchTreeItem.h"
#include "CWindowTreeItem.h"
#include "CWindowsTreeItem.h"
#include "KindTestKit.h"
#include "TestRunner.h"
#include "resource.h"

#include <functional>
#include <memory>

using namespace kinds;
using qt::ShiftWriteTime;

namespace
{
const char kSource[] = "; main\r\n\tnop\r\n";

// Every kind but files and views, made under the parents the page would
// give it. (Their menu commands are tested through real menus beside the
// Project page.)
struct KindRow
{
    const char* pszClass;
    std::function<CTreeItem*(Bench&, CString*)> fnMake;
};

std::vector<KindRow> KindTable()
{
    return {
        {"CProjectTreeItem", [](Bench& b, CString* p) { return new CProjectTreeItem(b.Frame(), &b.tree, p); }},
        {"CSourceFilesTreeItem",
         [](Bench& b, CString* p) { return new CSourceFilesTreeItem(b.Frame(), b.Root(), p); }},
        {"CHeaderFilesTreeItem",
         [](Bench& b, CString* p) { return new CHeaderFilesTreeItem(b.Frame(), b.Root(), p); }},
        {"CWindowsTreeItem", [](Bench& b, CString*) { return new CWindowsTreeItem(b.Frame(), b.Root()); }},
        {"CWatchTreeItem", [](Bench& b, CString*) { return new CWatchTreeItem(b.Frame(), b.Root()); }},
    };
}

std::unique_ptr<CFileTreeItem> FileNode(Bench& bench, const std::string& strPath, int nImage = 9)
{
    return std::unique_ptr<CFileTreeItem>(new CFileTreeItem(bench.Frame(), bench.Root(), strPath.c_str(), nImage));
}

std::unique_ptr<CWindowTreeItem> ViewNode(Bench& bench, int nRow)
{
    return std::unique_ptr<CWindowTreeItem>(new CWindowTreeItem(bench.Frame(), bench.Root(), g_hostViews[nRow]));
}

// Rows of the host view table by their text, for readable tests.
int ViewRow(UINT nIDText)
{
    for (int i = 0; i < HOST_VIEW_COUNT; ++i)
    {
        if (g_hostViews[i].nIDText == nIDText)
            return i;
    }
    return -1;
}
} // namespace

// Double click and Enter: the groups do nothing, Watch opens a stored watch
// exactly as its "&Open Watch..." does.
TEST_CASE(DefaultActionsOfGroupsAndWatch)
{
    Bench bench("kinddefault", {}, "");
    REQUIRE(bench.ok);
    CString strProject = "C:\\proj\\demo.mcp";
    for (const KindRow& row : KindTable())
    {
        std::unique_ptr<CTreeItem> pItem(row.fnMake(bench, &strProject));
        const bool bWatch = std::string(row.pszClass) == "CWatchTreeItem";
        const std::string strWant = bWatch ? "COMMAND 1130 | VIEW 1130 Watch " : "";
        const std::string strOpen = Join(Without(bench.Reaching([&] { pItem->Open(); }), "ACTIVATE "));
        const std::string strReturn = Join(Without(bench.Reaching([&] { pItem->OnReturn(); }), "ACTIVATE "));
        if (bWatch)
        {
            CHECK_EQ(strOpen.substr(0, strWant.size()), strWant);
            CHECK_EQ(strReturn.substr(0, strWant.size()), strWant);
        }
        else
        {
            CHECK_EQ(strOpen, std::string());
            CHECK_EQ(strReturn, std::string());
        }
    }
}

TEST_CASE(FileNodeShowsItsNameAndFindsItsWindowByTheWholeTitle)
{
    Bench bench("kindfind", {{"Main.ASM", kSource}, {"main.asm.bak", kSource}, {"other.inc", kSource}},
               "/open {dir}main.asm.bak /open {dir}OTHER.INC");
    REQUIRE(bench.ok);
    std::unique_ptr<CFileTreeItem> pMain = FileNode(bench, bench.Path("Main.ASM"), 9);
    std::unique_ptr<CFileTreeItem> pOther = FileNode(bench, bench.Path("other.inc"), 10);
    int nImage = 0, nSelected = 0;
    CHECK_EQ(NodeText(pMain->m_cursor), std::string("Main.ASM"));
    NodeImages(pMain->m_cursor, nImage, nSelected);
    CHECK(nImage == 9 && nSelected == 9);
    NodeImages(pOther->m_cursor, nImage, nSelected);
    CHECK(nImage == 10 && nSelected == 10);
    CHECK_EQ(std::string(CFileTreeItem::GetFileName("C:\\work\\main.asm")), std::string("main.asm"));
    CHECK_EQ(std::string(pMain->GetRuntimeClass()->m_lpszClassName), std::string("CFileTreeItem"));

    // Only a window titled "<dir>main.asm.bak" is open: more than the path is no match.
    CHECK(pMain->FindHostWindow() == nullptr);
    // Titles compare without regard to case.
    CHECK(pOther->FindHostWindow() == bench.ChildTitled(bench.Path("OTHER.INC")));
    CHECK(pOther->FindHostWindow() != nullptr);
    // Not open: Close and Build Node greyed, the others enabled, foreign ids disabled.
    CHECK_EQ(EnableState(*pMain, ID_NODE_CLOSE), 0);
    CHECK_EQ(EnableState(*pMain, ID_NODE_BUILD), 0);
    for (UINT nID : {ID_NODE_OPEN, ID_NODE_EXTERNALEDITOR, ID_NODE_HIDEASSISTWINDOW, ID_NODE_CLOSEALLWINDOWS})
        CHECK_EQ(EnableState(*pMain, nID), 1);
    for (UINT nID : {ID_NODE_FIRST, ID_NODE_NEW, ID_NODE_EDIT, ID_NODE_SAVE, ID_NODE_SAVEALL, ID_NODE_LAST})
        CHECK_EQ(EnableState(*pMain, nID), 0);
    CHECK_EQ(EnableState(*pOther, ID_NODE_CLOSE), 1);
    CHECK_EQ(EnableState(*pOther, ID_NODE_BUILD), 1);
    // Closed or not open: nothing reaches the host.
    CHECK_EQ(Join(bench.Reaching([&] {
                 pMain->OnCommand(ID_NODE_CLOSE);
                 pMain->OnCommand(ID_NODE_BUILD);
                 pMain->OnCommand(ID_NODE_SAVE);
             })),
             std::string());
}

// Two windows of one title: the first in the MDI client's window order is
// the file's, whichever was made first.
TEST_CASE(FileNodeTakesTheFirstOfTwoWindowsInWindowOrder)
{
    Bench bench("kindtwo", {}, "");
    REQUIRE(bench.ok);
    // The host names every new editor "Untitled".
    PostMessageA(bench.Frame(), WM_COMMAND, 1001, 0);
    PostMessageA(bench.Frame(), WM_COMMAND, 1001, 0);
    REQUIRE(bench.host.WaitLog("OPEN Untitled", 5000, 2));
    std::unique_ptr<CFileTreeItem> pNode = FileNode(bench, "untitled");
    std::vector<HWND> children = bench.Children();
    REQUIRE(children.size() == 2);
    CHECK(pNode->FindHostWindow() == children[0]);
    // The other one activated comes first now.
    SendMessageA(bench.Client(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(children[1]), 0);
    REQUIRE(bench.Children()[0] == children[1]);
    CHECK(pNode->FindHostWindow() == children[1]);
}

TEST_CASE(FileNodeOpenDropsTheExactPathAndCloseDropsThenCloses)
{
    Bench bench("kinddrop", {{"main.asm", kSource}, {"lib.asm", kSource}}, "/open {dir}lib.asm");
    REQUIRE(bench.ok);
    std::unique_ptr<CFileTreeItem> pMain = FileNode(bench, bench.Path("main.asm"));
    std::unique_ptr<CFileTreeItem> pLib = FileNode(bench, bench.Path("lib.asm"));

    // Open and Enter: the host reads the path from a drop block and opens it.
    std::vector<std::string> lines = Without(bench.Reaching([&] { pMain->Open(); }), "ACTIVATE ");
    CHECK_EQ(Join(lines), "DROP " + bench.Path("main.asm") + " | OPEN " + bench.Path("main.asm"));
    // Open again: the host activates the window it has.
    lines = bench.Reaching([&] { pMain->OnReturn(); });
    CHECK_EQ(IndexOf(lines, "DROP " + bench.Path("main.asm")), 0);
    CHECK(IndexOf(lines, "OPEN " + bench.Path("main.asm")) < 0);
    CHECK(pMain->FindHostWindow() != nullptr);
    CHECK_EQ(EnableState(*pMain, ID_NODE_CLOSE), 1);

    // Close of lib.asm while main.asm is the active window: the drop makes
    // lib.asm active first, so 1007 closes lib.asm and leaves main.asm open.
    lines = bench.Reaching([&] { pLib->OnCommand(ID_NODE_CLOSE); });
    const int nDrop = IndexOf(lines, "DROP " + bench.Path("lib.asm"));
    const int nCommand = IndexOf(lines, "COMMAND 1007");
    const int nClose = IndexOf(lines, "CLOSE " + bench.Path("lib.asm"));
    CHECK(nDrop >= 0 && nDrop < nCommand && nCommand < nClose);
    CHECK(IndexOf(lines, "CLOSE " + bench.Path("main.asm")) < 0);
    CHECK(pLib->FindHostWindow() == nullptr);
    CHECK(pMain->FindHostWindow() != nullptr);

    // Build Node posts 1035 without activating the file first.
    lines = bench.Reaching([&] { pMain->OnCommand(ID_NODE_BUILD); });
    CHECK_EQ(Join(lines), std::string("COMMAND 1035 | BUILD 1035"));
    // Hiding the Assist Window is a choice in our popup inside the host: the
    // host's own procedure never sees the command.
    CHECK_EQ(Join(bench.Reaching([&] { pMain->OnCommand(ID_NODE_HIDEASSISTWINDOW); })), std::string(""));
    lines = bench.Reaching([&] { pMain->OnCommand(ID_NODE_OPEN); });
    CHECK_EQ(IndexOf(lines, "DROP " + bench.Path("main.asm")), 0);
    lines = bench.Reaching([&] { pMain->OnCommand(ID_NODE_CLOSEALLWINDOWS); });
    CHECK_EQ(IndexOf(lines, "COMMAND 1008"), 0);
    CHECK(IndexOf(lines, "CLOSE " + bench.Path("main.asm")) > 0);
}

// A path with characters of its own in it reaches the host byte for byte.
TEST_CASE(FileNodeDropsPathsWithBlanksAndLongNames)
{
    const std::string strLong(120, 'x');
    Bench bench("kindnames", {{"with blank.asm", kSource}, {strLong + ".asm", kSource}}, "");
    REQUIRE(bench.ok);
    for (const std::string& strName : {std::string("with blank.asm"), strLong + ".asm"})
    {
        std::unique_ptr<CFileTreeItem> pNode = FileNode(bench, bench.Path(strName.c_str()));
        CHECK_EQ(Join(Without(bench.Reaching([&] { pNode->Open(); }), "ACTIVATE ")),
                 "DROP " + bench.Path(strName.c_str()) + " | OPEN " + bench.Path(strName.c_str()));
        CHECK(pNode->FindHostWindow() != nullptr);
    }
}

TEST_CASE(FileNodeExternalEditorSavesFirstWhenSoSet)
{
    Bench bench("kindedit", {{"main.asm", kSource}}, "/open {dir}main.asm");
    REQUIRE(bench.ok);
    std::unique_ptr<CFileTreeItem> pNode = FileNode(bench, bench.Path("main.asm"));
    CApp* pApp = GetApp();
    REQUIRE(pApp != nullptr);
    pApp->m_strExternalEditor = "edit.exe \"%FILENAME%\" -n";
    pApp->m_bSaveAutomatically = TRUE;
    CHECK_EQ(Join(bench.Reaching([&] { pNode->OnCommand(ID_NODE_EXTERNALEDITOR); })),
             "COMMAND 1006 | SAVE " + bench.Path("main.asm"));
    CHECK_EQ(std::string(g_strPendingCommand), "edit.exe \"" + bench.Path("main.asm") + "\" -n");
    pApp->m_bSaveAutomatically = FALSE;
    CHECK_EQ(Join(bench.Reaching([&] { pNode->OnCommand(ID_NODE_EXTERNALEDITOR); })), std::string());
}

// The user tools in a "&Tools" submenu below "&External Editor", in section
// order, the ones without a caption left out; each runs for the node's file.
TEST_CASE(FileNodeOffersTheUserToolsForItsFile)
{
    Bench bench("kindtools", {{"main.asm", kSource}}, "/project {dir}demo.mcp /open {dir}main.asm");
    REQUIRE(bench.ok);
    std::unique_ptr<CFileTreeItem> pNode = FileNode(bench, bench.Path("main.asm"));
    CApp* pApp = GetApp();
    pApp->m_tools[0] = {"&Assemble", "asm.exe %FILENAME% /p:%PROJECT%"};
    pApp->m_tools[1] = {"", "hidden.exe"};
    pApp->m_tools[2] = {"&Make", "make"};
    pApp->m_bSaveAutomatically = FALSE;

    HMENU hPopup = CreatePopupMenu();
    AppendMenuA(hPopup, MF_STRING, ID_NODE_OPEN, "&Open");
    AppendMenuA(hPopup, MF_STRING, ID_NODE_EXTERNALEDITOR, "&External Editor");
    AppendMenuA(hPopup, MF_STRING, ID_NODE_CLOSE, "&Close");
    pNode->ExtendContextMenu(hPopup);
    REQUIRE(GetMenuItemCount(hPopup) == 4);
    HMENU hTools = GetSubMenu(hPopup, 2);
    REQUIRE(hTools != nullptr);
    REQUIRE(GetMenuItemCount(hTools) == 2);
    CHECK_EQ(GetMenuItemID(hTools, 0), static_cast<UINT>(ID_TOOL_FIRST));
    CHECK_EQ(GetMenuItemID(hTools, 1), static_cast<UINT>(ID_TOOL_FIRST + 2));
    DestroyMenu(hPopup);

    CHECK_EQ(EnableState(*pNode, ID_TOOL_FIRST), 1);
    CHECK_EQ(EnableState(*pNode, ID_TOOL_FIRST + 1), 0); // no caption: no tool
    pNode->OnCommand(ID_TOOL_FIRST);
    CHECK_EQ(std::string(g_strPendingCommand), "asm.exe " + bench.Path("main.asm") + " /p:" + bench.Path("demo.mcp"));
    pNode->OnCommand(ID_TOOL_FIRST + 2);
    CHECK_EQ(std::string(g_strPendingCommand), std::string("make"));
    for (CTool& tool : pApp->m_tools)
        tool = CTool();
}

// A file changed on disk while the host was in the background, open in the
// host: closed (the host has closed it when the send returns) and dropped
// again; forward and backward moves of its time both count.
TEST_CASE(FileNodeReloadsAChangedOpenFileOnly)
{
    Bench bench("kindreload", {{"main.asm", kSource}, {"lib.asm", kSource}}, "/open {dir}main.asm");
    REQUIRE(bench.ok);
    const std::string strMain = bench.Path("main.asm");
    std::unique_ptr<CFileTreeItem> pMain = FileNode(bench, strMain);
    std::unique_ptr<CFileTreeItem> pLib = FileNode(bench, bench.Path("lib.asm"));

    CHECK(!pMain->IsChanged());
    CHECK_EQ(Join(bench.Reaching([&] { pMain->Reload(); })), std::string());

    for (LONGLONG nShift : {3600LL, -7200LL})
    {
        pMain->UpdateTime();
        const CTime timeRecorded = pMain->m_timeModified;
        REQUIRE(ShiftWriteTime(strMain, nShift));
        CHECK(pMain->IsChanged());
        const std::vector<std::string> lines = Without(bench.Reaching([&] { pMain->Reload(); }), "ACTIVATE ");
        CHECK_EQ(Join(lines), "CLOSE " + strMain + " | DROP " + strMain + " | OPEN " + strMain);
        CHECK(pMain->m_timeModified == timeRecorded);
        CHECK(pMain->FindHostWindow() != nullptr);
    }

    // Changed but not open in the host: left alone.
    REQUIRE(ShiftWriteTime(bench.Path("lib.asm"), 3600));
    CHECK(!pLib->IsChanged());
    CHECK_EQ(Join(bench.Reaching([&] { pLib->Reload(); })), std::string());

    // Recorded anew: no change any more.
    pMain->UpdateTime();
    CHECK(!pMain->IsChanged());
}

// The file goes away after the scan: nothing crashes, nothing is reloaded,
// and the record keeps the time it had for when the file comes back.
TEST_CASE(FileNodeSurvivesItsFileVanishing)
{
    Bench bench("kindgone", {{"main.asm", kSource}}, "/open {dir}main.asm");
    REQUIRE(bench.ok);
    const std::string strMain = bench.Path("main.asm");
    std::unique_ptr<CFileTreeItem> pMain = FileNode(bench, strMain);
    const CTime timeRecorded = pMain->m_timeModified;
    CHECK(timeRecorded.GetTime() > 0);
    const std::string strAside = bench.Path("main.away");
    REQUIRE(MoveFileA(strMain.c_str(), strAside.c_str()));
    pMain->UpdateTime();
    CHECK(pMain->m_timeModified == timeRecorded);
    CHECK(!pMain->IsChanged());
    CHECK_EQ(Join(bench.Reaching([&] { pMain->Reload(); })), std::string());
    REQUIRE(MoveFileA(strAside.c_str(), strMain.c_str()));
    CHECK(!pMain->IsChanged());
    CHECK(pMain->FindHostWindow() != nullptr);
}

TEST_CASE(ViewNodeFindsItsViewByTitleOrEnding)
{
    // A file whose name ends like a view's title: the host titles its editor
    // with the full path, which ends in "Stack Window".
    Bench bench("kindviews", {{"main.asm", kSource}, {"OTHER.LST", kSource}},
                "/project {dir}demo.mcp /view 1120 /view 1117");
    REQUIRE(bench.ok);
    std::unique_ptr<CWindowTreeItem> pListing = ViewNode(bench, ViewRow(IDS_ABSOLUTELISTING));
    std::unique_ptr<CWindowTreeItem> pProgram = ViewNode(bench, ViewRow(IDS_PROGRAMMEMORY));
    std::unique_ptr<CWindowTreeItem> pStack = ViewNode(bench, ViewRow(IDS_STACK));
    std::unique_ptr<CWindowTreeItem> pMap = ViewNode(bench, ViewRow(IDS_MAPFILE));
    const HWND hWndListing = bench.ChildTitled(bench.Path("demo.lst"));
    REQUIRE(hWndListing != nullptr);
    CHECK(pListing->FindHostWindow() == hWndListing);
    CHECK(pProgram->FindHostWindow() == bench.ChildTitled("Program Memory Window"));
    CHECK(pStack->FindHostWindow() == nullptr);
    CHECK(pMap->FindHostWindow() == nullptr);
    CHECK_EQ(EnableState(*pStack, ID_NODE_CLOSE), 0);
    CHECK_EQ(EnableState(*pListing, ID_NODE_CLOSE), 1);

    // A second window whose title ends in .LST, made the first in window
    // order by opening it last: the listing node now finds that one.
    REQUIRE(bench.Reaching([&] { pListing->OnCommand(ID_NODE_OPEN); }).size() > 0);
    std::unique_ptr<CFileTreeItem> pOther = FileNode(bench, bench.Path("OTHER.LST"));
    pOther->Open();
    REQUIRE(bench.host.WaitLog("OPEN " + bench.Path("OTHER.LST"), 5000));
    CHECK(bench.Children()[0] == bench.ChildTitled(bench.Path("OTHER.LST")));
    CHECK(pListing->FindHostWindow() == bench.ChildTitled(bench.Path("OTHER.LST")));

    // A title that ends with a view's full title counts as that view.
    REQUIRE(qt::WriteTextFile(bench.Path("My Stack Window"), "; only files that exist are opened\r\n"));
    std::unique_ptr<CFileTreeItem> pLike = FileNode(bench, bench.Path("My Stack Window"));
    pLike->Open();
    REQUIRE(bench.host.WaitLog("OPEN " + bench.Path("My Stack Window"), 5000));
    CHECK(pStack->FindHostWindow() == bench.ChildTitled(bench.Path("My Stack Window")));
}

TEST_CASE(ViewNodeOpensClosedViewsAndBringsOpenOnesForward)
{
    Bench bench("kindviewopen", {{"main.asm", kSource}}, "/view 1121 /open {dir}main.asm");
    REQUIRE(bench.ok);
    std::unique_ptr<CWindowTreeItem> pStack = ViewNode(bench, ViewRow(IDS_STACK));
    std::unique_ptr<CWindowTreeItem> pEeprom = ViewNode(bench, ViewRow(IDS_EEPROM));
    std::unique_ptr<CWindowTreeItem> pResults = ViewNode(bench, ViewRow(IDS_BUILDRESULTS));
    const HWND hWndStack = bench.ChildTitled("Stack Window");
    REQUIRE(hWndStack != nullptr);
    REQUIRE(bench.Children()[0] != hWndStack); // main.asm opened after it

    // Open: to the top (which activates an MDI child already), then a click
    // at (0, 0) of its text.
    std::vector<std::string> lines = bench.Reaching([&] { pStack->Open(); });
    CHECK_EQ(Join(Without(lines, "ACTIVATE ")), std::string("LBUTTONDOWN Stack Window 0,0 | LBUTTONUP Stack Window 0,0"));
    // Brought to the top before the click, not by it.
    CHECK(IndexOf(lines, "ACTIVATE Stack Window") >= 0);
    CHECK(IndexOf(lines, "ACTIVATE Stack Window") < IndexOf(lines, "LBUTTONDOWN Stack Window 0,0"));
    CHECK(bench.Children()[0] == hWndStack);

    // A closed view is opened with its row's command, by Open and by Enter.
    CHECK_EQ(Join(Without(bench.Reaching([&] { pEeprom->OnReturn(); }), "ACTIVATE ")),
             std::string("COMMAND 1119 | VIEW 1119 EEPROM Window"));
    CHECK(pEeprom->FindHostWindow() != nullptr);

    // Close goes to the view, not to the frame.
    CHECK_EQ(Join(Without(bench.Reaching([&] { pEeprom->OnCommand(ID_NODE_CLOSE); }), "ACTIVATE ")),
             std::string("CLOSE EEPROM Window"));
    CHECK(pEeprom->FindHostWindow() == nullptr);

    // Build Results has no command: closed, Open does nothing and Close is greyed.
    CHECK_EQ(Join(bench.Reaching([&] { pResults->Open(); })), std::string());
    CHECK_EQ(EnableState(*pResults, ID_NODE_CLOSE), 0);
    CHECK_EQ(EnableState(*pResults, ID_NODE_OPEN), 1);

    // The rest of the menu, and ids of other menus.
    CHECK_EQ(Join(bench.Reaching([&] { pStack->OnCommand(ID_NODE_HIDEASSISTWINDOW); })), std::string(""));
    CHECK_EQ(Join(bench.Reaching([&] {
                 for (UINT nID : {ID_NODE_NEW, ID_NODE_EDIT, ID_NODE_SAVE, ID_NODE_SAVEALL, ID_NODE_EXTERNALEDITOR,
                                  ID_NODE_BUILD})
                     pStack->OnCommand(nID);
             })),
             std::string());
    for (UINT nID : {ID_NODE_NEW, ID_NODE_SAVE, ID_NODE_BUILD})
        CHECK_EQ(EnableState(*pStack, nID), 0);
    lines = bench.Reaching([&] { pStack->OnCommand(ID_NODE_CLOSEALLWINDOWS); });
    CHECK_EQ(IndexOf(lines, "COMMAND 1008"), 0);
    CHECK(IndexOf(lines, "CLOSE Stack Window") > 0);
    CHECK(bench.Children().empty());
}

// Every view of the table opens through its row's command.
TEST_CASE(EveryViewRowOpensItsView)
{
    Bench bench("kindallviews", {}, "/project {dir}demo.mcp");
    REQUIRE(bench.ok);
    for (int i = 0; i < HOST_VIEW_COUNT; ++i)
    {
        if (g_hostViews[i].nCommand == 0)
            continue;
        std::unique_ptr<CWindowTreeItem> pView = ViewNode(bench, i);
        const std::vector<std::string> lines = bench.Reaching([&] { pView->Open(); });
        CHECK_EQ(IndexOf(lines, "COMMAND " + std::to_string(g_hostViews[i].nCommand)), 0);
        CHECK(pView->FindHostWindow() != nullptr);
        CHECK_EQ(EnableState(*pView, ID_NODE_CLOSE), 1);
    }
}

// The host went away under the nodes: every operation is silent and the
// program goes on.
TEST_CASE(NodesOfAVanishedHostDoNothing)
{
    Bench bench("kindvanish", {{"main.asm", kSource}}, "/open {dir}main.asm /view 1121");
    REQUIRE(bench.ok);
    CString strProject = "C:\\proj\\demo.mcp";
    std::vector<std::unique_ptr<CTreeItem>> items;
    for (const KindRow& row : KindTable())
        items.emplace_back(row.fnMake(bench, &strProject));
    std::unique_ptr<CFileTreeItem> pFile = FileNode(bench, bench.Path("main.asm"));
    std::unique_ptr<CWindowTreeItem> pStack = ViewNode(bench, ViewRow(IDS_STACK));
    REQUIRE(pFile->FindHostWindow() != nullptr);
    REQUIRE(ShiftWriteTime(bench.Path("main.asm"), 60));
    bench.host.Kill();
    REQUIRE(qt::WaitFor([&] { return !IsWindow(bench.Frame()); }, 5000));
    items.emplace_back(pFile.release());
    items.emplace_back(pStack.release());
    for (auto& pItem : items)
    {
        for (UINT nID = ID_NODE_FIRST; nID <= ID_NODE_LAST; ++nID)
        {
            if (nID == ID_NODE_EXTERNALEDITOR)
                continue; // starts a program; its way is the application's
            EnableState(*pItem, nID);
            pItem->OnCommand(nID);
        }
        pItem->Open();
        pItem->OnReturn();
    }
    CFileTreeItem* pGone = static_cast<CFileTreeItem*>(items[items.size() - 2].get());
    CHECK(pGone->FindHostWindow() == nullptr);
    CHECK(!pGone->IsChanged());
    pGone->Reload();
    CHECK_EQ(EnableState(*pGone, ID_NODE_CLOSE), 0);
    CHECK(static_cast<CWindowTreeItem*>(items.back().get())->FindHostWindow() == nullptr);
}
