// An editor: an MDI child of class "PFE_Text" titled with its file's full
// path, showing the file's lines with a line-number gutter ("PFE_Num") at its
// left and an insertion point where typed and pasted text goes.
#pragma once

#include "MdiChild.h"
#include "TextDocument.h"

#include <string>

namespace hostide
{
class EditorWindow : public MdiChild
{
public:
    static const char kClass[];
    static bool Register();

    // Opens an editor for the file (an empty one when bLoad is false or the
    // file cannot be read) and logs OPEN.
    static HWND Open(HWND hWndClient, const std::string& strPath, bool bLoad);
    // The editor behind a window, or null for any other window.
    static EditorWindow* From(HWND hWnd);

    const std::string& Path() const { return m_strPath; }
    // Inserts at the insertion point and shows the result at once.
    void InsertText(const std::string& strText);
    // Writes the text to the editor's file; "Untitled" editors have none.
    bool Save() const;

private:
    EditorWindow(const std::string& strPath, bool bHasFile);

    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void OnCreate();
    void OnSize();
    void OnPaint();
    void OnSetFocus();
    void OnKeyDown(UINT nKey);
    void OnLButtonDown(int y);

    RECT TextArea() const override;
    void Redraw() override;
    void Changed(bool bScrollToCaret);

    std::string m_strPath;
    bool m_bHasFile;
    HWND m_hWndNumbers = nullptr;
};
} // namespace hostide
