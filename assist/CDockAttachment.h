// How the Assist Window sits in the host IDE's frame: the one part of it
// that differs between Windows and Wine. Chosen once, when the Assist Window
// is made (For); the Assist Window and the host frame's item call it the
// same way on both.
#pragma once

#include "CRect.h"

#include <memory>

class CModelessDialogEx;

class CDockAttachment
{
public:
    // The attachment this system needs for bar, docked in hWndHost.
    static std::unique_ptr<CDockAttachment> For(CModelessDialogEx& bar, HWND hWndHost);
    virtual ~CDockAttachment() = default;

    // Creates the window of the Assist Window, shown or hidden.
    virtual void Create(BOOL bShow) = 0;
    // Shown means shown beside the MDI client, as the user chose.
    virtual BOOL IsShown() const = 0;
    virtual void Show(BOOL bShow) = 0;
    // Puts the window on a rectangle in the host frame's client coordinates.
    virtual void Place(const CRect& rect) = 0;
    // The host frame moved, was minimised, restored, hidden or activated.
    virtual void FollowHost() = 0;

    // The Assist Window's own messages that the attachment has a say in.
    // OnMouseActivate returns the answer, or -1 for the default one.
    virtual LRESULT OnMouseActivate() = 0;
    virtual void OnActivate(WPARAM wParam) = 0;
    // TRUE when the window was destroyed (the object is gone then).
    virtual BOOL OnTimer(UINT_PTR nIDEvent) = 0;
    virtual void OnDestroy() = 0;
};
