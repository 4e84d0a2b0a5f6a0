// The records of one host to the tool that entered it: the creation, the
// messages and the destruction of each watched window, sent through the tool
// channel with a bound. While the tool does not answer, creations and
// destructions wait in the watch table and message records are dropped; a
// probe tells when the tool answers again, and what is owed is caught up.
//
// Every send lets the tool's requests into the host meanwhile, and those may
// end the session that this reporter reports for: after each send it asks
// its owner whether it may go on.
#pragma once

#include <windows.h>

#include "CToolChannel.h"
#include "CWatchTable.h"

class CRecordReporter
{
public:
    // What the reporter needs of the session it reports for.
    class Owner
    {
    public:
        // Entered and not leaving: records may go.
        virtual bool IsReporting() const = 0;
        // The tool's window is gone: the session ends without records.
        virtual void OnToolGone() = 0;

    protected:
        ~Owner() = default;
    };

    // One per process: the probe's callback finds it.
    CRecordReporter(CWatchTable& table, Owner& owner);
    CRecordReporter(const CRecordReporter&) = delete;
    CRecordReporter& operator=(const CRecordReporter&) = delete;

    CToolChannel& Channel() { return m_channel; }
    const CToolChannel& Channel() const { return m_channel; }
    // A new session: records go to hWndTool with the key; a probe answered
    // for an earlier session is ignored.
    void Open(HWND hWndTool, const uint32_t key[2]);
    void Close() { m_channel.Close(); }

    // A watched window's creation, once (its entry says whether it was told).
    void ReportCreate(HWND hWnd);
    // A message of a window the tool has an item for.
    void ReportMessage(UINT nCode, HWND hWnd, UINT uMsg, WPARAM wParam, UINT nFlags);
    // A window whose entry was just marked gone: its destroy, now or later.
    void ReportGone(HWND hWnd);
    // Leaving: every window the tool may know of is forgotten, and told gone
    // while bReport holds and the tool takes the records (the first it does
    // not take ends the telling).
    void ReportAllLeft(bool bReport);

private:
    bool ReportLeft(HWND hWnd);
    // What an answer means for the session: a silent tool is probed, a gone
    // one ends the session. True when the record was delivered.
    bool Delivered(SendResult result);
    void OnToolSilent();
    void CatchUp();
    void OnProbeAnswered(ULONG_PTR dwData);
    static VOID CALLBACK ProbeProc(HWND hWnd, UINT uMsg, ULONG_PTR dwData, LRESULT lResult);

    static CRecordReporter* s_pInstance;
    CWatchTable& m_table;
    Owner& m_owner;
    CToolChannel m_channel;
    LONG m_nSession = 0; // counts the sessions
};
