#include "CLogFile.h"

#include <mbstring.h>
#include <stdarg.h>
#include <stdio.h>

namespace
{
const int kLineBytes = 1024;
}

CLogFile::~CLogFile()
{
    Close();
}

BOOL CLogFile::Open(LPCSTR lpszPath, DWORD nLimit)
{
    Close();
    m_strPath = lpszPath;
    m_nLimit = nLimit;
    return OpenFile(OPEN_ALWAYS);
}

BOOL CLogFile::OpenFile(DWORD dwDisposition)
{
    // Shared for reading, so the user can look at it while we run.
    m_hFile = CreateFileA(m_strPath, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                          dwDisposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_hFile == INVALID_HANDLE_VALUE)
        return FALSE;
    m_nSize = GetFileSize(m_hFile, nullptr);
    if (m_nSize == INVALID_FILE_SIZE)
        m_nSize = 0;
    return TRUE;
}

void CLogFile::Close()
{
    if (m_hFile != INVALID_HANDLE_VALUE)
        CloseHandle(m_hFile);
    m_hFile = INVALID_HANDLE_VALUE;
}

CString CLogFile::OlderCopyPath(LPCSTR lpszPath)
{
    // Multi-byte aware: a backslash may be the second byte of a character.
    const unsigned char* pszPath = reinterpret_cast<const unsigned char*>(lpszPath);
    const unsigned char* pDot = _mbsrchr(pszPath, '.');
    const unsigned char* pSlash = _mbsrchr(pszPath, '\\');
    const CString strPath(lpszPath);
    if (!pDot || (pSlash && pDot < pSlash))
        return strPath + ".old";
    const int nDot = static_cast<int>(pDot - pszPath);
    return strPath.Left(nDot) + ".old" + strPath.Mid(nDot);
}

void CLogFile::Write(LPCSTR lpszFormat, ...)
{
    if (!IsOpen())
        return;
    SYSTEMTIME st;
    GetLocalTime(&st);
    char szLine[kLineBytes];
    int nStamp = _snprintf(szLine, sizeof(szLine), "%04u-%02u-%02u %02u:%02u:%02u.%03u ", st.wYear, st.wMonth,
                           st.wDay, st.wHour, st.wMinute, st.wSecond, st.wMilliseconds);
    va_list args;
    va_start(args, lpszFormat);
    // Room for the line end; a longer text is cut, never left unended.
    const int nRoom = static_cast<int>(sizeof(szLine)) - nStamp - 3;
    int nText = _vsnprintf(szLine + nStamp, static_cast<size_t>(nRoom), lpszFormat, args);
    va_end(args);
    if (nText < 0 || nText >= nRoom)
        nText = nRoom - 1;
    const DWORD nLine = static_cast<DWORD>(nStamp + nText + 2);
    szLine[nStamp + nText] = '\r';
    szLine[nStamp + nText + 1] = '\n';

    if (m_nSize > 0 && m_nSize + nLine > m_nLimit)
    {
        Close();
        MoveFileExA(m_strPath, OlderCopyPath(m_strPath), MOVEFILE_REPLACE_EXISTING);
        if (!OpenFile(CREATE_ALWAYS))
            return;
    }
    DWORD nWritten = 0;
    if (WriteFile(m_hFile, szLine, nLine, &nWritten, nullptr))
        m_nSize += nWritten;
}
