// The shared image strip (bitmap 128: 22 images of 16 x 16, magenta
// transparent) as an image list. Every user makes its own and owns it; the
// list is destroyed with the object.
#pragma once

#include "CImageList.h"

class CImages : public CImageList
{
public:
    // The strip's images from the left, as res/art draws them.
    enum Image
    {
        kSign, kCheck, kCross, kSmallCross, kWindowDoc, kPin,
        kProject, kFolder, kOpenFolder, kSource, kHeader,
        kProgramMemory, kTraceMemory, kEeprom, kListing, kMap, kStack, kFileRegisters, kSpecialRegisters,
        kProjectView, kBuild, kWatch
    };

    // Loads the strip at once; when the bitmap cannot be loaded the list is
    // empty and whoever uses it shows no pictures.
    CImages();
};
