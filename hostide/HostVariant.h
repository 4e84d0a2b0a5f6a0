// Where this stand-in differs from the plain one in what the host IDE
// contract leaves free, chosen with /variant a,b,... on the command line:
//   lparam   the frame lays its MDI client out from WM_SIZE's lParam, as
//            frames built on DefFrameProc do, instead of reading its size back
//   wheel    text windows, gutters and views pass an unhandled WM_MOUSEWHEEL
//            on to their parents, as DefWindowProc does
//   tallbar  a tool bar of 44 pixels instead of 28
#pragma once

#include <string>

namespace hostide
{
struct HostVariant
{
    bool bLayoutFromLParam = false;
    bool bWheelToParent = false;
    int nToolBarHeight = 28;

    // The one variant of this process, set once from the command line.
    static HostVariant& Current();
    void Apply(const std::string& strList);
};
} // namespace hostide
