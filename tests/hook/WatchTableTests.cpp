// The watched-window table on its own, for what an end-to-end run cannot
// reach: long probe chains that wrap around the end of the slots, removal from
// their middle, a gone entry beside a live one of the same handle, the bound.
#include <windows.h>

#include <vector>

#include "CWatchTable.h"
#include "TestRunner.h"

static HWND Handle(uint32_t nValue) { return reinterpret_cast<HWND>(static_cast<UINT_PTR>(nValue)); }

TEST_CASE(removing_from_probe_chains_keeps_every_other_entry_findable)
{
    // Handles whose home slots lie in a band of 8 (at the end of the slots, so
    // chains wrap, and in the middle), added in a shuffled order and removed
    // in many orders: a fixed pseudo-random sequence.
    uint32_t nSeed = 12345;
    const auto Random = [&](size_t nBelow) { return ((nSeed = nSeed * 1103515245u + 12345u) >> 16) % nBelow; };
    const auto Kind = [](HWND hWnd) { return static_cast<uint8_t>(reinterpret_cast<UINT_PTR>(hWnd) % 5 + 1); };
    for (unsigned nFirstHome : {CWatchTable::kCapacity - 4, 700u})
        for (int nRound = 0; nRound < 20 && !qt::CurrentFailed(); ++nRound)
        {
            std::vector<HWND> handles;
            for (uint32_t nValue = 2; handles.size() < 24; nValue += 2)
                if ((((nValue * 2654435769u) >> (32 - CWatchTable::kCapacityBits)) - nFirstHome) % CWatchTable::kCapacity < 8)
                    handles.insert(handles.begin() + Random(handles.size() + 1), Handle(nValue));
            std::vector<CWatchTable> table(1); // too big for the stack
            for (HWND hWnd : handles)
            {
                REQUIRE(table[0].Add(hWnd));
                table[0].Find(hWnd)->nKind = Kind(hWnd);
            }
            while (!handles.empty())
            {
                const size_t nIndex = Random(handles.size());
                REQUIRE(table[0].Find(handles[nIndex]));
                table[0].Remove(table[0].Find(handles[nIndex]));
                CHECK(table[0].Find(handles[nIndex]) == nullptr);
                handles.erase(handles.begin() + nIndex);
                for (HWND hWnd : handles)
                    CHECK(table[0].Find(hWnd) != nullptr && table[0].Find(hWnd)->nKind == Kind(hWnd));
            }
            CHECK_EQ(table[0].Count(), 0u);
        }
}

TEST_CASE(a_gone_entry_and_a_live_one_of_the_same_handle_are_told_apart_and_the_bound_holds)
{
    std::vector<CWatchTable> table(1);
    WatchEntry* pOld = table[0].Add(Handle(0x10042));
    REQUIRE(pOld);
    pOld->nState = STATE_GONE; // destroyed, its destroy still owed
    CHECK(table[0].Find(Handle(0x10042)) == nullptr && table[0].FindGone(Handle(0x10042)) == pOld);
    WatchEntry* pNew = table[0].Add(Handle(0x10042)); // a new window with the same handle
    CHECK(table[0].Find(Handle(0x10042)) == pNew && table[0].FindGone(Handle(0x10042)) == pOld);
    table[0].Remove(table[0].FindGone(Handle(0x10042)));
    CHECK(table[0].Find(Handle(0x10042)) != nullptr && table[0].FindGone(Handle(0x10042)) == nullptr);
    // Full: more is refused and a lookup still ends; a removal makes room.
    for (unsigned i = table[0].Count(); i < CWatchTable::kMaxEntries; ++i)
        REQUIRE(table[0].Add(Handle(0x20000 + 2 * i)));
    CHECK(table[0].Add(Handle(0x90000)) == nullptr && table[0].Find(Handle(0x90000)) == nullptr);
    table[0].Remove(table[0].Find(Handle(0x10042)));
    CHECK(table[0].Add(Handle(0x90000)) != nullptr && table[0].Add(nullptr) == nullptr);
}
