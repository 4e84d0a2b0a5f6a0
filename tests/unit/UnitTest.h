// The native unit tests: pure functions of the product (parsers, validation,
// formatting) compiled with the build machine's compiler under sanitizers and
// checked by table-driven cases, on the same runner as the Wine tests.
//
// A test file is one unit: its first line names the product sources it needs,
//   // sources: hook/RequestRules.cpp
// and it defines cases with TEST_CASE("name"). scripts/unit builds and runs
// each file with tests/harness/TestRunner.cpp.
#pragma once

#include "tests/harness/TestRunner.h"

namespace unit
{
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

// Named by a string, not an identifier: the name is a sentence.
#undef TEST_CASE
#define TEST_CASE(name)                                                                  \
    static void QT_CAT(unit_case_, __LINE__)();                                          \
    static qt::Registrar QT_CAT(unit_reg_, __LINE__)(name, QT_CAT(unit_case_, __LINE__)); \
    static void QT_CAT(unit_case_, __LINE__)()

// ctx: a value printed with a failure, e.g. the table row's input.
#undef CHECK_EQ
#define CHECK_EQ(actual, expected, ctx)                                                          \
    do                                                                                           \
    {                                                                                            \
        const auto& unit_a = (actual);                                                           \
        const auto& unit_e = (expected);                                                         \
        if (!(unit_a == unit_e))                                                                 \
            qt::Fail(__FILE__, __LINE__,                                                         \
                     std::string(#actual " = ") + qt::Show(unit_a) + ", expected " +             \
                         qt::Show(unit_e) + " for " + qt::Show(ctx));                           \
    } while (0)
