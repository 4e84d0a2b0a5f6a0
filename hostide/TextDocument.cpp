#include "TextDocument.h"

#include <windows.h>

#include <algorithm>
#include <stdio.h>

namespace hostide
{
TextDocument::TextDocument() : m_lines(1)
{
}

bool TextDocument::Load(const std::string& strPath)
{
    FILE* pFile = fopen(strPath.c_str(), "rb");
    if (!pFile)
    {
        SetText(std::string());
        return false;
    }
    std::string strText;
    char buffer[4096];
    size_t nRead = 0;
    while ((nRead = fread(buffer, 1, sizeof(buffer), pFile)) > 0)
        strText.append(buffer, nRead);
    fclose(pFile);
    SetText(strText);
    return true;
}

bool TextDocument::Save(const std::string& strPath) const
{
    FILE* pFile = fopen(strPath.c_str(), "wb");
    if (!pFile)
        return false;
    const std::string strText = Text();
    const bool bOk = fwrite(strText.data(), 1, strText.size(), pFile) == strText.size();
    return fclose(pFile) == 0 && bOk;
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

void TextDocument::DeleteBefore()
{
    if (m_nColumn == 0)
    {
        if (m_nLine == 0)
            return;
        const size_t nJoin = m_lines[m_nLine - 1].size();
        m_lines[m_nLine - 1] += m_lines[m_nLine];
        m_lines.erase(m_lines.begin() + m_nLine);
        --m_nLine;
        m_nColumn = nJoin;
        return;
    }
    // A double-byte character goes as a whole.
    const char* pszLine = m_lines[m_nLine].c_str();
    const size_t nStart = static_cast<size_t>(CharPrevA(pszLine, pszLine + m_nColumn) - pszLine);
    m_lines[m_nLine].erase(nStart, m_nColumn - nStart);
    m_nColumn = nStart;
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
