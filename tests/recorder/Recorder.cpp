// Stands in for the external editor in tests: appends its whole command line
// to the file named by its first argument, then ends.
#include <windows.h>

#include <string>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR lpCmdLine, int)
{
    std::string strArgs(lpCmdLine);
    std::string strFile;
    size_t nEnd = 0;
    if (!strArgs.empty() && strArgs[0] == '"')
    {
        nEnd = strArgs.find('"', 1);
        strFile = strArgs.substr(1, nEnd == std::string::npos ? std::string::npos : nEnd - 1);
    }
    else
    {
        nEnd = strArgs.find(' ');
        strFile = strArgs.substr(0, nEnd);
    }
    HANDLE hFile = CreateFileA(strFile.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return 1;
    std::string strLine = std::string(GetCommandLineA()) + "\r\n";
    DWORD dwWritten = 0;
    WriteFile(hFile, strLine.data(), static_cast<DWORD>(strLine.size()), &dwWritten, nullptr);
    CloseHandle(hFile);
    return 0;
}
