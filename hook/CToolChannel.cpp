#include "CToolChannel.h"

void CToolChannel::Open(HWND hWndTool)
{
    m_hWndTool = hWndTool;
    m_bUnresponsive = false;
    m_bProbePending = false;
}

void CToolChannel::Close()
{
    m_hWndTool = nullptr;
    m_bUnresponsive = false;
    m_bProbePending = false;
}

SendResult CToolChannel::Send(UINT nCode, const HookRecord& record, HWND hWndAbout)
{
    if (!m_hWndTool)
        return SEND_NO_TOOL;
    COPYDATASTRUCT data;
    data.dwData = nCode;
    data.cbData = sizeof(HookRecord);
    data.lpData = const_cast<HookRecord*>(&record);
    const DWORD dwHostBefore = m_dwHostMs;
    const unsigned nSignsBefore = m_nSignsOfLife;
    const DWORD dwStart = GetTickCount();
    ++m_nSendDepth;
    DWORD_PTR dwResult = 0;
    // SMTO_NORMAL, not SMTO_BLOCK: while we wait, the host must go on handling
    // what the tool sends it on behalf of this very record (the save command,
    // WM_VSCROLL, moves of the MDI client).
    const LRESULT lSent = SendMessageTimeoutA(m_hWndTool, WM_COPYDATA, reinterpret_cast<WPARAM>(hWndAbout),
                                              reinterpret_cast<LPARAM>(&data), SMTO_NORMAL | SMTO_ABORTIFHUNG,
                                              kRecordTimeoutMs, &dwResult);
    --m_nSendDepth;
    if (lSent)
        return SEND_DELIVERED;
    if (!IsWindow(m_hWndTool))
        return SEND_NO_TOOL;
    // The tool's own share of the wait: what the host did not spend handling
    // messages sent to it meanwhile.
    const DWORD dwWaited = GetTickCount() - dwStart;
    const DWORD dwHost = m_dwHostMs - dwHostBefore;
    if (m_nSignsOfLife != nSignsBefore || dwWaited < dwHost + kRecordTimeoutMs / 2)
        return SEND_DELIVERED; // slow but working for the host: the record is in its hands
    m_bUnresponsive = true;
    return SEND_HUNG;
}

bool CToolChannel::StartProbe(SENDASYNCPROC pfnAnswered, ULONG_PTR dwData)
{
    if (!m_bProbePending && m_hWndTool)
        m_bProbePending = SendMessageCallbackA(m_hWndTool, WM_NULL, 0, 0, pfnAnswered, dwData) != FALSE;
    return m_bProbePending;
}

void CToolChannel::ProbeAnswered()
{
    m_bProbePending = false;
    m_bUnresponsive = false;
}
