// A small test runner: named cases, checks that report file and line, and the
// closing line "N passed, N failed". Portable: the programs that run under
// Wine and the native unit tests (through tests/unit/UnitTest.h) share it.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace qt
{
struct TestCase
{
    const char* pszName;
    std::function<void()> fn;
};

std::vector<TestCase>& Registry();
void Fail(const char* pszFile, int nLine, const std::string& strWhat);
bool CurrentFailed();
// Runs every case (or those named on the command line); returns the exit code.
// Arguments of the form --name=value are options for the cases, not names.
int RunAll(int argc, char** argv);
// The value of --name=value on the command line, or empty.
std::string Option(const char* pszName);

struct Registrar
{
    Registrar(const char* pszName, std::function<void()> fn) { Registry().push_back({pszName, fn}); }
};
} // namespace qt

#define QT_CAT2(a, b) a##b
#define QT_CAT(a, b) QT_CAT2(a, b)
#define TEST_CASE(name)                                                     \
    static void QT_CAT(test_, name)();                                      \
    static qt::Registrar QT_CAT(registrar_, name)(#name, QT_CAT(test_, name)); \
    static void QT_CAT(test_, name)()

#define CHECK(cond)                                                         \
    do                                                                      \
    {                                                                       \
        if (!(cond))                                                        \
            qt::Fail(__FILE__, __LINE__, "CHECK(" #cond ")");               \
    } while (0)

#define CHECK_EQ(a, b)                                                      \
    do                                                                      \
    {                                                                       \
        const auto& qt_a = (a);                                             \
        const auto& qt_b = (b);                                             \
        if (!(qt_a == qt_b))                                                \
            qt::Fail(__FILE__, __LINE__,                                    \
                     std::string("CHECK_EQ(" #a ", " #b "): ") + qt::Show(qt_a) + " != " + qt::Show(qt_b)); \
    } while (0)

// Stops the current case when a condition it depends on does not hold.
#define REQUIRE(cond)                                                       \
    do                                                                      \
    {                                                                       \
        if (!(cond))                                                        \
        {                                                                   \
            qt::Fail(__FILE__, __LINE__, "REQUIRE(" #cond ")");             \
            return;                                                         \
        }                                                                   \
    } while (0)

namespace qt
{
inline std::string Show(const std::string& s) { return "\"" + s + "\""; }
inline std::string Show(const char* s) { return s ? "\"" + std::string(s) + "\"" : "NULL"; }
inline std::string Show(bool b) { return b ? "true" : "false"; }
template <typename T> std::string Show(const T& v) { return std::to_string(v); }
} // namespace qt
