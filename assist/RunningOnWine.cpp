#include "RunningOnWine.h"

BOOL IsRunningOnWine()
{
    static const BOOL bWine = [] {
        HMODULE hNtdll = GetModuleHandleA("ntdll.dll");
        return hNtdll && GetProcAddress(hNtdll, "wine_get_version") ? TRUE : FALSE;
    }();
    return bWine;
}
