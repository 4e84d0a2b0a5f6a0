// sources: framework/CommandTemplate.cpp
#include "framework/CommandTemplate.h"
#include "UnitTest.h"

#include <string>
#include <vector>

namespace
{
bool NoLead(unsigned char)
{
    return false;
}
bool IsLead932(unsigned char ch)
{
    return (ch >= 0x81 && ch <= 0x9F) || (ch >= 0xE0 && ch <= 0xFC);
}

const std::vector<CommandTemplate::Field> kFields = {
    {"%FILENAME%", "C:\\w\\main.asm"},
    {"%PROJECT%", "C:\\w\\p.mcp"},
    {"%PROJECTDIR%", "C:\\w"},
};
} // namespace

TEST_CASE("each placeholder is replaced, read from the left, and nothing else")
{
    const struct
    {
        const char* pszTemplate;
        const char* pszExpected;
    } cases[] = {
        {"notepad %FILENAME%", "notepad C:\\w\\main.asm"},
        {"\"ed.exe\" \"%FILENAME%\" -p %PROJECT%", "\"ed.exe\" \"C:\\w\\main.asm\" -p C:\\w\\p.mcp"},
        {"make -C %PROJECTDIR% %PROJECT%", "make -C C:\\w C:\\w\\p.mcp"},
        {"%FILENAME%%FILENAME%", "C:\\w\\main.asmC:\\w\\main.asm"},
        {"100% sure %FILENAME", "100% sure %FILENAME"},
        {"%filename% %%FILENAME%%", "%filename% %C:\\w\\main.asm%"},
        {"%", "%"},
        {"", ""},
        {"tool.exe", "tool.exe"},
    };
    for (const auto& c : cases)
        CHECK_EQ(CommandTemplate::Expand(c.pszTemplate, kFields, NoLead), std::string(c.pszExpected), c.pszTemplate);
    CHECK_EQ(CommandTemplate::Expand(nullptr, kFields, NoLead), std::string(), "no template");
}

TEST_CASE("a value holding a placeholder is put in as it is, never expanded again")
{
    const std::vector<CommandTemplate::Field> fields = {{"%FILENAME%", "C:\\%FILENAME%\\a.asm"}};
    CHECK_EQ(CommandTemplate::Expand("e %FILENAME% %FILENAME%", fields, NoLead),
             std::string("e C:\\%FILENAME%\\a.asm C:\\%FILENAME%\\a.asm"), "self-naming file");
}

TEST_CASE("a percent sign that is the second byte of a character starts nothing")
{
    // 0x81 0x25 is no character of 932, but the code page given is honoured
    // byte for byte: the pair is one character.
    const std::vector<CommandTemplate::Field> fields = {{"%X%", "v"}};
    CHECK_EQ(CommandTemplate::Expand("a\x81%X%", fields, IsLead932), std::string("a\x81%X%"), "lead byte eats '%'");
    CHECK_EQ(CommandTemplate::Expand("a\x81%X%", fields, NoLead), std::string("a\x81v"), "single-byte reading");
    CHECK_EQ(CommandTemplate::Expand("a\x81", fields, IsLead932), std::string("a\x81"), "cut character kept");
}

TEST_CASE("a template uses a placeholder only where Expand would replace it")
{
    const struct
    {
        const char* pszTemplate;
        const char* pszPlaceholder;
        bool bUses;
    } cases[] = {
        {"notepad %FILENAME%", "%FILENAME%", true},
        {"make %PROJECTDIR%", "%PROJECT%", false},
        {"make %PROJECT%", "%PROJECT%", true},
        {"make %PROJECT%", "%PROJECTDIR%", false},
        {"calc.exe", "%FILENAME%", false},
        {"", "%FILENAME%", false},
    };
    for (const auto& c : cases)
        CHECK_EQ(CommandTemplate::Uses(c.pszTemplate, c.pszPlaceholder, NoLead), c.bUses, c.pszTemplate);
}
