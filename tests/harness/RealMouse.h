// Mouse input as the X server delivers a hand's, for what SendInput cannot
// do here across processes.
//
// Wine: SendInput's clicks and moves go to the window under the pointer,
// not to the window holding the capture in a thread that is not in the
// foreground: a drag of another process's window got stuck with its outline
// drawn and the button-up went to the host, and a click on a context menu
// tracked by the tool's hidden main window chose nothing. Real X input works:
// X keeps the pointer grabbed for the window the button went down in.
#pragma once

#include <windows.h>

#include <string>

namespace qt
{
// Runs /usr/bin/xdotool with the given arguments (Wine starts a Unix
// program handed to CreateProcess) and waits until the pointer has reached
// ptEnd, the last place the arguments move it to: Wine gives no handle to
// wait on for a Unix process.
bool XDo(const std::string& strArguments, POINT ptEnd);

// " mousemove x y sleep 0.05" six times on the way from one point to the other.
std::string MoveSteps(POINT from, POINT to);

// A left click at a point of the screen, the pointer moving there first.
bool RealClick(POINT pt);
// Keys typed as the X server delivers a hand's, to the window that has the
// X input focus. xdotool's key names: "alt+a", "Escape", "a".
bool XKeys(const std::string& strKeys);
} // namespace qt
