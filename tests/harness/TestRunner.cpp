#include "TestRunner.h"

#include <stdio.h>
#include <string.h>

#include <algorithm>
#include <chrono>

namespace qt
{
namespace
{
bool g_bFailed = false;
std::vector<std::string> g_options;
}

std::string Option(const char* pszName)
{
    const std::string strPrefix = std::string("--") + pszName + "=";
    for (const std::string& strOption : g_options)
    {
        if (strOption.compare(0, strPrefix.size(), strPrefix) == 0)
            return strOption.substr(strPrefix.size());
    }
    return std::string();
}

std::vector<TestCase>& Registry()
{
    static std::vector<TestCase> cases;
    return cases;
}

void Fail(const char* pszFile, int nLine, const std::string& strWhat)
{
    g_bFailed = true;
    printf("  FAILED %s:%d: %s\n", pszFile, nLine, strWhat.c_str());
    fflush(stdout);
}

bool CurrentFailed()
{
    return g_bFailed;
}

int RunAll(int argc, char** argv)
{
    int nPassed = 0;
    int nFailed = 0;
    std::vector<std::string> names;
    for (int i = 1; i < argc; ++i)
    {
        if (strncmp(argv[i], "--", 2) == 0)
            g_options.push_back(argv[i]);
        else
            names.push_back(argv[i]);
    }
    for (const TestCase& test : Registry())
    {
        if (!names.empty() && std::find(names.begin(), names.end(), test.pszName) == names.end())
            continue;
        printf("[ RUN ] %s\n", test.pszName);
        fflush(stdout);
        g_bFailed = false;
        const auto start = std::chrono::steady_clock::now();
        test.fn();
        const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        printf("[ %s ] %s (%lld ms)\n", g_bFailed ? "FAIL" : " OK ", test.pszName, static_cast<long long>(ms.count()));
        fflush(stdout);
        (g_bFailed ? nFailed : nPassed)++;
    }
    printf("%d passed, %d failed\n", nPassed, nFailed);
    fflush(stdout);
    return nFailed == 0 && nPassed > 0 ? 0 : 1;
}
} // namespace qt

int main(int argc, char** argv)
{
    return qt::RunAll(argc, argv);
}
