// A window item: the tool's stand-in for one host IDE window, reacting to the
// records of that window's messages. The window belongs to another process:
// the item only holds its handle, and every call on it may fail because the
// window went away.
#pragma once

#include "QuorvantHook.h"

#include <memory>

class CItems;

class CItem
{
public:
    CItem(HWND hWnd, CItems* pItems) : m_hWnd(hWnd), m_pItems(pItems) {}
    virtual ~CItem() = default;
    CItem(const CItem&) = delete;
    CItem& operator=(const CItem&) = delete;

    // Before the host window handles a message (HOOK_MESSAGE); most kinds
    // act only after it.
    virtual void OnHookMessage(const HookRecord* /*pRecord*/) {}
    // After it handled one, or when a posted one arrived (HOOK_MESSAGE_DONE).
    virtual void OnHookMessageDone(const HookRecord* pRecord) = 0;
    // Brings what the item put into the host in line with the settings:
    // after they changed, and while IsRefused says the host refused it.
    virtual void ApplySettings() {}
    // The host refused what the item asked of it for now (it had a menu
    // open): ApplySettings asks again at the next look at the settings.
    virtual BOOL IsRefused() const { return FALSE; }

    HWND m_hWnd;
    CItems* m_pItems; // the registry that owns this item

private:
    friend class CItemLife;
    std::shared_ptr<const int> m_pAlive = std::make_shared<const int>(0); // gone with the item
};

// Whether an item still exists after a call that lets the host's records in:
// a message sent to the host, or a request, waits with the host sending us
// records meanwhile, and a HOOK_DESTROY among them deletes the item under
// its own feet. Taken before such a call, asked after it.
class CItemLife
{
public:
    explicit CItemLife(const CItem& item) : m_alive(item.m_pAlive) {}
    bool IsAlive() const { return !m_alive.expired(); }

private:
    std::weak_ptr<const int> m_alive;
};
