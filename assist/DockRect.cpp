#include "DockRect.h"

#include <stdio.h>
#include <stdlib.h>

namespace
{
long Clamp(long nValue, long nMin, long nMax)
{
    return nValue < nMin ? nMin : nValue > nMax ? nMax : nValue;
}
} // namespace

namespace DockRect
{
std::string Format(const long fields[4])
{
    char szText[32];
    snprintf(szText, sizeof(szText), "%04ld:%04ld:%04ld:%04ld", Clamp(fields[0], kMinField, kMaxField),
             Clamp(fields[1], kMinField, kMaxField), Clamp(fields[2], kMinField, kMaxField),
             Clamp(fields[3], kMinField, kMaxField));
    return szText;
}

void Parse(const char* pszText, long fields[4])
{
    const std::string strText = pszText ? pszText : "";
    for (size_t i = 0; i < 4; ++i)
    {
        const size_t nOffset = i * 5;
        // Four characters at most: the next field's digits are not this one's.
        const std::string strField = nOffset < strText.size() ? strText.substr(nOffset, 4) : std::string();
        fields[i] = Clamp(strtol(strField.c_str(), nullptr, 10), kMinField, kMaxField);
    }
}

int ClampWidth(long nWidth, long nFreeWidth)
{
    const long nRoom = nFreeWidth - kMinClientWidth;
    return static_cast<int>(Clamp(nWidth, 0, nRoom > 0 ? nRoom : 0));
}
} // namespace DockRect
