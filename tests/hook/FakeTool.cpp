// A stand-in for the tool, to test the hook library on its own: a hidden
// window that calls installHook and appends every record it receives to a
// log, one line each:
//
//   READY <own window> <result>          installHook has returned (result 1: the hook is set)
//   CREATE <kind> <window>               code 1
//   BEFORE <window> <message> <wParam> <flags>   code 2
//   AFTER <window> <message> <wParam> <flags>    code 3
//   DESTROY <window>                     code 4
//   BAD <code> <size>                    a record the contract does not allow
//   HANG <ms> / AWAKE                    the tool stopped answering, and resumed
//   EXIT <windows still reported>        after uninstallHook and the wait for the destroys
//
// Windows as 8 hex digits, numbers in decimal. Like the real tool it posts
// the registered dock bar message to every host frame it hears of.
//
// FakeTool.exe /log <file> [/busy <ms>] [/badwindow]
//   /busy: on every wheel record, work for the host for that long before
//          answering (send it SB_ENDSCROLL over and over, as the tool sends
//          the host its scroll lines), like a slow but healthy tool
//   /badwindow: give installHook a handle that is no window
//
// Posted to its window (class "QvFakeTool"): kHangMessage (wParam: ms) stops
// answering anything for that long; WM_CLOSE uninstalls and ends.
#include <windows.h>

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <map>
#include <string>

#include "QuorvantHook.h"

namespace
{
const char kClass[] = "QvFakeTool";
const UINT kHangMessage = WM_APP + 1;
// WM_COPYDATA of the test program: send a request to the host as the tool
// that installed the hook does. Data: HWND word, request code (0: focus),
// then the request's data; the answer is the request's.
const ULONG_PTR kProxyRequest = 0x50525859;
const DWORD kExitWaitMs = 5000;

HANDLE g_hLog = INVALID_HANDLE_VALUE;
DWORD g_dwBusyMs = 0;
UINT g_uCreateDockBar = 0;
std::map<uint32_t, int> g_reported; // window -> kind, while reported

void Log(const char* pszFormat, ...)
{
    char szLine[256];
    va_list args;
    va_start(args, pszFormat);
    const int nLength = vsnprintf(szLine, sizeof(szLine) - 2, pszFormat, args);
    va_end(args);
    if (nLength <= 0)
        return;
    const size_t nSize = strlen(szLine);
    szLine[nSize] = '\r';
    szLine[nSize + 1] = '\n';
    DWORD dwWritten = 0;
    // Unbuffered: a reader sees each line as soon as it is written.
    WriteFile(g_hLog, szLine, static_cast<DWORD>(nSize + 2), &dwWritten, nullptr);
}

void OnRecord(const COPYDATASTRUCT* pData)
{
    if (pData->cbData != sizeof(HookRecord) || pData->dwData < HOOK_CREATE || pData->dwData > HOOK_DESTROY)
    {
        Log("BAD %lu %lu", static_cast<unsigned long>(pData->dwData), static_cast<unsigned long>(pData->cbData));
        return;
    }
    const HookRecord* pRecord = static_cast<const HookRecord*>(pData->lpData);
    switch (pData->dwData)
    {
    case HOOK_CREATE:
        Log("CREATE %u %08X", pRecord->nKind, pRecord->hWnd);
        g_reported[pRecord->hWnd] = static_cast<int>(pRecord->nKind);
        if (pRecord->nKind == KIND_FRAME)
            PostMessageA(HookRecordWindow(pRecord), g_uCreateDockBar, 0, 0);
        break;
    case HOOK_MESSAGE:
    case HOOK_MESSAGE_DONE:
        Log("%s %08X %u %u %u", pData->dwData == HOOK_MESSAGE ? "BEFORE" : "AFTER", pRecord->hWnd, pRecord->nMessage,
            pRecord->wParam, pRecord->nFlags);
        if (g_dwBusyMs && pRecord->nMessage == WM_MOUSEWHEEL)
        {
            const DWORD dwStart = GetTickCount();
            while (GetTickCount() - dwStart < g_dwBusyMs)
            {
                // Requests with the key: the one sign of life the library
                // takes from a tool whose record is late.
                RequestHostChoose(HookRecordWindow(pRecord), 0);
                Sleep(20);
            }
        }
        break;
    case HOOK_DESTROY:
        Log("DESTROY %08X", pRecord->hWnd);
        g_reported.erase(pRecord->hWnd);
        break;
    }
}

LRESULT CALLBACK WndProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    switch (uMsg)
    {
    case WM_COPYDATA:
    {
        const COPYDATASTRUCT* pData = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        if (pData->dwData == kProxyRequest && pData->cbData >= 8)
        {
            uint32_t head[2];
            memcpy(head, pData->lpData, sizeof(head));
            HWND hWndTarget = HandleFromWord<HWND>(head[0]);
            if (head[1] == 0)
            {
                RequestHostFocus(hWndTarget);
                return 1;
            }
            return SendHostRequest(hWndTarget, head[1], static_cast<const char*>(pData->lpData) + 8,
                                   pData->cbData - 8);
        }
        OnRecord(pData);
        return 0;
    }
    case kHangMessage:
        // Not answering at all: no message of any kind is taken meanwhile.
        Log("HANG %lu", static_cast<unsigned long>(wParam));
        Sleep(static_cast<DWORD>(wParam));
        Log("AWAKE");
        return 0;
    case WM_CLOSE:
    {
        // The real tool's way out: uninstall, then take records until every
        // reported window is gone (bounded here, so a test cannot hang).
        uninstallHook();
        const DWORD dwStart = GetTickCount();
        while (!g_reported.empty() && GetTickCount() - dwStart < kExitWaitMs)
        {
            MSG msg;
            if (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageA(&msg);
            else
                MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
        Log("EXIT %u", static_cast<unsigned>(g_reported.size()));
        DestroyWindow(hWnd);
        return 0;
    }
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcA(hWnd, uMsg, wParam, lParam);
    }
}
} // namespace

int main(int argc, char** argv)
{
    const char* pszLog = nullptr;
    bool bBadWindow = false;
    for (int i = 1; i < argc; ++i)
    {
        if (strcmp(argv[i], "/log") == 0 && i + 1 < argc)
            pszLog = argv[++i];
        else if (strcmp(argv[i], "/busy") == 0 && i + 1 < argc)
            g_dwBusyMs = static_cast<DWORD>(atoi(argv[++i]));
        else if (strcmp(argv[i], "/badwindow") == 0)
            bBadWindow = true;
    }
    if (!pszLog)
        return 2;
    g_hLog = CreateFileA(pszLog, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (g_hLog == INVALID_HANDLE_VALUE)
        return 3;
    g_uCreateDockBar = RegisterWindowMessageA("49ED7A1D-5042-42B2-9095-89DBDA86205C");

    WNDCLASSA wc = {};
    wc.lpfnWndProc = WndProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = kClass;
    RegisterClassA(&wc);
    HWND hWnd = CreateWindowA(kClass, "fake tool", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, wc.hInstance, nullptr);
    if (!hWnd)
        return 4;
    // A handle that names no window: every record the hosts send fails.
    HWND hWndTool = bBadWindow ? reinterpret_cast<HWND>(static_cast<LONG_PTR>(0x7ff0)) : hWnd;
    const BOOL bInstalled = installHook(hWndTool);
    Log("READY %08X %d", HookWindowWord(hWnd), bInstalled ? 1 : 0);

    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0)
    {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    CloseHandle(g_hLog);
    return 0;
}
