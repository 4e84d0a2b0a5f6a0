// Records reach the tool from anyone who sends WM_COPYDATA to its frame. Only
// those with the key of the tool's own installHook count, which only the
// hosts it entered know. This program is a third process: a window of it
// plays a host window, and what the tool's items would do to it (the frame
// item's announcement, the external editor) shows whether a forged record
// got through.
#include "Fixture.h"
#include "QuorvantHook.h"
#include "TestRunner.h"

#include <random>

using namespace qt;

TEST_CASE(records_without_the_tools_key_make_it_do_nothing)
{
    const std::string strDir = MakeScratchDir("forged");
    Tool tool(strDir);
    WriteTextFile(tool.SettingsPath(), "[Settings]\r\nExternalEditor=\"" + ExeDir() + "RECORDER.exe\" \"" + strDir +
                                           "editor.txt\" %FILENAME%\r\n");
    REQUIRE(tool.Start());
    HWND hWnd = CreateWindowA("STATIC", "play", WS_OVERLAPPED, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    REQUIRE(hWnd != nullptr);
    const uint32_t nWord = HookWindowWord(hWnd);
    // Sends one record and returns when the tool has handled it: whatever the
    // tool posts our window meanwhile is in our queue by then.
    const auto Send = [&](ULONG_PTR dwCode, const HookRecord& record, DWORD dwSize) {
        char buffer[64] = {};
        memcpy(buffer, &record, sizeof(record));
        COPYDATASTRUCT cds = {dwCode, dwSize, buffer};
        DWORD_PTR dwResult = 0;
        SendMessageTimeoutA(tool.MainFrame(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds), SMTO_NORMAL, 5000, &dwResult);
    };
    // A frame's creation (its item would announce itself to our window), an
    // MDI child's and Ctrl+E on it (the external editor), with no key,
    // guessed keys and the record of the old five-word layout.
    const uint32_t keys[][2] = {{0, 0}, {1, 0}, {0x12345678u, 0x9ABCDEF0u}, {0xFFFFFFFFu, 0xFFFFFFFFu}};
    for (const auto& key : keys)
        for (DWORD dwSize : {static_cast<DWORD>(sizeof(HookRecord)), 20ul})
            for (const HookRecord& r : {HookRecord{KIND_FRAME, nWord, 0, 0, 0, {key[0], key[1]}}, HookRecord{KIND_CHILD, nWord, 0, 0, 0, {key[0], key[1]}},
                                        HookRecord{0, nWord, WM_MOUSEWHEEL, 120u << 16, 0, {key[0], key[1]}},
                                        HookRecord{0, nWord, WM_KEYDOWN, 'E', HOOK_FLAG_CONTROL, {key[0], key[1]}}})
                Send(r.nKind ? HOOK_CREATE : HOOK_MESSAGE_DONE, r, dwSize);
    // A flood of random records: the same 8,000 on every run.
    std::mt19937 random(20261124);
    const auto R = [&] { return static_cast<uint32_t>(random()); };
    for (int i = 0; i < 8000; ++i)
    {
        const HookRecord record = {R() % 7, nWord, R() % 2 ? WM_MOUSEWHEEL : R(), R(), R() % 4, {R(), R()}};
        Send(1 + R() % 4, record, R() % 8 ? sizeof(HookRecord) : R() % 64);
    }
    // The frame item's announcement (the registered WM_CREATEDOCKBAR) would be in our queue.
    const UINT uAnnouncement = RegisterWindowMessageA("49ED7A1D-5042-42B2-9095-89DBDA86205C");
    MSG msg;
    CHECK(!PeekMessageA(&msg, hWnd, uAnnouncement, uAnnouncement, PM_REMOVE));
    CHECK(!FileExists(strDir + "editor.txt"));
    CHECK(tool.Exit(5000));
    DestroyWindow(hWnd);
}
