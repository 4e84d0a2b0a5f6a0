#!/usr/bin/env python3
"""One-line faults of the product, each applied alone, built and run against
the tests that should catch it: a fault that leaves its tests green is a hole
in the suite. The working tree is restored after each fault.

    tests/faults/replay.py            every fault
    tests/faults/replay.py 3 7        faults 3 and 7

"unit" runs scripts/unit; anything else is a ctest pattern for
scripts/test-some (x86_64 on a private display). Prints one line per fault:
CAUGHT or MISSED (or DOES NOT BUILD, a fault to mend), and exits 1
when any was missed.
"""
import os
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

# (what goes wrong, file, exact text, faulty text, tests that must go red)
FAULTS = [
    ("an editor notch scrolls half its lines", "hook/WheelRule.cpp",
     "nMagnitude / nStep", "nMagnitude / (2 * nStep)", ["unit", "test_items"]),
    ("a notch over a view's text scrolls the text, not the view", "hook/WheelRule.cpp",
     "scroll.bParent = true;", "scroll.bParent = false;", ["unit", "test_items"]),
    ("the clipboard is not given its content back", "comment/CClipboardContent.cpp",
     "if (SetClipboardData(format.nFormat, format.hData))", "if (false)", ["test_comment$"]),
    ("the project path is the title's second word", "framework/TextWords.cpp",
     "const int kPathWord = 2;", "const int kPathWord = 1;", ["unit", "test_page"]),
    ("a file changed on disk is never reloaded", "project/CFileTreeItem.cpp",
     "return status.m_mtime != m_timeModified;", "return false && status.m_mtime != m_timeModified;",
     ["test_kinds"]),
    ("a click in a text pane focuses the pane, not its MDI child", "hostlink/CTextWndItem.cpp",
     "RequestHostFocus(GetParent(m_hWnd));", "RequestHostFocus(m_hWnd);", ["test_items"]),
    ("the drop block's file list starts a byte late", "hook/CHostRequests.cpp",
     "pHeader->pFiles = sizeof(DROPFILES);", "pHeader->pFiles = sizeof(DROPFILES) + 1;", ["test_kinds"]),
    ("a second copy of the tool starts as well", "app/CApp.cpp",
     "if (!g_mutexSingleInstance.Lock(0))\n        return FALSE;",
     "if (!g_mutexSingleInstance.Lock(0) && false)\n        return FALSE;", ["test_app$"]),
    ("a destroyed window is never reported", "hook/CHostSession.cpp",
     "    if (m_bEntered && !m_bLeaving)\n        m_reporter.ReportGone(hWnd);",
     "    if (false)\n        m_reporter.ReportGone(hWnd);", ["test_hook$"]),
    ("a drop of a device name is let through", "hook/RequestRules.cpp",
     "            if (IsDeviceName(pPart, static_cast<size_t>(p - pPart)))\n                return false;",
     "            if (false)\n                return false;", ["unit"]),
    ("a user tool that names a file runs without one", "app/CApp.cpp",
     "if (tool.NeedsFile() && strFileName.IsEmpty())", "if (false && tool.NeedsFile() && strFileName.IsEmpty())",
     ["test_tools"]),
    ("the exit overwrites what the user changed in the settings file", "app/CApp.cpp",
     "void CApp::SaveSettings()\n{\n    ReloadSettings();", "void CApp::SaveSettings()\n{\n", ["test_tools"]),
    ("the menu bar is changed under an open host menu", "hook/CHostRequests.cpp",
     "return GetGUIThreadInfo(", "return false && GetGUIThreadInfo(", ["test_tools"]),
    ("a full log is thrown away, not kept as the older copy", "framework/CLogFile.cpp",
     "MoveFileExA(m_strPath, OlderCopyPath(m_strPath), MOVEFILE_REPLACE_EXISTING);", "DeleteFileA(m_strPath);",
     ["test_tools"]),
    ("the frame's WM_SIZE carries no size", "hook/HostIde.h",
     "MAKELPARAM(rect.right - rect.left, rect.bottom - rect.top)", "0", ["test_dock"]),
    ("the Run value is left pointing at another copy", "app/StartWithWindows.cpp",
     'return CString("\\"") + szPath + "\\"";', 'return CString("\\"C:\\\\elsewhere\\\\QUORVANT.exe\\"");',
     ["test_app$"]),
    ("a tool that answers again never hears what it missed", "hook/CRecordReporter.cpp",
     "    m_channel.ProbeAnswered();\n    CatchUp();", "    m_channel.ProbeAnswered();", ["test_hook$"]),
    ("a stranger's uninstall makes the library leave the host", "hook/CHostSession.cpp",
     "                if (IsSessionKey(static_cast<uint32_t>(wParam), static_cast<uint32_t>(lParam)))\n"
     "                    Leave(true);",
     "                if (true)\n                    Leave(true);", ["test_hook$"]),
    ("a forged WM_NCDESTROY ends a live window's watch", "hook/CHostSession.cpp",
     "        if (!m_destroyWatch.IsBeingDestroyed(hWnd))\n            return 0;\n        const LRESULT",
     "        if (false)\n            return 0;\n        const LRESULT", ["test_hook$"]),
    ("a record the system aborts because the tool hangs counts as delivered", "hook/CToolChannel.cpp",
     "if (m_hWndTool && IsHungAppWindow(m_hWndTool))", "if (false && m_hWndTool && IsHungAppWindow(m_hWndTool))",
     ["test_hook$"]),
    ("another program's messages to the host pass for the hung tool at work", "hook/CToolChannel.h",
     "        if (bFromTool)\n            ++m_nSignsOfLife;", "        if (bFromTool || true)\n            ++m_nSignsOfLife;",
     ["test_hook$"]),
    ("a killed tool's popup is still on the host's menu bar when the user opens a menu", "hook/CHostSession.cpp",
     "if (nKind == KIND_FRAME && m_requests.HasPopup(hWnd) && !IsWindow(m_reporter.Channel().Tool()))",
     "if (false && nKind == KIND_FRAME && m_requests.HasPopup(hWnd))", ["test_hook$"]),
    ("every activation and z-order change of the frame is reported", "hook/ReportRules.cpp",
     "w.bAfter = (uFlags & (SWP_NOMOVE | SWP_NOSIZE)) != (SWP_NOMOVE | SWP_NOSIZE) ||",
     "w.bAfter = true ||", ["test_hook$"]),
    ("the host scrolls on for a killed tool", "hook/CHostSession.cpp",
     "if (m_nWheelStep && m_toolWatch.IsToolGone())", "if (false && m_toolWatch.IsToolGone())",
     ["test_robust_faults"]),
    ("the tool takes a record without its key", "hook/QuorvantHook.h",
     "return IsHookKey(pRecord->key, key) ? pRecord : nullptr;", "return key[0] ? pRecord : nullptr;",
     ["test_records"]),
    ("the flat button stays raised after the pointer has left it", "controls/CFlatButton.cpp",
     "if (nIDEvent == m_nTimer && m_nTimer != 0 && !m_bPressed)", "if (false)", ["test_controls"]),
    ("a modeless page is never deleted", "controls/CModelessDialogEx.cpp",
     "if (m_bModeless && m_bAutoDelete)", "if (false)", ["test_controls"]),
    ("a failing data exchange closes the page anyway", "controls/CModelessDialogEx.cpp",
     "if (UpdateData(TRUE))", "if (UpdateData(TRUE) || true)", ["test_controls"]),
    ("Enter ends a page that has no OK button", "controls/CModelessDialogEx.cpp",
     "if (m_bHookReturn && pMsg->wParam == VK_RETURN && OnReturnKey())", "if (false)", ["test_controls"]),
    ("a tree record is found by its path only in the same case", "controls/CTreeItems.cpp",
     "GetPath().CompareNoCase(lpszPath)", "GetPath().Compare(lpszPath)", ["test_tree$"]),
    ("the image button's image sits a pixel right of its margin", "controls/CLBitmapButton.cpp",
     "OffsetRect(&rectImage, bText ? dy : dx, dy);", "OffsetRect(&rectImage, bText ? dy + 1 : dx, dy);",
     ["test_controls"]),
    ("the icon's transparent pixels are painted", "res/tools/textart.py",
     "lambda c: 1 if c == t else 0", "lambda c: 0", ["test_textart", "test_res$"]),
    ("a file's Close and Build Node are offered while it is not open", "project/CFileTreeItem.cpp",
     "        pCmdUI->Enable(FindHostWindow() != nullptr);", "        pCmdUI->Enable(TRUE);", ["test_kinds"]),
    ("the Assist Window's width is not kept at exit", "assist/CDockBar.cpp",
     "GetApp()->m_rectDock = CRect(0, 0, rectClient.Width(), rectClient.Height());",
     "GetApp()->m_rectDock = CRect(0, 0, 0, rectClient.Height());", ["test_dock"]),
    ("Ctrl+E opens the external editor without saving the file first", "app/CApp.cpp",
     "if (m_bSaveAutomatically)\n        ::SendMessageA(hWndFrame, WM_COMMAND, HostIde::kCmdSaveAll, 0);",
     "if (false)\n        ::SendMessageA(hWndFrame, WM_COMMAND, HostIde::kCmdSaveAll, 0);", ["test_items"]),
    ("the settings file loses its Log key", "app/CApp.cpp",
     '{kSettings, "Log", nullptr, &m_bLog, nullptr},', "", ["test_settings"]),
    ("an empty comment pastes the clipboard anyway", "comment/CCommentDlg.cpp",
     "if (m_edit.GetSel() == 0)\n        return;", "if (false)\n        return;", ["test_comment$"]),
    ("a removal from a probe chain that wraps past the last slot loses entries", "hook/CWatchTable.cpp",
     ": (nHole < nHome || nHome <= nNext);", ": (nHole < nHome && nHome <= nNext);", ["unit"]),
    ("a move drag that ends on the Assist Window's own side switches it to the other", "assist/CDockSplitter.cpp",
     "m_bDropLeft = m_owner.IsDockedLeft();", "m_bDropLeft = !m_owner.IsDockedLeft();", ["test_dock$"]),
]


def builds():
    # A fault that does not compile proves nothing: the tests would go red
    # for the build's sake alone.
    command = ["bash", "-c", "source scripts/lib/common.sh && qv_configure_build x86_64 ON"]
    return subprocess.run(command, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0


def run(tests):
    for test in tests:
        if test == "unit":
            command = [os.path.join(ROOT, "scripts/unit")]
        else:
            command = [os.path.join(ROOT, "scripts/test-some"), test]
        if subprocess.run(command, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode != 0:
            return test
    return None


def main():
    chosen = [int(a) for a in sys.argv[1:]] or range(1, len(FAULTS) + 1)
    missed = 0
    for number in chosen:
        what, path, good, bad, tests = FAULTS[number - 1]
        full = os.path.join(ROOT, path)
        with open(full, encoding="utf-8") as f:
            text = f.read()
        if good not in text:
            print("%2d FAULT DOES NOT APPLY: %s (%s)" % (number, what, path))
            missed += 1
            continue
        with open(full, "w", encoding="utf-8") as f:
            f.write(text.replace(good, bad, 1))
        try:
            built = all(t == "unit" for t in tests) or builds()
            red = run(tests) if built else None
        finally:
            with open(full, "w", encoding="utf-8") as f:
                f.write(text)
        if not built:
            print("%2d DOES NOT BUILD: %s" % (number, what), flush=True)
            missed += 1
            continue
        print("%2d %s: %s%s" % (number, "CAUGHT" if red else "MISSED", what, " (by %s)" % red if red else ""),
              flush=True)
        missed += 0 if red else 1
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
