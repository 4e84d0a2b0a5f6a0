// What one wheel message scrolls, as the tool's policy says: an MDI child
// (editor or view) one line per step of the delta, a view's text window one
// line of its parent (the view) whatever the delta, up for a positive delta
// and down otherwise (a delta of 0 scrolls down). A plain function without
// window calls.
#pragma once

#include <stdint.h>

namespace WheelRule
{
struct Scroll
{
    int nLines;   // WM_VSCROLL lines to send
    bool bUp;     // SB_LINEUP, else SB_LINEDOWN
    bool bParent; // to the window's parent, else to the window
};

// nKind is the window's HookKind (KIND_CHILD or KIND_TEXT; other kinds
// scroll nothing); bEmptyWord: the message's wParam was 0 in its low 32
// bits, which an MDI child takes for no wheel at all; nStep: delta per line.
Scroll ForNotch(unsigned nKind, int nDelta, bool bEmptyWord, uint32_t nStep);
} // namespace WheelRule
