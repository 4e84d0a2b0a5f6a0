// Resource ids of QUORVANT.exe, shared by the resource script and the code.
// Kept in the order of QUORVANT.rc: icons, bitmaps, cursors, menus, dialogs,
// strings, then the command ids of the menus.
#ifndef QUORVANT_RESOURCE_H
#define QUORVANT_RESOURCE_H

// Icon: the program's mark, 32x32 and 16x16.
#define IDR_MAINFRAME 100

// Bitmap: the strip of 22 images of 16x16, magenta transparent.
#define IDB_IMAGES 128

// Cursor: the Assist Window's splitter, hot spot (15, 15).
#define IDC_SPLIT 10000

// Menus (each resource type numbers on its own: menu 100 is not icon 100).
// The notification-area icon's menu: one popup holding "&Exit".
#define IDR_TRAYMENU 100
// The "&Assist" popup appended to the host IDE's menu bar.
#define IDR_ASSISTMENU 101
// One popup per tree node kind, titled with the kind's class name.
#define IDR_CONTEXTMENU 102

// Dialogs 129, 130 and 131 are added here.
// The Comment Editor: one line of text, Paste, Cancel and the IME check box.
#define IDD_COMMENTDLG 131
#define IDC_COMMENT_TEXT 1003
#define IDC_OPEN_IME 1004

// Strings.
#define IDS_TRAYTIP 100
// String 32771 is the prompt of ID_VIEW_ASSISTWINDOW.

// Commands. The "&Assist Window" item of the menu added to the host IDE.
#define ID_VIEW_ASSISTWINDOW 32771

// Commands of the context menus. The Project page hands every id from
// ID_NODE_FIRST to ID_NODE_LAST to the selected node, and each node gives the
// ids of its own popup their meaning (ID_NODE_OPEN opens a project, a file,
// a view or a watch).
#define ID_NODE_FIRST 32772
#define ID_NODE_NEW 32773
#define ID_NODE_OPEN 32774
#define ID_NODE_EDIT 32775
#define ID_NODE_CLOSE 32776
#define ID_NODE_SAVE 32777
#define ID_NODE_SAVEALL 32778
#define ID_NODE_EXTERNALEDITOR 32779
#define ID_NODE_BUILD 32780
#define ID_NODE_HIDEASSISTWINDOW 32781
#define ID_NODE_CLOSEALLWINDOWS 32782
#define ID_NODE_LAST 32783

// The framework's exit command (57665); spelled as the framework spells it so
// that both definitions may meet in one translation unit.
#define ID_APP_EXIT 0xE141

#endif
