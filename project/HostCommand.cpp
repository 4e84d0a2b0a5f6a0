#include "HostCommand.h"

#include "QuorvantHook.h"

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
