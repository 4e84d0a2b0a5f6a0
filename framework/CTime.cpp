#include "CTime.h"

namespace
{
// 100 ns ticks from 1601-01-01 to 1970-01-01.
const ULONGLONG kTicksTo1970 = 116444736000000000ULL;
const ULONGLONG kTicksPerSecond = 10000000ULL;
}

CTime::CTime(const FILETIME& fileTime)
{
    ULARGE_INTEGER ticks;
    ticks.LowPart = fileTime.dwLowDateTime;
    ticks.HighPart = fileTime.dwHighDateTime;
    // Times before 1970 (a zeroed FILETIME among them) count from 1970 backwards.
    if (ticks.QuadPart >= kTicksTo1970)
        m_time = static_cast<time_t>((ticks.QuadPart - kTicksTo1970) / kTicksPerSecond);
    else
        m_time = -static_cast<time_t>((kTicksTo1970 - ticks.QuadPart) / kTicksPerSecond);
}
