// Everything the clipboard holds, copied out of it so that it can be put
// back after the clipboard was used for something else: text in every
// encoding, pictures, files, rich text, any registered format. A user who
// had copied a picture finds the picture again, not only text.
#pragma once

#include <windows.h>

#include <vector>

class CClipboardContent
{
public:
    CClipboardContent() = default;
    ~CClipboardContent();
    CClipboardContent(const CClipboardContent&) = delete;
    CClipboardContent& operator=(const CClipboardContent&) = delete;

    // Copies every format the clipboard holds now (an empty clipboard too);
    // FALSE when the clipboard could not be opened.
    BOOL Save(HWND hWndOwner);
    // Empties the clipboard and puts everything saved back, as it was.
    // Nothing happens when nothing was saved.
    BOOL Restore(HWND hWndOwner);
    // Forgets what was saved: Restore will leave the clipboard alone.
    void Forget();
    BOOL IsSaved() const { return m_bSaved; }

private:
    struct Format
    {
        UINT nFormat;
        HANDLE hData; // a copy of ours until it is handed back to the clipboard
    };
    static HANDLE Copy(UINT nFormat, HANDLE hData);
    static void Free(UINT nFormat, HANDLE hData);

    std::vector<Format> m_formats;
    BOOL m_bSaved = FALSE;
};
