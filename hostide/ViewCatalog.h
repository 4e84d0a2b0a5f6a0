// The host's view windows: which command opens which view, the view's title
// and the text it shows.
#pragma once

#include <windows.h>

#include <string>

namespace hostide
{
class ViewCatalog
{
public:
    static const UINT kBuildResults = 0; // the one view without a command
    static const UINT kWatchNew = 1129;
    static const UINT kWatchOpen = 1130;

    struct Entry
    {
        UINT nCommand;
        const char* pszMenuText;
        const char* pszTitle; // a file name extension for views that show a file
    };
    // The views in the order of the View menu, "Build Results" last.
    static const Entry* Entries(int& nCount);

    static bool IsView(UINT nCommand);
    // The window title of a view; views showing a file are named after the
    // project file (its directory and name, their own extension).
    static std::string Title(UINT nCommand, const std::string& strProject);
    // What the view shows when it opens.
    static std::string Content(UINT nCommand, const std::string& strProject, const std::string& strTitle);
    static std::string WatchContent();
};
} // namespace hostide
