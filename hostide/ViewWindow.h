// A view: an MDI child of class "PFE_View" with one text window of class
// "PFE_Text" filling it. The view scrolls on WM_VSCROLL; its text window
// swallows the wheel and activates the view on a click.
#pragma once

#include "MdiChild.h"
#include "TextDocument.h"

#include <string>

namespace hostide
{
class ViewWindow : public MdiChild
{
public:
    static const char kClass[];
    static bool Register();

    static HWND Open(HWND hWndClient, const std::string& strTitle, const std::string& strText);

private:
    explicit ViewWindow(const std::string& strText);

    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void Redraw() override;

    HWND m_hWndText = nullptr;
};

// The text window inside a view.
class ViewText : public HostWindow
{
public:
    static HWND Create(HWND hWndView, const TextDocument& document);

private:
    explicit ViewText(const TextDocument& document) : m_document(document) {}
    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    // "<what> <view title> <x>,<y>"
    void LogClick(const char* pszWhat, LPARAM lParam) const;

    const TextDocument& m_document; // the view's; the view outlives its child
};
} // namespace hostide
