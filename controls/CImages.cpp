#include "CImages.h"

#include "resource.h"

CImages::CImages()
{
    Create(IDB_IMAGES, 16, 0, RGB(255, 0, 255));
}
