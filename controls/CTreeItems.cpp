#include "CTreeItems.h"

#include <algorithm>

CTreeItems::~CTreeItems()
{
    for (CTreeItem* pItem : *this)
    {
        if (m_bDeleteTreeItems)
            pItem->m_cursor.Delete(); // the node first: it names the record
        delete pItem;
    }
}

int CTreeItems::FindPath(LPCSTR lpszPath) const
{
    for (size_t i = 0; i < size(); i++)
    {
        if ((*this)[i]->GetPath().CompareNoCase(lpszPath) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

void CTreeItems::RemovePath(LPCSTR lpszPath)
{
    const int nIndex = FindPath(lpszPath);
    if (nIndex != -1)
        erase(begin() + nIndex);
}

void CTreeItems::Remove(CTreeItem* pItem)
{
    auto it = std::find(begin(), end(), pItem);
    if (it == end())
        return;
    erase(it);
    delete pItem;
}

void CTreeItems::RemoveAll()
{
    for (CTreeItem* pItem : *this)
        delete pItem;
    clear();
}
