// The Assist Window's rectangle as the settings file keeps it ("DockRect")
// and the width the frame can give it: plain functions, no window calls.
//
// The text is four fields at offsets 0, 5, 10 and 15, each four characters
// ("0000:0000:0240:0600"). Values are kept within what four characters
// hold, so that a value written is always read back.
#pragma once

#include <string>

namespace DockRect
{
const int kMinField = -999;
const int kMaxField = 9999;
// The MDI client keeps at least this width beside the Assist Window.
const int kMinClientWidth = 32;

// left, top, right, bottom
std::string Format(const long fields[4]);
// A field that is missing or not a number reads as 0; every field is
// clamped to kMinField..kMaxField.
void Parse(const char* pszText, long fields[4]);
// The width the Assist Window may take of a free area nFreeWidth wide:
// never negative, never so much that the MDI client is narrower than
// kMinClientWidth (or than the area, when the area is narrower still).
int ClampWidth(long nWidth, long nFreeWidth);
} // namespace DockRect
