// What editors and views have in common as MDI children: their unhandled
// messages go to DefMDIChildProc, their closing and activation are logged,
// the mouse wheel does nothing in them, and they scroll a text document by
// lines with their vertical scroll bar.
#pragma once

#include "HostWindow.h"
#include "TextDocument.h"

#include <string>
#include <vector>

namespace hostide
{
class MdiChild : public HostWindow
{
public:
    std::string Title() const;

    // Every MDI child of the client, in window order.
    static std::vector<HWND> Children(HWND hWndClient);
    // The first MDI child of this class whose title equals strTitle (exactly,
    // or without regard to case when bIgnoreCase is set), or null.
    static HWND Find(HWND hWndClient, const char* pszClass, const std::string& strTitle, bool bIgnoreCase);
    static void Activate(HWND hWndChild);

    const TextDocument& Document() const { return m_document; }

protected:
    LRESULT DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    // Handles the messages common to all children (closing, the wheel, the
    // scroll bar); false for the others.
    bool HandleCommon(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT& lResult);
    // Where the lines are drawn: the client area, less a gutter.
    virtual RECT TextArea() const;
    // Repaints whatever shows the document after it scrolled.
    virtual void Redraw() = 0;
    int VisibleLines() const;
    // Any line may be the top one, so the range reaches one page past the end.
    void UpdateScrollBar();

    TextDocument m_document;

private:
    // WM_VSCROLL: logs it, then moves the top line; false for a code that
    // moves nothing (a page or the ends: the host's users drag the thumb).
    bool ScrollDocument(UINT nCode);
};
} // namespace hostide
