// The native unit tests' whole framework: pure functions of the product
// (parsers, validation, formatting) are compiled with the build machine's
// compiler under sanitizers and checked by table-driven cases.
//
// A test file is one unit: its first line names the product sources it needs,
//   // sources: hook/RequestRules.cpp
// and it defines cases with TEST_CASE. scripts/unit builds and runs each file.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace unit
{
struct Case
{
    const char* pszName;
    void (*pfn)();
};

inline std::vector<Case>& Cases()
{
    static std::vector<Case> cases;
    return cases;
}

inline int& Failures()
{
    static int n = 0;
    return n;
}

struct Register
{
    Register(const char* pszName, void (*pfn)()) { Cases().push_back({pszName, pfn}); }
};

inline std::string Show(const std::string& s) { return "\"" + s + "\""; }
inline std::string Show(const char* s) { return s ? Show(std::string(s)) : std::string("null"); }
inline std::string Show(bool b) { return b ? "true" : "false"; }
template <typename T> std::string Show(const T& v) { return std::to_string(v); }

inline void Fail(const char* pszFile, int nLine, const std::string& strWhat)
{
    std::fprintf(stderr, "%s:%d: %s\n", pszFile, nLine, strWhat.c_str());
    ++Failures();
}

// A small deterministic generator for the bounded random-input loops: the
// same inputs on every run and every machine, so a failure reproduces.
class Random
{
public:
    explicit Random(unsigned nSeed) : m_n(nSeed ? nSeed : 1) {}
    unsigned Next()
    {
        m_n ^= m_n << 13;
        m_n ^= m_n >> 17;
        m_n ^= m_n << 5;
        return m_n;
    }
    unsigned Below(unsigned nLimit) { return nLimit ? Next() % nLimit : 0; }
    // Up to nMax bytes drawn from pszAlphabet, or from every byte 1..255.
    std::string Text(size_t nMax, const char* pszAlphabet = nullptr)
    {
        std::string s(Below(static_cast<unsigned>(nMax) + 1), '\0');
        const std::string alphabet = pszAlphabet ? pszAlphabet : "";
        for (char& c : s)
            c = alphabet.empty() ? static_cast<char>(1 + Below(255))
                                 : alphabet[Below(static_cast<unsigned>(alphabet.size()))];
        return s;
    }

private:
    unsigned m_n;
};
} // namespace unit

#define UNIT_CONCAT2(a, b) a##b
#define UNIT_CONCAT(a, b) UNIT_CONCAT2(a, b)
#define TEST_CASE(name)                                                                   \
    static void UNIT_CONCAT(unit_case_, __LINE__)();                                      \
    static unit::Register UNIT_CONCAT(unit_reg_, __LINE__)(name, UNIT_CONCAT(unit_case_, __LINE__)); \
    static void UNIT_CONCAT(unit_case_, __LINE__)()

#define CHECK(cond)                                                  \
    do                                                               \
    {                                                                \
        if (!(cond))                                                 \
            unit::Fail(__FILE__, __LINE__, "CHECK(" #cond ") failed"); \
    } while (0)

// ctx: a value printed with a failure, e.g. the table row's input.
#define CHECK_EQ(actual, expected, ctx)                                                          \
    do                                                                                           \
    {                                                                                            \
        const auto& unit_a = (actual);                                                           \
        const auto& unit_e = (expected);                                                         \
        if (!(unit_a == unit_e))                                                                 \
            unit::Fail(__FILE__, __LINE__,                                                       \
                       std::string(#actual " = ") + unit::Show(unit_a) + ", expected " +         \
                           unit::Show(unit_e) + " for " + unit::Show(ctx));                       \
    } while (0)

int main()
{
    for (const unit::Case& c : unit::Cases())
    {
        const int nBefore = unit::Failures();
        c.pfn();
        std::printf("%s %s\n", unit::Failures() == nBefore ? "ok  " : "FAIL", c.pszName);
    }
    std::printf("%zu cases, %d failed checks\n", unit::Cases().size(), unit::Failures());
    return unit::Failures() ? 1 : 0;
}
