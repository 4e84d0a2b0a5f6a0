// A test helper loaded into the stand-in host IDE through a message hook: it
// turns a marked WM_DROPFILES, whose wParam is a global atom naming the files
// ("path|path"), into a real drop block made inside the host's process.
//
// Wine: a drop block allocated in another process arrives in the host as a
// handle value that names nothing of the drop there (observed: DragQueryFile
// read one-letter "files" out of the host's own memory), so a drop from a
// test has to be built on the host's side.
#include <windows.h>
#include <shlobj.h>

#include <string.h>

namespace
{
const LPARAM kDropMark = 0x0D0F11E5;           // a well-formed block
const LPARAM kUnterminatedDropMark = 0x0D0F11E6; // a block whose list has no end

// bTerminated false leaves out the NULs that end the last name and the list,
// so the list runs past the end of the block.
HGLOBAL MakeDropBlock(const char* pszFiles, bool bTerminated)
{
    // DROPFILES header, then each path with its NUL, then the list's NUL.
    const size_t nNames = strlen(pszFiles) + (bTerminated ? 2 : 0);
    HGLOBAL hDrop = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + nNames);
    if (!hDrop)
        return nullptr;
    DROPFILES* pDrop = static_cast<DROPFILES*>(GlobalLock(hDrop));
    if (!pDrop)
    {
        GlobalFree(hDrop);
        return nullptr;
    }
    pDrop->pFiles = sizeof(DROPFILES);
    char* pszOut = reinterpret_cast<char*>(pDrop + 1);
    for (const char* p = pszFiles; *p; ++p, ++pszOut)
        *pszOut = *p == '|' ? '\0' : *p;
    if (!bTerminated)
        memset(pszOut, 'x', GlobalSize(hDrop) - (pszOut - reinterpret_cast<char*>(pDrop)));
    GlobalUnlock(hDrop);
    return hDrop;
}
} // namespace

// Exported undecorated by DropInjector.def, on both bitnesses.
extern "C" LRESULT CALLBACK DropInjectorHook(int nCode, WPARAM wParam, LPARAM lParam)
{
    if (nCode == HC_ACTION && wParam == PM_REMOVE)
    {
        MSG* pMsg = reinterpret_cast<MSG*>(lParam);
        if (pMsg->message == WM_DROPFILES && (pMsg->lParam == kDropMark || pMsg->lParam == kUnterminatedDropMark))
        {
            char szFiles[256] = {};
            GlobalGetAtomNameA(static_cast<ATOM>(pMsg->wParam), szFiles, sizeof(szFiles));
            pMsg->wParam = reinterpret_cast<WPARAM>(MakeDropBlock(szFiles, pMsg->lParam == kDropMark));
            pMsg->lParam = 0;
        }
    }
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}
