// The Project page's node records on a real tree window in this process: a
// list deletes each record once, and its nodes only when told to; records
// are found by their whole path without regard to case; and a record whose
// node the tree refused deletes nothing of the tree.
#include "CTreeCtrlEx.h"
#include "CTreeItems.h"
#include "InProcess.h"
#include "TestRunner.h"

#include <map>

namespace
{
std::map<int, int> g_deletes; // record serial -> destructor runs, negative when its node was gone

bool NodeExists(const CTreeCursor& cursor)
{
    TVITEMA item = {};
    item.mask = TVIF_HANDLE;
    item.hItem = cursor.GetHandle();
    return item.hItem && cursor.GetTreeCtrl()->m_hWnd && cursor.GetTreeCtrl()->GetItem(&item);
}

// A record named after its path, as the file records are.
class CFileKind : public CTreeItem
{
public:
    CFileKind(const CTreeCursor& parent, const char* pszPath)
        : CTreeItem(nullptr, parent, pszPath, 0, -1), m_strPath(pszPath), m_nSerial(static_cast<int>(g_deletes.size()) + 1)
    {
        g_deletes[m_nSerial] = 0;
    }
    ~CFileKind() override { g_deletes[m_nSerial] += NodeExists(m_cursor) ? 1 : -1; }
    CString GetPath() const override { return m_strPath; }
    void OnCommand(UINT) override {}
    void OnUpdateCommand(CCmdUI*) override {}
    void Open() override {}
    void OnReturn() override {}

    const CString m_strPath;
    const int m_nSerial;
};

// A tree with one root node and the records made under it.
struct Tree
{
    Tree(std::initializer_list<const char*> paths)
    {
        g_deletes.clear();
        tree.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 200), &frame, 1);
        root = CTreeCursor(tree.InsertItem("Project"), &tree);
        for (const char* pszPath : paths)
            items.Add(new CFileKind(root, pszPath));
    }
    qt::TestFrame frame;
    CTreeCtrlEx tree;
    CTreeCursor root;
    CTreeItems items;
};
} // namespace

TEST_CASE(a_list_deletes_each_record_once_and_its_nodes_only_when_told_to)
{
    for (const BOOL bDeleteTreeItems : {FALSE, TRUE})
    {
        {
            Tree t({"a.asm", "b.asm", "c.asm"});
            t.items.m_bDeleteTreeItems = bDeleteTreeItems;
            t.items.Remove(t.items[0]); // leaves the node to the tree
            CHECK_EQ(g_deletes[1], 1);
            CHECK_EQ(static_cast<int>(t.tree.GetCount()), 4);
        } // the list goes before the tree: with the flag, each node before its record
        CHECK_EQ(g_deletes[2], bDeleteTreeItems ? -1 : 1);
        CHECK_EQ(g_deletes[3], bDeleteTreeItems ? -1 : 1);
    }
}

TEST_CASE(records_are_found_by_whole_path_without_regard_to_case_and_a_refresh_deletes_only_the_vanished)
{
    Tree t({"C:\\Work\\MAIN.ASM", "C:\\Work\\util.c", "C:\\Work\\gone.inc"});
    const struct
    {
        const char* pszPath;
        int nIndex;
    } cases[] = {{"c:\\work\\main.asm", 0}, {"C:\\WORK\\UTIL.C", 1}, {"c:\\work\\main", -1},
                 {"C:\\Work\\MAIN.ASM2", -1}, {"", -1}};
    for (const auto& c : cases)
        CHECK_EQ(t.items.FindPath(c.pszPath), c.nIndex);

    // What a refresh does: a copy that deletes what is left in it with its
    // nodes; the files still there leave the copy, the vanished one the list.
    {
        CTreeItems scan(t.items);
        scan.m_bDeleteTreeItems = TRUE;
        scan.RemovePath("c:\\work\\Main.asm");
        scan.RemovePath("c:\\work\\util.c");
        t.items.RemovePath(scan[0]->GetPath());
    }
    CHECK(g_deletes[1] == 0 && g_deletes[2] == 0 && g_deletes[3] == -1);
    REQUIRE(t.items.size() == 2u);
    CHECK(NodeExists(t.items[0]->m_cursor) && NodeExists(t.items[1]->m_cursor));
}

TEST_CASE(a_record_whose_node_the_tree_refused_deletes_nothing_of_the_tree)
{
    Tree t({"stays.asm"});
    CTreeCursor gone(t.tree.InsertItem("doomed", t.root.GetHandle()), &t.tree);
    REQUIRE(gone.Delete());
    {
        CTreeItems orphans;
        orphans.m_bDeleteTreeItems = TRUE;
        orphans.Add(new CFileKind(gone, "orphan.asm")); // under a parent that no longer exists
        CHECK(orphans[0]->m_cursor.GetHandle() == nullptr && !orphans[0]->m_cursor.SortChildren());
    }
    CHECK_EQ(g_deletes[2], -1);
    CHECK_EQ(static_cast<int>(t.tree.GetCount()), 2);
}
