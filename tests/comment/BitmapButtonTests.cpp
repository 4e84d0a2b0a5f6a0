// The Comment Editor's image button, drawn through its own DrawItem into a
// memory DC with each state the system passes, the pixels read back: the
// image keeps equal margins with the text close after it, pressed moves both
// a pixel, and the frame's rings and the focus rectangle show focus and
// press. The image comes from the tool's own strip.
#include "CImages.h"
#include "CLBitmapButton.h"
#include "Pixels.h"
#include "TestRunner.h"

namespace
{
const int kWidth = 70;
const int kHeight = 30;

// The leftmost column and the topmost row of anything but the button's face
// in a rectangle, or -1.
POINT FirstInk(const Canvas& canvas, int xFrom, int xTo, int yFrom, int yTo)
{
    POINT pt = {-1, -1};
    for (int y = yFrom; y < yTo; ++y)
        for (int x = xFrom; x < xTo; ++x)
            if (canvas.Pixel(x, y) != GetSysColor(COLOR_3DFACE))
                pt = {pt.x < 0 || x < pt.x ? x : pt.x, pt.y < 0 ? y : pt.y};
    return pt;
}

// Whether the strip's image 1, drawn on the face colour, lies at (x, y).
bool ImageAt(const Canvas& canvas, int x, int y)
{
    CImages images;
    Canvas expected(16, 16, GetSysColor(COLOR_3DFACE));
    ImageList_Draw(images, 1, expected.Dc(), 0, 0, ILD_TRANSPARENT);
    for (int j = 0; j < 16; ++j)
        for (int i = 0; i < 16; ++i)
            if (canvas.Pixel(x + i, y + j) != expected.Pixel(i, j))
                return false;
    return true;
}
} // namespace

TEST_CASE(the_image_keeps_its_margins_and_the_frame_shows_focus_and_press)
{
    const HWND hWndParent = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    const COLORREF clrLight = GetSysColor(COLOR_3DHILIGHT), clrFace = GetSysColor(COLOR_3DFACE);
    const COLORREF clrShadow = GetSysColor(COLOR_3DSHADOW), clrDark = GetSysColor(COLOR_3DDKSHADOW);
    const int m = (kHeight - 16) / 2;
    const struct
    {
        const char* pszText;
        UINT nState;
        int nShift;
        COLORREF clrRings[2][2]; // the outer ring and the next: top-left, bottom-right
        bool bFocusRect;
    } cases[] = {
        {" Paste", 0, 0, {{clrLight, clrDark}, {clrFace, clrShadow}}, false},
        {"", 0, 0, {{clrLight, clrDark}, {clrFace, clrShadow}}, false},
        // The keyboard-cue bits alone do not mark a button.
        {" Paste", ODS_NOACCEL | ODS_NOFOCUSRECT, 0, {{clrLight, clrDark}, {clrFace, clrShadow}}, false},
        {" Paste", ODS_FOCUS, 0, {{clrDark, clrDark}, {clrLight, clrDark}}, true},
        {" Paste", ODS_FOCUS | ODS_SELECTED, 1, {{clrDark, clrDark}, {clrShadow, clrShadow}}, true},
    };
    POINT ptTextAtRest = {-1, -1};
    for (const auto& c : cases)
    {
        CLBitmapButton button;
        CImages images;
        REQUIRE(button.Create(c.pszText, WS_CHILD | BS_LEFT, CRect(0, 0, kWidth, kHeight), CWnd::FromHandle(hWndParent), 1));
        REQUIRE(button.SetImage(&images, 1));
        Canvas canvas(kWidth, kHeight, RGB(0x12, 0x9A, 0x56));
        DRAWITEMSTRUCT dis = {ODT_BUTTON, 1, 0, ODA_DRAWENTIRE, c.nState, button.m_hWnd, canvas.Dc(), {0, 0, kWidth, kHeight}, 0};
        button.DrawItem(&dis);

        // With text the image keeps the margin at the left it has at the top.
        const int xImage = *c.pszText ? m : (kWidth - 16) / 2;
        CHECK(ImageAt(canvas, xImage + c.nShift, m + c.nShift));
        const POINT ptText = FirstInk(canvas, xImage + 16 + c.nShift, kWidth - 6, 5, kHeight - 5);
        ptTextAtRest = ptTextAtRest.x < 0 ? ptText : ptTextAtRest;
        CHECK(!*c.pszText || (ptText.x > xImage + 16 && ptText.x <= xImage + 24 + c.nShift));
        CHECK(!*c.pszText || (ptText.x - ptTextAtRest.x == c.nShift && ptText.y - ptTextAtRest.y == c.nShift));
        for (int n = 0; n < 2; n++)
        {
            CHECK(canvas.Pixel(kWidth / 2, n) == c.clrRings[n][0] && canvas.Pixel(n, kHeight / 2) == c.clrRings[n][0]);
            CHECK(canvas.Pixel(kWidth / 2, kHeight - 1 - n) == c.clrRings[n][1] &&
                  canvas.Pixel(kWidth - 1 - n, kHeight / 2) == c.clrRings[n][1]);
        }
        // The dotted focus rectangle runs down column 4, where nothing else is.
        CHECK_EQ(FirstInk(canvas, 4, 5, 4, kHeight - 4).x == 4, c.bFocusRect);
    }
    DestroyWindow(hWndParent);
}
