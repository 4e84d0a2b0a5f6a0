// The tool beside the stand-in host as a user meets them: a project folder,
// the Project page's tree in the Assist Window read across the processes,
// a node's context menu opened with a real right click, and what reached
// the host before a marker.
#pragma once

#include "Fixture.h"

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

namespace qt
{
// A folder of files, each with one line of text.
std::string MakeProject(const char* pszTag, const std::vector<std::string>& names);

// The lines the host logged before "COMMAND 1196" (its menu bar is logged,
// nothing changes), posted now: every message posted to the host before it
// has been handled. Menu bar, activation and registered-message lines are
// left out.
std::vector<std::string> UntilMarker(const Host& host);
std::string Joined(const std::vector<std::string>& lines); // " | " between lines

// The tree's node text, read from the tool's memory.
std::string NodeText(HWND hWndTree, HTREEITEM hItem);
std::vector<std::string> NodeChildren(HWND hWndTree, HTREEITEM hParent); // texts, NULL: the root's
// A node by its texts from the root down, "/" between: "" the root,
// "Windows/Stack"; NULL when there is none.
HTREEITEM FindNode(HWND hWndTree, const std::string& strPath);

// Polls fnState until it has given the same, non-empty, answer for dwStillMs.
bool WaitStill(const std::function<std::string()>& fnState, DWORD dwStillMs = 200, DWORD dwTimeoutMs = 10000);

// Host and tool with the tool's Assist Window and Project tree shown.
struct Scene : HostAndTool
{
    explicit Scene(const char* pszTag, const std::string& strHostArguments = "/pos 20,20 /size 900x600",
                   const std::string& strSettings = std::string());
    // Right-clicks the node (selecting it) and types the keys into the menu
    // that opens; false when no menu came or it stayed open.
    // Wine: the key of a greyed item closes the menu, choosing nothing.
    bool ChooseFromMenu(const std::string& strNode, const std::string& strKeys);
    // Real left clicks on the node (2: a double click), and Enter after one.
    bool ClickNode(const std::string& strNode, int nClicks);
    bool EnterOn(const std::string& strNode);
    // The host in front as a user brings it there: a click into its MDI client.
    bool ClickIntoHost() const;
    // The node's middle on the screen, the node scrolled into view.
    POINT NodePoint(HTREEITEM hItem) const;
    POINT ptMenu = {}; // where the last menu opened
    int nGreyed = -1;  // how many of its items were greyed
    HWND hWndFrame = nullptr;
    HWND hWndDock = nullptr;
    HWND hWndTree = nullptr;
};
} // namespace qt
