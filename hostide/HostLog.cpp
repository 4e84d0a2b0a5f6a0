// Lines of the log, exactly as the tests parse them (ANSI text, CRLF):
//
//   START pid=<pid>             the program started
//   READY                       the frame and the windows of the command line exist and show
//   COMMAND <id>                any WM_COMMAND reached the frame (low word of wParam)
//   SAVE <path>                 command 1006 wrote the active editor to its file
//   PASTE <text>                command 1040 inserted the clipboard text (CR and LF written as \r and \n)
//   DROP <path>                 one file of a WM_DROPFILES on the frame
//   OPEN <path>                 an editor window was created for this path
//   CLOSE <title>               an MDI child is closed (WM_CLOSE, 1007, 1008)
//   VIEW <id> <title>           a view command opened or activated a view (id 0: "Build Results")
//   BUILD <id>                  command 1033 or 1035
//   SETFOCUS <class> <title>    an editor, a view, a view's text or the MDI client got the focus;
//                               a view's text gives its view's title; the MDI client has no title
//   VSCROLL <title> <code>      an editor or a view received WM_VSCROLL (0 SB_LINEUP, 1 SB_LINEDOWN)
//   KEYDOWN <title> <vk> ctrl=<0|1>   an editor received WM_KEYDOWN
//   REGMSG <name>               a registered window message reached the frame
//   HOSTKEY 1099                the frame's own accelerator Ctrl+E fired
//   EXIT                        the message loop ended
#include "HostLog.h"

namespace hostide
{
std::string HostLog::s_strPath;

void HostLog::SetPath(const std::string& strPath)
{
    s_strPath = strPath;
}

void HostLog::Write(const std::string& strLine)
{
    if (s_strPath.empty())
        return;
    // Opened for each line: nothing stays buffered in this process, and a
    // reader may truncate the file between two lines.
    HANDLE hFile = CreateFileA(s_strPath.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return;
    const std::string strText = strLine + "\r\n";
    DWORD dwWritten = 0;
    WriteFile(hFile, strText.data(), static_cast<DWORD>(strText.size()), &dwWritten, nullptr);
    CloseHandle(hFile);
}

std::string HostLog::TitleOf(HWND hWnd)
{
    char szTitle[1024] = {};
    GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
    return szTitle;
}
} // namespace hostide
