// What the owner-drawn buttons share: the text format their styles ask for,
// the system colours they paint with, and their own copy of an image.
#pragma once

#include "CImageList.h"
#include "CRect.h"

// DrawText flags for a button style: BS_MULTILINE wraps, else one line;
// BS_LEFT or BS_RIGHT alone aligns to its side and none or both centre, and
// BS_TOP and BS_BOTTOM the same way up and down.
UINT ButtonTextFormat(DWORD dwStyle);

// How far a pressed button's image and text move right and down.
const int kPressOffset = 1;

struct ButtonColors
{
    COLORREF clrHighlight = 0;
    COLORREF clrShadow = 0;
    COLORREF clrDkShadow = 0;
    COLORREF clrFace = 0;
    COLORREF clrGrayText = 0;

    // The system's colours now; read again on WM_SYSCOLORCHANGE.
    static ButtonColors Read();
};

// Makes target a list of one image, a copy of image nImage of source, and
// size that image's size. FALSE when source has no such image or the list
// could not be made.
BOOL CopyButtonImage(const CImageList* pSource, int nImage, CImageList& target, CSize& size);
