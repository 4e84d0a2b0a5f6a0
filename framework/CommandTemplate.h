// The command lines of the external editor and the user tools: a template
// from the settings file whose placeholders (%FILENAME%, %PROJECT%,
// %PROJECTDIR%) are replaced by what the user chose. Plain functions without
// window calls; the text is in the ANSI code page, whose lead bytes the
// caller names (see TextWords).
#pragma once

#include "TextWords.h"

#include <string>
#include <vector>

namespace CommandTemplate
{
struct Field
{
    const char* pszPlaceholder; // with its percent signs: "%FILENAME%"
    std::string value;
};

// The template with every placeholder of fields replaced by its value, read
// from the left: the text put in is never searched again, so a file name
// that itself holds a placeholder stays as it is. A '%' that starts no
// placeholder is kept.
std::string Expand(const char* pszTemplate, const std::vector<Field>& fields, TextWords::IsLeadByte pfnIsLead);

// TRUE when the template names pszPlaceholder, as Expand would find it.
bool Uses(const char* pszTemplate, const char* pszPlaceholder, TextWords::IsLeadByte pfnIsLead);
} // namespace CommandTemplate
