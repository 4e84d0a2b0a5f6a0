// The calls of the library, made in the tool's process, and the hook
// procedures through which the library gets into the host IDE.
//
// Nothing of the library's memory is shared between processes: any program
// can load the library, and a section it could write would let it point
// every host at itself. The installing tool enters each host itself instead
// (EnterHost): a hook of the library's on the host's thread for the time of
// two WM_NULL that carry the key and the tool's window in their parameters
// (a message's own parameters reach a hook as they were sent).
#include "QuorvantHook.h"

#include <ntsecapi.h> // RtlGenRandom
#include <string.h>

#include "CHostSession.h"
#include "HostIde.h"

namespace
{
HMODULE g_hModule = nullptr;

// The tool's process only: what installHook set up.
HHOOK g_hCbtHook = nullptr;
HWND g_hWndTool = nullptr;
uint32_t g_key[2] = {};
uint32_t g_nWheelStep = 0;
// A hidden top-level window of the installing thread that hears hosts ask
// to be entered; hosts find it by its class.
HWND g_hWndListener = nullptr;
const char* const kListenerClass = CHostSession::kListenerClassName;

// A host that does not answer within this time is entered later, when it
// next creates its frame or is activated.
const UINT kEnterTimeoutMs = 1000;

LRESULT CALLBACK CbtProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    // Runs in every process with a GUI thread: a window's creation and a
    // window's activation are the only events of interest.
    if (nCode == HCBT_CREATEWND)
        g_hostSession.OnCbtCreateWindow(reinterpret_cast<HWND>(wParam),
                                        reinterpret_cast<const CBT_CREATEWNDA*>(lParam)->lpcs);
    else if (nCode == HCBT_ACTIVATE)
        g_hostSession.OnCbtActivate(reinterpret_cast<HWND>(wParam));
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}

// The two messages of an entry: WM_NULL, which every window ignores, with
// the key in wParam and lParam, then with the tool's window in wParam and,
// in lParam, this mark in the high word and the wheel policy's step in the
// low word. Two sends, so that a busy host holds the install up little.
const WORD kEnterMark = 0x5156;

LRESULT CALLBACK EnterProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    // Installed on a host's GUI thread only while EnterHost sends its frame
    // the entry: running here means the installing tool put it there, the
    // one program that can put this hook on that thread.
    static HostEnterRequest s_request; // the host's process: the key of the first message
    if (nCode == HC_ACTION)
    {
        const CWPSTRUCT* pMessage = reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (pMessage->message == WM_NULL && (static_cast<ULONG_PTR>(pMessage->lParam) >> 16) == kEnterMark)
        {
            s_request.hWndTool = static_cast<uint32_t>(pMessage->wParam);
            s_request.nWheelStep = LOWORD(pMessage->lParam);
            g_hostSession.OnEnterRequest(g_hModule, s_request);
            s_request = HostEnterRequest{};
        }
        else if (pMessage->message == WM_NULL)
        {
            s_request.key[0] = static_cast<uint32_t>(pMessage->wParam);
            s_request.key[1] = static_cast<uint32_t>(pMessage->lParam);
        }
    }
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}

bool IsHostFrame(HWND hWnd)
{
    char szClass[64];
    return GetClassNameA(hWnd, szClass, sizeof(szClass)) > 0 && strcmp(szClass, HostIde::kFrameClass) == 0;
}

void EnterHost(HWND hWndFrame)
{
    DWORD dwProcess = 0;
    const DWORD dwThread = GetWindowThreadProcessId(hWndFrame, &dwProcess);
    if (!dwThread || dwProcess == GetCurrentProcessId() || !g_hWndTool || !IsHostFrame(hWndFrame))
        return;
    // A hook on the host's thread for the time of one message: the host
    // runs EnterProc, which enters it from inside. The host reports its
    // windows to us while we wait here (SMTO_NORMAL lets them in).
    HHOOK hHook = SetWindowsHookExA(WH_CALLWNDPROC, EnterProc, g_hModule, dwThread);
    if (!hHook)
        return;
    DWORD_PTR dwResult = 0;
    if (SendMessageTimeoutA(hWndFrame, WM_NULL, g_key[0], g_key[1], SMTO_NORMAL, kEnterTimeoutMs, &dwResult))
        SendMessageTimeoutA(hWndFrame, WM_NULL, HookWindowWord(g_hWndTool),
                            MAKELPARAM(static_cast<WORD>(g_nWheelStep), kEnterMark), SMTO_NORMAL, kEnterTimeoutMs,
                            &dwResult);
    UnhookWindowsHookEx(hHook);
}

struct FrameList
{
    HWND frames[HostIde::kMaxFrames * 4];
    unsigned nCount;
};

BOOL CALLBACK CollectHostFrames(HWND hWnd, LPARAM lParam)
{
    FrameList* pList = reinterpret_cast<FrameList*>(lParam);
    if (pList->nCount < ARRAYSIZE(pList->frames) && IsHostFrame(hWnd))
        pList->frames[pList->nCount++] = hWnd;
    return TRUE;
}

LRESULT CALLBACK ListenerProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    // Anyone may post this; entering a window that is no host frame, or one
    // entered already, does nothing.
    static const UINT uHostStarted = CHostSession::HostStartedMessage();
    if (uMsg == uHostStarted)
    {
        EnterHost(reinterpret_cast<HWND>(wParam));
        return 0;
    }
    return DefWindowProcA(hWnd, uMsg, wParam, lParam);
}

void StartListening()
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = ListenerProc;
    wc.hInstance = g_hModule;
    wc.lpszClassName = kListenerClass;
    RegisterClassA(&wc); // fails harmlessly when registered already
    g_hWndListener = CreateWindowExA(WS_EX_TOOLWINDOW, kListenerClass, "", WS_POPUP, 0, 0, 0, 0, nullptr,
                                     nullptr, g_hModule, nullptr);
}

void StopListening()
{
    if (g_hWndListener)
        DestroyWindow(g_hWndListener);
    g_hWndListener = nullptr;
}
} // namespace

QUORVANT_HOOK_API BOOL __cdecl installHook(HWND hWndTool)
{
    if (g_hCbtHook)
    {
        UnhookWindowsHookEx(g_hCbtHook);
        g_hCbtHook = nullptr;
    }
    StopListening();
    g_hWndTool = IsWindow(hWndTool) ? hWndTool : nullptr;
    // A new key for every install: a host entered by an earlier one takes
    // this one as a newer tool.
    if (!g_hWndTool || !RtlGenRandom(g_key, sizeof(g_key)) || (g_key[0] | g_key[1]) == 0)
    {
        g_hWndTool = nullptr;
        g_key[0] = g_key[1] = 0;
        return FALSE;
    }
    // The key's message must never pass for the second one of an entry.
    if ((g_key[1] >> 16) == kEnterMark)
        g_key[1] ^= 0x10000;
    StartListening();
    // The one global hook: window creation in hosts started from now on.
    // Wine: a global WH_CBT hook costs nothing measurable, where global
    // WH_CALLWNDPROC and WH_GETMESSAGE hooks cost a server round trip on
    // every message of every program (0.2 us became 145 us per sent message).
    g_hCbtHook = SetWindowsHookExA(WH_CBT, CbtProc, g_hModule, 0);
    FrameList list = {};
    EnumWindows(CollectHostFrames, reinterpret_cast<LPARAM>(&list));
    for (unsigned nIndex = 0; nIndex < list.nCount; ++nIndex)
        EnterHost(list.frames[nIndex]);
    return g_hCbtHook != nullptr;
}

QUORVANT_HOOK_API void __cdecl setHookWheelPolicy(const HookWheelPolicy* pPolicy)
{
    g_nWheelStep = pPolicy ? pPolicy->nStep : 0;
}

QUORVANT_HOOK_API void __cdecl hookKey(uint32_t key[2])
{
    key[0] = g_key[0];
    key[1] = g_key[1];
}

QUORVANT_HOOK_API BOOL __cdecl uninstallHook()
{
    if (g_hCbtHook)
    {
        UnhookWindowsHookEx(g_hCbtHook);
        g_hCbtHook = nullptr;
    }
    StopListening();
    // Each host leaves on its own thread: it sends the destroys of its
    // windows and takes its subclasses out. Posted, so a busy host never
    // holds up the tool here; the key tells the hosts it is their tool.
    FrameList list = {};
    EnumWindows(CollectHostFrames, reinterpret_cast<LPARAM>(&list));
    const UINT uLeave = CHostSession::LeaveMessage();
    for (unsigned nIndex = 0; nIndex < list.nCount; ++nIndex)
        PostMessageA(list.frames[nIndex], uLeave, g_key[0], g_key[1]);
    // The key stays until the next install: the destroys that the hosts
    // now send are still this tool's records.
    return TRUE;
}

BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD dwReason, LPVOID)
{
    // Nothing else here: the library is loaded into every GUI process while
    // the hook is installed, and a host's end needs no cleanup.
    if (dwReason == DLL_PROCESS_ATTACH)
    {
        g_hModule = hInstance;
        DisableThreadLibraryCalls(hInstance);
    }
    return TRUE;
}
