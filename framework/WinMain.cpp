// The program's entry point: the one application object runs the program.
// In its own file so that console test programs never pull it in.
#include "CWinApp.h"

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE /*hPrevInstance*/, LPSTR /*lpCmdLine*/, int nCmdShow)
{
    CWinApp* pApp = AfxGetApp();
    return pApp ? pApp->WinMainBody(hInstance, nCmdShow) : 1;
}
