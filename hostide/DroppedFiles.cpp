#include "DroppedFiles.h"

#include <shlobj.h>

namespace hostide
{
bool DroppedFiles::IsFullPath(const std::string& strPath)
{
    const bool bDrive = strPath.size() >= 3 && strPath[1] == ':' && (strPath[2] == '\\' || strPath[2] == '/');
    const bool bShare = strPath.size() >= 3 && strPath[0] == '\\' && strPath[1] == '\\';
    return bDrive || bShare;
}

bool DroppedFiles::IsWellFormed(HDROP hDrop)
{
    // Wine: a block allocated in another process arrives as a handle value
    // that names nothing here or, worse, some allocation of this process;
    // DragQueryFile then reads whatever lies there (observed: one-letter
    // "files" from the host's own memory). So the header and the list's end
    // are checked before the shell reads the list.
    const SIZE_T nSize = hDrop ? GlobalSize(hDrop) : 0;
    if (nSize < sizeof(DROPFILES) + 2)
        return false;
    const BYTE* pBlock = static_cast<const BYTE*>(GlobalLock(hDrop));
    if (!pBlock)
        return false;
    const DROPFILES* pHeader = reinterpret_cast<const DROPFILES*>(pBlock);
    bool bOk = pHeader->pFiles >= sizeof(DROPFILES) && pHeader->pFiles < nSize && pHeader->fWide <= 1;
    if (bOk)
    {
        // The list ends with an empty name inside the block.
        const SIZE_T nUnit = pHeader->fWide ? 2 : 1;
        bOk = false;
        bool bNameEmpty = true;
        for (SIZE_T i = pHeader->pFiles; i + nUnit <= nSize; i += nUnit)
        {
            const bool bNul = pBlock[i] == 0 && (nUnit == 1 || pBlock[i + 1] == 0);
            if (bNul && bNameEmpty)
            {
                bOk = i > pHeader->pFiles; // at least one name before the end
                break;
            }
            bNameEmpty = bNul;
        }
    }
    GlobalUnlock(hDrop);
    return bOk;
}

bool DroppedFiles::Read(HDROP hDrop, std::vector<std::string>& files)
{
    files.clear();
    if (!IsWellFormed(hDrop))
        return false;
    const UINT nFiles = DragQueryFileA(hDrop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < nFiles; ++i)
    {
        char szPath[MAX_PATH] = {};
        if (DragQueryFileA(hDrop, i, szPath, MAX_PATH) > 0 && IsFullPath(szPath))
            files.push_back(szPath);
    }
    return true;
}
} // namespace hostide
