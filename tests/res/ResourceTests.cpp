// The tool's resources, loaded the way the tool loads them: the image strip
// through an image list with magenta as the mask colour, the menus read by
// position, the icon at both sizes, the splitter cursor and the strings.
// Pictures are checked by drawing them onto a known background in a memory DC
// and reading the pixels back.
#include "Pixels.h"
#include "TestRunner.h"

#include <windows.h>
#include <commctrl.h>
#include <stdio.h>

#include <string>
#include <vector>

using namespace qt;

namespace
{
const COLORREF kMagenta = RGB(255, 0, 255);
// Not one of the 16 colours of the pictures, so a pixel of this colour after
// drawing can only be background that showed through.
const COLORREF kBackground = RGB(0x12, 0x9A, 0x56);

HINSTANCE Module()
{
    return GetModuleHandleA(nullptr);
}

std::string Hex(COLORREF cr)
{
    char sz[16];
    sprintf(sz, "%02X%02X%02X", GetRValue(cr), GetGValue(cr), GetBValue(cr));
    return sz;
}

bool IsRed(COLORREF cr)
{
    return GetRValue(cr) >= 200 && GetGValue(cr) < 64 && GetBValue(cr) < 64;
}

struct ImageList
{
    HIMAGELIST h;
    ~ImageList()
    {
        if (h)
            ImageList_Destroy(h);
    }
};

struct GdiObject
{
    HGDIOBJ h;
    ~GdiObject()
    {
        if (h)
            DeleteObject(h);
    }
};

// The strip as the tool makes it: bitmap 128, images 16 wide, no growth,
// magenta masked.
HIMAGELIST LoadStrip()
{
    return ImageList_LoadImageA(Module(), MAKEINTRESOURCEA(128), 16, 0, kMagenta, IMAGE_BITMAP,
                                LR_CREATEDIBSECTION);
}

// The strip's own pixels, copied into a 32-bit canvas.
bool ReadStripPixels(Canvas& canvas)
{
    GdiObject bitmap = {LoadImageA(Module(), MAKEINTRESOURCEA(128), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)};
    if (!bitmap.h)
        return false;
    HDC hDC = CreateCompatibleDC(nullptr);
    HGDIOBJ hOld = SelectObject(hDC, bitmap.h);
    const BOOL bDone = BitBlt(canvas.Dc(), 0, 0, 352, 16, hDC, 0, 0, SRCCOPY);
    SelectObject(hDC, hOld);
    DeleteDC(hDC);
    return bDone != FALSE;
}




#pragma pack(push, 2)
struct GroupIconHeader
{
    WORD wReserved;
    WORD wType;
    WORD wCount;
};
struct GroupIconEntry
{
    BYTE bWidth;
    BYTE bHeight;
    BYTE bColorCount;
    BYTE bReserved;
    WORD wPlanes;
    WORD wBitCount;
    DWORD dwBytesInRes;
    WORD nID;
};
#pragma pack(pop)

const BYTE* LockResourceData(LPCSTR pszName, LPCSTR pszType, DWORD* pdwSize = nullptr)
{
    HRSRC hRsrc = FindResourceA(Module(), pszName, pszType);
    if (!hRsrc)
        return nullptr;
    if (pdwSize)
        *pdwSize = SizeofResource(Module(), hRsrc);
    return static_cast<const BYTE*>(LockResource(LoadResource(Module(), hRsrc)));
}
} // namespace

// ------------------------------------------------------------ image strip

TEST_CASE(the_strip_is_one_4_bit_bitmap_of_22_images)
{
    GdiObject bitmap = {LoadImageA(Module(), MAKEINTRESOURCEA(128), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)};
    REQUIRE(bitmap.h != nullptr);
    DIBSECTION ds = {};
    REQUIRE(GetObjectA(bitmap.h, sizeof(ds), &ds) == sizeof(ds));
    CHECK_EQ(ds.dsBmih.biWidth, 352L);
    CHECK_EQ(ds.dsBmih.biHeight, 16L);
    CHECK_EQ(ds.dsBmih.biBitCount, 4);

    ImageList images = {LoadStrip()};
    REQUIRE(images.h != nullptr);
    CHECK_EQ(ImageList_GetImageCount(images.h), 22);
    int cx = 0;
    int cy = 0;
    CHECK(ImageList_GetIconSize(images.h, &cx, &cy));
    CHECK_EQ(cx, 16);
    CHECK_EQ(cy, 16);
    // Index 21 is the last one there is.
    IMAGEINFO info = {};
    CHECK(ImageList_GetImageInfo(images.h, 21, &info));
    CHECK(!ImageList_GetImageInfo(images.h, 22, &info));
}

TEST_CASE(magenta_shows_the_background_and_every_other_pixel_its_own_colour)
{
    Canvas strip(352, 16, kBackground);
    REQUIRE(strip.IsValid());
    REQUIRE(ReadStripPixels(strip));
    ImageList images = {LoadStrip()};
    REQUIRE(images.h != nullptr);

    for (int i = 0; i < 22; ++i)
    {
        Canvas canvas(16, 16, kBackground);
        REQUIRE(canvas.IsValid());
        REQUIRE(ImageList_Draw(images.h, i, canvas.Dc(), 0, 0, ILD_TRANSPARENT));
        int nTransparent = 0;
        int nOpaque = 0;
        std::string strFirstWrong;
        for (int y = 0; y < 16; ++y)
        {
            for (int x = 0; x < 16; ++x)
            {
                const COLORREF crSource = strip.Pixel(i * 16 + x, y);
                const COLORREF crDrawn = canvas.Pixel(x, y);
                const bool bTransparent = crSource == kMagenta;
                (bTransparent ? nTransparent : nOpaque)++;
                const COLORREF crExpected = bTransparent ? kBackground : crSource;
                if (crDrawn != crExpected && strFirstWrong.empty())
                    strFirstWrong = "image " + std::to_string(i) + " pixel (" + std::to_string(x) + ", " +
                                    std::to_string(y) + "): drew " + Hex(crDrawn) + ", expected " + Hex(crExpected);
            }
        }
        CHECK_EQ(strFirstWrong, std::string());
        // Every image is a picture on a transparent ground.
        if (nTransparent == 0 || nOpaque < 24)
            Fail(__FILE__, __LINE__,
                 "image " + std::to_string(i) + " has " + std::to_string(nTransparent) + " transparent and " +
                     std::to_string(nOpaque) + " painted pixels");
    }
}

TEST_CASE(no_two_images_of_the_strip_are_alike)
{
    Canvas strip(352, 16, kBackground);
    REQUIRE(strip.IsValid());
    REQUIRE(ReadStripPixels(strip));
    for (int i = 0; i < 22; ++i)
    {
        for (int j = i + 1; j < 22; ++j)
        {
            int nDifferent = 0;
            for (int y = 0; y < 16; ++y)
                for (int x = 0; x < 16; ++x)
                    nDifferent += strip.Pixel(i * 16 + x, y) != strip.Pixel(j * 16 + x, y);
            if (nDifferent < 8)
                Fail(__FILE__, __LINE__,
                     "images " + std::to_string(i) + " and " + std::to_string(j) + " differ in only " +
                         std::to_string(nDifferent) + " pixels");
        }
    }
}

TEST_CASE(image_0_is_a_red_round_sign)
{
    ImageList images = {LoadStrip()};
    REQUIRE(images.h != nullptr);
    Canvas canvas(16, 16, kBackground);
    REQUIRE(canvas.IsValid());
    REQUIRE(ImageList_Draw(images.h, 0, canvas.Dc(), 0, 0, ILD_TRANSPARENT));
    for (int y = 6; y < 10; ++y)
        for (int x = 6; x < 10; ++x)
            if (!IsRed(canvas.Pixel(x, y)))
                Fail(__FILE__, __LINE__,
                     "centre pixel (" + std::to_string(x) + ", " + std::to_string(y) + ") is " +
                         Hex(canvas.Pixel(x, y)));
    // Round: the corners show the background.
    CHECK_EQ(canvas.Pixel(0, 0), kBackground);
    CHECK_EQ(canvas.Pixel(15, 0), kBackground);
    CHECK_EQ(canvas.Pixel(0, 15), kBackground);
    CHECK_EQ(canvas.Pixel(15, 15), kBackground);
    // The notification-area icon is made from this image: it must come out
    // of the list as an icon.
    HICON hIcon = ImageList_GetIcon(images.h, 0, ILD_NORMAL);
    CHECK(hIcon != nullptr);
    if (hIcon)
        DestroyIcon(hIcon);
}

// ------------------------------------------------------------ icon

TEST_CASE(icon_100_holds_a_32_and_a_16_pixel_image)
{
    const BYTE* pGroup = LockResourceData(MAKEINTRESOURCEA(100), MAKEINTRESOURCEA(14)); // RT_GROUP_ICON
    REQUIRE(pGroup != nullptr);
    const GroupIconHeader* pHeader = reinterpret_cast<const GroupIconHeader*>(pGroup);
    CHECK_EQ(pHeader->wType, 1);
    REQUIRE(pHeader->wCount == 2);
    const GroupIconEntry* pEntries = reinterpret_cast<const GroupIconEntry*>(pHeader + 1);
    CHECK_EQ(pEntries[0].bWidth, 32);
    CHECK_EQ(pEntries[0].bHeight, 32);
    CHECK_EQ(pEntries[1].bWidth, 16);
    CHECK_EQ(pEntries[1].bHeight, 16);

    for (int nSize : {32, 16})
    {
        // The image Windows picks for the size is one of exactly that size,
        // not a scaled copy of the other.
        const int nID = LookupIconIdFromDirectoryEx(const_cast<BYTE*>(pGroup), TRUE, nSize, nSize, LR_DEFAULTCOLOR);
        REQUIRE(nID != 0);
        const BYTE* pImage = LockResourceData(MAKEINTRESOURCEA(nID), MAKEINTRESOURCEA(3)); // RT_ICON
        REQUIRE(pImage != nullptr);
        const BITMAPINFOHEADER* pbih = reinterpret_cast<const BITMAPINFOHEADER*>(pImage);
        CHECK_EQ(pbih->biWidth, static_cast<LONG>(nSize));
        CHECK_EQ(pbih->biHeight, static_cast<LONG>(2 * nSize));

        // Drawn: transparent corners (the mask) and a red middle.
        HICON hIcon = static_cast<HICON>(LoadImageA(Module(), MAKEINTRESOURCEA(100), IMAGE_ICON, nSize, nSize, 0));
        REQUIRE(hIcon != nullptr);
        Canvas canvas(nSize, nSize, kBackground);
        CHECK(DrawIconEx(canvas.Dc(), 0, 0, hIcon, nSize, nSize, 0, nullptr, DI_NORMAL));
        DestroyIcon(hIcon);
        const int c = nSize / 2;
        CHECK_EQ(canvas.Pixel(0, 0), kBackground);
        CHECK_EQ(canvas.Pixel(nSize - 1, nSize - 1), kBackground);
        CHECK(IsRed(canvas.Pixel(c, c)));
        CHECK(IsRed(canvas.Pixel(c - 1, c - 1)));
    }
    // What the frame's window class gets.
    HICON hIcon = LoadIconA(Module(), MAKEINTRESOURCEA(100));
    CHECK(hIcon != nullptr);
}

// ------------------------------------------------------------ cursor

TEST_CASE(cursor_10000_is_a_monochrome_split_cursor_with_hot_spot_15_15)
{
    CHECK(FindResourceA(Module(), MAKEINTRESOURCEA(10000), MAKEINTRESOURCEA(12)) != nullptr); // RT_GROUP_CURSOR
    HCURSOR hCursor = LoadCursorA(Module(), MAKEINTRESOURCEA(10000));
    REQUIRE(hCursor != nullptr);
    ICONINFO ii = {};
    REQUIRE(GetIconInfo(hCursor, &ii));
    GdiObject mask = {ii.hbmMask};
    GdiObject colour = {ii.hbmColor};
    CHECK(!ii.fIcon);
    CHECK_EQ(ii.xHotspot, 15ul);
    CHECK_EQ(ii.yHotspot, 15ul);
    // Monochrome: no colour bitmap, one mask of AND over XOR.
    CHECK(ii.hbmColor == nullptr);
    BITMAP bm = {};
    REQUIRE(GetObjectA(ii.hbmMask, sizeof(bm), &bm) == sizeof(bm));
    CHECK_EQ(bm.bmWidth, 32L);
    CHECK_EQ(bm.bmHeight, 64L);

    // Drawn: the rest is transparent; two bars stand either side of the hot
    // spot, and arrow tips point out left and right on its row.
    Canvas canvas(32, 32, kBackground);
    REQUIRE(canvas.IsValid());
    CHECK(DrawIconEx(canvas.Dc(), 0, 0, hCursor, 32, 32, 0, nullptr, DI_NORMAL));
    const COLORREF crBlack = RGB(0, 0, 0);
    CHECK_EQ(canvas.Pixel(0, 0), kBackground);
    CHECK_EQ(canvas.Pixel(31, 31), kBackground);
    CHECK_EQ(canvas.Pixel(15, 2), kBackground);
    CHECK_EQ(canvas.Pixel(2, 15), kBackground);
    for (int y : {9, 15, 21})
    {
        CHECK_EQ(canvas.Pixel(14, y), crBlack);
        CHECK_EQ(canvas.Pixel(16, y), crBlack);
    }
    CHECK(canvas.Pixel(15, 15) != crBlack);
    CHECK_EQ(canvas.Pixel(5, 15), crBlack);
    CHECK_EQ(canvas.Pixel(25, 15), crBlack);
    CHECK(canvas.Pixel(5, 9) != crBlack);
    CHECK(canvas.Pixel(25, 9) != crBlack);
}
