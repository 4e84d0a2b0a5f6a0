// What CFile::GetStatus tells about a file: its times, size, attributes
// and full name. A default-constructed status holds zeros and an empty name.
#pragma once

#include "CTime.h"

#include <windows.h>

struct CFileStatus
{
    CTime m_ctime;        // creation
    CTime m_mtime;        // last modification
    CTime m_atime;        // last access
    LONGLONG m_size = 0;  // in bytes
    BYTE m_attribute = 0; // the low byte of the FILE_ATTRIBUTE_ flags
    char m_szFullName[MAX_PATH] = {};
};
