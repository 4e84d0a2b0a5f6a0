#include "HostInput.h"

#include <vector>

namespace qt
{
namespace
{
INPUT Key(WORD wVk, WORD wScan, DWORD dwFlags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki = {wVk, wScan, dwFlags, 0, 0};
    return input;
}

void Send(std::vector<INPUT>& inputs)
{
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}
} // namespace

void SendKeys(std::initializer_list<WORD> keys)
{
    std::vector<INPUT> inputs;
    for (WORD vk : keys)
        inputs.push_back(Key(vk, 0, 0));
    for (auto it = keys.end(); it != keys.begin();)
        inputs.push_back(Key(*--it, 0, KEYEVENTF_KEYUP));
    Send(inputs);
}

bool FocusEditor(Host& host, HWND hWndEditor)
{
    HWND hWndFrame = host.Frame();
    SetForegroundWindow(hWndFrame);
    HWND hWndClient = host.FindChildOfClass(hWndFrame, "MDIClient");
    SendMessageA(hWndClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndEditor), 0);
    // Keys go to the host's focus. Again while another window is in front:
    // under Wine the tool's Assist Window, a pop-up, may take the front as
    // it comes up just after the tool started.
    return WaitFor(
        [&] {
            if (GetForegroundWindow() != hWndFrame)
                SetForegroundWindow(hWndFrame);
            GUITHREADINFO info = {};
            info.cbSize = sizeof(info);
            return GetForegroundWindow() == hWndFrame &&
                   GetGUIThreadInfo(GetWindowThreadProcessId(hWndFrame, nullptr), &info) &&
                   (info.hwndFocus == hWndEditor || IsChild(hWndEditor, info.hwndFocus));
        },
        3000);
}

std::string MakeSource(const std::string& strDir, const char* pszName, int nLines)
{
    std::string strText;
    for (int i = 1; i <= nLines; ++i)
        strText += "; line " + std::to_string(i) + "\r\n";
    WriteTextFile(strDir + pszName, strText);
    return strDir + pszName;
}

void TypeText(const std::wstring& strText)
{
    std::vector<INPUT> inputs;
    for (wchar_t ch : strText)
    {
        inputs.push_back(Key(0, ch, KEYEVENTF_UNICODE));
        inputs.push_back(Key(0, ch, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP));
    }
    Send(inputs);
}
} // namespace qt
