#include "CDockAttachment.h"

#include "CChildAttachment.h"
#include "CPopupAttachment.h"
#include "RunningOnWine.h"

std::unique_ptr<CDockAttachment> CDockAttachment::For(CModelessDialogEx& bar, HWND hWndHost)
{
    if (IsRunningOnWine())
        return std::unique_ptr<CDockAttachment>(new CPopupAttachment(bar, hWndHost));
    return std::unique_ptr<CDockAttachment>(new CChildAttachment(bar));
}
