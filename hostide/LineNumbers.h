// The gutter at the left of an editor (class "PFE_Num"): the numbers of the
// lines the editor shows. It takes no focus of its own.
#pragma once

#include "HostWindow.h"
#include "TextDocument.h"

namespace hostide
{
class LineNumbers : public HostWindow
{
public:
    static const char kClass[];
    static const int kWidth = 36;
    static bool Register();
    // The gutter reads the editor's document, which outlives it: a child
    // window is destroyed before its parent.
    static HWND Create(HWND hWndEditor, const TextDocument& document);

private:
    explicit LineNumbers(const TextDocument& document) : m_document(document) {}
    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;

    const TextDocument& m_document;
};
} // namespace hostide
