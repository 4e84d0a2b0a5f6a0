#include "CRecordReporter.h"

CRecordReporter* CRecordReporter::s_pInstance = nullptr;

namespace
{
uint32_t Word(HWND hWnd)
{
    return HookWindowWord(hWnd);
}
} // namespace

CRecordReporter::CRecordReporter(CWatchTable& table, Owner& owner) : m_table(table), m_owner(owner)
{
    s_pInstance = this;
}

void CRecordReporter::Open(HWND hWndTool, const uint32_t key[2])
{
    m_channel.Open(hWndTool, key);
    ++m_nSession;
}

void CRecordReporter::ReportGone(HWND hWnd)
{
    if (!m_channel.IsResponsive())
    {
        OnToolSilent();
        return;
    }
    const HookRecord record = {0, Word(hWnd), 0, 0, 0, {0, 0}};
    if (Delivered(m_channel.Send(HOOK_DESTROY, record, hWnd)))
    {
        if (WatchEntry* pGone = m_table.FindGone(hWnd))
            m_table.Remove(pGone);
    }
}

void CRecordReporter::ReportAllLeft(bool bReport)
{
    // Children before parents. The scan restarts after each send: the tool
    // may make the host destroy windows while it handles a record.
    for (int nKind = KIND_NUM; nKind >= KIND_FRAME; --nKind)
    {
        for (;;)
        {
            WatchEntry* pEntry = nullptr;
            for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !pEntry; ++nIndex)
            {
                WatchEntry& entry = m_table.Slot(nIndex);
                if (entry.hWnd && entry.nKind == nKind && entry.nReport != REPORT_NONE)
                    pEntry = &entry;
            }
            if (!pEntry)
                break;
            const HWND hWnd = pEntry->hWnd;
            if (pEntry->nState == STATE_GONE)
                m_table.Remove(pEntry);
            else
                pEntry->nReport = REPORT_NONE;
            if (bReport)
                bReport = ReportLeft(hWnd);
        }
    }
}

bool CRecordReporter::ReportLeft(HWND hWnd)
{
    const HookRecord record = {0, Word(hWnd), 0, 0, 0, {0, 0}};
    return m_channel.Send(HOOK_DESTROY, record, hWnd) == SEND_DELIVERED;
}

void CRecordReporter::ReportCreate(HWND hWnd)
{
    WatchEntry* pEntry = m_table.Find(hWnd);
    if (!pEntry || pEntry->nReport != REPORT_NONE || !m_owner.IsReporting())
        return;
    if (!m_channel.IsResponsive())
    {
        OnToolSilent(); // reported when the tool answers again
        return;
    }
    const HookRecord record = {pEntry->nKind, Word(hWnd), 0, 0, 0, {0, 0}};
    // Marked before sending: the tool may send the window messages, or even
    // have it destroyed, while it handles the record.
    pEntry->nReport = REPORT_SENT;
    const SendResult result = m_channel.Send(HOOK_CREATE, record, hWnd);
    if (result == SEND_HUNG)
    {
        // Unanswered: the record may still be handled when the tool wakes
        // up, or may have been dropped. Catching up later sends a destroy
        // (harmless when the tool never had the window) before a new create.
        // Wine: a sent message that times out before the receiver took it is
        // dropped, never delivered late (the tests see DESTROY, CREATE and no
        // earlier CREATE); Windows may still deliver it, so both are handled.
        if (WatchEntry* pLater = m_table.Find(hWnd))
            pLater->nReport = REPORT_UNCERTAIN;
        else if (WatchEntry* pGone = m_table.FindGone(hWnd))
            pGone->nReport = REPORT_UNCERTAIN;
    }
    Delivered(result);
}

void CRecordReporter::ReportMessage(UINT nCode, HWND hWnd, UINT uMsg, WPARAM wParam, UINT nFlags)
{
    if (!m_owner.IsReporting())
        return;
    if (!m_channel.IsResponsive())
    {
        OnToolSilent(); // dropped: a late scroll or layout is worse than none
        return;
    }
    const WatchEntry* pEntry = m_table.Find(hWnd);
    if (!pEntry || pEntry->nState != STATE_WATCHED || pEntry->nReport != REPORT_SENT)
        return; // the tool has no item for it: nothing would act on the record
    const HookRecord record = {0, Word(hWnd), uMsg, static_cast<uint32_t>(wParam), nFlags, {0, 0}};
    Delivered(m_channel.Send(nCode, record, hWnd));
}

bool CRecordReporter::Delivered(SendResult result)
{
    if (result == SEND_HUNG)
        OnToolSilent();
    else if (result == SEND_NO_TOOL)
        m_owner.OnToolGone();
    return result == SEND_DELIVERED;
}

void CRecordReporter::OnToolSilent()
{
    // The tool did not answer. From now on message records are dropped at no
    // cost, and creations and destructions wait in the table until a probe
    // comes back. A tool that has ended makes us leave at once, so the host
    // stops paying for us.
    if (!IsWindow(m_channel.Tool()))
    {
        m_owner.OnToolGone();
        return;
    }
    if (!m_channel.StartProbe(ProbeProc, static_cast<ULONG_PTR>(m_nSession)) && !IsWindow(m_channel.Tool()))
        m_owner.OnToolGone();
}

// Wine: SendMessageCallback works across processes; the callback runs in
// the host's message retrieval once the tool has answered (the hung-tool
// tests catch up through it).
VOID CALLBACK CRecordReporter::ProbeProc(HWND, UINT, ULONG_PTR dwData, LRESULT)
{
    if (s_pInstance)
        s_pInstance->OnProbeAnswered(dwData);
}

void CRecordReporter::OnProbeAnswered(ULONG_PTR dwData)
{
    if (!m_owner.IsReporting() || dwData != static_cast<ULONG_PTR>(m_nSession))
        return;
    m_channel.ProbeAnswered();
    CatchUp();
}

void CRecordReporter::CatchUp()
{
    // The tool answers again: first the destructions it has not heard of,
    // children before parents, then the windows it does not know, parents
    // first. A window whose creation is in doubt gets a destroy first, so the
    // tool ends up with exactly one item for it either way.
    for (int nKind = KIND_NUM; nKind >= KIND_FRAME; --nKind)
    {
        for (;;)
        {
            if (!m_owner.IsReporting() || !m_channel.IsResponsive())
                return;
            WatchEntry* pEntry = nullptr;
            for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !pEntry; ++nIndex)
            {
                WatchEntry& entry = m_table.Slot(nIndex);
                if (entry.hWnd && entry.nKind == nKind &&
                    ((entry.nState == STATE_GONE && entry.nReport != REPORT_NONE) ||
                     (entry.nState == STATE_WATCHED && entry.nReport == REPORT_UNCERTAIN)))
                    pEntry = &entry;
            }
            if (!pEntry)
                break;
            const HWND hWnd = pEntry->hWnd;
            const bool bGone = pEntry->nState == STATE_GONE;
            if (!bGone)
                pEntry->nReport = REPORT_NONE;
            const HookRecord record = {0, Word(hWnd), 0, 0, 0, {0, 0}};
            switch (m_channel.Send(HOOK_DESTROY, record, hWnd))
            {
            case SEND_DELIVERED:
                if (bGone)
                {
                    if (WatchEntry* pGone = m_table.FindGone(hWnd))
                        m_table.Remove(pGone);
                }
                break;
            case SEND_HUNG:
                if (!bGone)
                {
                    if (WatchEntry* pLive = m_table.Find(hWnd))
                        pLive->nReport = REPORT_UNCERTAIN;
                }
                OnToolSilent();
                return;
            case SEND_NO_TOOL:
                m_owner.OnToolGone();
                return;
            }
        }
    }
    for (int nKind = KIND_FRAME; nKind <= KIND_NUM; ++nKind)
    {
        for (;;)
        {
            if (!m_owner.IsReporting() || !m_channel.IsResponsive())
                return;
            HWND hWnd = nullptr;
            for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !hWnd; ++nIndex)
            {
                const WatchEntry& entry = m_table.Slot(nIndex);
                if (entry.hWnd && entry.nKind == nKind && entry.nState == STATE_WATCHED &&
                    entry.nReport == REPORT_NONE)
                    hWnd = entry.hWnd;
            }
            if (!hWnd)
                break;
            ReportCreate(hWnd);
        }
    }
}
