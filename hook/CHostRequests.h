// The tool's requests to a host frame, carried out on the host's thread: drop
// a file on the frame, append its popup to the frame's menu bar and take it
// away again, check an item of one of the host's menus. They arrive as
// WM_COPYDATA with a HostRequestCode in dwData (see QuorvantHook.h); the
// host's own procedure never sees them.
//
// Every request is checked to the byte before anything is done: a request of
// the wrong size, a text without its NUL, an empty or overlong path is
// answered 0 and changes nothing in the host.
#pragma once

#include <windows.h>

class CHostRequests
{
public:
    static bool IsRequest(const COPYDATASTRUCT* pData);

    // Carries out a request sent to hWndFrame; nonzero when it was done.
    LRESULT Carry(HWND hWndFrame, const COPYDATASTRUCT* pData);

    bool HasPopup(HWND hWndFrame) const { return FindSlot(hWndFrame) != nullptr; }
    // The library leaves the host: a popup whose commands would now go to
    // no tool is taken out of every menu bar.
    void RemoveAllPopups();
    // The frame is being destroyed: its menu bar, and the popup in it, go
    // with it.
    void ForgetFrame(HWND hWndFrame);

private:
    struct Appended
    {
        HWND hWndFrame; // NULL: free slot
        HMENU hPopup;   // made in this process, in the frame's menu bar
    };
    static const unsigned kMaxFrames = 16;

    bool DropFile(HWND hWndFrame, const COPYDATASTRUCT* pData);
    bool AppendPopup(HWND hWndFrame, const COPYDATASTRUCT* pData);
    bool RemovePopup(HWND hWndFrame);
    bool CheckMenuItem(const COPYDATASTRUCT* pData);

    Appended* FindSlot(HWND hWndFrame);
    const Appended* FindSlot(HWND hWndFrame) const;

    Appended m_appended[kMaxFrames] = {};
};
