#include "CFileFind.h"

#include <mbstring.h>

CFileFind::~CFileFind()
{
    Close();
}

void CFileFind::Close()
{
    if (m_hContext != INVALID_HANDLE_VALUE)
        ::FindClose(m_hContext);
    m_hContext = INVALID_HANDLE_VALUE;
    m_bHaveCurrent = FALSE;
    m_bHaveNext = FALSE;
}

BOOL CFileFind::FindFile(LPCSTR lpszPattern)
{
    Close();
    if (!lpszPattern || !*lpszPattern)
        lpszPattern = "*.*";

    // The directory part ends at the last separator; a trail byte of a
    // double-byte character can equal '\', so the pattern is walked by
    // characters, not bytes.
    const unsigned char* pStart = reinterpret_cast<const unsigned char*>(lpszPattern);
    const unsigned char* pEnd = pStart;
    for (const unsigned char* p = pStart; *p; p = _mbsinc(p))
    {
        if (*p == '\\' || *p == '/' || *p == ':')
            pEnd = p + 1;
    }
    m_strRoot = CString(lpszPattern, static_cast<int>(pEnd - pStart));

    m_hContext = ::FindFirstFileA(lpszPattern, m_pNext);
    if (m_hContext == INVALID_HANDLE_VALUE)
        return FALSE;
    m_bHaveNext = TRUE;
    return TRUE;
}

BOOL CFileFind::FindNextFile()
{
    if (!m_bHaveNext)
        return FALSE;
    WIN32_FIND_DATAA* pSwap = m_pCurrent;
    m_pCurrent = m_pNext;
    m_pNext = pSwap;
    m_bHaveCurrent = TRUE;
    m_bHaveNext = ::FindNextFileA(m_hContext, m_pNext) ? TRUE : FALSE;
    return m_bHaveNext;
}

CString CFileFind::GetFileName() const
{
    return CString(GetFileNameRef());
}

CString CFileFind::GetFilePath() const
{
    if (!m_bHaveCurrent)
        return CString();
    return m_strRoot + m_pCurrent->cFileName;
}

LPCSTR CFileFind::GetFileNameRef() const
{
    return m_bHaveCurrent ? m_pCurrent->cFileName : "";
}

BOOL CFileFind::MatchesMask(DWORD dwMask) const
{
    return m_bHaveCurrent && (m_pCurrent->dwFileAttributes & dwMask) == dwMask && dwMask != 0;
}

BOOL CFileFind::IsDots() const
{
    if (!m_bHaveCurrent || !IsDirectory())
        return FALSE;
    const char* psz = m_pCurrent->cFileName;
    return psz[0] == '.' && (psz[1] == '\0' || (psz[1] == '.' && psz[2] == '\0'));
}

BOOL CFileFind::GetLastWriteTime(CTime& time) const
{
    if (!m_bHaveCurrent)
        return FALSE;
    time = CTime(m_pCurrent->ftLastWriteTime);
    return TRUE;
}

ULONGLONG CFileFind::GetLength() const
{
    if (!m_bHaveCurrent)
        return 0;
    return (static_cast<ULONGLONG>(m_pCurrent->nFileSizeHigh) << 32) | m_pCurrent->nFileSizeLow;
}
