// The two calls of the library, made in the tool's process, and the global
// hook procedures through which the library gets into the host IDE.
#include "QuorvantHook.h"

#include <string.h>

#include "CHostSession.h"

// Shared by every process that maps the library: the tool's window, as the
// 32-bit word that names it in every process whatever its bitness, and the
// generation of the current installHook, so a host can tell a new tool from
// the one it already serves.
#if defined(_MSC_VER)
#pragma data_seg(".shared")
#define QUORVANT_SHARED
#else
#define QUORVANT_SHARED __attribute__((section(".shared"), shared))
#endif
volatile uint32_t g_dwToolWindow QUORVANT_SHARED = 0;
volatile LONG g_nGeneration QUORVANT_SHARED = 0;
#if defined(_MSC_VER)
#pragma data_seg()
#pragma comment(linker, "/SECTION:.shared,RWS")
#endif

namespace
{
HMODULE g_hModule = nullptr;
HHOOK g_hCbtHook = nullptr; // the tool's process only

const unsigned kMaxFrames = 64;
// A host that does not answer within this time is entered later, when it
// next creates a window or is activated.
const UINT kEnterTimeoutMs = 1000;

HWND ToolWindow()
{
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(static_cast<int32_t>(g_dwToolWindow)));
}

LRESULT CALLBACK CbtProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    // Runs in every process with a GUI thread: a window's creation and a
    // window's activation are the only events of interest.
    if (nCode == HCBT_CREATEWND)
        g_hostSession.OnCbtCreateWindow(reinterpret_cast<HWND>(wParam),
                                        reinterpret_cast<const CBT_CREATEWNDA*>(lParam)->lpcs, g_hModule,
                                        ToolWindow(), g_nGeneration);
    else if (nCode == HCBT_ACTIVATE)
        g_hostSession.OnCbtActivate(reinterpret_cast<HWND>(wParam), g_hModule, ToolWindow(), g_nGeneration);
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}

LRESULT CALLBACK EnterProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    // Installed on a host's GUI thread only while installHook sends it one
    // message: running here means that thread is ours to enter.
    if (nCode == HC_ACTION)
        g_hostSession.OnEnterRequest(g_hModule, ToolWindow(), g_nGeneration);
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}

struct FrameList
{
    HWND frames[kMaxFrames];
    unsigned nCount;
};

BOOL CALLBACK CollectHostFrames(HWND hWnd, LPARAM lParam)
{
    FrameList* pList = reinterpret_cast<FrameList*>(lParam);
    char szClass[64];
    if (pList->nCount < kMaxFrames && GetClassNameA(hWnd, szClass, sizeof(szClass)) > 0 &&
        strcmp(szClass, "PFE_Frame") == 0)
        pList->frames[pList->nCount++] = hWnd;
    return TRUE;
}

void EnterRunningHosts()
{
    FrameList list = {};
    EnumWindows(CollectHostFrames, reinterpret_cast<LPARAM>(&list));
    for (unsigned nIndex = 0; nIndex < list.nCount; ++nIndex)
    {
        DWORD dwProcess = 0;
        const DWORD dwThread = GetWindowThreadProcessId(list.frames[nIndex], &dwProcess);
        if (!dwThread || dwProcess == GetCurrentProcessId())
            continue;
        // A hook on the host's thread for the time of one message: the host
        // runs EnterProc, which enters it from inside. The host reports its
        // windows to us while we wait here (SMTO_NORMAL lets them in).
        HHOOK hHook = SetWindowsHookExA(WH_CALLWNDPROC, EnterProc, g_hModule, dwThread);
        if (!hHook)
            continue;
        DWORD_PTR dwResult = 0;
        SendMessageTimeoutA(list.frames[nIndex], WM_NULL, 0, 0, SMTO_NORMAL, kEnterTimeoutMs, &dwResult);
        UnhookWindowsHookEx(hHook);
    }
}
} // namespace

QUORVANT_HOOK_API BOOL __cdecl installHook(HWND hWndTool)
{
    if (g_hCbtHook)
    {
        UnhookWindowsHookEx(g_hCbtHook);
        g_hCbtHook = nullptr;
    }
    g_dwToolWindow = HookWindowWord(hWndTool);
    InterlockedIncrement(&g_nGeneration);
    // The one global hook: window creation in hosts started from now on.
    // Wine: a global WH_CBT hook costs nothing measurable, where global
    // WH_CALLWNDPROC and WH_GETMESSAGE hooks cost a server round trip on
    // every message of every program (0.2 us became 145 us per sent message).
    g_hCbtHook = SetWindowsHookExA(WH_CBT, CbtProc, g_hModule, 0);
    EnterRunningHosts();
    return g_hCbtHook != nullptr;
}

QUORVANT_HOOK_API BOOL __cdecl uninstallHook()
{
    g_dwToolWindow = 0;
    const LONG nGeneration = InterlockedIncrement(&g_nGeneration);
    if (g_hCbtHook)
    {
        UnhookWindowsHookEx(g_hCbtHook);
        g_hCbtHook = nullptr;
    }
    // Each host leaves on its own thread: it sends the destroys of its
    // windows and takes its subclasses out. Posted, so a busy host never
    // holds up the tool here.
    FrameList list = {};
    EnumWindows(CollectHostFrames, reinterpret_cast<LPARAM>(&list));
    const UINT uLeave = CHostSession::LeaveMessage();
    for (unsigned nIndex = 0; nIndex < list.nCount; ++nIndex)
        PostMessageA(list.frames[nIndex], uLeave, static_cast<WPARAM>(nGeneration), 0);
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
