// sources: assist/DockRect.cpp
#include "UnitTest.h"

#include "assist/DockRect.h"

TEST_CASE("every rectangle written is read back, values out of range clamped")
{
    struct Row
    {
        long in[4];
        const char* pszText;
        long out[4];
    } rows[] = {
        {{0, 0, 240, 600}, "0000:0000:0240:0600", {0, 0, 240, 600}},
        {{0, 0, 9999, 600}, "0000:0000:9999:0600", {0, 0, 9999, 600}},
        {{0, 0, 10000, 600}, "0000:0000:9999:0600", {0, 0, 9999, 600}}, // five digits would not be read back
        {{0, 0, 2147483647L, -2147483647L}, "0000:0000:9999:-999", {0, 0, 9999, -999}},
        {{-5, -20, 7, 8}, "-005:-020:0007:0008", {-5, -20, 7, 8}},
    };
    for (const Row& row : rows)
    {
        const std::string strText = DockRect::Format(row.in);
        CHECK_EQ(strText, std::string(row.pszText), row.pszText);
        long fields[4] = {};
        DockRect::Parse(strText.c_str(), fields);
        for (int i = 0; i < 4; ++i)
            CHECK_EQ(fields[i], row.out[i], row.pszText);
    }
}

TEST_CASE("text written by hand reads as far as it makes sense")
{
    struct Row
    {
        const char* pszText;
        long out[4];
    } rows[] = {
        {"", {0, 0, 0, 0}},
        {"0000:0000:0240", {0, 0, 240, 0}},
        {"zz", {0, 0, 0, 0}},
        {"0000:0000:99999999:0600", {0, 0, 9999, 999}}, // four characters a field: "9999", then "999:"
        {"0000:0000:-9999999:0600", {0, 0, -999, 999}},
    };
    for (const Row& row : rows)
    {
        long fields[4] = {1, 1, 1, 1};
        DockRect::Parse(row.pszText, fields);
        for (int i = 0; i < 4; ++i)
            CHECK_EQ(fields[i], row.out[i], row.pszText);
    }
    long fields[4] = {};
    DockRect::Parse(nullptr, fields);
    CHECK_EQ(fields[2], 0L, "null");
}

TEST_CASE("the width never pushes the mdi client out of the frame")
{
    CHECK_EQ(DockRect::ClampWidth(240, 1000), 240, "room enough");
    CHECK_EQ(DockRect::ClampWidth(9999, 1000), 1000 - DockRect::kMinClientWidth, "too wide");
    CHECK_EQ(DockRect::ClampWidth(-50, 1000), 0, "negative");
    CHECK_EQ(DockRect::ClampWidth(240, 20), 0, "a frame narrower than the client's minimum");
    unit::Random random(7);
    for (int i = 0; i < 10000; ++i)
    {
        const long nWidth = static_cast<long>(random.Next()) - 0x7FFFFFFFL;
        const long nFree = static_cast<long>(random.Below(5000));
        const int w = DockRect::ClampWidth(nWidth, nFree);
        CHECK(w >= 0 && (w == 0 || nFree - w >= DockRect::kMinClientWidth));
    }
}
