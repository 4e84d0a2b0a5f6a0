#include "KindTestKit.h"

#include "QuorvantHook.h"

#include <algorithm>

namespace kinds
{
namespace
{
std::string Expand(const std::string& strText, const std::string& strDir)
{
    std::string strResult = strText;
    for (size_t nAt; (nAt = strResult.find("{dir}")) != std::string::npos;)
        strResult.replace(nAt, 5, strDir);
    return strResult;
}

bool IsHostEffect(const std::string& strLine)
{
    static const char* const kPrefixes[] = {"COMMAND ", "DROP ", "OPEN ", "CLOSE ", "ACTIVATE ", "VIEW ",
                                            "LBUTTON", "BUILD ", "SAVE ", "PROJECT "};
    for (const char* pszPrefix : kPrefixes)
    {
        if (strLine.compare(0, strlen(pszPrefix), pszPrefix) == 0)
            return true;
    }
    return false;
}
} // namespace

Bench::Bench(const char* pszTag, const std::vector<std::pair<std::string, std::string>>& files,
             const std::string& strHostArguments)
    : m_strDir(qt::MakeScratchDir(pszTag)), host(m_strDir)
{
    for (const auto& file : files)
        qt::WriteTextFile(m_strDir + file.first, file.second);
    ok = host.Start(Expand(strHostArguments, m_strDir));
    // The nodes' requests carry the key of this process's install: the host
    // carries out no one else's.
    m_hWndSink = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    ok = ok && m_hWndSink && installHook(m_hWndSink);
    m_hWndFrame = host.Frame();
    const RECT rc = {0, 0, 300, 400};
    ok = tree.Create(WS_POPUP | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT, rc, nullptr, 0) && ok &&
         m_hWndFrame != nullptr;
    host.WaitQuiet();
}

Bench::~Bench()
{
    if (m_hWndSink)
    {
        uninstallHook();
        DestroyWindow(m_hWndSink);
    }
}

HWND Bench::Client() const
{
    return FindWindowExA(m_hWndFrame, nullptr, "MDIClient", nullptr);
}

CTreeCursor Bench::Root() const
{
    return CTreeCursor(TVI_ROOT, const_cast<CTreeCtrlEx*>(&tree));
}

std::vector<HWND> Bench::Children() const
{
    std::vector<HWND> children;
    for (HWND hWnd = GetWindow(Client(), GW_CHILD); hWnd; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
    {
        if (!GetWindow(hWnd, GW_OWNER))
            children.push_back(hWnd);
    }
    return children;
}

HWND Bench::ChildTitled(const std::string& strTitle) const
{
    for (HWND hWnd : Children())
    {
        char szTitle[1024] = {};
        GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
        if (strTitle == szTitle)
            return hWnd;
    }
    return nullptr;
}

std::vector<std::string> Bench::UntilMarker()
{
    PostMessageA(m_hWndFrame, WM_COMMAND, kMarker, 0);
    const std::string strMarker = "COMMAND " + std::to_string(kMarker);
    host.WaitLog(strMarker, 5000);
    std::vector<std::string> lines;
    for (const std::string& strLine : host.Log())
    {
        if (strLine == strMarker)
            break;
        if (IsHostEffect(strLine))
            lines.push_back(strLine);
    }
    return lines;
}

int EnableState(CTreeItem& item, UINT nID)
{
    CCmdUI ui;
    ui.m_nID = nID;
    item.OnUpdateCommand(&ui);
    if (!ui.m_bEnableChanged)
        return -1;
    return ui.m_bEnabled ? 1 : 0;
}

std::string NodeText(const CTreeCursor& cursor)
{
    return std::string(cursor.GetTreeCtrl()->GetItemText(cursor.GetHandle()));
}

void NodeImages(const CTreeCursor& cursor, int& nImage, int& nSelectedImage)
{
    nImage = nSelectedImage = -2;
    cursor.GetTreeCtrl()->GetItemImage(cursor.GetHandle(), nImage, nSelectedImage);
}

std::string Join(const std::vector<std::string>& lines)
{
    std::string strText;
    for (const std::string& strLine : lines)
        strText += (strText.empty() ? "" : " | ") + strLine;
    return strText;
}

namespace
{
std::vector<std::string> Filter(const std::vector<std::string>& lines, const std::string& strPrefix, bool bKeep)
{
    std::vector<std::string> result;
    for (const std::string& strLine : lines)
    {
        if ((strLine.compare(0, strPrefix.size(), strPrefix) == 0) == bKeep)
            result.push_back(strLine);
    }
    return result;
}
} // namespace

std::vector<std::string> Only(const std::vector<std::string>& lines, const std::string& strPrefix)
{
    return Filter(lines, strPrefix, true);
}

std::vector<std::string> Without(const std::vector<std::string>& lines, const std::string& strPrefix)
{
    return Filter(lines, strPrefix, false);
}

int IndexOf(const std::vector<std::string>& lines, const std::string& strLine)
{
    const auto it = std::find(lines.begin(), lines.end(), strLine);
    return it == lines.end() ? -1 : static_cast<int>(it - lines.begin());
}

} // namespace kinds
