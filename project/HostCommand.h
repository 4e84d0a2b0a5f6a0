// A row of a node kind's command table: a context-menu command, the host
// IDE command it posts to the host frame, and whether it needs an open
// project. Kinds whose commands only post an id keep such a table, so that
// OnCommand and OnUpdateCommand cannot disagree about an id.
#pragma once

#include <windows.h>

struct HostCommand
{
    UINT nID;          // the context-menu command
    UINT nHostCommand; // the WM_COMMAND id posted to the host frame
    BOOL bNeedsProject;
};

// The row of nID in a table of nCount rows, or NULL.
const HostCommand* FindHostCommand(const HostCommand* pTable, int nCount, UINT nID);

// Posts WM_COMMAND nHostCommand (lParam 0) to the host frame, or chooses it
// in our popup there when it is one of the popup's; fails silently when the
// frame is gone.
void PostHostCommand(HWND hWndHost, UINT nHostCommand);

// The commands every node kind's menu ends with, "&Hide Assist Window" and
// "Close &All Windows": posted when nID is one of them (TRUE), else nothing.
BOOL PostEveryNodeCommand(HWND hWndHost, UINT nID);
BOOL IsEveryNodeCommand(UINT nID);
