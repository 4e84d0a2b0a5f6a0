// Draws text lines in the fixed-pitch font shared by editors and views, and
// the line numbers of an editor's gutter.
#pragma once

#include "TextDocument.h"

#include <windows.h>

namespace hostide
{
class TextPainter
{
public:
    static const TextPainter& Instance();
    ~TextPainter();
    TextPainter(const TextPainter&) = delete;
    TextPainter& operator=(const TextPainter&) = delete;

    int LineHeight() const { return m_nLineHeight; }
    int VisibleLines(const RECT& rcArea) const;

    // The document's lines from its top line on. In an editor the insertion
    // point's line is tinted and text after ';' or "//" shows as a comment.
    void PaintLines(HDC hDC, const RECT& rcArea, int xText, const TextDocument& document, bool bEditor) const;
    void PaintLineNumbers(HDC hDC, const RECT& rcArea, const TextDocument& document) const;

private:
    TextPainter();

    HFONT m_hFont = nullptr;
    int m_nLineHeight = 16;
};
} // namespace hostide
