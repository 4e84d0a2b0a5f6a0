#include "WheelRule.h"

#include "HookWire.h"

namespace WheelRule
{
Scroll ForNotch(unsigned nKind, int nDelta, bool bEmptyWord, uint32_t nStep)
{
    Scroll scroll = {0, nDelta > 0, false};
    if (nKind == KIND_TEXT)
    {
        scroll.nLines = 1;
        scroll.bParent = true;
    }
    else if (nKind == KIND_CHILD && !bEmptyWord && nStep > 0)
    {
        // In 64 bits: -2^31 has no 32-bit negation.
        const int64_t nMagnitude = nDelta < 0 ? -static_cast<int64_t>(nDelta) : nDelta;
        scroll.nLines = static_cast<int>(nMagnitude / nStep);
    }
    return scroll;
}
} // namespace WheelRule
