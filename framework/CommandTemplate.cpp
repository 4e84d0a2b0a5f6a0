#include "CommandTemplate.h"

#include <string.h>

namespace CommandTemplate
{
namespace
{
// The field whose placeholder starts at p, or NULL.
const Field* FieldAt(const char* p, const std::vector<Field>& fields)
{
    for (const Field& field : fields)
    {
        if (strncmp(p, field.pszPlaceholder, strlen(field.pszPlaceholder)) == 0)
            return &field;
    }
    return nullptr;
}
} // namespace

std::string Expand(const char* pszTemplate, const std::vector<Field>& fields, TextWords::IsLeadByte pfnIsLead)
{
    std::string strResult;
    for (const char* p = pszTemplate ? pszTemplate : ""; *p;)
    {
        const unsigned char ch = static_cast<unsigned char>(*p);
        if (pfnIsLead(ch) && p[1])
        {
            strResult.append(p, 2);
            p += 2;
        }
        else if (const Field* pField = *p == '%' ? FieldAt(p, fields) : nullptr)
        {
            strResult += pField->value;
            p += strlen(pField->pszPlaceholder);
        }
        else
        {
            strResult += *p++;
        }
    }
    return strResult;
}

bool Uses(const char* pszTemplate, const char* pszPlaceholder, TextWords::IsLeadByte pfnIsLead)
{
    // Used exactly when a value of one byte makes the line one byte longer
    // than an empty value does.
    const std::vector<Field> empty = {{pszPlaceholder, std::string()}};
    const std::vector<Field> one = {{pszPlaceholder, std::string(1, 'x')}};
    return Expand(pszTemplate, one, pfnIsLead).size() != Expand(pszTemplate, empty, pfnIsLead).size();
}
} // namespace CommandTemplate
