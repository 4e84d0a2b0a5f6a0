// Start and end of the tool: one instance only, a quiet second start, and an
// end that never waits for a host that is not there.
#include "Fixture.h"
#include "IniFile.h"
#include "TestRunner.h"
#include "Tray.h"

using namespace qt;

TEST_CASE(a_second_start_ends_at_once_and_touches_nothing)
{
    Tool first(MakeScratchDir("first"));
    REQUIRE(first.Start());
    HWND hWndFirst = first.MainFrame();

    Tool second(MakeScratchDir("second"));
    Process& process = second.GetProcess();
    REQUIRE(process.Start("\"" + second.m_strDir + "QUORVANT.exe\"", second.m_strDir));
    CHECK(process.WaitExit(10000));
    CHECK(!FileExists(second.SettingsPath()));
    CHECK(second.MainFrame() == nullptr);

    // The first runs on unchanged and still saves at its end.
    CHECK(first.GetProcess().IsRunning());
    CHECK(first.MainFrame() == hWndFirst);
    CHECK(first.Exit());
    CHECK(FileExists(first.SettingsPath()));

    // After it ended a new one starts normally.
    CHECK(second.Start());
    CHECK(second.Exit());
    CHECK(FileExists(second.SettingsPath()));
}

TEST_CASE(exit_without_a_host_closes_at_once)
{
    Tool tool(MakeScratchDir("alone"));
    REQUIRE(tool.Start());
    const DWORD dwStart = GetTickCount();
    CHECK(tool.Exit(5000));
    CHECK(GetTickCount() - dwStart < 3000);
    CHECK_EQ(tool.GetProcess().ExitCode(), 0ul);
}

TEST_CASE(the_hidden_frame_is_never_shown_and_names_its_class)
{
    Tool tool(MakeScratchDir("hidden"));
    REQUIRE(tool.Start());
    HWND hWnd = tool.MainFrame();
    REQUIRE(hWnd != nullptr);
    CHECK(!IsWindowVisible(hWnd));
    char szClass[64] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    CHECK_EQ(std::string(szClass), std::string("TrayIconFrameClass"));
}


TEST_CASE(the_tray_icon_menu_opens_on_a_left_click_and_exit_ends_the_tool)
{
    const size_t nBefore = TrayIcons().size();
    Tool tool(MakeScratchDir("tray"));
    REQUIRE(tool.Start());
    REQUIRE(WaitFor([&] { return TrayIcons().size() == nBefore + 1; }, 5000));
    HWND hWndIcon = TrayIcons().back();

    // The right button only brings the hidden frame forward: no menu.
    ClickAt(Centre(hWndIcon), MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    CHECK(!WaitFor([] { return VisibleMenu() != nullptr; }, 700));
    CHECK(tool.GetProcess().IsRunning());

    // The left button opens the menu at the mouse; its one item ends the tool.
    REQUIRE(ExitFromTrayMenu(hWndIcon));
    CHECK(tool.GetProcess().WaitExit(10000));
    CHECK_EQ(tool.GetProcess().ExitCode(), 0ul);
    CHECK(FileExists(tool.SettingsPath()));
    CHECK(WaitFor([&] { return TrayIcons().size() == nBefore; }, 5000));
}

namespace
{
const char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// The user's Run value of the tool, or "<none>".
std::string RunValue()
{
    char szValue[1024] = {};
    DWORD cbValue = sizeof(szValue) - 1;
    if (RegGetValueA(HKEY_CURRENT_USER, kRunKey, "QUORVANT", RRF_RT_REG_SZ, nullptr, szValue, &cbValue) !=
        ERROR_SUCCESS)
        return "<none>";
    return szValue;
}
} // namespace

TEST_CASE(start_with_windows_points_the_run_value_at_this_copy_and_takes_it_away)
{
    // Another folder's copy had it: not this copy's, and choosing the item
    // points it here rather than leaving it there.
    const std::string strElsewhere = "\"C:\\elsewhere\\QUORVANT.exe\"";
    REQUIRE(RegSetKeyValueA(HKEY_CURRENT_USER, kRunKey, "QUORVANT", REG_SZ, strElsewhere.c_str(),
                            static_cast<DWORD>(strElsewhere.size() + 1)) == ERROR_SUCCESS);
    const std::string strDir = MakeScratchDir("runkey");
    const std::string strThis = "\"" + strDir + "QUORVANT.exe\"";
    // Checked in one run, unchecked in the next: the item reads the value.
    for (const bool bOn : {true, false})
    {
        const size_t nBefore = TrayIcons().size();
        Tool tool(strDir);
        REQUIRE(tool.Start());
        REQUIRE(WaitFor([&] { return TrayIcons().size() == nBefore + 1; }, 5000));
        REQUIRE(ChooseFromTrayMenu(TrayIcons().back(), 'W'));
        if (bOn)
            CHECK(WaitFor([&] { return _stricmp(RunValue().c_str(), strThis.c_str()) == 0; }, 5000));
        else
            CHECK(WaitFor([&] { return RunValue() == "<none>"; }, 5000));
        CHECK(tool.GetProcess().IsRunning());
        CHECK(tool.Exit());
        REQUIRE(WaitFor([&] { return TrayIcons().size() == nBefore; }, 5000));
    }
}
