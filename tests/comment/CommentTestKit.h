// What the Comment Editor's tests do from their own process: put things on
// the clipboard and read it back, find the tool's dialog, press real keys
// and buttons with SendInput, and read the screen.
#pragma once

#include "Fixture.h"
#include "Pixels.h"
#include "Tray.h"

#include <windows.h>

#include <string.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace kit
{
// The clipboard, open while the object lives. Retried: another process
// (the tool, the host) may have it open for a moment.
class Clipboard
{
public:
    Clipboard()
    {
        qt::WaitFor([&] { return (m_bOpen = OpenClipboard(nullptr) != FALSE); }, 3000);
    }
    ~Clipboard()
    {
        if (m_bOpen)
            CloseClipboard();
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    bool IsOpen() const { return m_bOpen; }

private:
    bool m_bOpen = false;
};

inline HGLOBAL MakeBlock(const void* pData, size_t nSize)
{
    HGLOBAL hBlock = GlobalAlloc(GMEM_MOVEABLE, nSize);
    if (void* p = GlobalLock(hBlock))
    {
        memcpy(p, pData, nSize);
        GlobalUnlock(hBlock);
    }
    return hBlock;
}

inline UINT TestFormat()
{
    return RegisterClipboardFormatA("QuorvantTestFormat");
}

// A small red bitmap, the clipboard's picture.
inline HBITMAP MakeBitmap()
{
    HDC hScreen = GetDC(nullptr);
    HBITMAP hBitmap = CreateCompatibleBitmap(hScreen, 8, 8);
    HDC hDC = CreateCompatibleDC(hScreen);
    HGDIOBJ hOld = SelectObject(hDC, hBitmap);
    RECT rc = {0, 0, 8, 8};
    HBRUSH hBrush = CreateSolidBrush(RGB(255, 0, 0));
    FillRect(hDC, &rc, hBrush);
    DeleteObject(hBrush);
    SelectObject(hDC, hOld);
    DeleteDC(hDC);
    ReleaseDC(nullptr, hScreen);
    return hBitmap;
}

// Empties the clipboard and puts the given things on it: ANSI text (when
// bText), a private format and a bitmap.
inline bool SetClipboard(bool bText, const std::string& strText, bool bPrivate = false, bool bBitmap = false)
{
    Clipboard clipboard;
    if (!clipboard.IsOpen() || !EmptyClipboard())
        return false;
    bool bOk = true;
    if (bText)
        bOk = SetClipboardData(CF_TEXT, MakeBlock(strText.c_str(), strText.size() + 1)) && bOk;
    if (bPrivate)
        bOk = SetClipboardData(TestFormat(), MakeBlock("private", 8)) && bOk;
    if (bBitmap)
        bOk = SetClipboardData(CF_BITMAP, MakeBitmap()) && bOk;
    return bOk;
}

inline bool SetClipboardText(const std::string& strText)
{
    return SetClipboard(true, strText);
}

// The clipboard's CF_TEXT, or "<none>" when it holds no text.
inline std::string ClipboardText()
{
    Clipboard clipboard;
    HANDLE hData = clipboard.IsOpen() ? GetClipboardData(CF_TEXT) : nullptr;
    if (!hData)
        return "<none>";
    std::string strText;
    if (const char* psz = static_cast<const char*>(GlobalLock(hData)))
    {
        strText = psz;
        GlobalUnlock(hData);
    }
    return strText;
}

// The clipboard's text as UTF-16, for text outside the test's code page.
inline std::wstring ClipboardUnicode()
{
    Clipboard clipboard;
    HANDLE hData = clipboard.IsOpen() ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    std::wstring strText;
    if (const wchar_t* psz = hData ? static_cast<const wchar_t*>(GlobalLock(hData)) : nullptr)
    {
        strText = psz;
        GlobalUnlock(hData);
    }
    return strText;
}

inline bool ClipboardHas(UINT nFormat)
{
    return IsClipboardFormatAvailable(nFormat) != FALSE;
}

// Types text into the focused window as a keyboard would deliver its
// characters (VK_PACKET: the window gets WM_CHAR, whatever the layout).
inline void TypeText(const std::wstring& strText)
{
    std::vector<INPUT> inputs;
    for (wchar_t ch : strText)
    {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wScan = ch;
        input.ki.dwFlags = KEYEVENTF_UNICODE;
        inputs.push_back(input);
        input.ki.dwFlags = KEYEVENTF_UNICODE | KEYEVENTF_KEYUP;
        inputs.push_back(input);
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

inline std::wstring Widen(const std::string& str)
{
    return std::wstring(str.begin(), str.end());
}

// A real click of the left button on the middle of a window.
inline void ClickWindow(HWND hWnd)
{
    qt::ClickAt(qt::Centre(hWnd), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
}

inline DWORD ProcessOf(HWND hWnd)
{
    DWORD dwProcessId = 0;
    GetWindowThreadProcessId(hWnd, &dwProcessId);
    return dwProcessId;
}

struct DialogSearch
{
    DWORD dwProcessId;
    HWND hWndFound;
};

inline BOOL CALLBACK FindDialogProc(HWND hWnd, LPARAM lParam)
{
    DialogSearch* pSearch = reinterpret_cast<DialogSearch*>(lParam);
    char szClass[64] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (ProcessOf(hWnd) == pSearch->dwProcessId && strcmp(szClass, "#32770") == 0 && IsWindowVisible(hWnd) &&
        GetDlgItem(hWnd, 1003) != nullptr)
    {
        pSearch->hWndFound = hWnd;
        return FALSE;
    }
    return TRUE;
}

// The visible dialog of a process that holds a comment field (control
// 1003): the Comment Editor, not the Assist Window, which is a dialog too
// and, under Wine, a top-level one. NULL when there is none.
inline HWND FindDialog(DWORD dwProcessId)
{
    DialogSearch search = {dwProcessId, nullptr};
    EnumWindows(FindDialogProc, reinterpret_cast<LPARAM>(&search));
    return search.hWndFound;
}

inline HWND WaitDialog(DWORD dwProcessId, DWORD dwTimeoutMs = 5000)
{
    HWND hWnd = nullptr;
    qt::WaitFor([&] { return (hWnd = FindDialog(dwProcessId)) != nullptr; }, dwTimeoutMs);
    return hWnd;
}

inline bool WaitDialogGone(DWORD dwProcessId, DWORD dwTimeoutMs = 5000)
{
    return qt::WaitFor([&] { return FindDialog(dwProcessId) == nullptr; }, dwTimeoutMs);
}

inline std::string TextOf(HWND hWnd)
{
    char sz[1024] = {};
    GetWindowTextA(hWnd, sz, sizeof(sz));
    return sz;
}

// The dialog in front with its text field focused, so typed keys reach it.
inline bool FocusDialog(HWND hWndDialog)
{
    SetForegroundWindow(hWndDialog);
    return qt::WaitFor([&] { return GetForegroundWindow() == hWndDialog; }, 3000);
}

// Whether the tool's thread reads its messages: a message sent to its main
// frame is answered.
inline bool Answers(HWND hWnd, UINT nTimeoutMs = 2000)
{
    DWORD_PTR dwResult = 0;
    return SendMessageTimeoutA(hWnd, WM_NULL, 0, 0, SMTO_NORMAL, nTimeoutMs, &dwResult) != 0;
}

// Pixels of a canvas and of the screen, as every pixel test reads them.
using ::Canvas;
using ::ScreenShot;

// A DIALOGEX template as the resource compiler wrote it.
struct DialogItem
{
    int nId;
    std::string strClass;
    std::string strText;
    unsigned long dwStyle;
    int x, y, cx, cy;
};

struct DialogTemplate
{
    unsigned long dwStyle = 0;
    unsigned long dwExStyle = 0;
    int x = 0, y = 0, cx = 0, cy = 0;
    std::string strTitle;
    int nPointSize = 0;
    std::string strFont;
    std::vector<DialogItem> items;
};

class TemplateReader
{
public:
    explicit TemplateReader(const BYTE* pStart) : m_pStart(pStart), m_p(pStart) {}

    DialogTemplate Read()
    {
        DialogTemplate dlg;
        if (Word() != 1 || Word() != 0xFFFF)
            return dlg; // not a DIALOGEX
        Dword(); // help id
        dlg.dwExStyle = Dword();
        dlg.dwStyle = Dword();
        const int nItems = Word();
        dlg.x = Short();
        dlg.y = Short();
        dlg.cx = Short();
        dlg.cy = Short();
        NameOrOrdinal(); // menu
        NameOrOrdinal(); // class
        dlg.strTitle = String();
        if (dlg.dwStyle & DS_SETFONT)
        {
            dlg.nPointSize = Word();
            Word(); // weight
            m_p += 2; // italic, charset
            dlg.strFont = String();
        }
        for (int i = 0; i < nItems; ++i)
        {
            Align();
            DialogItem item = {};
            Dword(); // help id
            Dword(); // extended style
            item.dwStyle = Dword();
            item.x = Short();
            item.y = Short();
            item.cx = Short();
            item.cy = Short();
            item.nId = static_cast<int>(Dword());
            item.strClass = NameOrOrdinal();
            item.strText = NameOrOrdinal();
            m_p += Word(); // creation data
            dlg.items.push_back(item);
        }
        return dlg;
    }

private:
    WORD Word()
    {
        WORD w;
        memcpy(&w, m_p, 2);
        m_p += 2;
        return w;
    }
    short Short() { return static_cast<short>(Word()); }
    DWORD Dword()
    {
        DWORD dw;
        memcpy(&dw, m_p, 4);
        m_p += 4;
        return dw;
    }
    void Align()
    {
        while ((m_p - m_pStart) % 4)
            ++m_p;
    }
    std::string String()
    {
        std::string str;
        for (WORD w = Word(); w; w = Word())
            str += static_cast<char>(w);
        return str;
    }
    // A string, or an ordinal (the predefined classes: 0x80 button, 0x81 edit).
    std::string NameOrOrdinal()
    {
        WORD w;
        memcpy(&w, m_p, 2);
        if (w != 0xFFFF)
            return String();
        m_p += 2;
        switch (Word())
        {
        case 0x80:
            return "Button";
        case 0x81:
            return "Edit";
        case 0x82:
            return "Static";
        default:
            return "#ordinal";
        }
    }

    const BYTE* m_pStart;
    const BYTE* m_p;
};
} // namespace kit
