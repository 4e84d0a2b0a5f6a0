// A list of node records in insertion order that owns them: the destructor,
// Remove and RemoveAll delete records (RemovePath only takes one out). With
// m_bDeleteTreeItems the destructor also deletes each record's node from the
// tree; without it the nodes stay (as when the whole tree window is gone).
//
// A copy holds the same records: whoever copies a list makes sure that each
// record is deleted by only one of the two.
#pragma once

#include "CTreeItem.h"

#include <vector>

class CTreeItems : public std::vector<CTreeItem*>
{
public:
    CTreeItems() = default;
    CTreeItems(const CTreeItems& other) = default;
    CTreeItems& operator=(const CTreeItems&) = delete;
    virtual ~CTreeItems();

    BOOL m_bDeleteTreeItems = FALSE;

    // The list takes ownership.
    void Add(CTreeItem* pItem) { push_back(pItem); }
    // The index of the first record whose path equals lpszPath without regard
    // to case (multi-byte aware), or -1.
    int FindPath(LPCSTR lpszPath) const;
    // Takes the first record with that path out of the list without deleting it.
    void RemovePath(LPCSTR lpszPath);
    // Deletes the record and takes it out; a record not in the list is left alone.
    void Remove(CTreeItem* pItem);
    // Deletes every record.
    void RemoveAll();
};
