// The image button on real button windows in this process, drawn into a
// memory DC through its own DrawItem with each state the system passes, and
// the pixels read back: where the image and the text land, the rings of the
// frame, the focus rectangle, the disabled look, and how the window's style
// and text change the drawing. The images come from the tool's own strip.
#include "CImages.h"
#include "CLBitmapButton.h"
#include "CommentTestKit.h"
#include "TestRunner.h"

#include <algorithm>

using namespace qt;

namespace
{
const int kWidth = 70;
const int kHeight = 30;
const COLORREF kSentinel = RGB(0x12, 0x9A, 0x56); // a colour no drawing uses

// A parent for the buttons; never shown.
HWND Parent()
{
    static HWND hWnd = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    return hWnd;
}

// A button made as a program makes it (WM_CREATE), with image nImage.
struct Button
{
    Button(const char* pszText, DWORD dwStyle, int nImage = 1)
    {
        const RECT rect = {0, 0, kWidth, kHeight};
        ok = button.Create(pszText, WS_CHILD | WS_VISIBLE | dwStyle, rect, CWnd::FromHandle(Parent()), 1) != FALSE;
        CImages images;
        ok = ok && button.SetImage(&images, nImage);
    }
    CLBitmapButton button;
    bool ok = false;
};

// Ink: what the drawing put inside the frame that is not the button's face.
struct Ink
{
    int nLeft = kWidth, nRight = -1, nTop = kHeight, nBottom = -1;
    bool Any() const { return nRight >= 0; }
};

Ink FindInk(const kit::Canvas& canvas, int xFrom, int xTo, int yFrom = 3, int yTo = kHeight - 3)
{
    Ink ink;
    const COLORREF clrFace = GetSysColor(COLOR_3DFACE);
    for (int y = yFrom; y < yTo; ++y)
        for (int x = xFrom; x < xTo; ++x)
            if (canvas.Pixel(x, y) != clrFace)
            {
                ink.nLeft = std::min(ink.nLeft, x);
                ink.nRight = std::max(ink.nRight, x);
                ink.nTop = std::min(ink.nTop, y);
                ink.nBottom = std::max(ink.nBottom, y);
            }
    return ink;
}

// The button drawn with a state into a canvas of its size.
class Rendering : public kit::Canvas
{
public:
    Rendering(CLBitmapButton& button, UINT nState) : kit::Canvas(kWidth, kHeight, kSentinel)
    {
        DRAWITEMSTRUCT dis = {};
        dis.CtlType = ODT_BUTTON;
        dis.CtlID = 1;
        dis.itemAction = ODA_DRAWENTIRE;
        dis.itemState = nState;
        dis.hwndItem = button.m_hWnd;
        dis.hDC = Dc();
        dis.rcItem = {0, 0, kWidth, kHeight};
        button.DrawItem(&dis);
    }
};

// Whether the 16 x 16 image nImage of the strip, on the face colour, lies at (x, y).
bool ImageAt(const kit::Canvas& canvas, int nImage, int x, int y)
{
    CImages images;
    kit::Canvas expected(16, 16, GetSysColor(COLOR_3DFACE));
    ImageList_Draw(images, nImage, expected.Dc(), 0, 0, ILD_TRANSPARENT);
    for (int j = 0; j < 16; ++j)
        for (int i = 0; i < 16; ++i)
            if (canvas.Pixel(x + i, y + j) != expected.Pixel(i, j))
                return false;
    return true;
}

// The colours of one ring of the frame, inset by n: top-left and bottom-right.
void CheckRing(const kit::Canvas& canvas, int n, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    CHECK_EQ(canvas.Pixel(kWidth / 2, n), clrTopLeft);
    CHECK_EQ(canvas.Pixel(n, kHeight / 2), clrTopLeft);
    CHECK_EQ(canvas.Pixel(kWidth / 2, kHeight - 1 - n), clrBottomRight);
    CHECK_EQ(canvas.Pixel(kWidth - 1 - n, kHeight / 2), clrBottomRight);
}

// Whether the dotted focus rectangle 4 pixels inside the edge is drawn: its
// left side runs down column 4, where nothing else is drawn.
bool FocusRectangle(const kit::Canvas& canvas)
{
    return FindInk(canvas, 4, 5, 4, kHeight - 4).Any();
}
} // namespace

TEST_CASE(the_image_keeps_equal_margins_and_the_text_follows_it_centred_on_one_line)
{
    Button b(" Paste", BS_LEFT);
    REQUIRE(b.ok);
    CHECK(b.button.GetStyle() & BS_OWNERDRAW);
    Rendering r(b.button, 0);
    const int nMargin = (kHeight - 16) / 2;
    CHECK(ImageAt(r, 1, nMargin, nMargin));
    const Ink text = FindInk(r, nMargin + 16, kWidth - 3);
    REQUIRE(text.Any());
    CHECK(text.nLeft <= nMargin + 16 + 8); // after the leading blank
    CHECK(std::abs((text.nTop + text.nBottom) - (kHeight - 1)) <= 3);
    // Nothing between the frame and the image.
    CHECK(!FindInk(r, 3, nMargin).Any());
    // Not focused: the raised rings and no focus rectangle.
    CheckRing(r, 0, GetSysColor(COLOR_3DHILIGHT), GetSysColor(COLOR_3DDKSHADOW));
    CheckRing(r, 1, GetSysColor(COLOR_3DFACE), GetSysColor(COLOR_3DSHADOW));
    CHECK(!FocusRectangle(r));
}

TEST_CASE(without_text_the_image_is_centred)
{
    Button b("", 0);
    REQUIRE(b.ok);
    Rendering r(b.button, 0);
    CHECK(ImageAt(r, 1, (kWidth - 16) / 2, (kHeight - 16) / 2));
}

TEST_CASE(pressed_moves_image_and_text_one_pixel_and_draws_two_flat_dark_rings)
{
    Button b(" Paste", BS_LEFT);
    REQUIRE(b.ok);
    const int nMargin = (kHeight - 16) / 2;
    Rendering up(b.button, ODS_FOCUS);
    Rendering down(b.button, ODS_FOCUS | ODS_SELECTED);
    CHECK(ImageAt(down, 1, nMargin + 1, nMargin + 1));
    const Ink textUp = FindInk(up, nMargin + 16, kWidth - 6, 5, kHeight - 5);
    const Ink textDown = FindInk(down, nMargin + 17, kWidth - 6, 5, kHeight - 5);
    REQUIRE(textUp.Any() && textDown.Any());
    CHECK_EQ(textDown.nLeft, textUp.nLeft + 1);
    CHECK_EQ(textDown.nTop, textUp.nTop + 1);
    CheckRing(down, 0, GetSysColor(COLOR_3DDKSHADOW), GetSysColor(COLOR_3DDKSHADOW));
    CheckRing(down, 1, GetSysColor(COLOR_3DSHADOW), GetSysColor(COLOR_3DSHADOW));
}

TEST_CASE(focused_shows_a_dark_outer_ring_raised_inner_rings_and_the_focus_rectangle)
{
    Button b(" Paste", BS_LEFT);
    REQUIRE(b.ok);
    Rendering r(b.button, ODS_FOCUS);
    CheckRing(r, 0, GetSysColor(COLOR_3DDKSHADOW), GetSysColor(COLOR_3DDKSHADOW));
    CheckRing(r, 1, GetSysColor(COLOR_3DHILIGHT), GetSysColor(COLOR_3DDKSHADOW));
    CheckRing(r, 2, GetSysColor(COLOR_3DFACE), GetSysColor(COLOR_3DSHADOW));
    CHECK(FocusRectangle(r));
    // The keyboard-cue bits alone do not mark a button.
    Rendering cues(b.button, ODS_NOACCEL | ODS_NOFOCUSRECT);
    CheckRing(cues, 0, GetSysColor(COLOR_3DHILIGHT), GetSysColor(COLOR_3DDKSHADOW));
    CHECK(!FocusRectangle(cues));
}

TEST_CASE(new_window_text_is_drawn_and_an_unknown_image_draws_none)
{
    Button b(" Paste", BS_LEFT);
    REQUIRE(b.ok);
    b.button.SetWindowText(" Cancel");
    Button fresh(" Cancel", BS_LEFT);
    REQUIRE(fresh.ok);
    Rendering changed(b.button, 0);
    Rendering expected(fresh.button, 0);
    int nDiffer = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            nDiffer += changed.Pixel(x, y) != expected.Pixel(x, y) ? 1 : 0;
    CHECK_EQ(nDiffer, 0);

    CImages images;
    CLBitmapButton none;
    const RECT rect = {0, 0, kWidth, kHeight};
    REQUIRE(none.Create("", WS_CHILD, rect, CWnd::FromHandle(Parent()), 2));
    CHECK(!none.SetImage(&images, 22));
    Rendering r(none, 0);
    CHECK(!FindInk(r, 3, kWidth - 3).Any());
}

TEST_CASE(changed_system_colours_are_drawn_after_the_change_is_announced)
{
    Button b(" Paste", BS_LEFT);
    REQUIRE(b.ok);
    const int nElement = COLOR_3DFACE;
    const COLORREF clrOld = GetSysColor(nElement);
    const COLORREF clrNew = RGB(10, 200, 30);
    SetSysColors(1, &nElement, &clrNew);
    // Colours are read when the button is made and when told of a change.
    Rendering before(b.button, 0);
    b.button.SendMessage(WM_SYSCOLORCHANGE);
    Rendering after(b.button, 0);
    SetSysColors(1, &nElement, &clrOld);
    CHECK_EQ(before.Pixel(kWidth - 6, 4), clrOld);
    CHECK_EQ(after.Pixel(kWidth - 6, 4), clrNew);
}
