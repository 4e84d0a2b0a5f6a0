// The text of an editor or a view: lines of multi-byte text, an insertion
// point and the first line shown.
#pragma once

#include <string>
#include <vector>

namespace hostide
{
class TextDocument
{
public:
    TextDocument();

    // Reads a file; false when it cannot be read (the text is then empty).
    bool Load(const std::string& strPath);
    // Writes the lines joined by CRLF; a file that ended with a line break
    // keeps it, since its last line is empty.
    bool Save(const std::string& strPath) const;
    void SetText(const std::string& strText);
    std::string Text() const;

    // Inserts at the insertion point and moves it behind the text. CR LF, CR
    // and LF each split the line.
    void Insert(const std::string& strText);
    void SplitLine();

    // To the start (0) or the end (npos) of a line: the only places the
    // stand-in's keys and clicks put the insertion point.
    void MoveTo(int nLine, size_t nColumn);

    int LineCount() const { return static_cast<int>(m_lines.size()); }
    const std::string& Line(int nLine) const { return m_lines[nLine]; }
    int CaretLine() const { return m_nLine; }
    size_t CaretColumn() const { return m_nColumn; } // in bytes

    int TopLine() const { return m_nTop; }
    // Returns false when the top line stays where it is.
    bool SetTopLine(int nTop);
    // Scrolls so that the insertion point lies within nVisible lines from the top.
    bool ScrollToCaret(int nVisible);

private:
    std::vector<std::string> m_lines;
    int m_nLine = 0;
    size_t m_nColumn = 0;
    int m_nTop = 0;
};
} // namespace hostide
