// The headers nearly every file of the build includes, compiled once: the
// Win32 headers alone are most of a file's compile time. Every file still
// includes what it uses itself; this only makes it cheap.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>
