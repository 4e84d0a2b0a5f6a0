// Enumerates the directory entries that match a pattern such as
// "C:\proj\*.asm". The usual loop:
//
//     CFileFind finder;
//     BOOL bMore = finder.FindFile(pattern);
//     while (bMore) {
//         bMore = finder.FindNextFile();
//         ... finder.GetFilePath() ...
//     }
//
// FindFile only opens the search; each FindNextFile makes the next entry
// current and answers whether another one follows, so it returns FALSE
// when the entry it has just made current is the last one (that entry is
// still valid). The search handle is closed by Close, by the next FindFile
// or by the destructor.
//
// Cheap by design: the directory part of the pattern is kept once per
// search, and an entry costs no allocation unless the caller asks for its
// name or path as a CString.
#pragma once

#include "CObject.h"
#include "CString.h"
#include "CTime.h"

class CFileFind : public CObject
{
public:
    CFileFind() = default;
    ~CFileFind() override;

    // Opens a search for lpszPattern ("*.*" when NULL or empty). FALSE when
    // nothing matches or the directory cannot be read.
    BOOL FindFile(LPCSTR lpszPattern = nullptr);
    // Makes the next entry current; FALSE when that entry is the last one
    // (or there is none after FindFile failed).
    BOOL FindNextFile();
    void Close();

    // The current entry. Its path is the directory part of the pattern
    // (everything up to and including its last '\', '/' or ':') joined with
    // the entry's name.
    CString GetFileName() const;
    CString GetFilePath() const;
    // The current entry's name without a copy; valid until the next call.
    LPCSTR GetFileNameRef() const;
    // TRUE when the current entry has every attribute of dwMask (FILE_ATTRIBUTE_ flags).
    BOOL MatchesMask(DWORD dwMask) const;
    BOOL IsDirectory() const { return MatchesMask(FILE_ATTRIBUTE_DIRECTORY); }
    // "." and "..".
    BOOL IsDots() const;
    BOOL GetLastWriteTime(CTime& time) const;
    ULONGLONG GetLength() const;

private:
    HANDLE m_hContext = INVALID_HANDLE_VALUE;
    CString m_strRoot;        // the pattern's directory part, with its separator
    BOOL m_bHaveCurrent = FALSE;
    BOOL m_bHaveNext = FALSE;
    // Two entries read ahead by one: FindNextFile swaps them instead of copying.
    WIN32_FIND_DATAA m_data[2] = {};
    WIN32_FIND_DATAA* m_pCurrent = &m_data[0];
    WIN32_FIND_DATAA* m_pNext = &m_data[1];
};
