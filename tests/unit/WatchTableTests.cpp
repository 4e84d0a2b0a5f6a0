// sources: hook/CWatchTable.cpp
// The watched-window table, for what an end-to-end run cannot reach: long
// probe chains that wrap around the end of the slots, removal from their
// middle, a gone entry beside a live one of the same handle, the bound.
#include "hook/CWatchTable.h"
#include "UnitTest.h"

#include <memory>
#include <vector>

static HWND Handle(uintptr_t nValue) { return reinterpret_cast<HWND>(nValue); }

TEST_CASE("removing from probe chains keeps every other entry findable")
{
    // 24 handles whose home slots lie in a band of 8 (at the end of the
    // slots, so chains wrap, and in the middle), added in a shuffled order
    // and removed in many orders.
    unit::Random random(12345);
    const auto Kind = [](HWND hWnd) { return static_cast<uint8_t>(reinterpret_cast<uintptr_t>(hWnd) % 5 + 1); };
    for (unsigned nFirstHome : {CWatchTable::kCapacity - 4, 700u})
        for (int nRound = 0; nRound < 20 && !qt::CurrentFailed(); ++nRound)
        {
            std::vector<HWND> handles;
            for (uint32_t nValue = 2; handles.size() < 24; nValue += 2)
                if ((((nValue * 2654435769u) >> (32 - CWatchTable::kCapacityBits)) - nFirstHome) % CWatchTable::kCapacity < 8)
                    handles.insert(handles.begin() + random.Below(static_cast<unsigned>(handles.size()) + 1), Handle(nValue));
            const auto table = std::make_unique<CWatchTable>();
            for (HWND hWnd : handles) // a failed Add shows as a lost entry
                if (WatchEntry* pEntry = table->Add(hWnd))
                    pEntry->nKind = Kind(hWnd);
            while (!handles.empty())
            {
                const size_t nIndex = random.Below(static_cast<unsigned>(handles.size()));
                REQUIRE(table->Find(handles[nIndex]));
                table->Remove(table->Find(handles[nIndex]));
                CHECK(table->Find(handles[nIndex]) == nullptr);
                handles.erase(handles.begin() + nIndex);
                for (HWND hWnd : handles)
                    CHECK(table->Find(hWnd) != nullptr && table->Find(hWnd)->nKind == Kind(hWnd));
            }
            CHECK_EQ(table->Count(), 0u, nFirstHome);
        }
}

TEST_CASE("a gone entry and a live one of the same handle are told apart, and the bound holds")
{
    const auto table = std::make_unique<CWatchTable>();
    WatchEntry* pOld = table->Add(Handle(0x10042));
    REQUIRE(pOld);
    pOld->nState = STATE_GONE; // destroyed, its destroy still owed
    CHECK(table->Find(Handle(0x10042)) == nullptr && table->FindGone(Handle(0x10042)) == pOld);
    WatchEntry* pNew = table->Add(Handle(0x10042)); // a new window with the same handle
    CHECK(table->Find(Handle(0x10042)) == pNew && table->FindGone(Handle(0x10042)) == pOld);
    table->Remove(table->FindGone(Handle(0x10042)));
    CHECK(table->Find(Handle(0x10042)) != nullptr && table->FindGone(Handle(0x10042)) == nullptr);
    // Full: more is refused and a lookup still ends; a removal makes room.
    for (unsigned i = table->Count(); i < CWatchTable::kMaxEntries; ++i)
        REQUIRE(table->Add(Handle(0x20000 + 2 * i)));
    CHECK(table->Add(Handle(0x90000)) == nullptr && table->Find(Handle(0x90000)) == nullptr);
    table->Remove(table->Find(Handle(0x10042)));
    CHECK(table->Add(Handle(0x90000)) != nullptr && table->Add(nullptr) == nullptr);
}
