// The host's watched windows, looked up on every message they receive.
//
// Open addressing on the window handle with linear probing: a lookup is a
// multiply, a shift and usually one comparison. The capacity is fixed and the
// table refuses entries beyond kMaxEntries, so probing always ends at a free
// slot; a window that finds the table full is simply not watched, which is
// safe (it keeps its own window procedure and is never reported).
#pragma once

#include <stdint.h>

#ifdef _WIN32
#include <windows.h>
#else
// The native unit tests build the table without the system's headers: there
// a handle and a window procedure are opaque pointers.
struct HWND__;
typedef HWND__* HWND;
typedef void (*WNDPROC)();
#endif

// What the tool knows of a window.
enum WatchReport : uint8_t
{
    REPORT_NONE = 0,      // never told (or told that it is gone)
    REPORT_SENT = 1,      // its HOOK_CREATE was delivered
    REPORT_UNCERTAIN = 2  // its HOOK_CREATE timed out unreceived or unanswered: the tool may or may not have it
};

enum WatchState : uint8_t
{
    STATE_WATCHED = 0,     // subclassed, its messages are acted on
    STATE_PASSTHROUGH = 1, // left, but another subclass sits on top of ours: forward everything
    STATE_GONE = 2         // destroyed while its HOOK_DESTROY could not be delivered; kept to report it later
};

struct WatchEntry
{
    HWND hWnd;           // NULL: free slot
    WNDPROC pfnOriginal; // the window's procedure before ours
    uint8_t nKind;       // HookKind
    WatchReport nReport;
    WatchState nState;
    bool bUnicode;       // subclassed with the W functions
    bool bDestroying;    // DestroyWindow was called on it: its WM_NCDESTROY is real
};

class CWatchTable
{
public:
    static constexpr unsigned kCapacityBits = 11;
    static constexpr unsigned kCapacity = 1u << kCapacityBits; // 2048 slots
    static constexpr unsigned kMaxEntries = kCapacity * 3 / 4; // keeps probe chains short

    // The entry of a window that still exists (watched or pass-through), or NULL.
    WatchEntry* Find(HWND hWnd);
    // A gone entry of this handle (its destroy is still owed), or NULL.
    WatchEntry* FindGone(HWND hWnd);
    // A fresh entry for hWnd, zeroed but for the handle, or NULL when full.
    WatchEntry* Add(HWND hWnd);
    // Frees the slot; any entry pointer into the table is stale afterwards.
    void Remove(WatchEntry* pEntry);

    unsigned Count() const { return m_nCount; }
    // Slot access for the rare walks over all entries (entering, leaving,
    // catching up with the tool). Free slots have hWnd NULL.
    WatchEntry& Slot(unsigned nIndex) { return m_slots[nIndex]; }

private:
    static unsigned Home(HWND hWnd)
    {
        // Fibonacci hashing of the 32 significant bits of a handle: handles of
        // one process differ mostly in their middle bits.
        const uint32_t nValue = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(hWnd));
        return (nValue * 2654435769u) >> (32 - kCapacityBits);
    }

    WatchEntry m_slots[kCapacity] = {};
    unsigned m_nCount = 0;
};
