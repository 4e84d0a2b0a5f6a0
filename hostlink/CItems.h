// The registry of window items, owned by the main frame. It owns its items:
// creation order is kept, and a window may stand in it more than once (a
// second creation record makes a second item; records reach the first).
#pragma once

#include "CItem.h"

#include <vector>

class CItems : public std::vector<CItem*>
{
public:
    CItems() = default;
    virtual ~CItems();
    CItems(const CItems&) = delete;
    CItems& operator=(const CItems&) = delete;

    void Add(CItem* pItem) { push_back(pItem); }
    // Deletes the first item of the window, if any, keeping the others' order.
    void Remove(HWND hWnd);
    // Makes the item of a creation record's kind; other kinds make nothing.
    void CreateItem(const HookRecord* pRecord);
    // Hand a record to the first item of its window; none: nothing happens.
    void OnHookMessage(const HookRecord* pRecord);
    void OnHookMessageDone(const HookRecord* pRecord);
    // Has every item apply the settings (CItem::ApplySettings).
    void ApplySettings();
    BOOL IsAnyRefused() const; // CItem::IsRefused of any item
    BOOL IsEmpty() const { return empty(); }
    // Deletes the items whose windows no longer exist (their host was killed
    // and will never report them gone).
    void RemoveVanished();
    // Deletes the items of every host thread that does not answer within
    // dwTimeoutMs (a hung host will not report its windows gone either).
    void RemoveUnresponsive(UINT uTimeoutMs);

private:
    CItem* Find(HWND hWnd) const;
};
