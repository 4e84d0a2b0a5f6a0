#include "HostVariant.h"

#include <string.h>

namespace hostide
{
HostVariant& HostVariant::Current()
{
    static HostVariant s_variant;
    return s_variant;
}

void HostVariant::Apply(const std::string& strList)
{
    size_t nStart = 0;
    while (nStart <= strList.size())
    {
        const size_t nEnd = strList.find(',', nStart);
        const std::string strName = strList.substr(nStart, nEnd == std::string::npos ? std::string::npos : nEnd - nStart);
        if (_stricmp(strName.c_str(), "lparam") == 0)
            bLayoutFromLParam = true;
        else if (_stricmp(strName.c_str(), "wheel") == 0)
            bWheelToParent = true;
        else if (_stricmp(strName.c_str(), "tallbar") == 0)
            nToolBarHeight = 44;
        if (nEnd == std::string::npos)
            break;
        nStart = nEnd + 1;
    }
}
} // namespace hostide
