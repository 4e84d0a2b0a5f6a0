#include "CProjectDlg.h"

#include "CApp.h"
#include "CDataExchange.h"
#include "CFileFind.h"
#include "CFileTreeItem.h"
#include "CHeaderFilesTreeItem.h"
#include "CProjectTreeItem.h"
#include "CSourceFilesTreeItem.h"
#include "CWatchTreeItem.h"
#include "CWindowTreeItem.h"
#include "CWindowsTreeItem.h"
#include "HostCommand.h"
#include "PathNames.h"
#include "QuorvantHook.h"
#include "TextWords.h"
#include "WindowText.h"
#include "resource.h"

#include <mbstring.h>
#include <stdlib.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

CProjectDlg* g_pCommandPage = nullptr;

namespace
{
const UINT_PTR kRefreshTimer = 1001;
const UINT kRefreshPeriod = 500;  // ms
const int kTimerRequests = 100;
const int kPollsPerSearch = 10;   // an unchanged directory is searched every tenth poll

// Orders paths the way the group lists compare them (_mbsicmp), so that a
// lookup here finds exactly what a walk of the list would find.
struct PathLess
{
    using is_transparent = void;
    bool operator()(const std::string& a, const std::string& b) const { return (*this)(a.c_str(), b.c_str()); }
    bool operator()(const std::string& a, LPCSTR b) const { return (*this)(a.c_str(), b); }
    bool operator()(LPCSTR a, const std::string& b) const { return (*this)(a, b.c_str()); }
    bool operator()(LPCSTR a, LPCSTR b) const
    {
        return _mbsicmp(reinterpret_cast<const unsigned char*>(a), reinterpret_cast<const unsigned char*>(b)) < 0;
    }
};

// The records of one group, looked up by path in O(log n). A poll asks once
// per file found; CTreeItems::FindPath walks the list, which made a poll of
// a directory of n files cost n^2/2 comparisons (seconds at 10,000 files,
// every 500 ms, inside the user's IDE session). The index lives only for
// one FillGroup, so it can never disagree with the list.
class GroupIndex
{
public:
    explicit GroupIndex(const CTreeItems& group) : m_found(group.size(), false)
    {
        m_paths.reserve(group.size());
        for (const CTreeItem* pItem : group)
            m_paths.push_back(pItem->GetPath());
        m_order.reserve(group.size());
        for (size_t i = 0; i < m_paths.size(); ++i)
            m_order.push_back(i);
        // Stable: of records with equal paths the first in list order comes
        // first, as FindPath would find it.
        std::stable_sort(m_order.begin(), m_order.end(),
                         [this](size_t a, size_t b) { return PathLess()(static_cast<LPCSTR>(m_paths[a]), static_cast<LPCSTR>(m_paths[b])); });
    }

    // Marks the record of lpszPath as found; FALSE when the group has none.
    bool MarkFound(LPCSTR lpszPath)
    {
        auto it = std::lower_bound(m_order.begin(), m_order.end(), lpszPath,
                                   [this](size_t i, LPCSTR psz) { return PathLess()(static_cast<LPCSTR>(m_paths[i]), psz); });
        if (it != m_order.end() && !PathLess()(lpszPath, static_cast<LPCSTR>(m_paths[*it])))
        {
            m_found[*it] = true;
            return true;
        }
        return m_added.count(lpszPath) != 0;
    }

    // A record made for lpszPath during this fill: a second pattern that
    // finds the same file must not make another.
    void AddNew(LPCSTR lpszPath) { m_added.insert(lpszPath); }

    bool WasFound(size_t i) const { return m_found[i]; }

private:
    std::vector<CString> m_paths;   // GetPath of each record, in list order
    std::vector<size_t> m_order;    // indexes into m_paths, sorted by path
    std::vector<bool> m_found;      // by list index
    std::set<std::string, PathLess> m_added; // paths of records made during this fill
};
} // namespace

BEGIN_MESSAGE_MAP(CProjectDlg, CDockPage)
    ON_WM_SIZE()
    ON_WM_TIMER()
    ON_WM_DESTROY()
    ON_WM_CONTEXTMENU()
    ON_NOTIFY(NM_DBLCLK, IDC_PROJECT_TREE, OnDblClkTree)
    ON_NOTIFY(NM_RCLICK, IDC_PROJECT_TREE, OnRClickTree)
    ON_COMMAND_RANGE(ID_NODE_FIRST, ID_NODE_LAST, OnNodeCommand)
    ON_UPDATE_COMMAND_UI_RANGE(ID_NODE_FIRST, ID_NODE_LAST, OnUpdateNodeCommand)
    ON_COMMAND_RANGE(ID_TOOL_FIRST, ID_TOOL_LAST, OnNodeCommand)
    ON_UPDATE_COMMAND_UI_RANGE(ID_TOOL_FIRST, ID_TOOL_LAST, OnUpdateNodeCommand)
END_MESSAGE_MAP()

CProjectDlg::CProjectDlg(CWnd* pParentWnd, HWND hWndHost) : CDockPage(IDD_PROJECT, pParentWnd, hWndHost)
{
}

CProjectDlg::~CProjectDlg()
{
    // The lists delete the records; the tree window is gone already, so
    // their nodes are not touched (m_bDeleteTreeItems stays FALSE).
}

void CProjectDlg::OnInitPage()
{
    m_tree.SetImageList(&m_images, TVSIL_NORMAL);

    m_groups.Add(new CProjectTreeItem(m_hWndHost, &m_tree, &m_strProject));
    m_cursorProject = m_tree.GetRootCursor();

    CTreeItem* pItem = new CSourceFilesTreeItem(m_hWndHost, m_cursorProject, &m_strProject);
    m_groups.Add(pItem);
    m_cursorSourceFiles = pItem->m_cursor;
    pItem = new CHeaderFilesTreeItem(m_hWndHost, m_cursorProject, &m_strProject);
    m_groups.Add(pItem);
    m_cursorHeaderFiles = pItem->m_cursor;
    pItem = new CWindowsTreeItem(m_hWndHost, m_cursorProject);
    m_groups.Add(pItem);
    m_cursorWindows = pItem->m_cursor;

    for (const HostView& view : g_hostViews)
        m_windows.Add(new CWindowTreeItem(m_hWndHost, m_cursorWindows, view));
    m_windows.Add(new CWatchTreeItem(m_hWndHost, m_cursorWindows));

    m_cursorProject.Expand(TVE_EXPAND);
    m_cursorSourceFiles.Expand(TVE_EXPAND);
    m_cursorHeaderFiles.Expand(TVE_EXPAND);
    m_cursorWindows.Expand(TVE_EXPAND);

    // Without the timer the page still follows title changes; asking again
    // covers a momentary shortage of timers.
    m_nTimer = 0;
    for (int i = 0; i < kTimerRequests && m_nTimer == 0; ++i)
        m_nTimer = SetTimer(kRefreshTimer, kRefreshPeriod);
}

void CProjectDlg::DoDataExchange(CDataExchange* pDX)
{
    // The tree first: the base's first exchange builds it (OnInitPage).
    DDX_Control(pDX, IDC_PROJECT_TREE, m_tree);
    CDockPage::DoDataExchange(pDX);
    if (pDX->m_bSaveAndValidate)
        return;

    const CString strPath = GetProjectPathOfFrame(m_hWndHost);
    if (m_strProject.CompareNoCase(strPath) != 0)
    {
        m_strProject = strPath;
        CString strLabel;
        if (m_strProject.IsEmpty())
            strLabel.LoadString(IDS_EMPTY);
        else
        {
            char szDrive[_MAX_DRIVE], szDir[_MAX_DIR], szName[_MAX_FNAME], szExt[_MAX_EXT];
            _splitpath(m_strProject, szDrive, szDir, szName, szExt);
            strLabel = szName;
        }
        m_cursorProject.SetText(strLabel);
        m_tree.Invalidate(TRUE);
    }

    // Read at each exchange: whoever changes the patterns sees the change
    // at the next poll.
    CApp* pApp = GetApp();
    FillGroup(m_sourceFiles, m_cursorSourceFiles, pApp->m_strSource, CImages::kSource);
    FillGroup(m_headerFiles, m_cursorHeaderFiles, pApp->m_strHeader, CImages::kHeader);
}

void CProjectDlg::FillGroup(CTreeItems& group, CTreeCursor cursorGroup, LPCSTR lpszPatterns, int nImage)
{
    // What the list looks like by the end is what a walk with FindPath and
    // RemovePath over a copy of the list would leave: records of files
    // found stay where they are, records of new files are appended in the
    // order found, records of files not found go with their nodes.
    GroupIndex index(group);
    const size_t nOld = group.size();
    bool bAdded = false;

    const CString strDirectory = m_strProject.IsEmpty() ? CString() : GetDirectoryOfPath(m_strProject);
    if (!strDirectory.IsEmpty())
    {
        for (const std::string& pattern : TextWords::PatternList(lpszPatterns, IsAnsiLeadByte))
        {
            const CString strPattern(pattern.c_str());
            CFileFind finder;
            BOOL bMore = finder.FindFile(strDirectory + strPattern);
            while (bMore)
            {
                bMore = finder.FindNextFile();
                // Files whose archive attribute is cleared are not the
                // project's; directories carry no archive attribute either.
                if (!finder.MatchesMask(FILE_ATTRIBUTE_ARCHIVE))
                    continue;
                const CString strPath = finder.GetFilePath();
                if (index.MarkFound(strPath))
                    continue;
                group.Add(new CFileTreeItem(m_hWndHost, cursorGroup, strPath, nImage));
                index.AddNew(strPath);
                bAdded = true;
            }
        }
    }

    // Records whose files were not found leave the list, in list order, and
    // go with their nodes once the group is sorted.
    CTreeItems vanished;
    vanished.m_bDeleteTreeItems = TRUE;
    size_t nKept = 0;
    for (size_t i = 0; i < group.size(); ++i)
    {
        if (i < nOld && !index.WasFound(i))
            vanished.Add(group[i]);
        else
            group[nKept++] = group[i];
    }
    group.resize(nKept);

    // Only new nodes (appended last) can be out of order: removals keep the
    // order and no node's text ever changes. Sorting 10,000 sorted children
    // costs about as much as the whole search, twice a second, so a poll
    // that found nothing new does not sort.
    if (bAdded)
        cursorGroup.SortChildren();

    // The groups are unfolded when the tree is built, but a node without
    // children does not unfold, and the files come only later: a group is
    // unfolded when it gets its first files, unless the user has unfolded
    // (and maybe folded) it already.
    if (bAdded && nOld == 0 &&
        !(TreeView_GetItemState(m_tree.m_hWnd, cursorGroup.GetHandle(), TVIS_EXPANDEDONCE) & TVIS_EXPANDEDONCE))
        cursorGroup.Expand(TVE_EXPAND);
}

CTreeItem* CProjectDlg::GetSelectedItem() const
{
    const CTreeCursor cursor = m_tree.GetSelectedCursor();
    if (!cursor.GetHandle())
        return nullptr;
    return reinterpret_cast<CTreeItem*>(cursor.GetData());
}

void CProjectDlg::OnSize(UINT nType, int cx, int cy)
{
    if (m_tree.m_hWnd)
        m_tree.MoveWindow(0, 0, cx, cy - 2, TRUE);
    CDockPage::OnSize(nType, cx, cy);
}

void CProjectDlg::OnTimer(UINT_PTR nIDEvent)
{
    // Without a project the page waits for the host frame's title to change.
    if (nIDEvent == m_nTimer && !m_strProject.IsEmpty() && !IsDirectoryUnchanged())
        UpdateData(FALSE);
    CDockPage::OnTimer(nIDEvent);
}

BOOL CProjectDlg::IsDirectoryUnchanged()
{
    // Searching the directory once per pattern twice a second costs about
    // 2% of a core under Wine for 1,000 files, all day long, while the list
    // can only change when a file is created, deleted or renamed, which
    // changes the directory's last-write time (a read of 8 us). So a poll
    // that finds the time unchanged is skipped. Every tenth poll searches
    // all the same: a file whose archive attribute alone changed, and file
    // systems that keep no directory times (FAT), are then seen within five
    // seconds instead of half a second.
    const CString strDirectory = GetDirectoryOfPath(m_strProject);
    WIN32_FILE_ATTRIBUTE_DATA data;
    CString strQuery = strDirectory;
    if (strQuery.GetLength() > 3 && strQuery.GetAt(strQuery.GetLength() - 1) == '\\')
        strQuery = strQuery.Left(strQuery.GetLength() - 1);
    if (strDirectory.IsEmpty() || !GetFileAttributesExA(strQuery, GetFileExInfoStandard, &data))
    {
        m_strPolledDirectory.Empty();
        return FALSE;
    }
    if (m_nSkippedPolls < kPollsPerSearch - 1 && m_strPolledDirectory == strDirectory &&
        CompareFileTime(&m_ftPolledDirectory, &data.ftLastWriteTime) == 0)
    {
        ++m_nSkippedPolls;
        return TRUE;
    }
    m_strPolledDirectory = strDirectory;
    m_ftPolledDirectory = data.ftLastWriteTime;
    m_nSkippedPolls = 0;
    return FALSE;
}

void CProjectDlg::OnDestroy()
{
    // Whatever page it names: a page that is going cannot take commands.
    g_pCommandPage = nullptr;
    CDockPage::OnDestroy();
}

void CProjectDlg::OnContextMenu(CWnd* /*pWnd*/, CPoint point)
{
    CTreeItem* pItem = GetSelectedItem();
    if (!pItem)
        return;

    CMenu menu;
    if (!menu.LoadMenu(IDR_CONTEXTMENU))
        return;
    // The popups are titled with the run-time class names of the node kinds.
    const LPCSTR lpszClassName = pItem->GetRuntimeClass()->m_lpszClassName;
    HMENU hPopup = nullptr;
    const int nCount = menu.GetMenuItemCount();
    for (int i = 0; i < nCount; ++i)
    {
        CString strTitle;
        menu.GetMenuString(static_cast<UINT>(i), strTitle, MF_BYPOSITION);
        if (_mbscmp(reinterpret_cast<const unsigned char*>(static_cast<LPCSTR>(strTitle)),
                    reinterpret_cast<const unsigned char*>(lpszClassName)) == 0)
        {
            hPopup = menu.GetSubMenu(i);
            break;
        }
    }
    if (!hPopup)
        return;
    pItem->ExtendContextMenu(hPopup);

    if (point.x == -1 && point.y == -1)
    {
        // Asked for from the keyboard: near the page's top-left corner.
        CRect rect;
        GetClientRect(&rect);
        ClientToScreen(&rect);
        point = CPoint(rect.left + 5, rect.top + 5);
    }

    // The main frame owns the menu: its command routing brings the update
    // requests and the chosen command back to this page.
    g_pCommandPage = this;
    CWinApp* pApp = AfxGetApp();
    HWND hWndOwner = pApp && pApp->m_pMainWnd ? pApp->m_pMainWnd->m_hWnd : m_hWnd;
    ::TrackPopupMenu(hPopup, TPM_LEFTALIGN | TPM_RIGHTBUTTON, point.x, point.y, 0, hWndOwner, nullptr);
}

void CProjectDlg::OnRClickTree(NMHDR* /*pNMHDR*/, LRESULT* pResult)
{
    POINT pt;
    ::GetCursorPos(&pt);
    m_tree.ScreenToClient(&pt);
    CTreeCursor cursor = m_tree.HitTestCursor(pt);
    if (cursor.GetHandle())
        cursor.Select();
    // 0: the tree goes on to raise WM_CONTEXTMENU, which comes here.
    *pResult = 0;
}

void CProjectDlg::OnDblClkTree(NMHDR* /*pNMHDR*/, LRESULT* pResult)
{
    if (CTreeItem* pItem = GetSelectedItem())
        pItem->Open();
    // 0: the tree still expands or collapses a node with children.
    *pResult = 0;
}

BOOL CProjectDlg::OnReturnKey()
{
    if (CTreeItem* pItem = GetSelectedItem())
        pItem->OnReturn();
    return TRUE; // Enter never reaches the dialog manager
}

// The commands every kind's menu ends with are the page's; the rest are the
// selected node's.
void CProjectDlg::OnNodeCommand(UINT nID)
{
    CTreeItem* pItem = GetSelectedItem();
    if (pItem && !PostEveryNodeCommand(pItem->m_hWndHost, nID))
        pItem->OnCommand(nID);
}

void CProjectDlg::OnUpdateNodeCommand(CCmdUI* pCmdUI)
{
    CTreeItem* pItem = GetSelectedItem();
    if (!pItem)
        return;
    if (IsEveryNodeCommand(pCmdUI->m_nID))
        pCmdUI->Enable(TRUE);
    else
        pItem->OnUpdateCommand(pCmdUI);
}

void CProjectDlg::OnHostMessage(const HookRecord* pRecord)
{
    if (!pRecord || pRecord->nMessage != WM_ACTIVATEAPP)
        return;
    // Read at each record: the setting may be changed while the page lives.
    if (!GetApp()->m_bReloadFileAutomatically)
        return;

    // Both groups hold file records only.
    CTreeItems* const groups[] = {&m_sourceFiles, &m_headerFiles};
    if (pRecord->wParam == 0)
    {
        // The host goes to the background: what the files look like now is
        // what the host has loaded.
        for (CTreeItems* pGroup : groups)
            for (CTreeItem* pItem : *pGroup)
                static_cast<CFileTreeItem*>(pItem)->UpdateTime();
        return;
    }

    bool bChanged = false;
    for (CTreeItems* pGroup : groups)
    {
        for (CTreeItem* pItem : *pGroup)
        {
            if (static_cast<CFileTreeItem*>(pItem)->IsChanged())
            {
                bChanged = true;
                break;
            }
        }
        if (bChanged)
            break;
    }
    if (!bChanged)
        return;
    // A reload sends the host requests, and the host's records come in
    // meanwhile: one may take the Assist Window, and this page with it,
    // away. Nothing of the page is touched once its window is gone.
    const HWND hWndPage = m_hWnd;
    for (CTreeItems* pGroup : groups)
    {
        for (size_t i = 0; i < pGroup->size(); ++i)
        {
            static_cast<CFileTreeItem*>((*pGroup)[i])->Reload();
            if (!::IsWindow(hWndPage) || CWnd::FromHandlePermanent(hWndPage) != this)
                return;
        }
    }
}
