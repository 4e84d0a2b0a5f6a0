#include "HostCommand.h"

#include "HostIde.h"
#include "QuorvantHook.h"
#include "resource.h"

namespace
{
const HostCommand kEveryNodeCommands[] = {
    {ID_NODE_HIDEASSISTWINDOW, ID_VIEW_ASSISTWINDOW, FALSE},
    {ID_NODE_CLOSEALLWINDOWS, HostIde::kCmdCloseAll, FALSE},
};
const int kEveryNodeCount = static_cast<int>(sizeof(kEveryNodeCommands) / sizeof(kEveryNodeCommands[0]));
} // namespace

const HostCommand* FindHostCommand(const HostCommand* pTable, int nCount, UINT nID)
{
    for (int i = 0; i < nCount; ++i)
    {
        if (pTable[i].nID == nID)
            return &pTable[i];
    }
    return nullptr;
}

void PostHostCommand(HWND hWndHost, UINT nHostCommand)
{
    // A command of our own popup is chosen there, inside the host: the host
    // may have a command of its own with the same number.
    if (nHostCommand >= kFirstPopupCommand && nHostCommand <= kLastPopupCommand)
        RequestHostChoose(hWndHost, nHostCommand);
    else
        PostMessageA(hWndHost, WM_COMMAND, nHostCommand, 0);
}

BOOL PostEveryNodeCommand(HWND hWndHost, UINT nID)
{
    const HostCommand* pCommand = FindHostCommand(kEveryNodeCommands, kEveryNodeCount, nID);
    if (pCommand)
        PostHostCommand(hWndHost, pCommand->nHostCommand);
    return pCommand != nullptr;
}

BOOL IsEveryNodeCommand(UINT nID)
{
    return FindHostCommand(kEveryNodeCommands, kEveryNodeCount, nID) != nullptr;
}
