#include "CChildAttachment.h"

#include "CModelessDialogEx.h"

void CChildAttachment::Create(BOOL bShow)
{
    // The template is a child; its parent is the host frame.
    m_bar.Create(bShow);
}

BOOL CChildAttachment::IsShown() const
{
    return m_bar.IsWindowVisible();
}

void CChildAttachment::Show(BOOL bShow)
{
    m_bar.ShowWindow(bShow ? SW_SHOW : SW_HIDE);
}

void CChildAttachment::Place(const CRect& rect)
{
    m_bar.MoveWindow(rect, TRUE);
}
