#include "TextPainter.h"

#include "PaintDC.h"

#include <string.h>

namespace hostide
{
namespace
{
const COLORREF kText = RGB(0, 0, 0);
const COLORREF kCaretLine = RGB(232, 242, 254);
const COLORREF kGutter = RGB(228, 228, 228);
const COLORREF kGutterEdge = RGB(200, 200, 200);
const COLORREF kNumber = RGB(128, 128, 128);

void Fill(HDC hDC, const RECT& rc, COLORREF color)
{
    SetBkColor(hDC, color);
    ExtTextOutA(hDC, 0, 0, ETO_OPAQUE, &rc, nullptr, 0, nullptr);
}

} // namespace

const TextPainter& TextPainter::Instance()
{
    static TextPainter painter;
    return painter;
}

TextPainter::TextPainter()
{
    m_hFont = CreateFontA(-13, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                          CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, "Courier New");
    HDC hDC = GetDC(nullptr);
    {
        SelectedObject font(hDC, m_hFont);
        TEXTMETRICA tm = {};
        if (GetTextMetricsA(hDC, &tm))
            m_nLineHeight = tm.tmHeight + tm.tmExternalLeading;
    }
    ReleaseDC(nullptr, hDC);
}

TextPainter::~TextPainter()
{
    DeleteObject(m_hFont);
}

int TextPainter::VisibleLines(const RECT& rcArea) const
{
    const int nHeight = rcArea.bottom - rcArea.top;
    return nHeight > 0 ? nHeight / m_nLineHeight : 0;
}

void TextPainter::PaintLines(HDC hDC, const RECT& rcArea, int xText, const TextDocument& document,
                             bool bEditor) const
{
    SelectedObject font(hDC, m_hFont);
    SetTextColor(hDC, kText);
    int y = rcArea.top;
    for (int nLine = document.TopLine(); nLine < document.LineCount() && y < rcArea.bottom; ++nLine)
    {
        const RECT rcLine = {rcArea.left, y, rcArea.right, y + m_nLineHeight};
        const bool bTint = bEditor && nLine == document.CaretLine();
        const COLORREF background = bTint ? kCaretLine : RGB(255, 255, 255);
        Fill(hDC, rcLine, background);
        const std::string& strLine = document.Line(nLine);
        TabbedTextOutA(hDC, xText, y, strLine.c_str(), static_cast<int>(strLine.size()), 0, nullptr, xText);
        y += m_nLineHeight;
    }
    if (y < rcArea.bottom)
        Fill(hDC, RECT{rcArea.left, y, rcArea.right, rcArea.bottom}, RGB(255, 255, 255));
}

void TextPainter::PaintLineNumbers(HDC hDC, const RECT& rcArea, const TextDocument& document) const
{
    SelectedObject font(hDC, m_hFont);
    Fill(hDC, rcArea, kGutter);
    Fill(hDC, RECT{rcArea.right - 1, rcArea.top, rcArea.right, rcArea.bottom}, kGutterEdge);
    SetTextColor(hDC, kNumber);
    int y = rcArea.top;
    for (int nLine = document.TopLine(); nLine < document.LineCount() && y < rcArea.bottom; ++nLine)
    {
        char szNumber[16];
        const int nLength = wsprintfA(szNumber, "%d", nLine + 1);
        RECT rcNumber = {rcArea.left, y, rcArea.right - 4, y + m_nLineHeight};
        DrawTextA(hDC, szNumber, nLength, &rcNumber, DT_RIGHT | DT_SINGLELINE | DT_NOPREFIX);
        y += m_nLineHeight;
    }
}
} // namespace hostide
