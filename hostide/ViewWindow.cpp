#include "ViewWindow.h"

#include "HostVariant.h"

#include "EditorWindow.h"
#include "HostLog.h"
#include "PaintDC.h"
#include "TextPainter.h"

#include <windowsx.h>


namespace hostide
{
namespace
{
const int kTextMargin = 4;
}

const char ViewWindow::kClass[] = "PFE_View";

bool ViewWindow::Register()
{
    return RegisterWindowClass(kClass, CS_HREDRAW | CS_VREDRAW, reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1),
                               LoadCursor(nullptr, IDC_ARROW), LoadIcon(nullptr, IDI_APPLICATION));
}

ViewWindow::ViewWindow(const std::string& strText)
{
    m_document.SetText(strText);
}

HWND ViewWindow::Open(HWND hWndClient, const std::string& strTitle, const std::string& strText)
{
    return CreateMdiChild(std::unique_ptr<HostWindow>(new ViewWindow(strText)), hWndClient, kClass,
                          strTitle.c_str(), WS_VSCROLL, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT);
}

LRESULT ViewWindow::HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    LRESULT lResult = 0;
    if (HandleCommon(nMessage, wParam, lParam, lResult))
        return lResult;
    switch (nMessage)
    {
    case WM_CREATE:
        m_hWndText = ViewText::Create(m_hWnd, m_document);
        UpdateScrollBar();
        break;
    case WM_SIZE:
    {
        RECT rc;
        GetClientRect(m_hWnd, &rc);
        MoveWindow(m_hWndText, 0, 0, rc.right, rc.bottom, TRUE);
        UpdateScrollBar();
        break; // on to DefMDIChildProc
    }
    case WM_SETFOCUS:
        HostLog::Write("SETFOCUS " + std::string(kClass) + " " + Title());
        lResult = DefaultProc(nMessage, wParam, lParam);
        // The view's keys belong to its text window, as in an editor.
        if (IsWindow(m_hWndText))
            SetFocus(m_hWndText);
        return lResult;
    default:
        break;
    }
    return DefaultProc(nMessage, wParam, lParam);
}

void ViewWindow::Redraw()
{
    InvalidateRect(m_hWndText, nullptr, FALSE);
}

// ViewText -------------------------------------------------------------------

void ViewText::LogClick(const char* pszWhat, LPARAM lParam) const
{
    HostLog::Write(std::string(pszWhat) + " " + HostLog::TitleOf(GetParent(m_hWnd)) + " " +
                   std::to_string(GET_X_LPARAM(lParam)) + "," + std::to_string(GET_Y_LPARAM(lParam)));
}

HWND ViewText::Create(HWND hWndView, const TextDocument& document)
{
    // Of the editors' class: the host finds a view's text by that class.
    return HostWindow::Create(std::unique_ptr<HostWindow>(new ViewText(document)), 0, EditorWindow::kClass, "",
                              WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, hWndView, nullptr);
}

LRESULT ViewText::HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage)
    {
    case WM_PAINT:
    {
        PaintDC dc(m_hWnd);
        RECT rc;
        GetClientRect(m_hWnd, &rc);
        TextPainter::Instance().PaintLines(dc.Handle(), rc, kTextMargin, m_document, false);
        return 0;
    }
    case WM_ERASEBKGND:
        return 1;
    case WM_SETFOCUS:
        HostLog::Write("SETFOCUS " + std::string(EditorWindow::kClass) + " " + HostLog::TitleOf(GetParent(m_hWnd)));
        return 0;
    case WM_LBUTTONDOWN:
    {
        LogClick("LBUTTONDOWN", lParam);
        // A click activates the view; the focus follows the activation.
        HWND hWndView = GetParent(m_hWnd);
        SendMessageA(GetParent(hWndView), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndView), 0);
        return 0;
    }
    case WM_LBUTTONUP:
        LogClick("LBUTTONUP", lParam);
        return 0;
    case WM_MOUSEWHEEL:
        // No wheel support; passed on to the view only in the wheel variant.
        return HostVariant::Current().bWheelToParent ? DefaultProc(nMessage, wParam, lParam) : 0;
    default:
        return DefaultProc(nMessage, wParam, lParam);
    }
}
} // namespace hostide
