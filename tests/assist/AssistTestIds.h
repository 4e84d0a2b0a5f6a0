// Ids of the test dialogs of the reusable controls.
#pragma once

#define IDD_PAGE 200       // a child page with a caption, the tab's text
#define IDD_PLAIN 210      // top-level, without OK and Cancel
#define IDD_OKCANCEL 211   // top-level, with OK and Cancel
#define IDD_TABHOST 220    // holds a tab control, tabs at the top as written, and the flat button

#define IDC_TEXT 300
#define IDC_TAB 1000
#define IDC_FLAT 1001
