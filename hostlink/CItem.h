// A window item: the tool's stand-in for one host IDE window, reacting to the
// records of that window's messages. The window belongs to another process:
// the item only holds its handle, and every call on it may fail because the
// window went away.
#pragma once

#include "QuorvantHook.h"

class CItems;

class CItem
{
public:
    CItem(HWND hWnd, CItems* pItems) : m_hWnd(hWnd), m_pItems(pItems) {}
    virtual ~CItem() = default;
    CItem(const CItem&) = delete;
    CItem& operator=(const CItem&) = delete;

    // Before the host window handles a message (HOOK_MESSAGE).
    virtual void OnHookMessage(const HookRecord* pRecord) = 0;
    // After it handled one, or when a posted one arrived (HOOK_MESSAGE_DONE).
    virtual void OnHookMessageDone(const HookRecord* pRecord) = 0;

    HWND m_hWnd;
    CItems* m_pItems; // the registry that owns this item
};
