// Reads the file list of a WM_DROPFILES block, and refuses blocks that do not
// hold one.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <string>
#include <vector>

namespace hostide
{
class DroppedFiles
{
public:
    // The full paths in the block, or false when the block is no drop block
    // of this process (the files are then left empty and the block alone).
    static bool Read(HDROP hDrop, std::vector<std::string>& files);
    static bool IsFullPath(const std::string& strPath);

private:
    static bool IsWellFormed(HDROP hDrop);
};
} // namespace hostide
