#include "HostCommand.h"

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
    PostMessageA(hWndHost, WM_COMMAND, nHostCommand, 0);
}
