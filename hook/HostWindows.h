// The host IDE's windows as the library finds and classifies them: frames
// by their class, MDI clients and MDI children by their parents, an MDI
// child's inner windows by theirs (see HostIde.h for the classes).
#pragma once

#include <windows.h>

#include "HostIde.h"

namespace HostWindows
{
// Class names are compared exactly. A class given at creation may be an atom
// instead of a string; the window exists by then, so its name is read back.
bool IsClass(HWND hWnd, LPCSTR pszGiven, const char* pszClass);
inline bool IsClass(HWND hWnd, const char* pszClass)
{
    return IsClass(hWnd, nullptr, pszClass);
}

// The frames among the thread's top-level windows, at most kMaxFrames;
// the number found.
unsigned CollectFrames(DWORD dwThread, HWND (&frames)[HostIde::kMaxFrames]);

// Direct children of a window, collected first: reporting them may let the
// tool change the window tree before the walk is done.
unsigned CollectChildren(HWND hWndParent, HWND* pChildren, unsigned nMax);

// The kind (HookKind) of a window being created, from its class and the kind
// of its watched parent (0: none); 0 for a window the tool has no use for.
// Classified once, at creation: a window the host moves later keeps its kind.
UINT KindAtCreation(HWND hWnd, const CREATESTRUCTA* pcs, UINT nParentKind);

// The host IDE's GUI thread in this process: the first thread that shows a
// frame. Until one does, the process is no host, and the only cost it pays
// for the library is one class-name comparison per window it creates.
class CHostThread
{
public:
    DWORD Id() const { return m_dwThread; }
    // Whether the calling thread is the host's, claiming it for the host
    // when it is the first to create a frame, to activate one, or to hold
    // one when the tool pulls it in.
    bool ClaimOnCreate(HWND hWnd, LPCSTR lpszClass);
    bool ClaimOnActivate(HWND hWnd);
    bool ClaimOnEnter();

private:
    template <typename F> bool Claim(F fnShowsFrame)
    {
        if (m_dwThread)
            return m_dwThread == GetCurrentThreadId();
        if (!fnShowsFrame())
            return false;
        m_dwThread = GetCurrentThreadId();
        return true;
    }

    DWORD m_dwThread = 0;
};
} // namespace HostWindows
