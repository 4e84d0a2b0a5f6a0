#include "HostVariant.h"

namespace hostide
{
HostVariant& HostVariant::Current()
{
    static HostVariant s_variant;
    return s_variant;
}

void HostVariant::Apply(const std::string& strList)
{
    // Names between commas; unknown ones are passed over.
    const std::string strNames = "," + strList + ",";
    auto named = [&](const char* pszName) { return strNames.find(std::string(",") + pszName + ",") != std::string::npos; };
    bLayoutFromLParam = bLayoutFromLParam || named("lparam");
    bWheelToParent = bWheelToParent || named("wheel");
    if (named("tallbar"))
        nToolBarHeight = 44;
}
} // namespace hostide
