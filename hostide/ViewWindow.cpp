#include "ViewWindow.h"

#include "EditorWindow.h"
#include "HostLog.h"
#include "PaintDC.h"
#include "TextPainter.h"

#include <algorithm>

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
    case WM_VSCROLL:
        OnVScroll(LOWORD(wParam));
        return 0;
    default:
        break;
    }
    return DefaultProc(nMessage, wParam, lParam);
}

void ViewWindow::OnVScroll(UINT nCode)
{
    HostLog::Write("VSCROLL " + Title() + " " + std::to_string(nCode));
    const int nTop = m_document.TopLine();
    const int nPage = std::max(1, VisibleLines() - 1);
    switch (nCode)
    {
    case SB_LINEUP:
        m_document.SetTopLine(nTop - 1);
        break;
    case SB_LINEDOWN:
        m_document.SetTopLine(nTop + 1);
        break;
    case SB_PAGEUP:
        m_document.SetTopLine(nTop - nPage);
        break;
    case SB_PAGEDOWN:
        m_document.SetTopLine(nTop + nPage);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
    {
        SCROLLINFO si = {};
        si.cbSize = sizeof(si);
        si.fMask = SIF_TRACKPOS;
        if (GetScrollInfo(m_hWnd, SB_VERT, &si))
            m_document.SetTopLine(si.nTrackPos);
        break;
    }
    default:
        return;
    }
    UpdateScrollBar();
    InvalidateRect(m_hWndText, nullptr, FALSE);
}

int ViewWindow::VisibleLines() const
{
    RECT rc;
    GetClientRect(m_hWnd, &rc);
    return TextPainter::Instance().VisibleLines(rc);
}

void ViewWindow::UpdateScrollBar()
{
    SCROLLINFO si = {};
    si.cbSize = sizeof(si);
    si.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    const int nPage = std::max(1, VisibleLines());
    si.nMax = m_document.LineCount() - 1 + nPage - 1;
    si.nPage = static_cast<UINT>(nPage);
    si.nPos = m_document.TopLine();
    SetScrollInfo(m_hWnd, SB_VERT, &si, TRUE);
}

// ViewText -------------------------------------------------------------------

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
        // A click activates the view; the focus follows the activation.
        HWND hWndView = GetParent(m_hWnd);
        SendMessageA(GetParent(hWndView), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndView), 0);
        return 0;
    }
    case WM_MOUSEWHEEL:
        return 0; // not passed on to the view: the host has no wheel support
    default:
        return DefaultProc(nMessage, wParam, lParam);
    }
}
} // namespace hostide
