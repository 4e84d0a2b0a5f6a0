// The stand-in's event log: one line per event, appended and flushed at once,
// so a test in another process can read it at any moment and may truncate it
// between two events.
#pragma once

#include <windows.h>

#include <string>

namespace hostide
{
class HostLog
{
public:
    // An empty path switches logging off.
    static void SetPath(const std::string& strPath);
    static void Write(const std::string& strLine);
    static std::string TitleOf(HWND hWnd);

private:
    static std::string s_strPath;
};
} // namespace hostide
