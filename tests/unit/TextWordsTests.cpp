// sources: framework/TextWords.cpp
#include "framework/TextWords.h"
#include "UnitTest.h"

#include <string>
#include <vector>

namespace
{
// Code page 932's lead bytes: its trail bytes include '\' and '|', never a
// blank, '-' or ';', but a single-byte reading would cut there all the same.
bool IsLead932(unsigned char ch)
{
    return (ch >= 0x81 && ch <= 0x9F) || (ch >= 0xE0 && ch <= 0xFC);
}
// A lead byte whose trail byte is ';' or '-': not in 932, but any code page
// the function is given must be honoured byte for byte.
bool IsLeadAll(unsigned char ch)
{
    return ch == 0xA0;
}

std::string Join(const std::vector<std::string>& words)
{
    std::string s;
    for (const std::string& w : words)
        s += (s.empty() ? "" : "|") + w;
    return s;
}
} // namespace

TEST_CASE("the project path is the title's third word between blanks and hyphens")
{
    const struct
    {
        const char* pszTitle;
        const char* pszPath;
    } cases[] = {
        {"Host IDE - C:\\p\\x.mcp", "C:\\p\\x.mcp"},
        {"Host IDE - C:\\p\\x.mcp - [main.asm]", "C:\\p\\x.mcp"},
        {"  Host---IDE   -C:\\p\\x.mcp", "C:\\p\\x.mcp"},
        {"Host IDE", ""},
        {"Host IDE - ", ""},
        {"", ""},
        {nullptr, ""},
        {"Host IDE - C:\\My Projects\\x.mcp", "C:\\My"},   // a blank cuts the path
        {"Host IDE - C:\\a-b\\x.mcp", "C:\\a"},            // so does a hyphen
        {"Host IDE - C:\\\x95\x5C\\x.mcp", "C:\\\x95\x5C\\x.mcp"}, // a kanji whose trail byte is '\'
        {"Host IDE - C:\\\x82\xA0", "C:\\\x82\xA0"},
        {"Host IDE - C:\\\x82", "C:\\\x82"},                // a cut character is kept
    };
    for (const auto& c : cases)
        CHECK_EQ(TextWords::ProjectPathFromTitle(c.pszTitle, IsLead932), std::string(c.pszPath), c.pszTitle);
    CHECK_EQ(TextWords::ProjectPathFromTitle("A B \xA0-x\xA0 y", IsLeadAll), std::string("\xA0-x\xA0 y"), "lead+hyphen");
}

TEST_CASE("pattern lists split at semicolons, skip empty items and keep blanks")
{
    const struct
    {
        const char* pszList;
        const char* pszJoined;
    } cases[] = {
        {"*.asm;*.c", "*.asm|*.c"},
        {"*.asm;m*.asm;;*.ASM", "*.asm|m*.asm|*.ASM"},
        {";;", ""},
        {"", ""},
        {nullptr, ""},
        {"*.asm; *.c;", "*.asm| *.c"},
        {"\x95\x5C*.c;*.\x83\x5C", "\x95\x5C*.c|*.\x83\x5C"},
    };
    for (const auto& c : cases)
        CHECK_EQ(Join(TextWords::PatternList(c.pszList, IsLead932)), std::string(c.pszJoined), c.pszList);
    CHECK_EQ(Join(TextWords::PatternList("*.\xA0;x;*.h", IsLeadAll)), std::string("*.\xA0;x|*.h"), "lead+semicolon");
}

TEST_CASE("any bytes split into words without separators that join back to the text less separators")
{
    unit::Random random(11);
    for (int i = 0; i < 5000; ++i)
    {
        const std::string strText = random.Text(64, i % 2 ? "ab -;\x95\x5C" : nullptr);
        for (const std::vector<std::string>& words :
             {TextWords::PatternList(strText.c_str(), IsLead932), TextWords::Split(strText.c_str(), " -", IsLead932)})
        {
            size_t nBytes = 0;
            for (const std::string& w : words)
            {
                CHECK(!w.empty());
                nBytes += w.size();
            }
            CHECK(nBytes <= strText.size());
        }
        (void)TextWords::ProjectPathFromTitle(strText.c_str(), IsLead932);
    }
}
