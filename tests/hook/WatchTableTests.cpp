// The watched-window table on its own: probe chains that wrap around the end
// of the slots, removal from the middle of a chain, gone entries beside live
// ones of the same handle, and the refusal beyond its bound.
#include <windows.h>

#include <vector>

#include "CWatchTable.h"
#include "TestRunner.h"

namespace
{
HWND Handle(uint32_t nValue)
{
    return reinterpret_cast<HWND>(static_cast<UINT_PTR>(nValue));
}

// Handles whose home slot is the same, found by trying: the probe chains of
// the table are then as long as they get.
std::vector<HWND> Colliding(unsigned nCount, unsigned nWantedHome)
{
    std::vector<HWND> handles;
    for (uint32_t nValue = 2; handles.size() < nCount; nValue += 2)
    {
        if (((nValue * 2654435769u) >> (32 - CWatchTable::kCapacityBits)) == nWantedHome)
            handles.push_back(Handle(nValue));
    }
    return handles;
}

void CheckAllFound(CWatchTable& table, const std::vector<HWND>& handles, const std::vector<bool>& present)
{
    for (size_t i = 0; i < handles.size(); ++i)
    {
        WatchEntry* pEntry = table.Find(handles[i]);
        if (present[i])
        {
            CHECK(pEntry != nullptr);
            if (pEntry)
                CHECK_EQ(pEntry->nKind, static_cast<uint8_t>(i % 5 + 1));
        }
        else
        {
            CHECK(pEntry == nullptr);
        }
    }
}
} // namespace

TEST_CASE(removing_from_probe_chains_keeps_every_other_entry_findable)
{
    // Chains at the last slot wrap to the first; chains in the middle do not.
    const unsigned homes[] = {CWatchTable::kCapacity - 2, 100};
    // Removal orders: first to last, last to first, every other one.
    for (unsigned nHome : homes)
    {
        for (int nOrder = 0; nOrder < 3; ++nOrder)
        {
            CWatchTable* pTable = new CWatchTable();
            std::vector<HWND> handles = Colliding(12, nHome);
            // Neighbours whose home is right after the chain: they are pushed along by it.
            for (HWND hWnd : Colliding(4, (nHome + 3) % CWatchTable::kCapacity))
                handles.push_back(hWnd);
            std::vector<bool> present(handles.size(), true);
            for (size_t i = 0; i < handles.size(); ++i)
            {
                WatchEntry* pEntry = pTable->Add(handles[i]);
                REQUIRE(pEntry);
                pEntry->nKind = static_cast<uint8_t>(i % 5 + 1);
            }
            CheckAllFound(*pTable, handles, present);
            std::vector<size_t> order;
            for (size_t i = 0; i < handles.size(); ++i)
                order.push_back(nOrder == 1 ? handles.size() - 1 - i : i);
            if (nOrder == 2)
            {
                order.clear();
                for (size_t i = 0; i < handles.size(); i += 2)
                    order.push_back(i);
                for (size_t i = 1; i < handles.size(); i += 2)
                    order.push_back(i);
            }
            for (size_t nIndex : order)
            {
                pTable->Remove(pTable->Find(handles[nIndex]));
                present[nIndex] = false;
                CheckAllFound(*pTable, handles, present);
            }
            CHECK_EQ(pTable->Count(), 0u);
            delete pTable;
        }
    }
}

TEST_CASE(a_gone_entry_and_a_live_one_of_the_same_handle_are_told_apart)
{
    CWatchTable* pTable = new CWatchTable();
    HWND hWnd = Handle(0x10042);
    WatchEntry* pOld = pTable->Add(hWnd);
    REQUIRE(pOld);
    pOld->nState = STATE_GONE; // destroyed, its destroy still owed
    CHECK(pTable->Find(hWnd) == nullptr);
    CHECK(pTable->FindGone(hWnd) == pOld);
    WatchEntry* pNew = pTable->Add(hWnd); // a new window with the same handle
    REQUIRE(pNew);
    CHECK(pTable->Find(hWnd) == pNew);
    CHECK(pTable->FindGone(hWnd) == pOld);
    pTable->Remove(pTable->FindGone(hWnd));
    CHECK(pTable->Find(hWnd) != nullptr);
    CHECK(pTable->FindGone(hWnd) == nullptr);
    delete pTable;
}

TEST_CASE(a_full_table_refuses_more_and_takes_again_after_a_removal)
{
    CWatchTable* pTable = new CWatchTable();
    for (unsigned i = 0; i < CWatchTable::kMaxEntries; ++i)
        REQUIRE(pTable->Add(Handle(0x10000 + 2 * i)));
    CHECK_EQ(pTable->Count(), CWatchTable::kMaxEntries);
    CHECK(pTable->Add(Handle(0x90000)) == nullptr);
    CHECK(pTable->Find(Handle(0x90000)) == nullptr); // a lookup still ends
    pTable->Remove(pTable->Find(Handle(0x10000)));
    CHECK(pTable->Add(Handle(0x90000)) != nullptr);
    CHECK(pTable->Add(nullptr) == nullptr);
    delete pTable;
}
