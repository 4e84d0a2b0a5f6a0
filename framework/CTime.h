// A point in time in whole seconds since 1970-01-01 00:00 UTC, as the C
// runtime's time_t counts. File times are taken in UTC, so comparing two
// CTimes never depends on the time zone or on daylight saving.
#pragma once

#include <windows.h>
#include <time.h>

class CTime
{
public:
    CTime() = default;
    CTime(time_t time) : m_time(time) {}
    // A file time (100 ns units since 1601, UTC), cut to whole seconds.
    explicit CTime(const FILETIME& fileTime);

    time_t GetTime() const { return m_time; }

    friend bool operator==(const CTime& a, const CTime& b) { return a.m_time == b.m_time; }
    friend bool operator!=(const CTime& a, const CTime& b) { return a.m_time != b.m_time; }
    friend bool operator<(const CTime& a, const CTime& b) { return a.m_time < b.m_time; }
    friend bool operator>(const CTime& a, const CTime& b) { return a.m_time > b.m_time; }
    friend bool operator<=(const CTime& a, const CTime& b) { return a.m_time <= b.m_time; }
    friend bool operator>=(const CTime& a, const CTime& b) { return a.m_time >= b.m_time; }

private:
    time_t m_time = 0;
};
