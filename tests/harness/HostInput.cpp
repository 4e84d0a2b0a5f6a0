#include "HostInput.h"

#include <vector>

namespace qt
{
void SendKeys(std::initializer_list<WORD> keys)
{
    std::vector<INPUT> inputs;
    for (WORD vk : keys)
    {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = vk;
        inputs.push_back(input);
    }
    for (auto it = keys.end(); it != keys.begin();)
    {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = *--it;
        input.ki.dwFlags = KEYEVENTF_KEYUP;
        inputs.push_back(input);
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

bool FocusEditor(Host& host, HWND hWndEditor)
{
    HWND hWndFrame = host.Frame();
    SetForegroundWindow(hWndFrame);
    HWND hWndClient = host.FindChildOfClass(hWndFrame, "MDIClient");
    SendMessageA(hWndClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndEditor), 0);
    return WaitFor([&] { return GetForegroundWindow() == hWndFrame; }, 3000);
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
        for (DWORD dwUp : {0ul, static_cast<unsigned long>(KEYEVENTF_KEYUP)})
        {
            INPUT input = {};
            input.type = INPUT_KEYBOARD;
            input.ki.wScan = ch;
            input.ki.dwFlags = KEYEVENTF_UNICODE | dwUp;
            inputs.push_back(input);
        }
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}
} // namespace qt
