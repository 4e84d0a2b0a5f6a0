// The tool's one string type: a counted multi-byte string in the ANSI code
// page. Comparisons without regard to case are multi-byte aware (_mbsicmp).
#pragma once

#include <windows.h>
#include <string>

class CString
{
public:
    CString() = default;
    CString(LPCSTR psz) : m_str(psz ? psz : "") {}
    CString(LPCSTR pch, int nLength) : m_str(pch, pch + nLength) {}
    CString(char ch, int nRepeat = 1) : m_str(static_cast<size_t>(nRepeat), ch) {}

    int GetLength() const { return static_cast<int>(m_str.size()); }
    BOOL IsEmpty() const { return m_str.empty(); }
    void Empty() { m_str.clear(); }
    operator LPCSTR() const { return m_str.c_str(); }
    char GetAt(int nIndex) const { return m_str[static_cast<size_t>(nIndex)]; }

    CString& operator=(LPCSTR psz) { m_str = psz ? psz : ""; return *this; }
    CString& operator+=(LPCSTR psz) { m_str += psz ? psz : ""; return *this; }
    CString& operator+=(const CString& str) { m_str += str.m_str; return *this; }
    CString& operator+=(char ch) { m_str += ch; return *this; }
    friend CString operator+(const CString& a, const CString& b) { CString r(a); r += b; return r; }
    friend CString operator+(const CString& a, LPCSTR b) { CString r(a); r += b; return r; }
    friend CString operator+(LPCSTR a, const CString& b) { CString r(a); r += b; return r; }

    // Exact byte comparison (as _mbscmp orders equal strings); NoCase is _mbsicmp.
    int Compare(LPCSTR psz) const;
    int CompareNoCase(LPCSTR psz) const;
    friend bool operator==(const CString& a, LPCSTR b) { return a.Compare(b) == 0; }
    friend bool operator!=(const CString& a, LPCSTR b) { return a.Compare(b) != 0; }
    friend bool operator==(const CString& a, const CString& b) { return a.m_str == b.m_str; }
    friend bool operator!=(const CString& a, const CString& b) { return a.m_str != b.m_str; }
    friend bool operator<(const CString& a, const CString& b) { return a.m_str < b.m_str; }

    // Byte positions, -1 when not found.
    int Find(LPCSTR pszSub, int nStart = 0) const;
    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;

    void Format(LPCSTR pszFormat, ...);
    // The string resource nID of the program; FALSE and empty when it has none.
    BOOL LoadString(UINT nID);

    // Direct access for Win32 calls that fill a buffer: GetBuffer gives room
    // for nMinLength characters plus the terminator; ReleaseBuffer takes the
    // length up to the first zero (or nNewLength).
    LPSTR GetBuffer(int nMinLength);
    void ReleaseBuffer(int nNewLength = -1);

private:
    std::string m_str;
};
