#include "ViewCatalog.h"

#include "TextDocument.h"

#include <stdarg.h>
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

std::string Format(const char* pszFormat, ...)
{
    char szLine[256];
    va_list args;
    va_start(args, pszFormat);
    vsnprintf(szLine, sizeof(szLine), pszFormat, args);
    va_end(args);
    return szLine;
}

// The same few words of a small program, repeated through the memory.
const char* const kInstructions[] = {"NOP", "MOVLW 0x1F", "MOVWF 0x20", "CALL 0x010", "DECFSZ 0x21,F",
                                     "GOTO 0x004", "BSF 0x03,5", "CLRF 0x05", "BCF 0x03,5", "RETURN"};

std::string ProgramMemory()
{
    std::string strText = "   Line  Address  Opcode  Disassembly\r\n";
    for (int i = 0; i < 256; ++i)
        strText += Format("%7d   %04X    %04X    %s\r\n", i + 1, i, (i * 0x1F3 + 0x2800) & 0x3FFF,
                          kInstructions[i % 10]);
    return strText;
}

std::string TraceMemory()
{
    std::string strText = "   Line  Addr  Op    Label     Instruction        Cycles\r\n";
    for (int i = 0; i < 64; ++i)
        strText += Format("%7d  %04X  %04X  %-8s  %-17s  %6d\r\n", -64 + i, i * 3 % 0x200,
                          (i * 0x1F3 + 0x2800) & 0x3FFF, i % 8 == 0 ? "loop" : "", kInstructions[i % 10], i * 2);
    return strText;
}

std::string HexDump(int nRows, bool bErased)
{
    std::string strText = "Address   00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F  ASCII\r\n";
    for (int nRow = 0; nRow < nRows; ++nRow)
    {
        std::string strLine = Format("  %04X   ", nRow * 16);
        std::string strAscii;
        for (int i = 0; i < 16; ++i)
        {
            const int nValue = bErased ? 0xFF : (nRow * 16 + i) * 37 % 251 % 0x80;
            strLine += Format(" %02X", nValue);
            strAscii += nValue >= 0x20 && nValue < 0x7F ? static_cast<char>(nValue) : '.';
        }
        strText += strLine + "  " + strAscii + "\r\n";
    }
    return strText;
}

std::string Stack()
{
    std::string strText = "TOS  Stack Level  Return Address  Location\r\n";
    for (int i = 1; i <= 8; ++i)
        strText += Format("%s   %11d  %14s  %s\r\n", i == 1 ? ">" : " ", i, i <= 2 ? (i == 1 ? "0x0014" : "0x0031") : "",
                          i == 1 ? "delay+0x4" : (i == 2 ? "main+0x9" : ""));
    return strText;
}

std::string SpecialRegisters()
{
    const char* const kNames[] = {"INDF", "TIMER0", "PCL", "STATUS", "FSR", "PORTA", "PORTB", "PORTC",
                                  "PCLATH", "INTCON", "PIR1", "TMR1L", "TMR1H", "T1CON", "ADRES", "ADCON0"};
    std::string strText = "Address  SFR Name   Hex   Decimal  Binary     Char\r\n";
    for (int i = 0; i < 16; ++i)
    {
        const int nValue = (i * 73 + 24) & 0xFF;
        std::string strBinary;
        for (int nBit = 7; nBit >= 0; --nBit)
            strBinary += (nValue >> nBit) & 1 ? '1' : '0';
        strText += Format("  %03X    %-9s  0x%02X  %7d  %s  %c\r\n", i, kNames[i], nValue, nValue, strBinary.c_str(),
                          nValue >= 0x20 && nValue < 0x7F ? nValue : '.');
    }
    return strText;
}

std::string ProjectWindow(const std::string& strProject)
{
    if (strProject.empty())
        return "(no project open)\r\n";
    std::string strText = strProject + "\r\n";
    char szDrive[_MAX_DRIVE], szDir[_MAX_DIR], szName[_MAX_FNAME], szExt[_MAX_EXT];
    _splitpath(strProject.c_str(), szDrive, szDir, szName, szExt);
    const std::string strDir = std::string(szDrive) + szDir;
    struct Group
    {
        const char* pszName;
        const char* pszPatterns[2];
    };
    const Group kGroups[] = {{"Source Files", {"*.asm", "*.c"}}, {"Header Files", {"*.inc", "*.h"}}};
    for (const Group& group : kGroups)
    {
        strText += std::string("  ") + group.pszName + "\r\n";
        for (const char* pszPattern : group.pszPatterns)
        {
            WIN32_FIND_DATAA fd;
            HANDLE hFind = FindFirstFileA((strDir + pszPattern).c_str(), &fd);
            if (hFind == INVALID_HANDLE_VALUE)
                continue;
            do
                strText += std::string("    ") + fd.cFileName + "\r\n";
            while (FindNextFileA(hFind, &fd));
            FindClose(hFind);
        }
    }
    return strText;
}

// A listing or map file: the file itself when it is there, else a sample.
std::string FileView(const std::string& strTitle, bool bListing)
{
    TextDocument document;
    if (document.Load(strTitle))
        return document.Text();
    if (!bListing)
        return "Symbol         Type   Value    Section\r\n"
               "delay          code   0x0010   .text\r\n"
               "main           code   0x0004   .text\r\n"
               "count          data   0x0020   .bss\r\n"
               "\r\nProgram memory used: 49 words\r\n";
    std::string strText = "LOC  OBJECT CODE   LINE SOURCE TEXT\r\n";
    for (int i = 0; i < 40; ++i)
        strText += Format("%04X %04X         %5d         %s\r\n", i, (i * 0x1F3 + 0x2800) & 0x3FFF, i + 12,
                          kInstructions[i % 10]);
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
    switch (nCommand)
    {
    case 1117:
        return ProgramMemory();
    case 1118:
        return TraceMemory();
    case 1119:
        return HexDump(16, true);
    case 1120:
        return FileView(strTitle, true);
    case 1164:
        return FileView(strTitle, false);
    case 1121:
        return Stack();
    case 1122:
        return HexDump(32, false);
    case 1123:
        return SpecialRegisters();
    case 1128:
        return ProjectWindow(strProject);
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
