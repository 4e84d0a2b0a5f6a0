#include "HostOptions.h"

#include "HostVariant.h"

#include <windows.h>

#include <stdio.h>

namespace hostide
{
namespace
{
std::string FullPath(const std::string& strPath)
{
    char szFull[MAX_PATH] = {};
    const DWORD dwLength = GetFullPathNameA(strPath.c_str(), MAX_PATH, szFull, nullptr);
    return dwLength > 0 && dwLength < MAX_PATH ? std::string(szFull) : strPath;
}
} // namespace

HostOptions HostOptions::Parse(int argc, char** argv)
{
    HostOptions options;
    for (int i = 1; i + 1 < argc; ++i) // every switch takes a value
    {
        const std::string strSwitch = argv[i];
        const std::string strValue = argv[i + 1];
        if (_stricmp(strSwitch.c_str(), "/log") == 0)
            options.strLog = FullPath(strValue);
        else if (_stricmp(strSwitch.c_str(), "/project") == 0)
            options.strProject = strValue;
        else if (_stricmp(strSwitch.c_str(), "/nextproject") == 0)
            options.strNextProject = strValue;
        else if (_stricmp(strSwitch.c_str(), "/variant") == 0)
            HostVariant::Current().Apply(strValue);
        else if (_stricmp(strSwitch.c_str(), "/open") == 0)
            options.windows.push_back({false, FullPath(strValue)});
        else if (_stricmp(strSwitch.c_str(), "/view") == 0)
            options.windows.push_back({true, strValue});
        else if (_stricmp(strSwitch.c_str(), "/size") == 0)
            sscanf(strValue.c_str(), "%dx%d", &options.cx, &options.cy);
        else if (_stricmp(strSwitch.c_str(), "/pos") == 0)
            sscanf(strValue.c_str(), "%d,%d", &options.x, &options.y);
        else
            continue; // not a switch: look at the next word
        ++i;
    }
    return options;
}
} // namespace hostide
