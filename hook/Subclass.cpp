#include "Subclass.h"

namespace Subclass
{
bool Install(WatchEntry& entry, WNDPROC pfnAnsi, WNDPROC pfnUnicode)
{
    const bool bUnicode = IsWindowUnicode(entry.hWnd) != FALSE;
    const LONG_PTR lOriginal =
        bUnicode ? SetWindowLongPtrW(entry.hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(pfnUnicode))
                 : SetWindowLongPtrA(entry.hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(pfnAnsi));
    if (!lOriginal)
        return false;
    entry.pfnOriginal = reinterpret_cast<WNDPROC>(lOriginal);
    entry.bUnicode = bUnicode;
    return true;
}

void RemoveAll(CWatchTable& table, WNDPROC pfnAnsi, WNDPROC pfnUnicode)
{
    for (;;)
    {
        WatchEntry* pEntry = nullptr;
        for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !pEntry; ++nIndex)
        {
            WatchEntry& entry = table.Slot(nIndex);
            if (entry.hWnd && entry.nState != STATE_PASSTHROUGH)
                pEntry = &entry;
        }
        if (!pEntry)
            break;
        if (pEntry->nState == STATE_GONE)
        {
            table.Remove(pEntry);
            continue;
        }
        const HWND hWnd = pEntry->hWnd;
        const LONG_PTR lOurs = pEntry->bUnicode ? reinterpret_cast<LONG_PTR>(pfnUnicode)
                                                : reinterpret_cast<LONG_PTR>(pfnAnsi);
        const LONG_PTR lCurrent =
            pEntry->bUnicode ? GetWindowLongPtrW(hWnd, GWLP_WNDPROC) : GetWindowLongPtrA(hWnd, GWLP_WNDPROC);
        if (lCurrent == lOurs)
        {
            const LONG_PTR lOriginal = reinterpret_cast<LONG_PTR>(pEntry->pfnOriginal);
            if (pEntry->bUnicode)
                SetWindowLongPtrW(hWnd, GWLP_WNDPROC, lOriginal);
            else
                SetWindowLongPtrA(hWnd, GWLP_WNDPROC, lOriginal);
            table.Remove(pEntry);
        }
        else if (!IsWindow(hWnd))
        {
            table.Remove(pEntry);
        }
        else
        {
            pEntry->nState = STATE_PASSTHROUGH;
        }
    }
}
} // namespace Subclass
