#include "CClipboardContent.h"

#include <string.h>

namespace
{
// The clipboard open for one scope, closed on every path.
class COpenClipboard
{
public:
    explicit COpenClipboard(HWND hWndOwner) : m_bOpen(OpenClipboard(hWndOwner)) {}
    ~COpenClipboard()
    {
        if (m_bOpen)
            CloseClipboard();
    }
    COpenClipboard(const COpenClipboard&) = delete;
    COpenClipboard& operator=(const COpenClipboard&) = delete;
    BOOL IsOpen() const { return m_bOpen; }

private:
    BOOL m_bOpen;
};

HGLOBAL CopyGlobal(HANDLE hData)
{
    const SIZE_T nSize = GlobalSize(hData);
    const void* pSource = nSize ? GlobalLock(hData) : nullptr;
    if (!pSource)
        return nullptr;
    HGLOBAL hCopy = GlobalAlloc(GMEM_MOVEABLE, nSize);
    void* pCopy = hCopy ? GlobalLock(hCopy) : nullptr;
    if (pCopy)
    {
        memcpy(pCopy, pSource, nSize);
        GlobalUnlock(hCopy);
    }
    else if (hCopy)
    {
        GlobalFree(hCopy);
        hCopy = nullptr;
    }
    GlobalUnlock(hData);
    return hCopy;
}

// Formats whose data is not global memory, or is no data of ours to copy.
bool IsHandleFormat(UINT nFormat)
{
    return nFormat == CF_BITMAP || nFormat == CF_DSPBITMAP || nFormat == CF_ENHMETAFILE ||
           nFormat == CF_DSPENHMETAFILE || nFormat == CF_METAFILEPICT || nFormat == CF_DSPMETAFILEPICT ||
           nFormat == CF_PALETTE;
}

bool IsUncopyable(UINT nFormat)
{
    // Drawn by its owner on demand, or handles only its owner understands.
    return nFormat == CF_OWNERDISPLAY || nFormat == CF_PALETTE ||
           (nFormat >= CF_PRIVATEFIRST && nFormat <= CF_PRIVATELAST) ||
           (nFormat >= CF_GDIOBJFIRST && nFormat <= CF_GDIOBJLAST);
}
} // namespace

CClipboardContent::~CClipboardContent()
{
    Forget();
}

HANDLE CClipboardContent::Copy(UINT nFormat, HANDLE hData)
{
    switch (nFormat)
    {
    case CF_BITMAP:
    case CF_DSPBITMAP:
        return CopyImage(hData, IMAGE_BITMAP, 0, 0, 0);
    case CF_ENHMETAFILE:
    case CF_DSPENHMETAFILE:
        return CopyEnhMetaFileA(static_cast<HENHMETAFILE>(hData), nullptr);
    case CF_METAFILEPICT:
    case CF_DSPMETAFILEPICT:
    {
        // A METAFILEPICT in global memory holding a metafile handle: both copied.
        const METAFILEPICT* pSource = static_cast<const METAFILEPICT*>(GlobalLock(hData));
        if (!pSource)
            return nullptr;
        METAFILEPICT picture = *pSource;
        GlobalUnlock(hData);
        picture.hMF = CopyMetaFileA(picture.hMF, nullptr);
        HGLOBAL hCopy = picture.hMF ? GlobalAlloc(GMEM_MOVEABLE, sizeof(picture)) : nullptr;
        if (METAFILEPICT* pCopy = hCopy ? static_cast<METAFILEPICT*>(GlobalLock(hCopy)) : nullptr)
        {
            *pCopy = picture;
            GlobalUnlock(hCopy);
            return hCopy;
        }
        if (picture.hMF)
            DeleteMetaFile(picture.hMF);
        if (hCopy)
            GlobalFree(hCopy);
        return nullptr;
    }
    default:
        return IsHandleFormat(nFormat) ? nullptr : CopyGlobal(hData);
    }
}

void CClipboardContent::Free(UINT nFormat, HANDLE hData)
{
    switch (nFormat)
    {
    case CF_BITMAP:
    case CF_DSPBITMAP:
        DeleteObject(hData);
        break;
    case CF_ENHMETAFILE:
    case CF_DSPENHMETAFILE:
        DeleteEnhMetaFile(static_cast<HENHMETAFILE>(hData));
        break;
    case CF_METAFILEPICT:
    case CF_DSPMETAFILEPICT:
        if (const METAFILEPICT* pPicture = static_cast<const METAFILEPICT*>(GlobalLock(hData)))
        {
            DeleteMetaFile(pPicture->hMF);
            GlobalUnlock(hData);
        }
        GlobalFree(hData);
        break;
    default:
        GlobalFree(hData);
        break;
    }
}

BOOL CClipboardContent::Save(HWND hWndOwner)
{
    Forget();
    COpenClipboard clipboard(hWndOwner);
    if (!clipboard.IsOpen())
        return FALSE;
    for (UINT nFormat = EnumClipboardFormats(0); nFormat; nFormat = EnumClipboardFormats(nFormat))
    {
        if (IsUncopyable(nFormat))
            continue;
        HANDLE hData = GetClipboardData(nFormat);
        if (HANDLE hCopy = hData ? Copy(nFormat, hData) : nullptr)
            m_formats.push_back({nFormat, hCopy});
    }
    m_bSaved = TRUE;
    return TRUE;
}

BOOL CClipboardContent::Restore(HWND hWndOwner)
{
    if (!m_bSaved)
        return FALSE;
    COpenClipboard clipboard(hWndOwner);
    if (!clipboard.IsOpen() || !EmptyClipboard())
        return FALSE;
    // The clipboard owns each block it takes; one it refuses is still ours.
    for (Format& format : m_formats)
    {
        if (SetClipboardData(format.nFormat, format.hData))
            format.hData = nullptr;
    }
    Forget();
    return TRUE;
}

void CClipboardContent::Forget()
{
    for (const Format& format : m_formats)
    {
        if (format.hData)
            Free(format.nFormat, format.hData);
    }
    m_formats.clear();
    m_bSaved = FALSE;
}
