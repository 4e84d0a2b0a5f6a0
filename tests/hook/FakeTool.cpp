// A stand-in for the tool, to test the hook library on its own: a hidden
// window that calls installHook and appends every record it receives to a
// log, one line each, a window (8 hex digits) and three numbers:
//
//   READY <own window> <installHook's result> <key> <key>   (the test sends requests with the key)
//   CREATE <window> <kind>                          code 1
//   BEFORE/AFTER <window> <message> <wParam> <flags> codes 2 and 3
//   DESTROY <window>                                code 4
//   BAD <code> <size>                               a record the contract does not allow
//   HANG <ms> / AWAKE                               stopped answering, and resumed
//   EXIT 0 <windows still reported>                 after uninstallHook and the wait for the destroys
//
// Like the real tool it posts the registered dock bar message to every host
// frame it hears of.
//
// FakeTool.exe /log <file> [/busy <ms>] [/badwindow]   (/log first)
//   /busy: on every wheel record, work for the host for that long before
//          answering (requests with the key), like a slow but healthy tool
//   /badwindow: give installHook a handle that is no window
//
// Posted to its window: kHangMessage (wParam: ms) stops answering anything for
// that long; WM_CLOSE uninstalls and ends.
#include <windows.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <set>

#include "QuorvantHook.h"

namespace
{
const UINT kHangMessage = WM_APP + 1;

FILE* g_pLog = nullptr;
DWORD g_dwBusyMs = 0;
std::set<uint32_t> g_reported;

void Log(const char* pszWhat, uint32_t nWindow, unsigned n1 = 0, unsigned n2 = 0, unsigned n3 = 0)
{
    fprintf(g_pLog, "%s %08X %u %u %u\n", pszWhat, nWindow, n1, n2, n3);
    fflush(g_pLog); // a reader sees each line as soon as it is written
}

LRESULT OnCopyData(const COPYDATASTRUCT* pData)
{
    const HookRecord* pRecord = static_cast<const HookRecord*>(pData->lpData);
    if (pData->cbData != sizeof(HookRecord) || pData->dwData < HOOK_CREATE || pData->dwData > HOOK_DESTROY)
        Log("BAD", 0, static_cast<unsigned>(pData->dwData), pData->cbData);
    else if (pData->dwData == HOOK_CREATE)
    {
        Log("CREATE", pRecord->hWnd, pRecord->nKind);
        g_reported.insert(pRecord->hWnd);
        if (pRecord->nKind == KIND_FRAME)
            PostMessageA(HookRecordWindow(pRecord), RegisterWindowMessageA("49ED7A1D-5042-42B2-9095-89DBDA86205C"), 0, 0);
    }
    else if (pData->dwData == HOOK_DESTROY)
        Log("DESTROY", pRecord->hWnd), g_reported.erase(pRecord->hWnd);
    else
    {
        Log(pData->dwData == HOOK_MESSAGE ? "BEFORE" : "AFTER", pRecord->hWnd, pRecord->nMessage, pRecord->wParam,
            pRecord->nFlags);
        // Requests with the key: the one sign of life the library takes from
        // a tool whose record is late.
        for (const DWORD dwStart = GetTickCount(); g_dwBusyMs && pRecord->nMessage == WM_MOUSEWHEEL &&
                                                   GetTickCount() - dwStart < g_dwBusyMs;
             Sleep(20))
            RequestHostChoose(HookRecordWindow(pRecord), 0);
    }
    return 0;
}

LRESULT CALLBACK WndProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_COPYDATA)
        return OnCopyData(reinterpret_cast<const COPYDATASTRUCT*>(lParam));
    if (uMsg == kHangMessage) // not answering at all: no message of any kind is taken meanwhile
    {
        Log("HANG", 0, static_cast<unsigned>(wParam));
        Sleep(static_cast<DWORD>(wParam));
        return Log("AWAKE", 0), 0;
    }
    if (uMsg != WM_CLOSE)
        return DefWindowProcA(hWnd, uMsg, wParam, lParam);
    // The real tool's way out: uninstall, then take records until every
    // reported window is gone (bounded, so a test cannot hang).
    uninstallHook();
    MSG msg;
    for (const DWORD dwStart = GetTickCount(); !g_reported.empty() && GetTickCount() - dwStart < 5000;)
        if (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&msg);
        else
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    Log("EXIT", 0, static_cast<unsigned>(g_reported.size()));
    PostQuitMessage(0);
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    g_pLog = argc > 2 && strcmp(argv[1], "/log") == 0 ? fopen(argv[2], "a") : nullptr;
    if (!g_pLog)
        return 2;
    bool bBadWindow = false;
    for (int i = 3; i < argc; ++i)
        if (strcmp(argv[i], "/busy") == 0 && i + 1 < argc)
            g_dwBusyMs = static_cast<DWORD>(atoi(argv[++i]));
        else
            bBadWindow = bBadWindow || strcmp(argv[i], "/badwindow") == 0;
    WNDCLASSA wc = {};
    wc.lpfnWndProc = WndProc;
    wc.lpszClassName = "QvFakeTool";
    RegisterClassA(&wc);
    HWND hWnd = CreateWindowA("QvFakeTool", "fake tool", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    // A handle that names no window: every record the hosts send fails.
    const BOOL bInstalled = installHook(bBadWindow ? reinterpret_cast<HWND>(static_cast<LONG_PTR>(0x7ff0)) : hWnd);
    uint32_t key[2] = {};
    hookKey(key);
    Log("READY", HookWindowWord(hWnd), bInstalled ? 1 : 0, key[0], key[1]);
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0)
        DispatchMessageA(&msg);
    return 0;
}
