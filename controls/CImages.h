// The shared image strip (bitmap 128: 22 images of 16 x 16, magenta
// transparent) as an image list. Every user makes its own and owns it; the
// list is destroyed with the object.
#pragma once

#include "CImageList.h"

class CImages : public CImageList
{
public:
    // Loads the strip at once; when the bitmap cannot be loaded the list is
    // empty and whoever uses it shows no pictures.
    CImages();
};
