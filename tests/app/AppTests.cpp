// Start and end of the tool: one instance only, a hidden frame, the tray
// menu, and the user's choice to start it with Windows.
#include "Fixture.h"
#include "TestRunner.h"
#include "Tray.h"

using namespace qt;

TEST_CASE(a_second_start_ends_at_once_and_the_first_stays_hidden_in_the_tray_until_its_menu_ends_it)
{
    const size_t nBefore = TrayIcons().size();
    Tool first(MakeScratchDir("first"));
    REQUIRE(first.Start() && WaitFor([&] { return TrayIcons().size() == nBefore + 1; }, 5000));
    HWND hWndIcon = TrayIcons().back();
    Tool second(MakeScratchDir("second"));
    REQUIRE(second.GetProcess().Start("\"" + second.m_strDir + "QUORVANT.exe\"", second.m_strDir));
    CHECK(second.GetProcess().WaitExit(10000));
    CHECK(!FileExists(second.SettingsPath()));
    CHECK(!IsWindowVisible(first.MainFrame()));
    // The right button only brings the hidden frame forward.
    ClickAt(Centre(hWndIcon), MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    CHECK(!WaitFor([] { return VisibleMenu() != nullptr; }, 1000));
    // Without a host to wait for, the exit is at once.
    REQUIRE(ExitFromTrayMenu(hWndIcon));
    CHECK(first.GetProcess().WaitExit(3000));
    CHECK_EQ(first.GetProcess().ExitCode(), 0ul);
    CHECK(FileExists(first.SettingsPath()));
    CHECK(WaitFor([&] { return TrayIcons().size() == nBefore; }, 5000));
}

TEST_CASE(start_with_windows_points_the_run_value_at_this_copy_and_takes_it_away)
{
    const char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
    const auto runValue = [&] {
        char szValue[1024] = {};
        DWORD cbValue = sizeof(szValue) - 1;
        return RegGetValueA(HKEY_CURRENT_USER, kRunKey, "QUORVANT", RRF_RT_REG_SZ, nullptr, szValue, &cbValue)
                   ? std::string("<none>") : std::string(szValue);
    };
    // Another copy's value is not this copy's: choosing the item points it here.
    const char szElsewhere[] = "\"C:\\elsewhere\\QUORVANT.exe\"";
    REQUIRE(!RegSetKeyValueA(HKEY_CURRENT_USER, kRunKey, "QUORVANT", REG_SZ, szElsewhere, sizeof(szElsewhere)));
    const std::string strDir = MakeScratchDir("runkey");
    const std::string strThis = "\"" + strDir + "QUORVANT.exe\"";
    for (const char* pszWanted : {strThis.c_str(), "<none>"})
    {
        const size_t nBefore = TrayIcons().size();
        Tool tool(strDir);
        REQUIRE(tool.Start());
        REQUIRE(WaitFor([&] { return TrayIcons().size() == nBefore + 1; }, 5000));
        REQUIRE(ChooseFromTrayMenu(TrayIcons().back(), 'W'));
        CHECK(WaitFor([&] { return _stricmp(runValue().c_str(), pszWanted) == 0; }, 5000));
        CHECK(tool.Exit());
        REQUIRE(WaitFor([&] { return TrayIcons().size() == nBefore; }, 5000));
    }
}
