#include "EditorWindow.h"

#include "HostLog.h"
#include "LineNumbers.h"
#include "PaintDC.h"
#include "TextPainter.h"

#include <windowsx.h>


namespace hostide
{
namespace
{
const int kTextMargin = 4; // between the gutter and the text

bool CtrlHeld()
{
    return (GetKeyState(VK_CONTROL) & 0x8000) != 0;
}
} // namespace

const char EditorWindow::kClass[] = "PFE_Text";

bool EditorWindow::Register()
{
    // Editors and the text windows inside views share this class; the object
    // bound to each window decides what it is.
    return RegisterWindowClass(kClass, CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS, nullptr,
                               LoadCursor(nullptr, IDC_IBEAM), LoadIcon(nullptr, IDI_APPLICATION));
}

EditorWindow::EditorWindow(const std::string& strPath, bool bHasFile) : m_strPath(strPath), m_bHasFile(bHasFile)
{
}

HWND EditorWindow::Open(HWND hWndClient, const std::string& strPath, bool bLoad)
{
    std::unique_ptr<EditorWindow> pEditor(new EditorWindow(strPath, bLoad));
    if (bLoad)
        pEditor->m_document.Load(strPath); // a file that is not there yet gives an empty editor
    HWND hWnd = CreateMdiChild(std::move(pEditor), hWndClient, kClass, strPath.c_str(), WS_VSCROLL, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT);
    if (hWnd)
        HostLog::Write("OPEN " + strPath);
    return hWnd;
}

EditorWindow* EditorWindow::From(HWND hWnd)
{
    return dynamic_cast<EditorWindow*>(FromHandle(hWnd));
}

void EditorWindow::InsertText(const std::string& strText)
{
    m_document.Insert(strText);
    Changed(true);
}

bool EditorWindow::Save() const
{
    return m_bHasFile && m_document.Save(m_strPath);
}

LRESULT EditorWindow::HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    LRESULT lResult = 0;
    if (HandleCommon(nMessage, wParam, lParam, lResult))
        return lResult;
    switch (nMessage)
    {
    case WM_CREATE:
        OnCreate();
        break;
    case WM_SIZE:
        OnSize();
        break; // DefMDIChildProc must see WM_SIZE too (maximized children)
    case WM_PAINT:
        OnPaint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SETFOCUS:
        OnSetFocus();
        break;
    case WM_CHAR:
        // Printable characters go in at the insertion point (the two bytes
        // of a double-byte one come as two messages); Enter and the control
        // characters of Ctrl+letter are left alone.
        if (static_cast<unsigned char>(wParam) >= 0x20)
            InsertText(std::string(1, static_cast<char>(wParam)));
        return 0;
    case WM_KEYDOWN:
        OnKeyDown(static_cast<UINT>(wParam));
        return 0;
    case WM_LBUTTONDOWN:
        OnLButtonDown(GET_Y_LPARAM(lParam));
        return 0;
    default:
        break;
    }
    return DefaultProc(nMessage, wParam, lParam);
}

void EditorWindow::OnCreate()
{
    m_hWndNumbers = LineNumbers::Create(m_hWnd, m_document);
    UpdateScrollBar();
}

void EditorWindow::OnSize()
{
    RECT rc;
    GetClientRect(m_hWnd, &rc);
    MoveWindow(m_hWndNumbers, 0, 0, LineNumbers::kWidth, rc.bottom, TRUE);
    UpdateScrollBar();
}

void EditorWindow::OnPaint()
{
    PaintDC dc(m_hWnd);
    RECT rc;
    GetClientRect(m_hWnd, &rc);
    rc.left = LineNumbers::kWidth;
    TextPainter::Instance().PaintLines(dc.Handle(), rc, rc.left + kTextMargin, m_document, true);
}

void EditorWindow::OnSetFocus()
{
    // The insertion point's line is tinted; the stand-in draws no caret.
    HostLog::Write("SETFOCUS " + std::string(kClass) + " " + Title());
}

void EditorWindow::OnKeyDown(UINT nKey)
{
    const bool bCtrl = CtrlHeld();
    HostLog::Write("KEYDOWN " + Title() + " " + std::to_string(nKey) + " ctrl=" + (bCtrl ? "1" : "0"));
    // Home and End, with Ctrl of the whole text: enough to type where a test
    // or a demo wants; the other keys are only logged.
    if (nKey != VK_HOME && nKey != VK_END)
        return;
    const int nLine = bCtrl ? (nKey == VK_HOME ? 0 : m_document.LineCount() - 1) : m_document.CaretLine();
    m_document.MoveTo(nLine, nKey == VK_HOME ? 0 : std::string::npos);
    Changed(true);
}

void EditorWindow::OnLButtonDown(int y)
{
    // Places the insertion point at the start of the line only. Taking the
    // focus on a click is left to the usual MDI activation (and to the tool).
    m_document.MoveTo(m_document.TopLine() + y / TextPainter::Instance().LineHeight(), 0);
    Changed(false);
}

RECT EditorWindow::TextArea() const
{
    RECT rc;
    GetClientRect(m_hWnd, &rc);
    rc.left = LineNumbers::kWidth;
    return rc;
}

void EditorWindow::Changed(bool bScrollToCaret)
{
    if (bScrollToCaret)
        m_document.ScrollToCaret(VisibleLines());
    Redraw();
    UpdateScrollBar();
}

void EditorWindow::Redraw()
{
    InvalidateRect(m_hWnd, nullptr, FALSE);
    InvalidateRect(m_hWndNumbers, nullptr, FALSE);
}

} // namespace hostide
