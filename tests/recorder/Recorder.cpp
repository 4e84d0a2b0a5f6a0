// Stands in for the external editor in tests: appends its whole command line
// to the file named by its first argument, then ends.
#include <windows.h>

#include <stdio.h>
#include <stdlib.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    FILE* pFile = __argc > 1 ? fopen(__argv[1], "ab") : nullptr;
    if (!pFile)
        return 1;
    fprintf(pFile, "%s\r\n", GetCommandLineA());
    return fclose(pFile) == 0 ? 0 : 1;
}
