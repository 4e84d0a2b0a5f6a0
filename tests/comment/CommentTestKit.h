// What the image button's tests still take from the Comment Editor's old
// kit: the pixels of a canvas, now in the shared harness.
#pragma once

#include "Pixels.h"

namespace kit
{
using ::Canvas;
using ::ScreenShot;
} // namespace kit
