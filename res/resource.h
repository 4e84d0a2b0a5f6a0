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
// The notification-area icon's menu: one popup, "E&xit" last.
#define IDR_TRAYMENU 100
// The "&Assist" popup appended to the host IDE's menu bar.
#define IDR_ASSISTMENU 101
// One popup per tree node kind, titled with the kind's class name.
#define IDR_CONTEXTMENU 102

// Dialogs. The Assist Window: the hide button and the tab control.
#define IDD_DOCKBAR 129
#define IDC_DOCK_TAB 1000
#define IDC_DOCK_HIDE 1001
// The Project page: one tree control.
#define IDD_PROJECT 130
#define IDC_PROJECT_TREE 1002
// The Comment Editor: one line of text, Paste, Cancel and the IME check box.
#define IDD_COMMENTDLG 131
#define IDC_COMMENT_TEXT 1003
#define IDC_OPEN_IME 1004
// About QUORVANT: the text of version, hosts and settings file.
#define IDD_ABOUTBOX 132
#define IDC_ABOUT_TEXT 1005

// Strings.
#define IDS_TRAYTIP 100
// The Project tree's fixed node texts: the empty project, the three groups,
// the ten views of the host view table in its order, and the watch node.
#define IDS_EMPTY 62000
#define IDS_SOURCEFILES 62001
#define IDS_HEADERFILES 62002
#define IDS_WINDOWS 62003
#define IDS_PROGRAMMEMORY 62004
#define IDS_TRACEMEMORY 62005
#define IDS_EEPROM 62006
#define IDS_ABSOLUTELISTING 62007
#define IDS_MAPFILE 62008
#define IDS_STACK 62009
#define IDS_FILEREGISTER 62010
#define IDS_SPECIALFUNCTIONREGISTER 62011
#define IDS_PROJECTWINDOW 62012
#define IDS_BUILDRESULTS 62013
#define IDS_WATCH 62014
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

// The user tools Tool01 to Tool10, in the "&Assist" popup and in a file
// node's "Tools" submenu alike.
#define ID_TOOL_FIRST 32784
#define ID_TOOL_LAST 32793

// The tray menu's own commands, beside the framework's exit.
#define ID_APP_STARTWITHWINDOWS 32800
#define ID_APP_ABOUTBOX 32801
#define ID_APP_EDITSETTINGS 32802

// The framework's exit command (57665); spelled as the framework spells it so
// that both definitions may meet in one translation unit.
#define ID_APP_EXIT 0xE141

#endif
