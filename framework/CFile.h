// Files by name. Only the status query is needed so far: the tool reads
// and writes no file contents of its own beyond the settings.
#pragma once

#include "CFileStatus.h"

class CFile
{
public:
    // The status of the file or directory lpszFileName. FALSE when it
    // cannot be found or read; rStatus is then left as it was.
    static BOOL GetStatus(LPCSTR lpszFileName, CFileStatus& rStatus);
};
