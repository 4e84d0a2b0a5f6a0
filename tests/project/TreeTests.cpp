// The node record model and the Project page's tree control on a real tree
// window: who owns and deletes records, which nodes go with them, finding
// records by path, the five operations reaching the right kind, and the tree
// keeping its begin-drag notification from its parent.
#include "CDataExchange.h"
#include "CDialog.h"
#include "CTreeCtrlEx.h"
#include "CTreeItems.h"
#include "TestRunner.h"
#include "TreeTestIds.h"
#include "WindowTestKit.h"

#include <map>
#include <string>
#include <vector>

namespace
{
// Every record, by serial: how often its destructor ran, and whether its
// node was still in the tree when it did.
struct Ledger
{
    int nMade = 0;
    std::map<int, int> deletes;
    std::map<int, bool> nodeAtDelete;
    std::vector<std::string> calls; // "<serial> <operation>"
    int nDeleted() const
    {
        int n = 0;
        for (const auto& entry : deletes)
            n += entry.second;
        return n;
    }
};
Ledger g_ledger;

bool NodeExists(const CTreeCursor& cursor)
{
    if (!cursor.GetHandle() || !cursor.GetTreeCtrl() || !cursor.GetTreeCtrl()->m_hWnd)
        return false;
    TVITEMA item = {};
    item.mask = TVIF_HANDLE;
    item.hItem = cursor.GetHandle();
    return cursor.GetTreeCtrl()->GetItem(&item) != FALSE;
}

// A file-like kind: it has a path and a default action.
class CFileKind : public CTreeItem
{
    DECLARE_DYNAMIC(CFileKind)
public:
    CFileKind(const CTreeCursor& parent, const char* pszPath)
        : CTreeItem(reinterpret_cast<HWND>(static_cast<INT_PTR>(0x4242)), parent, pszPath, 9, -1), m_strPath(pszPath),
          m_nSerial(++g_ledger.nMade)
    {
    }
    ~CFileKind() override
    {
        g_ledger.deletes[m_nSerial]++;
        g_ledger.nodeAtDelete[m_nSerial] = NodeExists(m_cursor);
    }

    CString GetPath() const override { return m_strPath; }
    void OnCommand(UINT nID) override { Log("command " + std::to_string(nID)); }
    void OnUpdateCommand(CCmdUI* pCmdUI) override { pCmdUI->Enable(pCmdUI->m_nID == 32774); }
    void Open() override { Log("open"); }
    void OnReturn() override { Open(); }

    CString m_strPath;
    int m_nSerial;

private:
    void Log(const std::string& str) { g_ledger.calls.push_back(std::to_string(m_nSerial) + " " + str); }
};
IMPLEMENT_DYNAMIC(CFileKind, CTreeItem)

// A group kind: a root or a labelled child, no path, no default action.
class CGroupKind : public CTreeItem
{
    DECLARE_DYNAMIC(CGroupKind)
public:
    CGroupKind(CTreeCtrl* pTree, UINT nIDLabel, int nImage)
        : CTreeItem(nullptr, pTree, nIDLabel, nImage), m_nSerial(++g_ledger.nMade)
    {
    }
    CGroupKind(const CTreeCursor& parent, UINT nIDLabel, int nImage, int nSelectedImage)
        : CTreeItem(nullptr, parent, nIDLabel, nImage, nSelectedImage), m_nSerial(++g_ledger.nMade)
    {
    }
    ~CGroupKind() override
    {
        g_ledger.deletes[m_nSerial]++;
        g_ledger.nodeAtDelete[m_nSerial] = NodeExists(m_cursor);
    }

    CString GetPath() const override { return CString(); }
    void OnCommand(UINT nID) override { g_ledger.calls.push_back(std::to_string(m_nSerial) + " group command " + std::to_string(nID)); }
    void OnUpdateCommand(CCmdUI* pCmdUI) override { pCmdUI->Enable(FALSE); }
    void Open() override {}
    void OnReturn() override {}

    int m_nSerial;
};
IMPLEMENT_DYNAMIC(CGroupKind, CTreeItem)

// A tree that reports whether it was asked about a drag.
class CWatchedTree : public CTreeCtrlEx
{
public:
    int m_nCanDrag = 0;
    HTREEITEM m_hAskedAbout = nullptr;

    BOOL CanDrag(CTreeCursor cursorItem) override
    {
        m_nCanDrag++;
        m_hAskedAbout = cursorItem.GetHandle();
        return CTreeCtrlEx::CanDrag(cursorItem);
    }
};

class CTreeHost : public CDialog
{
public:
    CTreeHost() : CDialog(IDD_TREEHOST, nullptr) {}

    CWatchedTree m_tree;
    CTreeCtrl m_plainTree;
    int m_nBeginDrags[2] = {}; // from the tree, from the plain tree

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDialog::DoDataExchange(pDX);
        DDX_Control(pDX, IDC_TREE, m_tree);
        DDX_Control(pDX, IDC_PLAINTREE, m_plainTree);
    }
    void OnBeginDrag(UINT nID, NMHDR*, LRESULT*) { m_nBeginDrags[nID == IDC_TREE ? 0 : 1]++; }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CTreeHost, CDialog)
    ON_NOTIFY_RANGE(TVN_BEGINDRAGA, IDC_TREE, IDC_PLAINTREE, OnBeginDrag)
    ON_NOTIFY_RANGE(TVN_BEGINDRAGW, IDC_TREE, IDC_PLAINTREE, OnBeginDrag)
END_MESSAGE_MAP()

bool MakeHost(CTreeHost& host)
{
    g_ledger = Ledger();
    if (!host.Create(IDD_TREEHOST))
        return false;
    host.SetWindowPos(nullptr, 60, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    host.ShowWindow(SW_SHOW);
    host.UpdateWindow();
    return host.m_tree.m_hWnd != nullptr;
}

std::string Text(const CTreeCursor& cursor)
{
    return std::string(cursor.GetTreeCtrl()->GetItemText(cursor.GetHandle()));
}

std::pair<int, int> Images(const CTreeCursor& cursor)
{
    int nImage = -9;
    int nSelected = -9;
    cursor.GetTreeCtrl()->GetItemImage(cursor.GetHandle(), nImage, nSelected);
    return {nImage, nSelected};
}

CTreeItem* RecordOf(const CTreeCursor& cursor)
{
    return reinterpret_cast<CTreeItem*>(cursor.GetData());
}
} // namespace

TEST_CASE(records_make_their_nodes_with_labels_images_and_their_own_address)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeItems groups;
    CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_PROJECT, 6);
    groups.Add(pRoot);
    CGroupKind* pSources = new CGroupKind(pRoot->m_cursor, IDS_SOURCES, 7, 8);
    groups.Add(pSources);
    CGroupKind* pUnnamed = new CGroupKind(pRoot->m_cursor, IDS_MISSING, 7, -1);
    groups.Add(pUnnamed);
    CFileKind* pFile = new CFileKind(pSources->m_cursor, "C:\\Work\\MAIN.ASM");
    groups.Add(pFile);

    CHECK(pRoot->m_cursor.GetHandle() == host.m_tree.GetRootItem());
    CHECK_EQ(Text(pRoot->m_cursor), std::string("Project"));
    CHECK_EQ(Text(pSources->m_cursor), std::string("Source Files"));
    CHECK_EQ(Text(pUnnamed->m_cursor), std::string());
    CHECK_EQ(Text(pFile->m_cursor), std::string("C:\\Work\\MAIN.ASM"));
    CHECK(Images(pRoot->m_cursor) == std::make_pair(6, 6));
    CHECK(Images(pSources->m_cursor) == std::make_pair(7, 8));
    CHECK(Images(pUnnamed->m_cursor) == std::make_pair(7, 7)); // -1: the image itself
    CHECK(Images(pFile->m_cursor) == std::make_pair(9, 9));
    CHECK(host.m_tree.GetParentItem(pFile->m_cursor.GetHandle()) == pSources->m_cursor.GetHandle());
    CHECK(host.m_tree.GetNextSiblingItem(pSources->m_cursor.GetHandle()) == pUnnamed->m_cursor.GetHandle());

    for (CTreeItem* pItem : groups)
        CHECK(RecordOf(pItem->m_cursor) == pItem);

    // Kinds carry their own class names (they title their context menus).
    CHECK_EQ(std::string(pFile->GetRuntimeClass()->m_lpszClassName), std::string("CFileKind"));
    CHECK(pFile->IsKindOf(RUNTIME_CLASS(CTreeItem)));
    CHECK_EQ(std::string(RUNTIME_CLASS(CTreeItem)->m_lpszClassName), std::string("CTreeItem"));
    CHECK(RUNTIME_CLASS(CTreeItem)->m_pBaseClass == RUNTIME_CLASS(CObject));
    CHECK(RUNTIME_CLASS(CTreeItem)->m_pfnCreateObject == nullptr);
    host.DestroyWindow();
}

TEST_CASE(a_list_deletes_each_record_once_and_its_nodes_only_when_told_to)
{
    struct Case
    {
        BOOL bDeleteTreeItems;
    };
    for (const Case c : {Case{FALSE}, Case{TRUE}})
    {
        CTreeHost host;
        REQUIRE(MakeHost(host));
        CTreeItems keep; // outlives the other list
        CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_PROJECT, 0);
        keep.Add(pRoot);
        {
            CTreeItems files;
            files.m_bDeleteTreeItems = c.bDeleteTreeItems;
            files.Add(new CFileKind(pRoot->m_cursor, "a.asm"));
            files.Add(new CFileKind(pRoot->m_cursor, "b.asm"));
            files.Add(new CFileKind(pRoot->m_cursor, "c.asm"));
            CHECK_EQ(static_cast<int>(host.m_tree.GetCount()), 4);
        }
        CHECK_EQ(g_ledger.nDeleted(), 3);
        for (int nSerial = 2; nSerial <= 4; nSerial++)
        {
            CHECK_EQ(g_ledger.deletes[nSerial], 1);
            // With the flag the node went first; without it the node stays.
            CHECK_EQ(g_ledger.nodeAtDelete[nSerial], !c.bDeleteTreeItems);
        }
        CHECK_EQ(static_cast<int>(host.m_tree.GetCount()), c.bDeleteTreeItems ? 1 : 4);
        CHECK(NodeExists(pRoot->m_cursor));
        host.DestroyWindow();
    }
}

TEST_CASE(find_path_matches_whole_paths_without_regard_to_case_first_match_first)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeItems list;
    CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_PROJECT, 0);
    list.Add(pRoot); // path empty
    list.Add(new CFileKind(pRoot->m_cursor, "C:\\Work\\MAIN.ASM"));
    list.Add(new CFileKind(pRoot->m_cursor, "C:\\Work\\util.c"));
    list.Add(new CFileKind(pRoot->m_cursor, "c:\\work\\UTIL.C"));

    struct Case
    {
        const char* pszPath;
        int nIndex;
    };
    const Case cases[] = {
        {"C:\\Work\\MAIN.ASM", 1},
        {"c:\\work\\main.asm", 1},
        {"c:\\work\\main", -1},     // no prefix match
        {"C:\\Work\\MAIN.ASM2", -1},
        {"c:\\work\\util.c", 2},     // two records match: the first
        {"", 0},                     // an empty path matches only the empty key
        {"x", -1},
    };
    for (const Case& c : cases)
    {
        const int nIndex = list.FindPath(c.pszPath);
        if (nIndex != c.nIndex)
            printf("  FindPath(\"%s\")\n", c.pszPath);
        CHECK_EQ(nIndex, c.nIndex);
    }

    // RemovePath takes out the first match only, and deletes nothing.
    CTreeItem* pFirstUtil = list[2];
    list.RemovePath("C:\\WORK\\UTIL.C");
    CHECK_EQ(static_cast<int>(list.size()), 3);
    CHECK_EQ(list.FindPath("c:\\work\\util.c"), 2);
    CHECK(list[2] != pFirstUtil);
    CHECK_EQ(g_ledger.nDeleted(), 0);
    list.RemovePath("nothing");
    CHECK_EQ(static_cast<int>(list.size()), 3);

    delete pFirstUtil; // taken out of the list: its owner now is this test
    CHECK_EQ(g_ledger.nDeleted(), 1);
    host.DestroyWindow();
}

TEST_CASE(a_copied_list_shares_records_and_removing_a_path_keeps_the_record_alive)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeItems keep;
    CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_SOURCES, 0);
    keep.Add(pRoot);
    CTreeItems group;
    group.Add(new CFileKind(pRoot->m_cursor, "one.asm"));
    group.Add(new CFileKind(pRoot->m_cursor, "two.asm"));
    group.Add(new CFileKind(pRoot->m_cursor, "three.asm"));

    // What a refresh does: a copy that deletes what is left in it along with
    // its nodes; the files still there leave the copy, the vanished one
    // leaves the group.
    {
        CTreeItems scan(group);
        scan.m_bDeleteTreeItems = TRUE;
        CHECK_EQ(static_cast<int>(scan.size()), 3);
        scan.RemovePath("ONE.ASM");
        scan.RemovePath("three.asm");
        for (CTreeItem* pGone : scan)
            group.RemovePath(pGone->GetPath());
        CHECK_EQ(g_ledger.nDeleted(), 0);
    }
    CHECK_EQ(g_ledger.nDeleted(), 1);
    CHECK_EQ(g_ledger.deletes[3], 1); // two.asm
    CHECK(!g_ledger.nodeAtDelete[3]);
    REQUIRE(group.size() == 2u);
    CHECK(NodeExists(group[0]->m_cursor));
    CHECK(NodeExists(group[1]->m_cursor));
    CHECK_EQ(static_cast<int>(host.m_tree.GetCount()), 3);

    host.DestroyWindow();
    // The tree window is gone; the lists still delete their records, once.
    group.RemoveAll();
    CHECK(group.empty());
    CHECK_EQ(g_ledger.nDeleted(), 3);
    for (const auto& entry : g_ledger.deletes)
        CHECK_EQ(entry.second, 1);
}

TEST_CASE(remove_deletes_only_records_of_its_own_list)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeItems list;
    CTreeItems other;
    CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_PROJECT, 0);
    other.Add(pRoot);
    CFileKind* pA = new CFileKind(pRoot->m_cursor, "a");
    CFileKind* pB = new CFileKind(pRoot->m_cursor, "b");
    list.Add(pA);
    list.Add(pB);

    list.Remove(pRoot); // not in this list: nothing happens
    CHECK_EQ(g_ledger.nDeleted(), 0);
    CHECK_EQ(static_cast<int>(list.size()), 2);
    list.Remove(pA);
    CHECK_EQ(g_ledger.deletes[2], 1);
    CHECK_EQ(static_cast<int>(list.size()), 1);
    CHECK(list[0] == pB);
    CHECK(NodeExists(pB->m_cursor)); // Remove leaves nodes to the tree
    host.DestroyWindow();
}

TEST_CASE(a_record_whose_node_the_tree_refused_touches_nothing)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeItems keep;
    CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_PROJECT, 0);
    keep.Add(pRoot);
    keep.Add(new CFileKind(pRoot->m_cursor, "stays.asm"));
    CTreeCursor gone(host.m_tree.InsertItem("doomed", pRoot->m_cursor.GetHandle()), &host.m_tree);
    REQUIRE(gone.Delete());
    const UINT nCount = host.m_tree.GetCount();
    REQUIRE(nCount == 2u);

    {
        // Under a parent that no longer exists the tree refuses the node.
        CTreeItems orphans;
        orphans.m_bDeleteTreeItems = TRUE;
        CFileKind* pOrphan = new CFileKind(gone, "orphan.asm");
        orphans.Add(pOrphan);
        CHECK(pOrphan->m_cursor.GetHandle() == nullptr);
        CHECK_EQ(pOrphan->m_cursor.GetData(), static_cast<DWORD_PTR>(0));
        CHECK(!pOrphan->m_cursor.Select());
        CHECK(!pOrphan->m_cursor.SortChildren());
        CHECK(!pOrphan->m_cursor.InsertChild("child").GetHandle());
    }
    // Deleting "its node" must not have deleted everything else.
    CHECK_EQ(host.m_tree.GetCount(), nCount);
    CHECK_EQ(Text(host.m_tree.GetRootCursor()), std::string("Project"));
    host.DestroyWindow();
}

TEST_CASE(the_five_operations_reach_the_kind_of_the_node_found_through_the_tree)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeItems list;
    CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_PROJECT, 0); // serial 1
    list.Add(pRoot);
    list.Add(new CFileKind(pRoot->m_cursor, "zeta.asm"));  // serial 2
    list.Add(new CFileKind(pRoot->m_cursor, "alpha.asm")); // serial 3
    pRoot->m_cursor.Expand();
    pRoot->m_cursor.SortChildren();
    CTreeCtrlEx& tree = host.m_tree;
    CTreeCursor first = tree.GetChildCursor(tree.GetRootItem());
    CHECK_EQ(Text(first), std::string("alpha.asm"));
    CHECK_EQ(Text(tree.GetNextSiblingCursor(first.GetHandle())), std::string("zeta.asm"));
    CHECK(tree.GetParentCursor(first.GetHandle()).GetHandle() == pRoot->m_cursor.GetHandle());

    // What the page does: the selected node's record, whatever its kind.
    CHECK(tree.GetSelectedCursor().GetHandle() == nullptr);
    REQUIRE(first.Select());
    CTreeItem* pSelected = RecordOf(tree.GetSelectedCursor());
    REQUIRE(pSelected != nullptr);
    pSelected->Open();
    pSelected->OnReturn();
    pSelected->OnCommand(32776);
    CCmdUI state;
    state.m_nID = 32774;
    pSelected->OnUpdateCommand(&state);
    CHECK(state.m_bEnabled);
    state.m_nID = 32776;
    pSelected->OnUpdateCommand(&state);
    CHECK(!state.m_bEnabled);
    CHECK_EQ(pSelected->GetPath().Compare("alpha.asm"), 0);

    REQUIRE(pRoot->m_cursor.Select());
    CTreeItem* pGroup = RecordOf(tree.GetSelectedCursor());
    REQUIRE(pGroup == pRoot);
    pGroup->OnReturn();
    pGroup->Open();
    pGroup->OnCommand(32773);
    state.m_nID = 32774;
    pGroup->OnUpdateCommand(&state);
    CHECK(!state.m_bEnabled);
    CHECK(pGroup->GetPath().IsEmpty());

    const std::vector<std::string> expected = {"3 open", "3 open", "3 command 32776", "1 group command 32773"};
    CHECK(g_ledger.calls == expected);
    host.DestroyWindow();
}

TEST_CASE(cursors_name_nothing_where_there_is_no_node)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeCtrlEx& tree = host.m_tree;
    CHECK(tree.GetRootCursor().GetHandle() == nullptr);
    CTreeItems list;
    CGroupKind* pRoot = new CGroupKind(&tree, IDS_PROJECT, 0);
    list.Add(pRoot);
    list.Add(new CFileKind(pRoot->m_cursor, "only.asm"));
    pRoot->m_cursor.Expand(TVE_EXPAND);
    kit::PumpFor(30);

    CHECK(tree.GetSelectedCursor().GetHandle() == nullptr);
    CRect rcItem;
    REQUIRE(tree.GetItemRect(pRoot->m_cursor.GetHandle(), &rcItem, TRUE));
    UINT nFlags = 0;
    CTreeCursor hit = tree.HitTestCursor(CPoint(rcItem.left + 2, (rcItem.top + rcItem.bottom) / 2), &nFlags);
    CHECK(hit.GetHandle() == pRoot->m_cursor.GetHandle());
    CHECK(hit.GetTreeCtrl() == &tree);
    CHECK((nFlags & TVHT_ONITEM) != 0);
    CRect rcClient;
    tree.GetClientRect(&rcClient);
    CHECK(tree.HitTestCursor(CPoint(10, rcClient.bottom - 3)).GetHandle() == nullptr); // below the last node

    host.DestroyWindow();
}

TEST_CASE(dragging_a_node_starts_nothing_and_the_parent_never_hears_of_it)
{
    CTreeHost host;
    REQUIRE(MakeHost(host));
    CTreeItems list;
    CGroupKind* pRoot = new CGroupKind(&host.m_tree, IDS_PROJECT, 0);
    list.Add(pRoot);
    list.Add(new CFileKind(pRoot->m_cursor, "drag-me.asm"));
    pRoot->m_cursor.Expand();
    HTREEITEM hPlain = host.m_plainTree.InsertItem("Plain node");
    REQUIRE(kit::MakeForeground(host.m_hWnd));
    kit::PumpFor(50);

    // The real mouse: press on a node, move well past the drag distance,
    // release. The tree follows the gesture in a loop of its own, so the
    // input comes from another thread.
    auto drag = [](CTreeCtrl& tree, HTREEITEM hItem) {
        CRect rc;
        tree.GetItemRect(hItem, &rc, TRUE);
        const POINT pt = kit::ScreenPoint(tree.m_hWnd, rc.left + 4, (rc.top + rc.bottom) / 2);
        kit::InputFromAnotherThread([pt] {
            kit::SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, pt.x, pt.y);
            Sleep(50);
            kit::SendMouse(MOUSEEVENTF_LEFTDOWN);
            Sleep(50);
            for (int d = 4; d <= 40; d += 6)
            {
                kit::SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, pt.x + d, pt.y + d / 2);
                Sleep(30);
            }
            kit::SendMouse(MOUSEEVENTF_LEFTUP);
            Sleep(50);
        });
        kit::PumpFor(100);
    };

    // The ordinary tree shows that the gesture is a drag to the system.
    drag(host.m_plainTree, hPlain);
    CHECK_EQ(host.m_nBeginDrags[1], 1);

    drag(host.m_tree, pRoot->m_cursor.GetHandle());
    CHECK_EQ(host.m_nBeginDrags[0], 0);
    CHECK_EQ(host.m_tree.m_nCanDrag, 1);
    CHECK(host.m_tree.m_hAskedAbout == pRoot->m_cursor.GetHandle());
    CHECK(GetCapture() == nullptr);
    CHECK(!host.m_tree.m_bDragging);
    CHECK(host.m_tree.m_pDragImage == nullptr);
    // Wine: the tree remembers the pressed node as its drop target
    // (TVGN_DROPHILITE answers it) after any begin-drag, whatever the parent
    // does; what shows is the node's drop-highlight state, which nobody set.
    const UINT nState = static_cast<UINT>(
        host.m_tree.SendMessage(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(pRoot->m_cursor.GetHandle()), TVIS_DROPHILITED));
    CHECK((nState & TVIS_DROPHILITED) == 0);
    host.DestroyWindow();
}
