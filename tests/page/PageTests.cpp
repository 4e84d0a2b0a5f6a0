// The Project page in the real tool's Assist Window beside the stand-in host
// IDE: the tree follows the project that the host frame's title names, and
// the project folder's files as they come and go. The tree is read across
// the processes.
#include "Scenario.h"
#include "TestRunner.h"

using namespace qt;

namespace
{
// A change on disk shows within one 500 ms poll, a title change at once;
// the rest is room for a busy machine.
const DWORD kWait = 5000;

// A group's files, " | " between; "": the project's name at the root.
std::string Group(const Scene& s, const char* pszGroup)
{
    HTREEITEM hNode = FindNode(s.hWndTree, pszGroup);
    return *pszGroup ? Joined(NodeChildren(s.hWndTree, hNode)) : NodeText(s.hWndTree, hNode);
}

bool WaitGroup(const Scene& s, const char* pszGroup, const std::string& strWant)
{
    const bool bOk = WaitFor([&] { return Group(s, pszGroup) == strWant; }, kWait);
    if (!bOk)
        printf("  %s: \"%s\", want \"%s\"\n", pszGroup, Group(s, pszGroup).c_str(), strWant.c_str());
    return bOk;
}

bool Expanded(const Scene& s, const char* pszGroup)
{
    return (SendMessageA(s.hWndTree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(FindNode(s.hWndTree, pszGroup)),
                         TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}
} // namespace

TEST_CASE(tree_follows_the_project_the_host_title_names)
{
    const std::string a = MakeProject("titlea", {"main.asm", "util.c", "defs.inc"});
    const std::string b = MakeProject("titleb", {"boot.asm", "io.h"});
    Scene s("title", "/pos 20,20 /size 900x600 /nextproject " + a + "demo.mcp");
    REQUIRE(s.ok);
    CHECK(WaitGroup(s, "", "(Empty)"));
    CHECK_EQ(Joined(NodeChildren(s.hWndTree, FindNode(s.hWndTree, ""))), std::string("Source Files | Header Files | Windows"));
    CHECK_EQ(Group(s, "Source Files") + Group(s, "Header Files"), std::string());
    // The tree fills the page but for two pixels at the bottom.
    RECT rcTree = {}, rcPage = {};
    GetWindowRect(s.hWndTree, &rcTree);
    GetWindowRect(GetParent(s.hWndTree), &rcPage);
    CHECK(rcTree.left == rcPage.left && rcTree.top == rcPage.top && rcTree.right == rcPage.right &&
          rcTree.bottom == rcPage.bottom - 2);

    // The host opens the project: its name, its files sorted, the groups unfolded.
    PostMessageA(s.hWndFrame, WM_COMMAND, 1019, 0);
    CHECK(WaitGroup(s, "", "demo"));
    CHECK(WaitGroup(s, "Source Files", "main.asm | util.c"));
    CHECK(WaitGroup(s, "Header Files", "defs.inc"));
    CHECK(Expanded(s, "Source Files") && Expanded(s, "Header Files"));

    // Another case of the same path, then another project file in the same
    // folder: the file nodes stay.
    HTREEITEM hMain = FindNode(s.hWndTree, "Source Files/main.asm");
    std::string strUpper = a + "DEMO.MCP";
    for (char& ch : strUpper)
        ch = static_cast<char>(toupper(static_cast<unsigned char>(ch)));
    SetWindowTextA(s.hWndFrame, ("Host IDE - " + strUpper).c_str());
    SetWindowTextA(s.hWndFrame, ("Host IDE - " + a + "other.mcp").c_str());
    CHECK(WaitGroup(s, "", "other"));
    CHECK(FindNode(s.hWndTree, "Source Files/main.asm") == hMain);

    // Another folder replaces the files; a group the user folded stays folded.
    SendMessageA(s.hWndTree, TVM_EXPAND, TVE_COLLAPSE, reinterpret_cast<LPARAM>(FindNode(s.hWndTree, "Source Files")));
    SetWindowTextA(s.hWndFrame, ("Host IDE - " + b + "second.mcp").c_str());
    CHECK(WaitGroup(s, "", "second"));
    CHECK(WaitGroup(s, "Source Files", "boot.asm"));
    CHECK(WaitGroup(s, "Header Files", "io.h"));
    CHECK(!Expanded(s, "Source Files"));

    // The path is the title's third word: blanks and hyphens separate words.
    SetWindowTextA(s.hWndFrame, "Host IDE");
    CHECK(WaitGroup(s, "", "(Empty)"));
    CHECK(WaitGroup(s, "Header Files", ""));
    SetWindowTextA(s.hWndFrame, ("Host IDE - " + a + "My Work\\demo.mcp").c_str());
    CHECK(WaitGroup(s, "", "My"));
    SetWindowTextA(s.hWndFrame, ("Host-IDE-" + a + "demo.mcp").c_str());
    CHECK(WaitGroup(s, "", "demo"));
    CHECK(WaitGroup(s, "Source Files", "main.asm | util.c"));
}

TEST_CASE(poll_lists_the_files_the_patterns_match_as_they_come_and_go)
{
    const std::string d = MakeProject("pollp", {"main.asm", "zeta.asm", " lead.c", "alpha.c", "defs.inc"});
    // A file two patterns match is listed once; a blank after ";" belongs
    // to the next pattern; patterns that make no sense list nothing.
    Scene s("poll", "/pos 20,20 /size 900x600 /project " + d + "demo.mcp", "[Settings]\r\nSource=*.asm;m*.asm;;*.ASM; *.c\r\nHeader=*.inc;*.inc\\*;\\\\?\\<>|\r\n");
    REQUIRE(s.ok);
    CHECK(WaitGroup(s, "Source Files", " lead.c | main.asm | zeta.asm"));
    HTREEITEM hMain = FindNode(s.hWndTree, "Source Files/main.asm");
    SendMessageA(s.hWndTree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(hMain));

    // New files in name order; a file that stays keeps its node and selection.
    WriteTextFile(d + "beta.asm", "");
    WriteTextFile(d + "gamma.inc", "");
    CHECK(WaitGroup(s, "Source Files", " lead.c | beta.asm | main.asm | zeta.asm"));
    CHECK(WaitGroup(s, "Header Files", "defs.inc | gamma.inc"));
    CHECK(FindNode(s.hWndTree, "Source Files/main.asm") == hMain);
    CHECK(SendMessageA(s.hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0) == reinterpret_cast<LRESULT>(hMain));

    // Deleted and renamed; folders, subfolders and other extensions are not
    // listed (a file that must come shows that a poll ran).
    DeleteFileA((d + "beta.asm").c_str());
    MoveFileA((d + "zeta.asm").c_str(), (d + "omega.asm").c_str());
    CreateDirectoryA((d + "folder.asm").c_str(), nullptr);
    CreateDirectoryA((d + "sub").c_str(), nullptr);
    WriteTextFile(d + "sub\\deep.asm", "");
    WriteTextFile(d + "readme.txt", "");
    WriteTextFile(d + "trigger.asm", "");
    CHECK(WaitGroup(s, "Source Files", " lead.c | main.asm | omega.asm | trigger.asm"));

    // The folder goes away and comes back.
    const std::string strAway = d.substr(0, d.size() - 1) + "away";
    REQUIRE(MoveFileA(d.substr(0, d.size() - 1).c_str(), strAway.c_str()));
    CHECK(WaitGroup(s, "Source Files", ""));
    CHECK(WaitGroup(s, "Header Files", ""));
    CHECK(WaitGroup(s, "", "demo")); // still the host's project
    REQUIRE(MoveFileA(strAway.c_str(), d.substr(0, d.size() - 1).c_str()));
    CHECK(WaitGroup(s, "Header Files", "defs.inc | gamma.inc"));

    // Paths no folder can be searched for: a file as a folder, a drive that
    // is not there, a name too long. Nothing listed, nothing broken.
    for (const std::string& strProject :
         {d + "main.asm\\demo.mcp", std::string("Q:\\nowhere\\demo.mcp"), MakeScratchDir("long") + std::string(300, 'x') + "\\demo.mcp"})
    {
        SetWindowTextA(s.hWndFrame, ("Host IDE - " + strProject).c_str());
        if (!WaitGroup(s, "Source Files", ""))
            Fail(__FILE__, __LINE__, "listed for " + strProject);
    }
    SetWindowTextA(s.hWndFrame, ("Host IDE - " + d + "demo.mcp").c_str());
    CHECK(WaitGroup(s, "Source Files", " lead.c | main.asm | omega.asm | trigger.asm"));
    CHECK(s.tool.GetProcess().IsRunning());
}
