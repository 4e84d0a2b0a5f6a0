// The host's frame window (class "PFE_Frame"): menu bar, tool bar and MDI
// client, the commands of the host and the files dropped on it.
#pragma once

#include "HostWindow.h"

#include <shellapi.h>

#include <string>

namespace hostide
{
class HostFrame : public HostWindow
{
public:
    static const char kClass[];
    static const UINT kCtrlE = 1099; // the frame's own accelerator
    static bool Register();

    // The title holds the project path as its third token: "Host IDE - <path>".
    static HWND Create(const std::string& strProject, int x, int y, int cx, int cy);
    static HostFrame* From(HWND hWnd);

    HWND Client() const { return m_hWndClient; }
    // Opens an editor for the file, or activates the one that shows it.
    void OpenFile(const std::string& strPath);
    // Opens a view by its command id, or activates it when it is open.
    void OpenView(UINT nCommand);

private:
    explicit HostFrame(const std::string& strProject) : m_strProject(strProject) {}

    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    LRESULT DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    bool OnCreate();
    void OnSize();
    bool OnCommand(UINT nCommand);
    void OnDropFiles(HDROP hDrop);
    void OnRegisteredMessage(UINT nMessage);

    HWND ActiveChild() const;
    void Paste();
    void CloseAll();

    std::string m_strProject;
    HWND m_hWndClient = nullptr;
    HWND m_hWndToolBar = nullptr;
    int m_nWatches = 0;
};
} // namespace hostide
