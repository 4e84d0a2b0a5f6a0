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

const AFX_MSGMAP_ENTRY* CCmdTarget::FindMessageEntry(const AFX_MSGMAP* pMap, UINT nMessage)
{
    for (; pMap; pMap = pMap->pfnGetBaseMap ? pMap->pfnGetBaseMap() : nullptr)
    {
        for (const AFX_MSGMAP_ENTRY* pEntry = pMap->lpEntries; pEntry->pfn; ++pEntry)
        {
            if (pEntry->nMessage == WM_COMMAND && pEntry->pnRegistered == nullptr)
                continue; // command entries are found by OnCmdMsg
            const UINT nEntryMessage = pEntry->pnRegistered ? *pEntry->pnRegistered : pEntry->nMessage;
            if (nEntryMessage == nMessage && nEntryMessage != 0)
                return pEntry;
        }
    }
    return nullptr;
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* /*pHandlerInfo*/)
{
    for (const AFX_MSGMAP* pMap = GetMessageMap(); pMap;
         pMap = pMap->pfnGetBaseMap ? pMap->pfnGetBaseMap() : nullptr)
    {
        for (const AFX_MSGMAP_ENTRY* pEntry = pMap->lpEntries; pEntry->pfn; ++pEntry)
        {
            if (pEntry->nMessage == WM_COMMAND && pEntry->pnRegistered == nullptr &&
                pEntry->nCode == static_cast<UINT>(nCode) && nID >= pEntry->nID && nID <= pEntry->nLastID)
            {
                pEntry->pfn(this, nID, reinterpret_cast<LPARAM>(pExtra));
                return TRUE;
            }
        }
    }
    return FALSE;
}
