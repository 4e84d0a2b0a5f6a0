#include "CString.h"

#include <mbstring.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>

int CString::Compare(LPCSTR psz) const
{
    return _mbscmp(reinterpret_cast<const unsigned char*>(m_str.c_str()),
                   reinterpret_cast<const unsigned char*>(psz ? psz : ""));
}

int CString::CompareNoCase(LPCSTR psz) const
{
    return _mbsicmp(reinterpret_cast<const unsigned char*>(m_str.c_str()),
                    reinterpret_cast<const unsigned char*>(psz ? psz : ""));
}

int CString::Find(LPCSTR pszSub, int nStart) const
{
    if (nStart < 0 || nStart > GetLength())
        return -1;
    const size_t nPos = m_str.find(pszSub ? pszSub : "", static_cast<size_t>(nStart));
    return nPos == std::string::npos ? -1 : static_cast<int>(nPos);
}

CString CString::Mid(int nFirst) const
{
    return Mid(nFirst, GetLength() - nFirst);
}

CString CString::Mid(int nFirst, int nCount) const
{
    if (nFirst < 0)
        nFirst = 0;
    if (nFirst >= GetLength() || nCount <= 0)
        return CString();
    CString str;
    str.m_str = m_str.substr(static_cast<size_t>(nFirst), static_cast<size_t>(nCount));
    return str;
}

CString CString::Left(int nCount) const
{
    return Mid(0, nCount);
}

CString CString::Right(int nCount) const
{
    if (nCount >= GetLength())
        return *this;
    return Mid(GetLength() - nCount, nCount);
}

void CString::Format(LPCSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    va_list copy;
    va_copy(copy, args);
    const int nLength = _vscprintf(pszFormat, copy);
    va_end(copy);
    if (nLength < 0)
    {
        m_str.clear();
    }
    else
    {
        m_str.assign(static_cast<size_t>(nLength) + 1, '\0');
        vsnprintf(&m_str[0], m_str.size(), pszFormat, args);
        m_str.resize(static_cast<size_t>(nLength));
    }
    va_end(args);
}

LPSTR CString::GetBuffer(int nMinLength)
{
    if (nMinLength > GetLength())
        m_str.resize(static_cast<size_t>(nMinLength));
    m_str.reserve(m_str.size() + 1);
    return &m_str[0];
}

void CString::ReleaseBuffer(int nNewLength)
{
    if (nNewLength < 0)
        nNewLength = static_cast<int>(strnlen(m_str.c_str(), m_str.size()));
    m_str.resize(static_cast<size_t>(nNewLength));
}

BOOL CString::LoadString(UINT nID)
{
    // A string resource holds at most 4095 characters.
    char szText[4096] = {};
    const int nLength = ::LoadStringA(GetModuleHandleA(nullptr), nID, szText, sizeof(szText));
    m_str.assign(szText, static_cast<size_t>(nLength > 0 ? nLength : 0));
    return nLength > 0;
}
