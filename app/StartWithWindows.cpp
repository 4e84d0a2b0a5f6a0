#include "StartWithWindows.h"

#include "CString.h"

namespace
{
const char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
const char kValueName[] = "QUORVANT";

// The registry key open for one scope, closed on every path.
class CRunKey
{
public:
    explicit CRunKey(REGSAM samDesired)
    {
        if (RegCreateKeyExA(HKEY_CURRENT_USER, kRunKey, 0, nullptr, 0, samDesired, nullptr, &m_hKey, nullptr) !=
            ERROR_SUCCESS)
            m_hKey = nullptr;
    }
    ~CRunKey()
    {
        if (m_hKey)
            RegCloseKey(m_hKey);
    }
    CRunKey(const CRunKey&) = delete;
    CRunKey& operator=(const CRunKey&) = delete;
    HKEY Get() const { return m_hKey; }

private:
    HKEY m_hKey = nullptr;
};

CString ThisCommand()
{
    char szPath[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, szPath, MAX_PATH);
    return CString("\"") + szPath + "\"";
}
} // namespace

BOOL IsStartingWithWindows()
{
    CRunKey key(KEY_QUERY_VALUE);
    char szValue[MAX_PATH + 8] = {};
    DWORD cbValue = sizeof(szValue) - 1;
    DWORD dwType = 0;
    if (!key.Get() || RegQueryValueExA(key.Get(), kValueName, nullptr, &dwType, reinterpret_cast<BYTE*>(szValue),
                                       &cbValue) != ERROR_SUCCESS ||
        (dwType != REG_SZ && dwType != REG_EXPAND_SZ))
        return FALSE;
    return ThisCommand().CompareNoCase(szValue) == 0;
}

BOOL SetStartWithWindows(BOOL bStart)
{
    CRunKey key(KEY_SET_VALUE);
    if (!key.Get())
        return FALSE;
    if (!bStart)
    {
        const LONG lResult = RegDeleteValueA(key.Get(), kValueName);
        return lResult == ERROR_SUCCESS || lResult == ERROR_FILE_NOT_FOUND;
    }
    const CString strCommand = ThisCommand();
    return RegSetValueExA(key.Get(), kValueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(static_cast<LPCSTR>(strCommand)),
                          static_cast<DWORD>(strCommand.GetLength() + 1)) == ERROR_SUCCESS;
}
