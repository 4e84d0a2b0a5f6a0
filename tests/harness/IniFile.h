// Reads a settings file as the ordered list of its sections and lines, the
// way a person reading it would see them (blank lines skipped).
#pragma once

#include "Fixture.h"

#include <algorithm>
#include <string>
#include <vector>

namespace qt
{
struct IniLine
{
    std::string strSection;
    std::string strKey;
    std::string strValue;
};

inline std::vector<IniLine> ReadIni(const std::string& strPath)
{
    std::vector<IniLine> lines;
    std::string strSection;
    for (const std::string& strLine : SplitLines(ReadTextFile(strPath)))
    {
        if (strLine.empty())
            continue;
        if (strLine[0] == '[')
        {
            strSection = strLine.substr(1, strLine.find(']') - 1);
            continue;
        }
        const size_t nEq = strLine.find('=');
        lines.push_back({strSection, strLine.substr(0, nEq), nEq == std::string::npos ? "" : strLine.substr(nEq + 1)});
    }
    return lines;
}

inline std::string IniValue(const std::vector<IniLine>& lines, const std::string& strSection,
                            const std::string& strKey)
{
    auto it = std::find_if(lines.begin(), lines.end(), [&](const IniLine& line) {
        return line.strSection == strSection && line.strKey == strKey;
    });
    return it == lines.end() ? "<missing>" : it->strValue;
}
} // namespace qt
