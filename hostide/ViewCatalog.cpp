#include "ViewCatalog.h"

#include "TextDocument.h"

#include <stdio.h>
#include <stdlib.h>

namespace hostide
{
namespace
{
const ViewCatalog::Entry kEntries[] = {
    {1117, "&Program Memory", "Program Memory Window"},
    {1118, "&Trace Memory", "Trace Memory Window"},
    {1119, "&EEPROM", "EEPROM Window"},
    {1120, "&Absolute Listing", ".lst"},
    {1164, "&Map File", ".map"},
    {1121, "&Stack", "Stack Window"},
    {1122, "&File Register", "File Register Window"},
    {1123, "Special &Function Register", "Special Function Register Window"},
    {1128, "Pro&ject", "Project Window"},
    {ViewCatalog::kBuildResults, "&Build Results", "Build Results"},
};

const ViewCatalog::Entry* FindEntry(UINT nCommand)
{
    for (const ViewCatalog::Entry& entry : kEntries)
    {
        if (entry.nCommand == nCommand)
            return &entry;
    }
    return nullptr;
}

// The same few words of a small program, repeated through the memory: what
// the memory, trace and listing views show, one numbered line each.
std::string Listing(const char* pszHeader, int nLines)
{
    const char* const kInstructions[] = {"NOP", "MOVLW 0x1F", "MOVWF 0x20", "CALL 0x010", "DECFSZ 0x21,F",
                                         "GOTO 0x004", "BSF 0x03,5", "CLRF 0x05", "BCF 0x03,5", "RETURN"};
    std::string strText = std::string(pszHeader) + "\r\n";
    for (int i = 0; i < nLines; ++i)
    {
        char szLine[96];
        snprintf(szLine, sizeof(szLine), "%7d   %04X    %04X    %s\r\n", i + 1, i, (i * 0x1F3 + 0x2800) & 0x3FFF,
                 kInstructions[i % 10]);
        strText += szLine;
    }
    return strText;
}

} // namespace

const ViewCatalog::Entry* ViewCatalog::Entries(int& nCount)
{
    nCount = static_cast<int>(sizeof(kEntries) / sizeof(kEntries[0]));
    return kEntries;
}

bool ViewCatalog::IsView(UINT nCommand)
{
    return FindEntry(nCommand) != nullptr;
}

std::string ViewCatalog::Title(UINT nCommand, const std::string& strProject)
{
    const Entry* pEntry = FindEntry(nCommand);
    if (!pEntry)
        return std::string();
    if (pEntry->pszTitle[0] != '.')
        return pEntry->pszTitle;
    if (strProject.empty())
        return std::string("Untitled") + pEntry->pszTitle;
    char szDrive[_MAX_DRIVE], szDir[_MAX_DIR], szName[_MAX_FNAME], szExt[_MAX_EXT];
    _splitpath(strProject.c_str(), szDrive, szDir, szName, szExt);
    return std::string(szDrive) + szDir + szName + pEntry->pszTitle;
}

std::string ViewCatalog::Content(UINT nCommand, const std::string& strProject, const std::string& strTitle)
{
    TextDocument file; // the listing and the map file show the file when it is there
    switch (nCommand)
    {
    case 1117:
    case 1118:
    case 1119:
    case 1122:
        return Listing("   Line  Address  Opcode  Disassembly", nCommand == 1117 ? 256 : 64);
    case 1120:
    case 1164:
        return file.Load(strTitle) ? file.Text() : Listing("   Line  LOC     Object  Source", 40);
    case 1121:
        return "TOS  Stack Level  Return Address\r\n>              1          0x0014\r\n               2          0x0031\r\n";
    case 1123:
        return "Address  SFR Name   Hex\r\n  003    STATUS     0x18\r\n  005    PORTA      0x00\r\n";
    case 1128:
        return strProject.empty() ? "(no project open)\r\n" : strProject + "\r\n";
    default:
        return "Build started.\r\nBuild succeeded: 0 errors, 0 warnings.\r\n";
    }
}

std::string ViewCatalog::WatchContent()
{
    return "Address  Symbol Name   Value\r\n"
           "  020    count         0x00\r\n"
           "  003    STATUS        0x18\r\n";
}
} // namespace hostide
