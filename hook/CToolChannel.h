// The way records go from a host to the tool: WM_COPYDATA sent with a bound,
// and what the library concludes when the tool does not answer in time.
#pragma once

#include <windows.h>

#include "QuorvantHook.h"

enum SendResult
{
    SEND_DELIVERED, // answered, or the tool was visibly working for the host when the bound ran out
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

    // Called for every message a watched window receives. While a record is
    // on its way, a message sent by another thread is taken as the tool
    // working for the host (sending it WM_VSCROLL, the save command, moves),
    // which is not a hang however long it lasts.
    void NoteIncoming()
    {
        if (m_nSendDepth && InSendMessage())
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
    unsigned m_nSignsOfLife = 0;
};
