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

    // Records go to hWndTool from now on, each with the key.
    void Open(HWND hWndTool, const uint32_t key[2]);
    void Close();
    HWND Tool() const { return m_hWndTool; }
    const uint32_t* Key() const { return m_key; }
    bool IsResponsive() const { return !m_bUnresponsive; }
    bool IsProbePending() const { return m_bProbePending; }

    SendResult Send(UINT nCode, const HookRecord& record, HWND hWndAbout);
    // What an unanswered send means: the error SendMessageTimeout left, how
    // long it waited, how much of that the host spent on messages sent to
    // it, and whether the tool made requests meanwhile.
    SendResult Classify(DWORD dwError, DWORD dwWaited, DWORD dwHostMs, bool bToolActed);

    // While a record is on its way, the host still handles what other
    // threads send it: the tool working for the host (the save command,
    // moves, its requests), but also other programs. The host's own time
    // spent on sent messages never counts against the tool, so a tool that
    // has the host save for two seconds is not hung. Only a request with the
    // tool's key is a sure sign of the tool at work (bFromTool): anything
    // else may come from any program, and a stopped tool stays hung however
    // busy others keep the host meanwhile.
    bool IsWaiting() const { return m_nSendDepth != 0; }
    void NoteIncoming(bool bFromTool, DWORD dwHostMs)
    {
        m_dwHostMs += dwHostMs;
        if (bFromTool)
            ++m_nSignsOfLife;
    }

    // Asks the tool, without waiting, to answer WM_NULL; pfnAnswered runs on
    // this thread (inside its message retrieval) once the tool has answered.
    bool StartProbe(SENDASYNCPROC pfnAnswered, ULONG_PTR dwData);
    void ProbeAnswered();

private:
    HWND m_hWndTool = nullptr;
    uint32_t m_key[2] = {};
    bool m_bUnresponsive = false;
    bool m_bProbePending = false;
    unsigned m_nSendDepth = 0;    // records on their way (they nest when the tool sends us messages meanwhile)
    DWORD m_dwHostMs = 0;         // time the host spent on sent messages while records waited
    unsigned m_nSignsOfLife = 0;  // requests of the tool carried out meanwhile
};
