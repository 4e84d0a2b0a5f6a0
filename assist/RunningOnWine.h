// Whether the program runs under Wine rather than on Windows. A few things
// that work on Windows do not under Wine (a window of this process drawn as a
// child of the host's frame); the places that part ways ask this.
#pragma once

#include <windows.h>

// Decided once, on the first call: Wine's ntdll exports wine_get_version,
// Windows' does not.
BOOL IsRunningOnWine();
