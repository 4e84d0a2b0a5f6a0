// The flat button on a real dialog, driven by the real mouse (SendInput),
// its looks read back from the screen: flat at rest, raised while the
// pointer is over it, sunken while pressed, and flat again when the pointer
// has left.
#include "AssistTestIds.h"
#include "CDataExchange.h"
#include "CDialog.h"
#include "CFlatButton.h"
#include "TestRunner.h"
#include "WindowTestKit.h"

#include <string>

namespace
{
// The button with its state readable by the tests.
class CTestFlatButton : public CFlatButton
{
public:
    UINT Timer() const { return m_nTimer; }
    bool Hot() const { return m_bHot; }
    int ImageCount() const { return m_imageList.GetImageCount(); }
    CSize ImageSize() const { return m_sizeImage; }
};

class CButtonHost : public CDialog
{
public:
    CButtonHost() : CDialog(IDD_BUTTONHOST, nullptr) {}

    CTestFlatButton m_flat;
    int m_nClicks = 0;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDialog::DoDataExchange(pDX);
        DDX_Control(pDX, IDC_FLAT, m_flat);
    }
    void OnFlatClicked() { m_nClicks++; }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CButtonHost, CDialog)
    ON_BN_CLICKED(IDC_FLAT, OnFlatClicked)
END_MESSAGE_MAP()

const COLORREF kBlue = RGB(0, 0, 255);

const COLORREF kGreen = RGB(0, 160, 0);
const COLORREF kMagenta = RGB(255, 0, 255); // transparent in the images

// Two 16x16 images: 0 solid blue, 1 a green 4x4 block in the middle of
// nothing (so that the two shapes differ in any rendering).
bool MakeImages(CImageList& images)
{
    if (!images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 2, 1))
        return false;
    for (int nImage = 0; nImage < 2; nImage++)
    {
        HDC hScreen = GetDC(nullptr);
        HBITMAP hBitmap = CreateCompatibleBitmap(hScreen, 16, 16);
        HDC hMem = CreateCompatibleDC(hScreen);
        HGDIOBJ hOld = SelectObject(hMem, hBitmap);
        RECT rc = {0, 0, 16, 16};
        HBRUSH hBrush = CreateSolidBrush(nImage == 0 ? kBlue : kMagenta);
        FillRect(hMem, &rc, hBrush);
        DeleteObject(hBrush);
        if (nImage == 1)
        {
            RECT rcBlock = {6, 6, 10, 10};
            hBrush = CreateSolidBrush(kGreen);
            FillRect(hMem, &rcBlock, hBrush);
            DeleteObject(hBrush);
        }
        SelectObject(hMem, hOld);
        DeleteDC(hMem);
        ReleaseDC(nullptr, hScreen);
        images.Add(hBitmap, kMagenta);
        DeleteObject(hBitmap);
    }
    return images.GetImageCount() == 2;
}

struct Colors
{
    COLORREF clrFace = GetSysColor(COLOR_BTNFACE);
    COLORREF clrHighlight = GetSysColor(COLOR_BTNHIGHLIGHT);
    COLORREF clrShadow = GetSysColor(COLOR_BTNSHADOW);
};

std::string Hex(COLORREF clr)
{
    char sz[16];
    sprintf(sz, "%06lX", static_cast<unsigned long>(clr));
    return sz;
}

// The look of a 40 x 30 button: its border corners and the image's place.
struct Look
{
    COLORREF clrTopLeft;
    COLORREF clrBottomRight;
    bool bImageAtRest;    // blue at (12, 7) and (27, 22), face left of it
    bool bImagePressed;   // blue at (13, 8) and (28, 23), face at (12, 7)
};

Look ReadLook(HWND hWnd)
{
    const COLORREF clrFace = GetSysColor(COLOR_BTNFACE);
    const ScreenShot shot(hWnd, ScreenShot::CLIENT_AREA);
    Look look;
    look.clrTopLeft = shot.Pixel(0, 0);
    look.clrBottomRight = shot.Pixel(39, 29);
    look.bImageAtRest = shot.Pixel(12, 7) == kBlue && shot.Pixel(27, 22) == kBlue && shot.Pixel(11, 7) == clrFace;
    look.bImagePressed = shot.Pixel(13, 8) == kBlue && shot.Pixel(28, 23) == kBlue && shot.Pixel(12, 7) == clrFace;
    return look;
}

// The host shown with a 40 x 30 image-only button at (20, 20).
bool MakeHost(CButtonHost& host, CImageList& images)
{
    if (!MakeImages(images) || !host.Create(IDD_BUTTONHOST))
        return false;
    host.SetWindowPos(nullptr, 100, 100, 300, 200, SWP_NOZORDER);
    host.m_flat.MoveWindow(20, 20, 40, 30);
    if (!host.m_flat.SetImage(&images, 0))
        return false;
    host.ShowWindow(SW_SHOW);
    host.UpdateWindow();
    // Away from the buttons to start with.
    kit::MouseMoveTo(host.m_hWnd, 250, 150);
    kit::PumpFor(100);
    return true;
}

void AwayFrom(CButtonHost& host)
{
    kit::MouseMoveTo(host.m_hWnd, 250, 150);
    kit::PumpFor(100); // several polls of the hover timer
}
} // namespace

TEST_CASE(flat_at_rest_raised_under_the_pointer_and_flat_again_when_it_leaves)
{
    CButtonHost host;
    CImageList images;
    REQUIRE(MakeHost(host, images));
    const Colors colors;
    REQUIRE(colors.clrFace != colors.clrHighlight && colors.clrFace != colors.clrShadow);
    HWND hWnd = host.m_flat.m_hWnd;
    CHECK((host.m_flat.GetStyle() & 0x0F) == BS_OWNERDRAW);

    Look look = ReadLook(hWnd);
    CHECK_EQ(Hex(look.clrTopLeft), Hex(colors.clrFace));
    CHECK_EQ(Hex(look.clrBottomRight), Hex(colors.clrFace));
    CHECK(look.bImageAtRest); // centred: (40 - 16) / 2, (30 - 16) / 2

    kit::MouseMoveTo(hWnd, 20, 15);
    look = ReadLook(hWnd);
    CHECK_EQ(Hex(look.clrTopLeft), Hex(colors.clrHighlight));
    CHECK_EQ(Hex(look.clrBottomRight), Hex(colors.clrShadow));
    CHECK(look.bImageAtRest);
    CHECK(host.m_flat.Hot());
    CHECK(host.m_flat.Timer() != 0u);

    // The pointer goes to the dialog beside the button: the button hears no
    // more hit tests, its timer notices.
    AwayFrom(host);
    look = ReadLook(hWnd);
    CHECK_EQ(Hex(look.clrTopLeft), Hex(colors.clrFace));
    CHECK_EQ(Hex(look.clrBottomRight), Hex(colors.clrFace));
    CHECK(!host.m_flat.Hot());
    CHECK_EQ(host.m_flat.Timer(), 0u);

    // And off the dialog altogether.
    kit::MouseMoveTo(hWnd, 20, 15);
    CHECK(host.m_flat.Hot());
    kit::MouseMoveTo(2, 2);
    kit::PumpFor(100);
    CHECK_EQ(Hex(kit::ScreenPixel(hWnd, 0, 0)), Hex(colors.clrFace));
    CHECK_EQ(host.m_flat.Timer(), 0u);
    host.DestroyWindow();
}

TEST_CASE(sunken_while_pressed_with_the_image_moved_and_the_click_reaching_the_parent)
{
    CButtonHost host;
    CImageList images;
    REQUIRE(MakeHost(host, images));
    const Colors colors;
    HWND hWnd = host.m_flat.m_hWnd;

    kit::MouseMoveTo(hWnd, 20, 15);
    kit::LeftDown();
    Look look = ReadLook(hWnd);
    CHECK_EQ(Hex(look.clrTopLeft), Hex(colors.clrShadow));
    CHECK_EQ(Hex(look.clrBottomRight), Hex(colors.clrHighlight));
    CHECK(look.bImagePressed);
    CHECK(!look.bImageAtRest);

    kit::LeftUp();
    CHECK_EQ(host.m_nClicks, 1);
    look = ReadLook(hWnd);
    CHECK(look.clrTopLeft != colors.clrShadow);
    CHECK(look.bImageAtRest);
    AwayFrom(host);
    CHECK_EQ(host.m_flat.Timer(), 0u);
    host.DestroyWindow();
}

TEST_CASE(the_hover_look_is_frozen_while_the_left_button_is_held)
{
    CButtonHost host;
    CImageList images;
    REQUIRE(MakeHost(host, images));
    const Colors colors;
    HWND hWnd = host.m_flat.m_hWnd;

    // Pressed on the dialog, then dragged over the button and back.
    kit::MouseMoveTo(host.m_hWnd, 250, 150);
    kit::LeftDown();
    kit::MouseMoveTo(hWnd, 20, 15);
    CHECK_EQ(Hex(kit::ScreenPixel(hWnd, 0, 0)), Hex(colors.clrFace));
    CHECK(!host.m_flat.Hot());
    kit::MouseMoveTo(host.m_hWnd, 250, 150);
    kit::LeftUp();
    CHECK_EQ(host.m_nClicks, 0);

    // Released: the pointer lights it up again.
    kit::MouseMoveTo(hWnd, 20, 15);
    CHECK(host.m_flat.Hot());
    CHECK_EQ(Hex(kit::ScreenPixel(hWnd, 0, 0)), Hex(colors.clrHighlight));
    AwayFrom(host);
    host.DestroyWindow();
}

TEST_CASE(a_redraw_under_the_pointer_paints_over_the_hover_border_until_it_returns)
{
    CButtonHost host;
    CImageList images;
    REQUIRE(MakeHost(host, images));
    const Colors colors;
    HWND hWnd = host.m_flat.m_hWnd;

    kit::MouseMoveTo(hWnd, 20, 15);
    CHECK_EQ(Hex(kit::ScreenPixel(hWnd, 0, 0)), Hex(colors.clrHighlight));
    host.m_flat.Invalidate();
    host.m_flat.UpdateWindow();
    kit::MouseMoveTo(hWnd, 22, 16);
    CHECK_EQ(Hex(kit::ScreenPixel(hWnd, 0, 0)), Hex(colors.clrFace));
    AwayFrom(host);
    kit::MouseMoveTo(hWnd, 20, 15);
    CHECK_EQ(Hex(kit::ScreenPixel(hWnd, 0, 0)), Hex(colors.clrHighlight));
    AwayFrom(host);
    host.DestroyWindow();
}

TEST_CASE(a_button_no_larger_than_its_image_draws_it_at_its_corner)
{
    CButtonHost host;
    CImageList images;
    REQUIRE(MakeHost(host, images));
    HWND hWnd = host.m_flat.m_hWnd;
    struct Case
    {
        int cx;
        int cy;
    };
    for (const Case c : {Case{10, 10}, Case{16, 30}, Case{40, 12}})
    {
        host.m_flat.MoveWindow(20, 20, c.cx, c.cy);
        host.m_flat.UpdateWindow();
        CHECK_EQ(Hex(kit::ScreenPixel(hWnd, 0, 0)), Hex(kBlue));
        CHECK_EQ(Hex(kit::ScreenPixel(hWnd, std::min(c.cx, 16) - 1, std::min(c.cy, 16) - 1)), Hex(kBlue));
    }
    host.DestroyWindow();
}

TEST_CASE(the_image_is_a_copy_and_a_missing_one_changes_nothing)
{
    CButtonHost host;
    CImageList images;
    REQUIRE(MakeHost(host, images));
    CTestFlatButton& button = host.m_flat;
    CHECK_EQ(button.ImageCount(), 1);
    CHECK_EQ(button.ImageSize().cx, 16);
    CHECK(!button.SetImage(&images, 2));
    CHECK(!button.SetImage(&images, -1));
    CHECK_EQ(button.ImageCount(), 1);

    // The button keeps its own copy: the source list may go.
    images.DeleteImageList();
    button.Invalidate();
    button.UpdateWindow();
    CHECK_EQ(Hex(kit::ScreenPixel(button.m_hWnd, 12, 7)), Hex(kBlue));
    host.DestroyWindow();
}

TEST_CASE(the_hover_timer_ends_with_the_window)
{
    CButtonHost host;
    CImageList images;
    REQUIRE(MakeHost(host, images));
    HWND hWnd = host.m_flat.m_hWnd;
    kit::MouseMoveTo(hWnd, 20, 15);
    REQUIRE(host.m_flat.Timer() != 0u);
    host.DestroyWindow();
    CHECK_EQ(host.m_flat.Timer(), 0u);
    kit::PumpFor(60); // no timer message may reach the gone window's object
    AwayFrom(host);
}
