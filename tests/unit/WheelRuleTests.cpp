// sources: hook/WheelRule.cpp
#include "hook/HookWire.h"
#include "hook/WheelRule.h"
#include "UnitTest.h"

#include <climits>
#include <string>

TEST_CASE("an editor scrolls four lines a notch, a view's text one line of the view")
{
    const struct
    {
        unsigned nKind;
        int nDelta;
        bool bEmptyWord;
        int nLines;
        bool bUp;
        bool bParent;
    } cases[] = {
        {KIND_CHILD, 120, false, 4, true, false},
        {KIND_CHILD, -120, false, 4, false, false},
        {KIND_CHILD, 60, false, 2, true, false},
        {KIND_CHILD, -29, false, 0, false, false}, // below one step: nothing
        {KIND_CHILD, 30, false, 1, true, false},
        {KIND_CHILD, -360, false, 12, false, false},
        {KIND_CHILD, 0, true, 0, false, false},     // no wheel at all
        {KIND_CHILD, INT_MIN, false, static_cast<int>(2147483648LL / 30), false, false},
        {KIND_TEXT, 120, false, 1, true, true},
        {KIND_TEXT, 15, false, 1, true, true},      // any delta is one line of the view
        {KIND_TEXT, -120, false, 1, false, true},
        {KIND_TEXT, 0, true, 1, false, true},       // a delta of 0 scrolls down
        {KIND_NUM, 120, false, 0, true, false},     // a gutter scrolls nothing itself
        {KIND_FRAME, 120, false, 0, true, false},
    };
    for (const auto& c : cases)
    {
        const WheelRule::Scroll scroll = WheelRule::ForNotch(c.nKind, c.nDelta, c.bEmptyWord, 30);
        const std::string strCase = "kind " + std::to_string(c.nKind) + " delta " + std::to_string(c.nDelta);
        CHECK_EQ(scroll.nLines, c.nLines, strCase);
        CHECK_EQ(scroll.bUp, c.bUp, strCase);
        CHECK_EQ(scroll.bParent, c.bParent, strCase);
    }
    CHECK_EQ(WheelRule::ForNotch(KIND_CHILD, 120, false, 0).nLines, 0, "no step: the tool scrolls");
}
