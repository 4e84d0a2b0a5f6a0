#include "CMainFrame.h"

#include "CAboutDlg.h"
#include "CApp.h"
#include "CChildWndItem.h"
#include "CCommentDlg.h"
#include "CProjectDlg.h"
#include "ProgramLauncher.h"
#include "StartWithWindows.h"
#include "QuorvantHook.h"
#include "resource.h"

IMPLEMENT_DYNCREATE(CMainFrame, CTrayIconFrame)

BEGIN_MESSAGE_MAP(CMainFrame, CTrayIconFrame)
    ON_WM_CREATE()
    ON_WM_COPYDATA()
    ON_WM_CLOSE()
    ON_REGISTERED_MESSAGE(WM_OPENCOMMENTEDITOR, OnOpenCommentEditor)
    ON_REGISTERED_MESSAGE(WM_RUNCOMMAND, OnRunCommand)
    ON_COMMAND(ID_APP_STARTWITHWINDOWS, OnStartWithWindows)
    ON_UPDATE_COMMAND_UI(ID_APP_STARTWITHWINDOWS, OnUpdateStartWithWindows)
    ON_COMMAND(ID_APP_ABOUTBOX, OnAbout)
    ON_COMMAND(ID_APP_EDITSETTINGS, OnEditSettings)
    ON_WM_TIMER()
END_MESSAGE_MAP()

namespace
{
const UINT_PTR kSettingsTimer = 1;
// How often the settings file is looked at: a change the user saved takes
// effect within this time.
const UINT kSettingsPollMs = 500;

WIN32_FILE_ATTRIBUTE_DATA SettingsFileData()
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExA(GetApp()->GetSettingsPath(), GetFileExInfoStandard, &data))
        data = WIN32_FILE_ATTRIBUTE_DATA();
    return data;
}

bool SameFile(const WIN32_FILE_ATTRIBUTE_DATA& a, const WIN32_FILE_ATTRIBUTE_DATA& b)
{
    return CompareFileTime(&a.ftLastWriteTime, &b.ftLastWriteTime) == 0 && a.nFileSizeLow == b.nFileSizeLow &&
           a.nFileSizeHigh == b.nFileSizeHigh;
}
} // namespace

CMainFrame::CMainFrame()
{
    m_images.Create(IDB_IMAGES, 16, 0, RGB(255, 0, 255));
}

CMainFrame::~CMainFrame() = default;

int CMainFrame::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CTrayIconFrame::OnCreate(lpCreateStruct) == -1)
        return -1;
    m_iconTray.Reset(m_images.GetIcon(0));
    SetTrayIcon(m_iconTray.m_hIcon, IDS_TRAYTIP);
    // The host scrolls on the wheel itself, as our items would: a notch of
    // 120 is four lines of an MDI child, one of a text window's parent.
    const HookWheelPolicy policy = {kWheelStep};
    setHookWheelPolicy(&policy);
    installHook(m_hWnd);
    m_settingsFile = SettingsFileData();
    SetTimer(kSettingsTimer, kSettingsPollMs);
    return 0;
}

BOOL CMainFrame::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    // The context menus of the Project tree are owned by this frame, so
    // their update requests and commands arrive here; the page hands them
    // to its selected node.
    if (g_pCommandPage && g_pCommandPage->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    return CTrayIconFrame::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CMainFrame::OnTrayLButtonDown()
{
    CTrayIconFrame::OnTrayLButtonDown();
    TrackTrayMenu(IDR_TRAYMENU, 0);
}

BOOL CMainFrame::OnCopyData(CWnd* /*pWnd*/, COPYDATASTRUCT* pCopyDataStruct)
{
    // Anything can send us WM_COPYDATA: only well-formed records with the
    // key of our installHook count, which only the hosts we entered know.
    if (const HookRecord* pRecord = HookRecordOf(pCopyDataStruct))
    {
        switch (pCopyDataStruct->dwData)
        {
        case HOOK_CREATE:
            m_items.CreateItem(pRecord);
            break;
        case HOOK_MESSAGE:
            m_items.OnHookMessage(pRecord);
            break;
        case HOOK_MESSAGE_DONE:
            m_items.OnHookMessageDone(pRecord);
            break;
        case HOOK_DESTROY:
            m_items.Remove(HookRecordWindow(pRecord));
            break;
        default:
            break;
        }
    }
    else
    {
        // Said once a second at most, with how many came meanwhile: a
        // program that floods us must not fill the disk or slow us down.
        ++m_nRefusedRecords;
        if (GetTickCount() - m_dwRefusedLogged >= 1000)
        {
            g_log.Write("records refused (no key of ours, or malformed): %lu, the last of kind %lu",
                        m_nRefusedRecords, static_cast<unsigned long>(pCopyDataStruct ? pCopyDataStruct->dwData : 0));
            m_nRefusedRecords = 0;
            m_dwRefusedLogged = GetTickCount();
        }
    }
    return static_cast<BOOL>(Default());
}

void CMainFrame::OnClose()
{
    KillTimer(kSettingsTimer);
    uninstallHook();
    Sleep(100);
    // Every host reports its windows gone; their items undo what they did
    // to the host. A host that was killed never will: its windows are no
    // windows any more, and their items go without a record. Nor will a hung
    // host: when nothing has arrived for a while, the items of hosts that do
    // not answer go too, so that the tool can always end.
    const DWORD kQuietMs = 1000;
    // Between messages the loop sleeps until the next one, or this long to
    // look for windows that went without a record.
    const DWORD kVanishedCheckMs = 50;
    size_t nLeft = m_items.size();
    DWORD dwSince = GetTickCount();
    while (!m_items.IsEmpty())
    {
        MSG msg;
        if (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        {
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
            continue;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kVanishedCheckMs, QS_ALLINPUT);
        m_items.RemoveVanished();
        if (m_items.size() != nLeft)
        {
            nLeft = m_items.size();
            dwSince = GetTickCount();
        }
        else if (GetTickCount() - dwSince >= kQuietMs)
        {
            m_items.RemoveUnresponsive(250);
            nLeft = m_items.size();
            dwSince = GetTickCount();
        }
    }
    CTrayIconFrame::OnClose();
}

LRESULT CMainFrame::OnOpenCommentEditor(WPARAM wParam, LPARAM /*lParam*/)
{
    // Modal over the host frame; this thread keeps handling the hook's
    // records and the tray icon in the dialog's loop meanwhile.
    CCommentDlg dlg(reinterpret_cast<HWND>(wParam));
    dlg.DoModal();
    return 0;
}

LRESULT CMainFrame::OnRunCommand(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    if (g_strPendingCommand.IsEmpty())
        return 0;
    CString strCommand(g_strPendingCommand); // CreateProcess may write to it
    HANDLE hProcess = LaunchProgram(strCommand.GetBuffer(strCommand.GetLength()), SHOW_PROGRAM_DEFAULT);
    if (hProcess)
        CloseHandle(hProcess);
    else
        g_log.Write("could not start: %s", static_cast<LPCSTR>(g_strPendingCommand));
    return 0;
}

void CMainFrame::OnStartWithWindows()
{
    SetStartWithWindows(!IsStartingWithWindows());
}

void CMainFrame::OnUpdateStartWithWindows(CCmdUI* pCmdUI)
{
    pCmdUI->SetCheck(IsStartingWithWindows() ? 1 : 0);
}

void CMainFrame::OnAbout()
{
    CAboutDlg dlg(m_items, this);
    dlg.DoModal();
}

void CMainFrame::OnEditSettings()
{
    GetApp()->EditSettings();
}

void CMainFrame::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent != kSettingsTimer)
        return CTrayIconFrame::OnTimer(nIDEvent);
    const WIN32_FILE_ATTRIBUTE_DATA data = SettingsFileData();
    BOOL bChanged = FALSE;
    if (!SameFile(data, m_settingsFile))
    {
        m_settingsFile = data;
        bChanged = GetApp()->ReloadSettings();
    }
    // Also what a host refused a moment ago (its menu was open) is asked
    // for again.
    if (bChanged || m_items.IsAnyRefused())
        m_items.ApplySettings();
}
