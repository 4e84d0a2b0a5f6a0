// Real keyboard input to the stand-in host, as a user gives it: the hook
// library reads the host's real key state, so shortcuts must come this way.
#pragma once

#include "Fixture.h"

#include <initializer_list>

namespace qt
{
// Keys pressed in order and released in reverse order (a chord).
void SendKeys(std::initializer_list<WORD> keys);
// Brings the host to the front with this editor active, so real keys reach it.
bool FocusEditor(Host& host, HWND hWndEditor);
// A source file of nLines numbered comment lines in strDir; its full path.
std::string MakeSource(const std::string& strDir, const char* pszName, int nLines = 200);
// Characters typed as a keyboard delivers them (VK_PACKET: the focused
// window gets WM_CHAR, whatever the layout).
void TypeText(const std::wstring& strText);
} // namespace qt
