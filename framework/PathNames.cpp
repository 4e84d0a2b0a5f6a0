#include "PathNames.h"

#include <stdlib.h>

CString GetModuleDirectory(HMODULE hModule)
{
    char szPath[261] = {};
    GetModuleFileNameA(hModule, szPath, sizeof(szPath) - 1);
    return GetDirectoryOfPath(szPath);
}

CString GetDirectoryOfPath(LPCSTR lpszPath)
{
    char szDrive[_MAX_DRIVE] = {};
    char szDir[_MAX_DIR] = {};
    _splitpath(lpszPath, szDrive, szDir, nullptr, nullptr);
    CString strResult;
    strResult.Format("%s%s", szDrive, szDir);
    return strResult;
}

CString GetFileExtension(LPCSTR lpszPath)
{
    char szExt[_MAX_EXT] = {};
    _splitpath(lpszPath, nullptr, nullptr, nullptr, szExt);
    return CString(szExt);
}

bool IsAnsiLeadByte(unsigned char ch)
{
    return IsDBCSLeadByte(ch) != FALSE;
}
