#include "TextWords.h"

#include <string.h>

namespace TextWords
{
std::vector<std::string> Split(const char* pszText, const char* pszSeparators, IsLeadByte pfnIsLead)
{
    std::vector<std::string> words;
    std::string strWord;
    for (const char* p = pszText ? pszText : ""; *p; ++p)
    {
        const unsigned char ch = static_cast<unsigned char>(*p);
        if (pfnIsLead(ch) && p[1])
        {
            strWord += p[0];
            strWord += p[1];
            ++p;
        }
        else if (strchr(pszSeparators, *p))
        {
            if (!strWord.empty())
                words.push_back(strWord);
            strWord.clear();
        }
        else
        {
            strWord += *p;
        }
    }
    if (!strWord.empty())
        words.push_back(strWord);
    return words;
}

std::string ProjectPathFromTitle(const char* pszTitle, IsLeadByte pfnIsLead)
{
    const int kPathWord = 2;
    const std::vector<std::string> words = Split(pszTitle, " -", pfnIsLead);
    return words.size() > kPathWord ? words[kPathWord] : std::string();
}

std::vector<std::string> PatternList(const char* pszList, IsLeadByte pfnIsLead)
{
    return Split(pszList, ";", pfnIsLead);
}
} // namespace TextWords
