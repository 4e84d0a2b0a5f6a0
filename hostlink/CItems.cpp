#include "CItems.h"

#include "CChildWndItem.h"
#include "CClientWndItem.h"
#include "CFrameWndItem.h"
#include "CNumWndItem.h"
#include "CTextWndItem.h"

#include <algorithm>
#include <new>

CItems::~CItems()
{
    for (CItem* pItem : *this)
        delete pItem;
    clear();
}

CItem* CItems::Find(HWND hWnd) const
{
    for (CItem* pItem : *this)
    {
        if (pItem->m_hWnd == hWnd)
            return pItem;
    }
    return nullptr;
}

void CItems::Remove(HWND hWnd)
{
    for (auto it = begin(); it != end(); ++it)
    {
        if ((*it)->m_hWnd == hWnd)
        {
            CItem* pItem = *it;
            erase(it); // out of the registry first: its destructor may pump messages
            delete pItem;
            return;
        }
    }
}

void CItems::CreateItem(const HookRecord* pRecord)
{
    HWND hWnd = HookRecordWindow(pRecord);
    CItem* pItem = nullptr;
    switch (pRecord->nKind)
    {
    case KIND_FRAME: pItem = new (std::nothrow) CFrameWndItem(hWnd, this); break;
    case KIND_CLIENT: pItem = new (std::nothrow) CClientWndItem(hWnd, this); break;
    case KIND_CHILD: pItem = new (std::nothrow) CChildWndItem(hWnd, this); break;
    case KIND_TEXT: pItem = new (std::nothrow) CTextWndItem(hWnd, this); break;
    case KIND_NUM: pItem = new (std::nothrow) CNumWndItem(hWnd, this); break;
    default: break;
    }
    if (pItem)
        Add(pItem);
}

void CItems::ApplySettings()
{
    // An item's requests let records in that may delete other items: each
    // is asked whether it still lives before it is told.
    std::vector<std::pair<CItem*, CItemLife>> items;
    for (CItem* pItem : *this)
        items.emplace_back(pItem, CItemLife(*pItem));
    for (auto& item : items)
    {
        if (item.second.IsAlive())
            item.first->ApplySettings();
    }
}

BOOL CItems::IsAnyRefused() const
{
    for (const CItem* pItem : *this)
    {
        if (pItem->IsRefused())
            return TRUE;
    }
    return FALSE;
}

void CItems::OnHookMessage(const HookRecord* pRecord)
{
    if (CItem* pItem = Find(HookRecordWindow(pRecord)))
        pItem->OnHookMessage(pRecord);
}

void CItems::OnHookMessageDone(const HookRecord* pRecord)
{
    if (CItem* pItem = Find(HookRecordWindow(pRecord)))
        pItem->OnHookMessageDone(pRecord);
}

void CItems::RemoveVanished()
{
    for (size_t i = 0; i < size();)
    {
        CItem* pItem = (*this)[i];
        if (IsWindow(pItem->m_hWnd))
        {
            ++i;
            continue;
        }
        erase(begin() + static_cast<std::ptrdiff_t>(i));
        delete pItem;
    }
}

void CItems::RemoveUnresponsive(UINT uTimeoutMs)
{
    // One question per host thread: a thread that answers will deliver its
    // windows' records; one that does not may never.
    std::vector<DWORD> answered;
    std::vector<DWORD> silent;
    for (CItem* pItem : *this)
    {
        const DWORD dwThread = GetWindowThreadProcessId(pItem->m_hWnd, nullptr);
        if (std::find(answered.begin(), answered.end(), dwThread) != answered.end() ||
            std::find(silent.begin(), silent.end(), dwThread) != silent.end())
            continue;
        DWORD_PTR dwResult = 0;
        const bool bAnswers = SendMessageTimeoutA(pItem->m_hWnd, WM_NULL, 0, 0, SMTO_ABORTIFHUNG | SMTO_BLOCK,
                                                  uTimeoutMs, &dwResult) != 0;
        (bAnswers ? answered : silent).push_back(dwThread);
    }
    for (size_t i = 0; i < size();)
    {
        CItem* pItem = (*this)[i];
        const DWORD dwThread = GetWindowThreadProcessId(pItem->m_hWnd, nullptr);
        if (std::find(silent.begin(), silent.end(), dwThread) == silent.end())
        {
            ++i;
            continue;
        }
        erase(begin() + static_cast<std::ptrdiff_t>(i));
        delete pItem;
    }
}
