// A host frame that does not answer the paste command: on WM_COMMAND 1040 it
// writes "PASTE REQUESTED" to its log and stops reading its messages, for
// good or for the given time; when it comes back it pastes as the host IDE
// does, logging "PASTE <clipboard text>". Its class is not the host IDE's,
// so the hook library leaves it alone and only the Comment Editor, opened
// for it by the test, talks to it.
//
//   HUNGHOST.exe "<log file>" [<milliseconds to hang>]
#include <windows.h>

#include <stdlib.h>

#include <string>

namespace
{
std::string g_strLog;
DWORD g_dwHangMs = INFINITE;

void WriteLog(const std::string& strLine)
{
    HANDLE hFile = CreateFileA(g_strLog.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return;
    const std::string strText = strLine + "\r\n";
    DWORD dwWritten = 0;
    WriteFile(hFile, strText.data(), static_cast<DWORD>(strText.size()), &dwWritten, nullptr);
    CloseHandle(hFile);
}

LRESULT CALLBACK FrameProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_COMMAND && LOWORD(wParam) == 1040)
    {
        WriteLog("PASTE REQUESTED");
        Sleep(g_dwHangMs);
        std::string strText;
        if (OpenClipboard(hWnd))
        {
            HANDLE hData = GetClipboardData(CF_TEXT);
            if (const char* psz = hData ? static_cast<const char*>(GlobalLock(hData)) : nullptr)
            {
                strText = psz;
                GlobalUnlock(hData);
            }
            CloseClipboard();
        }
        WriteLog("PASTE " + strText);
        return 0;
    }
    if (nMessage == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcA(hWnd, nMessage, wParam, lParam);
}
} // namespace

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE, LPSTR lpCmdLine, int)
{
    const std::string strArguments(lpCmdLine);
    const size_t nEnd = strArguments.find('"', 1);
    if (strArguments.empty() || strArguments[0] != '"' || nEnd == std::string::npos)
        return 1;
    g_strLog = strArguments.substr(1, nEnd - 1);
    const size_t nDigits = strArguments.find_first_of("0123456789", nEnd);
    if (nDigits != std::string::npos)
        g_dwHangMs = static_cast<DWORD>(strtoul(strArguments.c_str() + nDigits, nullptr, 10));

    WNDCLASSA wc = {};
    wc.lpfnWndProc = FrameProc;
    wc.hInstance = hInstance;
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    wc.lpszClassName = "QvHungFrame";
    RegisterClassA(&wc);
    HWND hWnd = CreateWindowExA(0, wc.lpszClassName, "Hung Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 200, 500,
                                300, nullptr, nullptr, hInstance, nullptr);
    if (!hWnd)
        return 1;
    WriteLog("READY");
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0)
    {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return 0;
}
