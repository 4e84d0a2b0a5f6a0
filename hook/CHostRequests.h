// The tool's requests to a host frame, carried out on the host's thread: drop
// a file on the frame, append its popup to the frame's menu bar and take it
// away again, check an item of that popup. They arrive as WM_COPYDATA with a
// HostRequestCode in dwData (see QuorvantHook.h); the host's own procedure
// never sees them.
//
// Every request is checked to the byte before anything is done, starting
// with the key of the tool this host serves; a request that fails a check
// (RequestRules) is answered 0 and changes nothing in the host.
#pragma once

#include <windows.h>

#include "HookWire.h"

class CHostRequests
{
public:
    static bool IsRequest(const COPYDATASTRUCT* pData);
    static bool HasKey(const COPYDATASTRUCT* pData, const uint32_t key[2]);

    // Carries out a request sent to hWndFrame by the tool of this key;
    // nonzero when it was done.
    LRESULT Carry(HWND hWndFrame, const COPYDATASTRUCT* pData, const uint32_t key[2]);

    bool HasPopup(HWND hWndFrame) const { return FindSlot(hWndFrame) != nullptr; }
    // The tool's command behind a command id of the host frame, when the id
    // is one of the tool's popup; 0 for the host's own commands.
    UINT ToolCommand(HWND hWndFrame, UINT nHostCommand) const;
    // The library leaves the host: a popup whose commands would now go to
    // no tool is taken out of every menu bar.
    void RemoveAllPopups();
    // The frame is being destroyed: its menu bar, and the popup in it, go
    // with it.
    void ForgetFrame(HWND hWndFrame);

private:
    struct Appended
    {
        HWND hWndFrame;           // NULL: free slot
        HMENU hPopup;             // made in this process, in the frame's menu bar
        UINT nFirstHostCommand;   // the host ids of the popup's commands start here
        uint32_t toolCommands[kMaxPopupItems]; // by host id offset; 0: none
    };
    static const unsigned kMaxFrames = 16;

    bool DropFile(HWND hWndFrame, const void* pBody, size_t cbBody);
    bool AppendPopup(HWND hWndFrame, const void* pBody, size_t cbBody);
    bool RemovePopup(HWND hWndFrame);
    bool CheckMenuItem(HWND hWndFrame, const void* pBody, size_t cbBody);
    bool Choose(HWND hWndFrame, const void* pBody, size_t cbBody);
    // The host id of a command of the tool's popup, or 0.
    UINT HostCommand(HWND hWndFrame, uint32_t nToolCommand) const;

    Appended* FindSlot(HWND hWndFrame);
    const Appended* FindSlot(HWND hWndFrame) const;

    Appended m_appended[kMaxFrames] = {};
};
