#include "TextDocument.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace hostide
{
TextDocument::TextDocument() : m_lines(1)
{
}

bool TextDocument::Load(const std::string& strPath)
{
    std::ifstream file(strPath, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    SetText(file ? text.str() : std::string());
    return static_cast<bool>(file);
}

bool TextDocument::Save(const std::string& strPath) const
{
    std::ofstream file(strPath, std::ios::binary);
    file << Text();
    file.close();
    return static_cast<bool>(file);
}

void TextDocument::SetText(const std::string& strText)
{
    m_lines.assign(1, std::string());
    m_nLine = 0;
    m_nColumn = 0;
    m_nTop = 0;
    Insert(strText);
    m_nLine = 0;
    m_nColumn = 0;
}

std::string TextDocument::Text() const
{
    std::string strText;
    for (size_t i = 0; i < m_lines.size(); ++i)
    {
        if (i > 0)
            strText += "\r\n";
        strText += m_lines[i];
    }
    return strText;
}

void TextDocument::Insert(const std::string& strText)
{
    std::string strRun; // plain characters gathered up to the next line break
    auto flush = [&] {
        m_lines[m_nLine].insert(m_nColumn, strRun);
        m_nColumn += strRun.size();
        strRun.clear();
    };
    for (size_t i = 0; i < strText.size(); ++i)
    {
        const char ch = strText[i];
        if (ch == '\r' || ch == '\n')
        {
            flush();
            SplitLine();
            if (ch == '\r' && i + 1 < strText.size() && strText[i + 1] == '\n')
                ++i;
        }
        else
        {
            strRun += ch;
        }
    }
    flush();
}

void TextDocument::SplitLine()
{
    std::string& strLine = m_lines[m_nLine];
    std::string strRest = strLine.substr(m_nColumn);
    strLine.erase(m_nColumn);
    m_lines.insert(m_lines.begin() + m_nLine + 1, strRest);
    ++m_nLine;
    m_nColumn = 0;
}

void TextDocument::MoveTo(int nLine, size_t nColumn)
{
    m_nLine = std::max(0, std::min(nLine, LineCount() - 1));
    m_nColumn = std::min(nColumn, m_lines[m_nLine].size());
}

bool TextDocument::SetTopLine(int nTop)
{
    nTop = std::max(0, std::min(nTop, LineCount() - 1));
    if (nTop == m_nTop)
        return false;
    m_nTop = nTop;
    return true;
}

bool TextDocument::ScrollToCaret(int nVisible)
{
    nVisible = std::max(1, nVisible);
    if (m_nLine < m_nTop)
        return SetTopLine(m_nLine);
    if (m_nLine >= m_nTop + nVisible)
        return SetTopLine(m_nLine - nVisible + 1);
    return false;
}
} // namespace hostide
