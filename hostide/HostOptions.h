// The command line of the stand-in:
//   HOSTIDE.exe [/log <file>] [/project <path>] [/open <file>]... [/view <id>]...
//               [/size <w>x<h>] [/pos <x>,<y>] [/nextproject <path>]
//               [/variant lparam,wheel,tallbar]
// Windows named by /open and /view open in the order given.
#pragma once

#include <string>
#include <vector>

namespace hostide
{
struct HostOptions
{
    struct Window
    {
        bool bView;        // /view, else /open
        std::string strArgument; // the file, or the view's command id
    };

    std::string strLog;
    std::string strProject;
    std::string strNextProject; // what New and Open Project open
    std::vector<Window> windows;
    int x = 20;
    int y = 20;
    int cx = 1000;
    int cy = 720;

    // Parses the program's arguments as the C runtime split them (the
    // program's name first); unknown words are passed over.
    static HostOptions Parse(int argc, char** argv);
};
} // namespace hostide
