#include "RequestRules.h"

#include <string.h>

namespace
{
// Names the file system gives to devices in every folder, with or without
// an extension and trailing blanks or dots.
const char* const kDeviceNames[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};
// Followed by one digit (COM0 to COM9, LPT0 to LPT9).
const char* const kNumberedDevices[] = {"COM", "LPT"};

char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool SameText(const char* pText, size_t nText, const char* pszName)
{
    const size_t nName = strlen(pszName);
    if (nText != nName)
        return false;
    for (size_t i = 0; i < nText; ++i)
    {
        if (Upper(pText[i]) != pszName[i])
            return false;
    }
    return true;
}

// One part of a path between separators.
bool IsDeviceName(const char* pPart, size_t nPart)
{
    // The name before the first dot, without trailing blanks: "nul .txt" is NUL.
    size_t nBase = 0;
    while (nBase < nPart && pPart[nBase] != '.')
        ++nBase;
    while (nBase > 0 && pPart[nBase - 1] == ' ')
        --nBase;
    for (const char* pszName : kDeviceNames)
    {
        if (SameText(pPart, nBase, pszName))
            return true;
    }
    for (const char* pszName : kNumberedDevices)
    {
        if (nBase == 4 && SameText(pPart, 3, pszName) && pPart[3] >= '0' && pPart[3] <= '9')
            return true;
    }
    return false;
}

bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}
} // namespace

namespace RequestRules
{
const void* BodyOf(const void* pData, size_t cbData, const uint32_t keyExpected[2], size_t* pcbBody)
{
    if (!pData || cbData < sizeof(HostRequestHeader))
        return nullptr;
    HostRequestHeader header;
    memcpy(&header, pData, sizeof(header));
    if (!IsHookKey(header.key, keyExpected))
        return nullptr;
    *pcbBody = cbData - sizeof(header);
    return static_cast<const char*>(pData) + sizeof(header);
}

const char* DropPathOf(const void* pBody, size_t cbBody)
{
    // A path of MAX_PATH characters or more is refused: the host reads drops
    // into buffers of MAX_PATH, and a cut name would open some other file.
    const char* pszPath = static_cast<const char*>(pBody);
    if (!pszPath || cbBody < 2 || cbBody > kMaxDropPath)
        return nullptr;
    if (memchr(pszPath, 0, cbBody) != pszPath + cbBody - 1)
        return nullptr;
    return pszPath;
}

bool IsLocalDrivePath(const char* pszPath)
{
    if (!pszPath || !((Upper(pszPath[0]) >= 'A' && Upper(pszPath[0]) <= 'Z') && pszPath[1] == ':' &&
                      IsSeparator(pszPath[2])))
        return false;
    const char* pPart = pszPath + 3;
    for (const char* p = pPart;; ++p)
    {
        const unsigned char c = static_cast<unsigned char>(*p);
        if (c != 0 && c < 0x20)
            return false;
        if (c == ':' || c == '*' || c == '?' || c == '"' || c == '<' || c == '>' || c == '|')
            return false; // a stream, or a pattern: never one file
        if (c == 0 || IsSeparator(static_cast<char>(c)))
        {
            if (IsDeviceName(pPart, static_cast<size_t>(p - pPart)))
                return false;
            if (c == 0)
                return true;
            pPart = p + 1;
        }
    }
}

bool IsValidPopupRequest(const void* pBody, size_t cbBody)
{
    if (!pBody || cbBody != sizeof(HostPopupRequest))
        return false;
    HostPopupRequest request;
    memcpy(&request, pBody, sizeof(request));
    if (!memchr(request.szText, 0, sizeof(request.szText)) || !request.szText[0] ||
        request.nItems > kMaxPopupItems)
        return false;
    for (uint32_t nItem = 0; nItem < request.nItems; ++nItem)
    {
        const HostPopupRequest::Item& item = request.items[nItem];
        if (!memchr(item.szText, 0, sizeof(item.szText)))
            return false;
        if (item.nId != 0 && !IsPopupCommand(item.nId))
            return false;
    }
    return true;
}

bool IsValidCheckRequest(const void* pBody, size_t cbBody)
{
    if (!pBody || cbBody != sizeof(HostCheckRequest))
        return false;
    HostCheckRequest request;
    memcpy(&request, pBody, sizeof(request));
    return (request.nCheck & ~(kCheckOn | kItemGrayed)) == 0 && IsPopupCommand(request.nId);
}
} // namespace RequestRules
