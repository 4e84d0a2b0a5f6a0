// sources: hook/RequestRules.cpp
#include "UnitTest.h"

#include "hook/RequestRules.h"

#include <cstring>

using namespace RequestRules;

namespace
{
const uint32_t kKey[2] = {0x12345678u, 0x9ABCDEF0u};

std::vector<char> Request(const uint32_t key[2], const void* pBody, size_t cbBody)
{
    std::vector<char> data(sizeof(HostRequestHeader) + cbBody);
    std::memcpy(data.data(), key, sizeof(HostRequestHeader));
    if (cbBody)
        std::memcpy(data.data() + sizeof(HostRequestHeader), pBody, cbBody);
    return data;
}
} // namespace

TEST_CASE("a request is read only with the key")
{
    const uint32_t zero[2] = {0, 0};
    const uint32_t other[2] = {0x12345678u, 0x9ABCDEF1u};
    const char body[] = "C:\\p\\main.asm";
    size_t cbBody = 0;
    std::vector<char> good = Request(kKey, body, sizeof(body));
    CHECK(BodyOf(good.data(), good.size(), kKey, &cbBody) == good.data() + 8);
    CHECK_EQ(cbBody, sizeof(body), "the path and its NUL");
    std::vector<char> wrong = Request(other, body, sizeof(body));
    CHECK(BodyOf(wrong.data(), wrong.size(), kKey, &cbBody) == nullptr);
    // No key at all never matches, not even a session without one.
    std::vector<char> none = Request(zero, body, sizeof(body));
    CHECK(BodyOf(none.data(), none.size(), zero, &cbBody) == nullptr);
    CHECK(BodyOf(good.data(), 7, kKey, &cbBody) == nullptr);
    CHECK(BodyOf(nullptr, 100, kKey, &cbBody) == nullptr);
}

TEST_CASE("drops open only paths on a local drive")
{
    struct Row
    {
        const char* pszPath;
        bool bLocal;
    } rows[] = {
        {"C:\\Projects\\Blink\\main.asm", true},
        {"c:/projects/util.c", true},
        {"Z:\\tmp\\a b\\c-d.inc", true},
        {"C:\\con.d\\x.asm", false},        // no part may be a device name, folders too
        {"C:\\console.asm", true},
        {"C:\\COM10.asm", true},            // only COM0 to COM9 are devices
        {"\\\\server\\share\\x.asm", false}, // network: the user's credentials go to the server
        {"//server/share/x.asm", false},
        {"\\\\?\\C:\\x.asm", false},
        {"\\\\.\\pipe\\hang", false},
        {"\\\\.\\COM1", false},
        {"C:\\work\\NUL", false},
        {"C:\\work\\nul.txt", false},
        {"C:\\work\\Nul .txt", false},
        {"C:\\COM1.asm", false},
        {"C:\\lpt9", false},
        {"C:\\CONOUT$", false},
        {"C:\\aux\\x.asm", false},
        {"C:\\x.asm:stream", false},
        {"C:\\*.asm", false},
        {"C:\\a\tb.asm", false},
        {"main.asm", false},
        {"\\main.asm", false},
        {"C:main.asm", false},
        {"1:\\x", false},
        {"", false},
    };
    for (const Row& row : rows)
        CHECK_EQ(IsLocalDrivePath(row.pszPath), row.bLocal, row.pszPath);
    CHECK(!IsLocalDrivePath(nullptr));
}

TEST_CASE("a drop is one terminated path shorter than max path")
{
    const char path[] = "C:\\x.asm";
    CHECK(DropPathOf(path, sizeof(path)) == path);
    CHECK(DropPathOf(path, sizeof(path) - 1) == nullptr); // no NUL
    const char two[] = "C:\\x.asm\0C:\\y.asm";
    CHECK(DropPathOf(two, sizeof(two)) == nullptr);       // something after the NUL
    CHECK(DropPathOf("", 1) == nullptr);
    std::string longest(kMaxDropPath - 1, 'a');
    CHECK(DropPathOf(longest.c_str(), longest.size() + 1) == longest.c_str());
    std::string tooLong(kMaxDropPath, 'a');
    CHECK(DropPathOf(tooLong.c_str(), tooLong.size() + 1) == nullptr);
}

TEST_CASE("popups carry only the tools commands")
{
    HostPopupRequest request = {};
    std::strcpy(request.szText, "&Assist");
    request.nItems = 2;
    request.items[0].nId = kFirstPopupCommand;
    std::strcpy(request.items[0].szText, "&Assist Window");
    request.items[1].nId = 0; // a separator
    CHECK(IsValidPopupRequest(&request, sizeof(request)));
    CHECK(!IsValidPopupRequest(&request, sizeof(request) - 1));

    HostPopupRequest hostCommand = request;
    hostCommand.items[1].nId = 1008; // the host's "close all"
    CHECK(!IsValidPopupRequest(&hostCommand, sizeof(hostCommand)));
    HostPopupRequest beyond = request;
    beyond.items[1].nId = kLastPopupCommand + 1;
    CHECK(!IsValidPopupRequest(&beyond, sizeof(beyond)));
    HostPopupRequest tooMany = request;
    tooMany.nItems = kMaxPopupItems + 1;
    CHECK(!IsValidPopupRequest(&tooMany, sizeof(tooMany)));
    HostPopupRequest untitled = request;
    untitled.szText[0] = 0;
    CHECK(!IsValidPopupRequest(&untitled, sizeof(untitled)));
    HostPopupRequest unterminated = request;
    std::memset(unterminated.items[0].szText, 'x', sizeof(unterminated.items[0].szText));
    CHECK(!IsValidPopupRequest(&unterminated, sizeof(unterminated)));

    HostCheckRequest check = {0x1234, kFirstPopupCommand, kCheckOn};
    CHECK(IsValidCheckRequest(&check, sizeof(check)));
    check.nCheck = kCheckOff | kItemGrayed;
    CHECK(IsValidCheckRequest(&check, sizeof(check)));
    check.nCheck = 0x400; // MF_BYPOSITION smuggled in
    CHECK(!IsValidCheckRequest(&check, sizeof(check)));
    check = {0x1234, 1008, kCheckOff};
    CHECK(!IsValidCheckRequest(&check, sizeof(check)));
}

TEST_CASE("random requests never pass as well formed")
{
    // Bounded: the same 20,000 inputs on every run. Whatever the bytes, the
    // rules answer without reading past the data, and a drop they accept
    // is a terminated local path.
    unit::Random random(42);
    std::vector<char> data;
    for (int i = 0; i < 20000; ++i)
    {
        data.resize(random.Next() % 300);
        for (char& c : data)
            c = static_cast<char>(random.Next() % 8 == 0 ? 0 : "C:\\/.:NULCOMabc?*"[random.Next() % 17]);
        size_t cbBody = 0;
        const void* pBody = BodyOf(data.data(), data.size(), kKey, &cbBody);
        CHECK(pBody == nullptr);
        if (const char* pszPath = DropPathOf(data.data(), data.size()))
        {
            CHECK(std::strlen(pszPath) + 1 == data.size());
            IsLocalDrivePath(pszPath);
        }
        IsValidPopupRequest(data.data(), data.size());
        IsValidCheckRequest(data.data(), data.size());
    }
}
