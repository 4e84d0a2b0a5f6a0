// A plain text log that never grows without bound: lines with their time,
// appended to one file; when the next line would take it past its limit the
// file becomes the one older copy (NAME.old.log) and a new file starts.
// Closed, it writes nothing, so callers log without asking first.
#pragma once

#include "CString.h"

class CLogFile
{
public:
    CLogFile() = default;
    ~CLogFile();
    CLogFile(const CLogFile&) = delete;
    CLogFile& operator=(const CLogFile&) = delete;

    // Appends to lpszPath (made when missing), keeping it at most nLimit bytes.
    BOOL Open(LPCSTR lpszPath, DWORD nLimit);
    void Close();
    BOOL IsOpen() const { return m_hFile != INVALID_HANDLE_VALUE; }

    // One line, printf-style, stamped with the local time; cut at 1 KB.
    void Write(LPCSTR lpszFormat, ...);

    // The older copy's path: C:\t\QUORVANT.old.log for C:\t\QUORVANT.log.
    static CString OlderCopyPath(LPCSTR lpszPath);

private:
    BOOL OpenFile(DWORD dwDisposition);

    HANDLE m_hFile = INVALID_HANDLE_VALUE;
    CString m_strPath;
    DWORD m_nLimit = 0;
    DWORD m_nSize = 0;
};
