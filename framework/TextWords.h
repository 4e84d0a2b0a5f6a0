// Splitting text from windows and settings into words: the host frame's
// title, the ';'-separated file pattern lists. Plain functions without window
// calls. The text is in the ANSI code page, which may be a double-byte one;
// a separator is only ever a single byte, never the second byte of a
// double-byte character, so the caller names the lead bytes (IsDBCSLeadByte).
#pragma once

#include <string>
#include <vector>

namespace TextWords
{
typedef bool (*IsLeadByte)(unsigned char);

// The words of pszText between runs of the bytes in pszSeparators; empty
// words are skipped. A lead byte at the very end (a cut character) is kept.
std::vector<std::string> Split(const char* pszText, const char* pszSeparators, IsLeadByte pfnIsLead);

// The project's path in the host frame's title "Host IDE - C:\p\x.mcp": its
// third word, the words separated by runs of blanks and hyphens (a path
// with either is cut there). Empty when the title has fewer words.
std::string ProjectPathFromTitle(const char* pszTitle, IsLeadByte pfnIsLead);

// The patterns of a "Source"/"Header" setting: ';'-separated, empty items
// skipped, a blank after ';' belonging to the next pattern.
std::vector<std::string> PatternList(const char* pszList, IsLeadByte pfnIsLead);
} // namespace TextWords
