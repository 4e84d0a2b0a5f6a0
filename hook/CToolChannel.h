// The way records go from a host to the tool: WM_COPYDATA sent with a bound,
// and what the library concludes when the tool does not answer in time.
#pragma once

#include <windows.h>

#include "QuorvantHook.h"

enum SendResult
{
    SEND_DELIVERED, // answered, or the host itself was busy for the tool for most of the wait
    SEND_HUNG,      // no answer and no sign of life: the tool counts as unresponsive from now on
    SEND_NO_TOOL    // the tool's window is gone
};

class CToolChannel
{
public:
    // A user waits for the host while a record is handled: 400 ms is where a
    // pause turns from sluggish into frozen.
    static const UINT kRecordTimeoutMs = 400;

    void Open(HWND hWndTool);
    void Close();
    HWND Tool() const { return m_hWndTool; }
    bool IsResponsive() const { return !m_bUnresponsive; }
    bool IsProbePending() const { return m_bProbePending; }

    SendResult Send(UINT nCode, const HookRecord& record, HWND hWndAbout);

    // While a record is on its way, the host still handles what other
    // threads send it: the tool working for the host (WM_VSCROLL, the save
    // command, moves), but also other programs, which ask whether the host
    // is alive with WM_NULL. A message other than that is a sign of the tool
    // at work, and the host's own time spent on sent messages never counts
    // against the tool. So a tool that has the host save for two seconds is
    // not hung, and a stopped tool stays hung however often another program
    // pings the host meanwhile.
    bool IsWaiting() const { return m_nSendDepth != 0; }
    void NoteIncoming(UINT uMsg, DWORD dwHostMs)
    {
        m_dwHostMs += dwHostMs;
        if (uMsg != WM_NULL)
            ++m_nSignsOfLife;
    }

    // Asks the tool, without waiting, to answer WM_NULL; pfnAnswered runs on
    // this thread (inside its message retrieval) once the tool has answered.
    bool StartProbe(SENDASYNCPROC pfnAnswered, ULONG_PTR dwData);
    void ProbeAnswered();

private:
    HWND m_hWndTool = nullptr;
    bool m_bUnresponsive = false;
    bool m_bProbePending = false;
    unsigned m_nSendDepth = 0;    // records on their way (they nest when the tool sends us messages meanwhile)
    DWORD m_dwHostMs = 0;         // time the host spent on sent messages while records waited
    unsigned m_nSignsOfLife = 0;  // messages other than WM_NULL sent to the host meanwhile
};
