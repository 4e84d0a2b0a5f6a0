// Path helpers on top of the runtime library's _splitpath, multi-byte aware.
#pragma once

#include "CString.h"

// Drive and directory of a module's file with the trailing backslash
// (C:\Tools\ for C:\Tools\QUORVANT.EXE); NULL means the running executable.
CString GetModuleDirectory(HMODULE hModule);
// Drive and directory of a path (C:\work\ for C:\work\main.asm; empty for a bare name).
CString GetDirectoryOfPath(LPCSTR lpszPath);
// The extension with its dot (".asm" for C:\work\main.asm and for *.asm; empty without a dot).
CString GetFileExtension(LPCSTR lpszPath);

// TRUE for the first byte of a double-byte character in the ANSI code page;
// the word splitters take it so.
bool IsAnsiLeadByte(unsigned char ch);
