#include "MdiChild.h"

#include "HostVariant.h"

#include "HostLog.h"
#include "TextPainter.h"

#include <mbstring.h>
#include <algorithm>
#include <string.h>

namespace hostide
{
std::string MdiChild::Title() const
{
    return HostLog::TitleOf(m_hWnd);
}

std::vector<HWND> MdiChild::Children(HWND hWndClient)
{
    std::vector<HWND> children;
    for (HWND hWnd = GetWindow(hWndClient, GW_CHILD); hWnd; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
    {
        // The icon titles of minimized children are children of the client too.
        if (GetWindow(hWnd, GW_OWNER) == nullptr)
            children.push_back(hWnd);
    }
    return children;
}

HWND MdiChild::Find(HWND hWndClient, const char* pszClass, const std::string& strTitle, bool bIgnoreCase)
{
    const unsigned char* pszWanted = reinterpret_cast<const unsigned char*>(strTitle.c_str());
    for (HWND hWnd : Children(hWndClient))
    {
        char szClass[64] = {};
        GetClassNameA(hWnd, szClass, sizeof(szClass));
        const std::string strHave = HostLog::TitleOf(hWnd);
        const unsigned char* pszHave = reinterpret_cast<const unsigned char*>(strHave.c_str());
        if (strcmp(szClass, pszClass) == 0 && (bIgnoreCase ? _mbsicmp(pszHave, pszWanted) : _mbscmp(pszHave, pszWanted)) == 0)
            return hWnd;
    }
    return nullptr;
}

void MdiChild::Activate(HWND hWndChild)
{
    HWND hWndClient = GetParent(hWndChild);
    if (IsIconic(hWndChild))
        SendMessageA(hWndClient, WM_MDIRESTORE, reinterpret_cast<WPARAM>(hWndChild), 0);
    SendMessageA(hWndClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndChild), 0);
}

LRESULT MdiChild::DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    return DefMDIChildProcA(m_hWnd, nMessage, wParam, lParam);
}

bool MdiChild::HandleCommon(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT& lResult)
{
    switch (nMessage)
    {
    case WM_CLOSE:
        // Closing never asks: tests must never meet a modal question.
        HostLog::Write("CLOSE " + Title());
        lResult = DefaultProc(nMessage, wParam, lParam);
        return true;
    case WM_MOUSEWHEEL:
        // The host predates wheel support: the wheel never scrolls here, so
        // only lines the tool sends are counted. Whether it travels on to
        // the parent is the variant's.
        if (HostVariant::Current().bWheelToParent)
            return false;
        lResult = 0;
        return true;
    case WM_VSCROLL:
        if (ScrollDocument(LOWORD(wParam)))
        {
            UpdateScrollBar();
            Redraw();
        }
        lResult = 0;
        return true;
    default:
        return false;
    }
}

bool MdiChild::ScrollDocument(UINT nCode)
{
    HostLog::Write("VSCROLL " + Title() + " " + std::to_string(nCode));
    const int nTop = m_document.TopLine();
    switch (nCode)
    {
    case SB_LINEUP:
        m_document.SetTopLine(nTop - 1);
        break;
    case SB_LINEDOWN:
        m_document.SetTopLine(nTop + 1);
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
        return false;
    }
    return true;
}

RECT MdiChild::TextArea() const
{
    RECT rc;
    GetClientRect(m_hWnd, &rc);
    return rc;
}

int MdiChild::VisibleLines() const
{
    return TextPainter::Instance().VisibleLines(TextArea());
}

void MdiChild::UpdateScrollBar()
{
    SCROLLINFO si = {};
    si.cbSize = sizeof(si);
    si.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    const int nPage = std::max(1, VisibleLines());
    si.nMin = 0;
    si.nMax = m_document.LineCount() - 1 + nPage - 1;
    si.nPage = static_cast<UINT>(nPage);
    si.nPos = m_document.TopLine();
    SetScrollInfo(m_hWnd, SB_VERT, &si, TRUE);
}
} // namespace hostide
