#include "RealMouse.h"

#include "Fixture.h"

#include <stdio.h>

namespace qt
{
bool XDo(const std::string& strArguments, POINT ptEnd)
{
    std::string strCommand = "/usr/bin/xdotool " + strArguments;
    STARTUPINFOA si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi = {};
    if (!CreateProcessA(nullptr, &strCommand[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
    {
        printf("  xdotool did not start: error %lu\n", GetLastError());
        return false;
    }
    if (pi.hThread)
        CloseHandle(pi.hThread);
    if (pi.hProcess)
        CloseHandle(pi.hProcess);
    const bool bThere = WaitFor(
        [&] {
            POINT pt;
            GetCursorPos(&pt);
            return pt.x == ptEnd.x && pt.y == ptEnd.y;
        },
        5000);
    Sleep(300); // what follows the last move (a button) and its handling
    return bThere;
}

std::string MoveSteps(POINT from, POINT to)
{
    std::string str;
    for (int i = 1; i <= 6; ++i)
        str += " mousemove " + std::to_string(from.x + (to.x - from.x) * i / 6) + " " +
               std::to_string(from.y + (to.y - from.y) * i / 6) + " sleep 0.05";
    return str;
}

bool RealClick(POINT pt)
{
    const std::string strAt = std::to_string(pt.x) + " " + std::to_string(pt.y);
    return XDo("mousemove " + strAt + " sleep 0.1 mousemove " + strAt + " click 1", pt);
}
bool XKeys(const std::string& strKeys)
{
    POINT pt;
    GetCursorPos(&pt);
    // The pointer moves by one pixel at the end: the sign that all is typed.
    const POINT ptEnd = {pt.x + 1, pt.y};
    return XDo("key --delay 100 " + strKeys + " sleep 0.1 mousemove " + std::to_string(ptEnd.x) + " " +
                   std::to_string(ptEnd.y),
               ptEnd);
}
} // namespace qt
