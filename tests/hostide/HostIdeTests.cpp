// The stand-in host IDE starts as the contract's host would and ends cleanly:
// everything else it does is proved through the product's own tests.
#include "Fixture.h"
#include "TestRunner.h"

using namespace qt;

namespace
{
std::string ClassOf(HWND hWnd)
{
    char szClass[64] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    return szClass;
}
} // namespace

TEST_CASE(the_stand_in_host_starts_with_the_contracts_windows_and_ends_cleanly)
{
    const std::string strDir = MakeScratchDir("hostsmoke");
    const std::string strFile = strDir + "main.asm";
    WriteTextFile(strFile, "; main\r\n        nop\r\n");
    const std::string strProject = strDir + "demo.mcp";
    Host host(strDir);
    REQUIRE(host.Start("/project \"" + strProject + "\" /open \"" + strFile + "\" /view 1117"));
    CHECK_EQ(host.Log().front(), "START pid=" + std::to_string(host.GetProcess().Id()));

    HWND hWndFrame = host.Frame();
    REQUIRE(hWndFrame != nullptr);
    char szTitle[MAX_PATH] = {};
    GetWindowTextA(hWndFrame, szTitle, sizeof(szTitle));
    CHECK_EQ(std::string(szTitle), "Host IDE - " + strProject);
    HWND hWndClient = host.FindChildOfClass(hWndFrame, "MDIClient");
    CHECK(host.FindChildOfClass(hWndFrame, "PFE_TBar") != nullptr);
    HWND hWndEditor = host.FindWindowByTitle(strFile);
    REQUIRE(hWndEditor != nullptr && hWndClient != nullptr);
    CHECK(GetParent(hWndEditor) == hWndClient);
    CHECK_EQ(ClassOf(hWndEditor), std::string("PFE_Text"));
    CHECK(host.FindChildOfClass(hWndEditor, "PFE_Num") != nullptr);
    HWND hWndView = host.FindWindowByTitle("Program Memory Window");
    REQUIRE(hWndView != nullptr);
    CHECK(host.FindChildOfClass(hWndView, "PFE_Text") != nullptr);

    CHECK(host.Close());
    CHECK_EQ(host.GetProcess().ExitCode(), 0ul);
    CHECK_EQ(host.Log().back(), std::string("EXIT"));
    CHECK_EQ(host.CountLogPrefix("SAVE"), 0);
}
