#include "LineNumbers.h"

#include "HostVariant.h"

#include "PaintDC.h"
#include "TextPainter.h"

namespace hostide
{
const char LineNumbers::kClass[] = "PFE_Num";

bool LineNumbers::Register()
{
    return RegisterWindowClass(kClass, CS_HREDRAW | CS_VREDRAW, nullptr, LoadCursor(nullptr, IDC_ARROW));
}

HWND LineNumbers::Create(HWND hWndEditor, const TextDocument& document)
{
    return HostWindow::Create(std::unique_ptr<HostWindow>(new LineNumbers(document)), 0, kClass, "",
                              WS_CHILD | WS_VISIBLE, 0, 0, kWidth, 0, hWndEditor, nullptr);
}

LRESULT LineNumbers::HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage)
    {
    case WM_PAINT:
    {
        PaintDC dc(m_hWnd);
        RECT rc;
        GetClientRect(m_hWnd, &rc);
        TextPainter::Instance().PaintLineNumbers(dc.Handle(), rc, m_document);
        return 0;
    }
    case WM_ERASEBKGND:
        return 1;
    case WM_MOUSEWHEEL:
        // As in the editor: the wheel is not the host's; passed on in the
        // wheel variant.
        return HostVariant::Current().bWheelToParent ? DefaultProc(nMessage, wParam, lParam) : 0;
    default:
        return DefaultProc(nMessage, wParam, lParam);
    }
}
} // namespace hostide
