// An icon this process made (from an image list, say), destroyed with the
// object. Icons loaded from resources are shared and need no owner.
#pragma once

#include <windows.h>

class CIcon
{
public:
    explicit CIcon(HICON hIcon = nullptr) : m_hIcon(hIcon) {}
    ~CIcon() { Reset(); }
    CIcon(const CIcon&) = delete;
    CIcon& operator=(const CIcon&) = delete;

    void Reset(HICON hIcon = nullptr)
    {
        if (m_hIcon)
            ::DestroyIcon(m_hIcon);
        m_hIcon = hIcon;
    }

    HICON m_hIcon;
};
