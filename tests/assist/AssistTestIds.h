// Ids of the test dialogs of the Assist Window's building blocks.
#pragma once

// Pages: child dialogs with a caption (the tab's text) and two controls.
#define IDD_PAGE_ALPHA 200
#define IDD_PAGE_BETA 201
#define IDD_PAGE_GAMMA 202
// Top-level dialogs: one without OK and Cancel, one with both.
#define IDD_PLAIN 210
#define IDD_OKCANCEL 211
// A dialog holding a tab control taken from the template (no tool tips,
// tabs at the top as written).
#define IDD_TABHOST 220
// The modal dialog: a text field, a check box, OK and Cancel.
#define IDD_MODAL 230
// A dialog holding buttons that the flat button takes over.
#define IDD_BUTTONHOST 240

#define IDC_TEXT 300
#define IDC_FLAG 301
#define IDC_TAB 1000
#define IDC_FLAT 1001
#define IDC_OTHER 1003

