#include "CImages.h"

CImages::CImages()
{
    Create(128 /* IDB_IMAGES */, 16, 0, RGB(255, 0, 255));
}
