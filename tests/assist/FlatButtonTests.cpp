// The flat button of the Assist Window on a real dialog, driven by the real
// mouse, its look read back from the screen.
#include "AssistTestIds.h"
#include "CDataExchange.h"
#include "CDialog.h"
#include "CFlatButton.h"
#include "InProcess.h"
#include "TestRunner.h"

#include <vector>

namespace
{
class CButtonHost : public CDialog
{
public:
    CButtonHost() : CDialog(IDD_PLAIN, nullptr) {}
    CFlatButton m_flat;
    int m_nClicks = 0;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDialog::DoDataExchange(pDX);
        DDX_Control(pDX, IDC_FLAT, m_flat);
    }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        m_nClicks += wParam == MAKEWPARAM(IDC_FLAT, BN_CLICKED);
        return CDialog::OnCommand(wParam, lParam);
    }
};

// Waits until the 40 x 30 button shows these corners (CLR_INVALID: not
// sunken) and its 16 x 16 blue image centred, moved by nShift.
bool Looks(HWND hWnd, COLORREF clrTopLeft, COLORREF clrBottomRight, int nShift)
{
    return qt::PumpUntil([&] {
        const ScreenShot shot(hWnd, ScreenShot::CLIENT_AREA);
        const COLORREF clrCorner = shot.Pixel(0, 0);
        return (clrTopLeft == CLR_INVALID ? clrCorner != GetSysColor(COLOR_BTNSHADOW) : clrCorner == clrTopLeft) &&
               (clrBottomRight == CLR_INVALID || shot.Pixel(39, 29) == clrBottomRight) &&
               shot.Pixel(12 + nShift, 7 + nShift) == RGB(0, 0, 255) &&
               shot.Pixel(27 + nShift, 22 + nShift) == RGB(0, 0, 255) &&
               shot.Pixel(11 + nShift, 7 + nShift) == GetSysColor(COLOR_BTNFACE);
    });
}
} // namespace

TEST_CASE(flat_at_rest_raised_under_the_pointer_sunken_while_pressed_and_flat_once_it_leaves)
{
    CButtonHost host;
    REQUIRE(host.Create(IDD_PLAIN));
    host.SetWindowPos(nullptr, 100, 100, 300, 200, SWP_NOZORDER);
    host.m_flat.MoveWindow(160, 40, 40, 30);
    CImageList images;
    const std::vector<DWORD> bits(16 * 16, 0x0000FF); // blue
    HBITMAP hBitmap = CreateBitmap(16, 16, 1, 32, bits.data());
    REQUIRE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1) && images.Add(hBitmap, RGB(255, 0, 255)) == 0);
    DeleteObject(hBitmap);
    REQUIRE(host.m_flat.SetImage(&images, 0));
    images.DeleteImageList(); // the button keeps a copy
    host.ShowWindow(SW_SHOW);
    REQUIRE(qt::MakeForeground(host.m_hWnd));
    const HWND hWnd = host.m_flat.m_hWnd;
    const COLORREF clrFace = GetSysColor(COLOR_BTNFACE);
    const COLORREF clrLight = GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF clrShadow = GetSysColor(COLOR_BTNSHADOW);

    // At rest; under the pointer, and after it left onto the dialog or off it altogether.
    REQUIRE(qt::MouseTo(host.m_hWnd, 100, 150));
    CHECK(Looks(hWnd, clrFace, clrFace, 0));
    const POINT aways[] = {{100, 150}, {2, 2}};
    for (const POINT& pt : aways)
    {
        REQUIRE(qt::MouseTo(hWnd, 20, 15));
        CHECK(Looks(hWnd, clrLight, clrShadow, 0));
        REQUIRE(qt::MouseTo(pt.x == 2 ? nullptr : host.m_hWnd, pt.x, pt.y));
        CHECK(Looks(hWnd, clrFace, clrFace, 0));
    }

    // A press that started elsewhere neither lights it up nor clicks it.
    REQUIRE(qt::MouseTo(host.m_hWnd, 100, 150) && qt::LeftButton(true));
    REQUIRE(qt::MouseTo(hWnd, 20, 15) && qt::PressKeys({}));
    CHECK_EQ(ScreenShot(hWnd, ScreenShot::CLIENT_AREA).Pixel(0, 0), clrFace);
    REQUIRE(qt::MouseTo(host.m_hWnd, 100, 150) && qt::LeftButton(false) && qt::PressKeys({}));
    CHECK_EQ(host.m_nClicks, 0);

    REQUIRE(qt::MouseTo(hWnd, 20, 15));
    REQUIRE(qt::LeftButton(true));
    CHECK(Looks(hWnd, clrShadow, clrLight, 1));
    REQUIRE(qt::LeftButton(false));
    CHECK(qt::PumpUntil([&] { return host.m_nClicks == 1; }));
    CHECK(Looks(hWnd, CLR_INVALID, CLR_INVALID, 0));
    host.DestroyWindow();
}
