// The watched-window table on its own: probe chains that wrap around the end
// of the slots, removal from the middle of a chain, gone entries beside live
// ones of the same handle, and the refusal beyond its bound.
#include <windows.h>

#include <utility>
#include <vector>

#include "CWatchTable.h"
#include "TestRunner.h"

namespace
{
HWND Handle(uint32_t nValue)
{
    return reinterpret_cast<HWND>(static_cast<UINT_PTR>(nValue));
}

uint32_t g_nSeed = 12345;

unsigned Random(unsigned nBelow)
{
    g_nSeed = g_nSeed * 1103515245u + 12345u;
    return (g_nSeed >> 16) % nBelow;
}

// Handles whose home slots lie in a narrow band, found by trying: the probe
// chains of the table are then long and run into each other.
std::vector<HWND> Crowded(unsigned nCount, unsigned nFirstHome, unsigned nHomes)
{
    std::vector<HWND> handles;
    for (uint32_t nValue = 2; handles.size() < nCount; nValue += 2)
    {
        const unsigned nHome = (nValue * 2654435769u) >> (32 - CWatchTable::kCapacityBits);
        if ((nHome - nFirstHome) % CWatchTable::kCapacity < nHomes)
            handles.push_back(Handle(nValue));
    }
    for (size_t i = handles.size(); i > 1; --i) // shuffled: chains form in any order
        std::swap(handles[i - 1], handles[Random(static_cast<unsigned>(i))]);
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
    // Bands of homes across the end of the slots (chains wrap to the
    // first slot) and in the middle; removals in many orders.
    const unsigned firstHomes[] = {CWatchTable::kCapacity - 4, 700};
    for (unsigned nFirstHome : firstHomes)
    {
        for (int nRound = 0; nRound < 20; ++nRound)
        {
            CWatchTable* pTable = new CWatchTable();
            const std::vector<HWND> handles = Crowded(24, nFirstHome, 8);
            std::vector<bool> present(handles.size(), true);
            for (size_t i = 0; i < handles.size(); ++i)
            {
                WatchEntry* pEntry = pTable->Add(handles[i]);
                REQUIRE(pEntry);
                pEntry->nKind = static_cast<uint8_t>(i % 5 + 1);
            }
            CheckAllFound(*pTable, handles, present);
            for (size_t nLeft = handles.size(); nLeft > 0; --nLeft)
            {
                size_t nIndex = Random(static_cast<unsigned>(handles.size()));
                while (!present[nIndex])
                    nIndex = (nIndex + 1) % handles.size();
                pTable->Remove(pTable->Find(handles[nIndex]));
                present[nIndex] = false;
                CheckAllFound(*pTable, handles, present);
                if (qt::CurrentFailed())
                    break;
            }
            CHECK_EQ(pTable->Count(), 0u);
            delete pTable;
            if (qt::CurrentFailed())
                return;
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
