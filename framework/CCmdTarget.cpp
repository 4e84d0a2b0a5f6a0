#include "CCmdTarget.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP messageMap = {nullptr, &entries[0]};
    return &messageMap;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

BOOL CCmdTarget::IsIdEntry(const AFX_MSGMAP_ENTRY* pEntry)
{
    if (pEntry->pnRegistered)
        return FALSE;
    switch (pEntry->nMessage)
    {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_REFLECT_BASE + WM_COMMAND:
    case WM_REFLECT_BASE + WM_NOTIFY:
        return TRUE;
    default:
        return FALSE;
    }
}

const AFX_MSGMAP_ENTRY* CCmdTarget::FindMessageEntry(const AFX_MSGMAP* pMap, UINT nMessage)
{
    for (; pMap; pMap = pMap->pfnGetBaseMap ? pMap->pfnGetBaseMap() : nullptr)
    {
        for (const AFX_MSGMAP_ENTRY* pEntry = pMap->lpEntries; pEntry->pfn; ++pEntry)
        {
            if (IsIdEntry(pEntry))
                continue; // found by OnCmdMsg
            const UINT nEntryMessage = pEntry->pnRegistered ? *pEntry->pnRegistered : pEntry->nMessage;
            if (nEntryMessage == nMessage && nEntryMessage != 0)
                return pEntry;
        }
    }
    return nullptr;
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    // The message travels in the high word of nCode, the notification code
    // in the low word; update requests are the one code that fills both.
    UINT nMessage = WM_COMMAND;
    UINT nEntryCode = static_cast<UINT>(CN_UPDATE_COMMAND_UI);
    if (nCode != CN_UPDATE_COMMAND_UI)
    {
        nMessage = HIWORD(static_cast<UINT>(nCode));
        nEntryCode = LOWORD(static_cast<UINT>(nCode));
        if (nMessage == 0)
            nMessage = WM_COMMAND;
    }

    // The first entry that matches decides, as a derived class's entry
    // replaces its base's: an _EX handler that answers FALSE ends the search.
    for (const AFX_MSGMAP* pMap = GetMessageMap(); pMap;
         pMap = pMap->pfnGetBaseMap ? pMap->pfnGetBaseMap() : nullptr)
    {
        for (const AFX_MSGMAP_ENTRY* pEntry = pMap->lpEntries; pEntry->pfn; ++pEntry)
        {
            if (!IsIdEntry(pEntry) || pEntry->nMessage != nMessage || pEntry->nCode != nEntryCode ||
                nID < pEntry->nID || nID > pEntry->nLastID)
                continue;
            if (pHandlerInfo)
            {
                AFX_CMDHANDLERINFO* pInfo = static_cast<AFX_CMDHANDLERINFO*>(pHandlerInfo);
                pInfo->pTarget = this;
                pInfo->pEntry = pEntry;
                return TRUE;
            }
            return pEntry->pfn(this, nID, reinterpret_cast<LPARAM>(pExtra)) != 0;
        }
    }
    return FALSE;
}
