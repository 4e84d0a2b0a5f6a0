#include "CFile.h"

#include <string.h>

BOOL CFile::GetStatus(LPCSTR lpszFileName, CFileStatus& rStatus)
{
    if (!lpszFileName || !*lpszFileName)
        return FALSE;
    // GetFileAttributesEx reads one entry by name, without the directory
    // search handle that FindFirstFile opens, and takes no wildcards.
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(lpszFileName, GetFileExInfoStandard, &data))
        return FALSE;

    char szFullName[MAX_PATH];
    const DWORD nLength = GetFullPathNameA(lpszFileName, MAX_PATH, szFullName, nullptr);
    if (nLength == 0 || nLength >= MAX_PATH)
        lstrcpynA(szFullName, lpszFileName, MAX_PATH);

    rStatus.m_ctime = CTime(data.ftCreationTime);
    rStatus.m_mtime = CTime(data.ftLastWriteTime);
    rStatus.m_atime = CTime(data.ftLastAccessTime);
    rStatus.m_size = (static_cast<LONGLONG>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    rStatus.m_attribute = static_cast<BYTE>(data.dwFileAttributes & 0xFF);
    memcpy(rStatus.m_szFullName, szFullName, sizeof szFullName);
    return TRUE;
}
