#include "CImageList.h"

#include <memory>
#include <unordered_map>

namespace
{
std::unordered_map<HIMAGELIST, std::unique_ptr<CImageList>>& TempMap()
{
    static thread_local std::unordered_map<HIMAGELIST, std::unique_ptr<CImageList>> map;
    return map;
}
} // namespace

CImageList* CImageList::FromHandle(HIMAGELIST hImageList)
{
    if (!hImageList)
        return nullptr;
    auto& slot = TempMap()[hImageList];
    if (!slot)
    {
        slot.reset(new CImageList);
        slot->m_hImageList = hImageList;
    }
    return slot.get();
}

void CImageList::DeleteTempMap()
{
    for (auto& entry : TempMap())
        entry.second->m_hImageList = nullptr; // not ours to destroy
    TempMap().clear();
}

BOOL CImageList::Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
{
    DeleteImageList();
    m_hImageList = ImageList_LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(nBitmapID), cx,
                                        nGrow, crMask, IMAGE_BITMAP, LR_CREATEDIBSECTION);
    return m_hImageList != nullptr;
}

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    DeleteImageList();
    m_hImageList = ImageList_Create(cx, cy, nFlags, nInitial, nGrow);
    return m_hImageList != nullptr;
}

BOOL CImageList::DeleteImageList()
{
    if (!m_hImageList)
        return FALSE;
    const BOOL bResult = ImageList_Destroy(m_hImageList);
    m_hImageList = nullptr;
    return bResult;
}
