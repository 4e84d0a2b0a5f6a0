// The tool's pictures as it loads them, drawn onto a background no picture
// uses and read back: the image strip with magenta transparent, the icon at
// both sizes, and the splitter cursor with its hot spot.
#include "CImages.h"
#include "Pixels.h"
#include "TestRunner.h"

#include <string>

namespace
{
const COLORREF kBackground = RGB(0x12, 0x9A, 0x56);
} // namespace

TEST_CASE(the_strip_draws_22_images_with_magenta_showing_the_background)
{
    // The strip's own pixels, and each image as the tool's image list draws it.
    Canvas strip(352, 16, kBackground);
    HBITMAP hBitmap = static_cast<HBITMAP>(
        LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(128), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    HDC hDC = CreateCompatibleDC(nullptr);
    HGDIOBJ hOld = SelectObject(hDC, hBitmap);
    REQUIRE(hBitmap && BitBlt(strip.Dc(), 0, 0, 352, 16, hDC, 0, 0, SRCCOPY));
    DeleteObject(SelectObject(hDC, hOld));
    DeleteDC(hDC);
    CImages images;
    REQUIRE(images.GetImageCount() == 22);
    for (int i = 0; i < 22; ++i)
    {
        Canvas canvas(16, 16, kBackground);
        REQUIRE(ImageList_Draw(images, i, canvas.Dc(), 0, 0, ILD_TRANSPARENT));
        int nTransparent = 0;
        std::string strWrong;
        for (int n = 0; n < 256; ++n)
        {
            const COLORREF clrSource = strip.Pixel(i * 16 + n % 16, n / 16);
            nTransparent += clrSource == RGB(255, 0, 255);
            if (canvas.Pixel(n % 16, n / 16) != (clrSource == RGB(255, 0, 255) ? kBackground : clrSource))
                strWrong = "image " + std::to_string(i) + " pixel " + std::to_string(n);
        }
        CHECK_EQ(strWrong, std::string());
        CHECK(nTransparent > 0 && nTransparent < 256 - 24); // a picture on a transparent ground
    }
}

TEST_CASE(the_icon_has_a_red_sign_with_transparent_corners_at_32_and_16_pixels)
{
    for (int nSize : {32, 16})
    {
        HICON hIcon = static_cast<HICON>(
            LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(100), IMAGE_ICON, nSize, nSize, 0));
        ICONINFO ii = {};
        REQUIRE(hIcon && GetIconInfo(hIcon, &ii));
        BITMAP bm = {};
        GetObjectA(ii.hbmColor, sizeof(bm), &bm);
        CHECK_EQ(bm.bmWidth, static_cast<LONG>(nSize)); // an image of this size, not the other scaled
        DeleteObject(ii.hbmColor);
        DeleteObject(ii.hbmMask);
        Canvas canvas(nSize, nSize, kBackground);
        CHECK(DrawIconEx(canvas.Dc(), 0, 0, hIcon, nSize, nSize, 0, nullptr, DI_NORMAL));
        DestroyIcon(hIcon);
        CHECK(canvas.Pixel(0, 0) == kBackground && canvas.Pixel(nSize - 1, nSize - 1) == kBackground);
        const COLORREF clrMiddle = canvas.Pixel(nSize / 2, nSize / 2);
        CHECK(GetRValue(clrMiddle) >= 200 && GetGValue(clrMiddle) < 64 && GetBValue(clrMiddle) < 64);
    }
}

TEST_CASE(the_splitter_cursor_has_its_hot_spot_between_two_bars)
{
    HCURSOR hCursor = LoadCursorA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(10000));
    ICONINFO ii = {};
    REQUIRE(hCursor && GetIconInfo(hCursor, &ii));
    DeleteObject(ii.hbmMask);
    CHECK(!ii.fIcon && ii.hbmColor == nullptr); // monochrome
    CHECK(ii.xHotspot == 15 && ii.yHotspot == 15);
    Canvas canvas(32, 32, kBackground);
    CHECK(DrawIconEx(canvas.Dc(), 0, 0, hCursor, 32, 32, 0, nullptr, DI_NORMAL));
    CHECK(canvas.Pixel(0, 0) == kBackground && canvas.Pixel(15, 15) != RGB(0, 0, 0));
    CHECK(canvas.Pixel(14, 15) == RGB(0, 0, 0) && canvas.Pixel(16, 15) == RGB(0, 0, 0));
}
