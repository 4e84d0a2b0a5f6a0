// The notification area as a user meets it: the icons shown, a real click on
// one, and the popup menu it opens.
#pragma once

#include <windows.h>

#include <vector>

namespace qt
{
// Wine: without a tray of the desktop, Wine's explorer shows notification-area
// icons in a small window of its own, each icon a child window of it.
std::vector<HWND> TrayIcons();
// Real input at a screen point: the cursor moves there, then down and up.
void ClickAt(POINT pt, DWORD dwDown, DWORD dwUp);
POINT Centre(HWND hWnd);
// The popup menu on the screen, or NULL.
HWND VisibleMenu();
// Opens the tool's tray menu with a left click on its icon and chooses the
// item of this mnemonic with the keyboard. False when no menu appeared; the
// caller waits for what the item does.
bool ChooseFromTrayMenu(HWND hWndIcon, WORD wKey);
// The same for "E&xit".
bool ExitFromTrayMenu(HWND hWndIcon);
// A real left click on the middle of a window.
void ClickMiddle(HWND hWnd);
} // namespace qt
