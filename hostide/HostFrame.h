// The host's frame window (class "PFE_Frame"): menu bar, tool bar and MDI
// client, the commands of the host and the files dropped on it.
#pragma once

#include "HostWindow.h"
#include "ToolBar.h"

#include <shellapi.h>

#include <string>

namespace hostide
{
class HostFrame : public HostWindow
{
public:
    static const char kClass[];
    static const UINT kCtrlE = 1099; // the frame's own accelerator
    // Commands of the stand-in's own, for tests (no menu item): move the tool
    // bar to an edge of the frame, log the menu bar's top-level items, log
    // the check state of the menu item whose command id is in lParam, and
    // log how often the frame has lost the activation since it was created.
    static const UINT kToolBarTop = 1192;
    static const UINT kToolBarLeft = 1193;
    static const UINT kToolBarBottom = 1194;
    static const UINT kToolBarRight = 1195;
    static const UINT kLogMenuBar = 1196;
    static const UINT kLogMenuCheck = 1197;
    static const UINT kLogDeactivations = 1198;
    static bool Register();

    // The title holds the project path as its third token: "Host IDE - <path>".
    static HWND Create(const std::string& strProject, int x, int y, int cx, int cy);
    static HostFrame* From(HWND hWnd);

    HWND Client() const { return m_hWndClient; }
    // Opens an editor for the file, or activates the one that shows it.
    void OpenFile(const std::string& strPath);
    // Opens a view by its command id, or activates it when it is open.
    void OpenView(UINT nCommand);
    // The project that "New Project" and "Open Project" open (the real host
    // asks in a dialog); none: they do nothing.
    void SetNextProject(const std::string& strPath) { m_strNextProject = strPath; }
    // Moves the tool bar to an edge and lays the MDI client out beside it.
    void PlaceToolBar(ToolBar::Side side);

private:
    explicit HostFrame(const std::string& strProject) : m_strProject(strProject) {}

    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    LRESULT DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    bool OnCreate();
    void OnSize(LPARAM lParam);
    bool OnCommand(UINT nCommand);
    void OnDropFiles(HDROP hDrop);
    void OnRegisteredMessage(UINT nMessage);

    HWND ActiveChild() const;
    void Paste();
    void CloseAll();
    void SetProject(const std::string& strProject);
    void LogMenuBar() const;
    void LogMenuCheck(UINT nCommand) const;

    std::string m_strProject;
    HWND m_hWndClient = nullptr;
    HWND m_hWndToolBar = nullptr;
    std::string m_strNextProject;
    // WM_ACTIVATE with WA_INACTIVE so far: a window of another program that
    // takes the focus beside the frame shows here even when the frame gets
    // the activation back a moment later.
    int m_nDeactivations = 0;
    ToolBar::Side m_toolBarSide = ToolBar::Side::Top;
    int m_nWatches = 0;
};
} // namespace hostide
