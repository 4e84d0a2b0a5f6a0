// What a request may ask of the host, decided without a single window call,
// so that every rule is tested natively. The host-side checks that need the
// file system (the file exists, is no directory, lies on a local drive) come
// after these, in CHostRequests.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "HookWire.h"

namespace RequestRules
{
// The data after the key of a request whose key matches keyExpected, or NULL
// (short, or a wrong or missing key). *pcbBody gets the data's size.
const void* BodyOf(const void* pData, size_t cbData, const uint32_t keyExpected[2], size_t* pcbBody);

// The path of a drop request's data: one ANSI path of fewer than MAX_PATH
// characters and its NUL, nothing after it (kMaxDropPath). NULL otherwise.
const char* DropPathOf(const void* pBody, size_t cbBody);

// A path the host may open as a drop, as text: an absolute path on a drive
// ("C:\..."), no network or device namespace ("\\server", "\\?\", "\\.\"),
// no device name as any part of it ("NUL", "COM1.txt", "CONOUT$"), no
// stream ("file:stream") and no control characters.
bool IsLocalDrivePath(const char* pszPath);

// A command the tool's popup may carry.
inline bool IsPopupCommand(uint32_t nId)
{
    return nId >= kFirstPopupCommand && nId <= kLastPopupCommand;
}

// A popup request whose texts all end within their fields, with a title,
// at most kMaxPopupItems items and every command either 0 (a separator or
// a title without a command) or one of the popup's.
bool IsValidPopupRequest(const void* pBody, size_t cbBody);

// A check request for one of the popup's commands with a check state.
bool IsValidCheckRequest(const void* pBody, size_t cbBody);
} // namespace RequestRules
