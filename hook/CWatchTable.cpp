#include "CWatchTable.h"

WatchEntry* CWatchTable::Find(HWND hWnd)
{
    for (unsigned nIndex = Home(hWnd);; nIndex = (nIndex + 1) & (kCapacity - 1))
    {
        WatchEntry& entry = m_slots[nIndex];
        if (entry.hWnd == hWnd && entry.nState != STATE_GONE)
            return &entry;
        if (!entry.hWnd)
            return nullptr;
    }
}

WatchEntry* CWatchTable::FindGone(HWND hWnd)
{
    for (unsigned nIndex = Home(hWnd);; nIndex = (nIndex + 1) & (kCapacity - 1))
    {
        WatchEntry& entry = m_slots[nIndex];
        if (entry.hWnd == hWnd && entry.nState == STATE_GONE)
            return &entry;
        if (!entry.hWnd)
            return nullptr;
    }
}

WatchEntry* CWatchTable::Add(HWND hWnd)
{
    if (!hWnd || m_nCount >= kMaxEntries)
        return nullptr;
    unsigned nIndex = Home(hWnd);
    while (m_slots[nIndex].hWnd)
        nIndex = (nIndex + 1) & (kCapacity - 1);
    WatchEntry& entry = m_slots[nIndex];
    entry = WatchEntry();
    entry.hWnd = hWnd;
    ++m_nCount;
    return &entry;
}

void CWatchTable::Remove(WatchEntry* pEntry)
{
    // Backward-shift deletion: later members of the probe chain move up, so
    // lookups never need tombstones and the table never fills with them.
    unsigned nHole = static_cast<unsigned>(pEntry - m_slots);
    unsigned nNext = nHole;
    for (;;)
    {
        nNext = (nNext + 1) & (kCapacity - 1);
        if (!m_slots[nNext].hWnd)
            break;
        const unsigned nHome = Home(m_slots[nNext].hWnd);
        // The entry at nNext may fill the hole only if its home is not
        // cyclically within (nHole, nNext].
        const bool bStays = nHole <= nNext ? (nHole < nHome && nHome <= nNext) : (nHole < nHome || nHome <= nNext);
        if (bStays)
            continue;
        m_slots[nHole] = m_slots[nNext];
        nHole = nNext;
    }
    m_slots[nHole] = WatchEntry();
    --m_nCount;
}
