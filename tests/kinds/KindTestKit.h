// What the node-kind tests share: the stand-in host in another process, the
// hook library installed by this process (which so is the tool the host
// obeys), a tree window of this process holding the nodes (as the Project
// page's would), and a reading of what reached the host between an action
// and a marker command posted after it.
#pragma once

#include "CTreeCtrlEx.h"
#include "CTreeItem.h"
#include "Fixture.h"

#include <string>
#include <vector>

namespace kinds
{
// The stand-in's private "log the menu bar" command: it changes nothing, and
// every message posted to the frame before it has been handled once its
// "COMMAND 1196" line is in the log.
const UINT kMarker = 1196;

class Bench
{
public:
    // A scratch folder with the given files (name, text), then the host
    // started with the arguments ("{dir}" stands for the folder, with its
    // backslash) and the library entered into it for this process.
    Bench(const char* pszTag, const std::vector<std::pair<std::string, std::string>>& files,
          const std::string& strHostArguments);
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    bool ok = false;
    std::string m_strDir;
    qt::Host host;
    CTreeCtrlEx tree;

    HWND Frame() const { return m_hWndFrame; }
    HWND Client() const;
    CTreeCursor Root() const;
    // The MDI children of the host in window order (icon titles left out).
    std::vector<HWND> Children() const;
    HWND ChildTitled(const std::string& strTitle) const;
    std::string Path(const char* pszName) const { return m_strDir + pszName; }

    // Clears the host's log, runs the action, posts the marker and returns
    // the lines that came before it, the tool's own traffic left out
    // (COMMAND, DROP, OPEN, CLOSE, ACTIVATE, VIEW, LBUTTON..., BUILD, SAVE).
    template <typename F> std::vector<std::string> Reaching(F fnAction)
    {
        host.ClearLog();
        fnAction();
        return UntilMarker();
    }
    std::vector<std::string> UntilMarker();

private:
    HWND m_hWndFrame = nullptr;
    HWND m_hWndSink = nullptr; // takes the library's records and ignores them
};

// The enable state an update handler gives the command: 1 enabled, 0
// disabled, -1 when it never called Enable.
int EnableState(CTreeItem& item, UINT nID);

// The node's text and images in the tree.
std::string NodeText(const CTreeCursor& cursor);
void NodeImages(const CTreeCursor& cursor, int& nImage, int& nSelectedImage);

std::string Join(const std::vector<std::string>& lines);
// The lines that start with the prefix, or all others.
std::vector<std::string> Only(const std::vector<std::string>& lines, const std::string& strPrefix);
std::vector<std::string> Without(const std::vector<std::string>& lines, const std::string& strPrefix);
int IndexOf(const std::vector<std::string>& lines, const std::string& strLine);
} // namespace kinds
