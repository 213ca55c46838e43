// SPDX-License-Identifier: Apache-2.0
#include "Search/Calculator.h"

#include <limits>
#include <numbers>

#include <gmock/gmock.h>

#include "support/Lists.h"

namespace vellory::search_tests {
namespace {

using std::numbers::e;
using std::numbers::pi;

TEST(Calculator, ValueOfASum) {
    const std::pair<std::string_view, double> cases[] = {
        {"12*7", 84},      {"12×7", 84},   {"12 × 7 =", 84}, {"84÷7", 12},
        {"1,000+1", 1001}, // a comma never is a decimal point
        {"1+2*3-4", 3},    {"8/4/2", 1},   {"10-4-3", 3},    {"7%3", 1},
        {"-7%3", -1},      {"7.5%2", 1.5}, {"2^3^2", 512},   {"2^-1", 0.5},
        {"2*3^2", 18},     {"-2^2", -4},   {"(-2)^2", 4},    {"--3", 3},
        {"2--3", 5},       {"+-+3", -3},   {"(1+2)*3", 9},   {"((((5))))", 5},
        {"(2024)", 2024},  {".5+5.", 5.5},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Calculator::evaluate(text), value) << text;
    }
}

TEST(Calculator, NamesOfConstantsAndFunctions) {
    const std::pair<std::string_view, double> cases[] = {
        {"pi", pi},       {"e*1", e},      {"sqrt(16)", 4},   {"SQRT 2", std::numbers::sqrt2},
        {"sqrt4^2", 4}, // a function takes what follows at once
        {"sin(pi/2)", 1}, {"cos(pi)", -1}, {"tan(0)", 0},     {"log(1000)", 3},
        {"ln(e)", 1},     {"abs(-3)", 3},  {"round(2.5)", 3}, {"round(-2.5)", -3},
    };
    for (const auto& [text, value] : cases) {
        const auto result = Calculator::evaluate(text);
        ASSERT_TRUE(result) << text;
        EXPECT_DOUBLE_EQ(*result, value) << text;
    }
}

TEST(Calculator, WhatIsNoSumHasNoValue) {
    const std::string_view texts[] = {
        // Nothing to compute.
        "", " ", "=", ",,", "2024", "1,000", "3.14", "safari", "e", "sin", "Raspberry Pi", "sqrt",
        "c++", "7-zip", "e-mail", "pi*x",
        // Not what the rules allow.
        "50%", "%5", "1+", "*2", "1**2", "(1+2", "1+2)", "()", "1.2.3+1", ".+1", "..", "1 2 (3)",
        "2(3)", "(2)(3)", "2pi", "2e3+1", "0x10+1", "sqrt()", "5!",
        // Without a finite value.
        "1/0", "0/0", "1/-0", "1/(1/0)", "7%0", "sqrt(-1)", "ln(0)", "(-8)^0.5", "10^400", "nan+1",
        "inf+1",
        // Other characters.
        "1+1\n", "1\t+1", "1+1;", "π*2", "２+２", "1+ä", "1+\u0301", "×̈", "1+1\xFF", "\xC3+1",
        "1\xC3"};
    for (const std::string_view text : texts) {
        EXPECT_EQ(Calculator::evaluate(text), std::nullopt) << text;
    }
}

TEST(Calculator, NumbersOutOfRangeAreInfiniteOrZero) {
    const std::string huge(400, '9');
    EXPECT_EQ(Calculator::evaluate(huge + "+1"), std::nullopt);
    EXPECT_EQ(Calculator::evaluate("1/" + huge), 0);
    EXPECT_EQ(Calculator::evaluate("5+0." + std::string(400, '0') + "1"), 5);
    EXPECT_EQ(
        Calculator::evaluate("5+" + std::string(400, '0') + "." + std::string(400, '0') + "1"), 5);
}

TEST(Calculator, NestingBeyondWhatAnyoneTypesIsNoSum) {
    const auto nested = [](std::size_t levels) {
        return std::string(levels, '(') + "1" + std::string(levels, ')');
    };
    EXPECT_EQ(Calculator::evaluate(nested(100)), 1);
    EXPECT_EQ(Calculator::evaluate(std::string(100, '-') + "1"), 1);
    const auto often = [](std::string_view text) { return test::repeated(text, 100'000); };
    EXPECT_EQ(Calculator::evaluate(nested(100'000)), std::nullopt);
    for (const std::string_view text : {"(", "-", "+", "2^", "sqrt(", "-(", "((1)+"}) {
        EXPECT_EQ(Calculator::evaluate(often(text) + "1"), std::nullopt) << text;
    }
    // What is long but flat is computed.
    EXPECT_EQ(Calculator::evaluate(often("1+") + "1"), 100'001);
    EXPECT_EQ(Calculator::evaluate(often("1*(2-1)/") + "1"), 1);
}

TEST(Calculator, FormatsForPeople) {
    struct Case {
        double value;
        std::string_view locale;
        std::string_view text;
    };
    const Case cases[] = {
        {84, "en_US", "84"},
        {1234567.891, "en_US", "1,234,567.891"},
        {1234567.891, "de_DE", "1.234.567,891"},
        {1234567.891, "no such locale", "1,234,567.891"},
        {pi, "en_US", "3.1415926536"}, // at most ten digits
        {-0.0, "en_US", "0"},
        {999999999999999, "en_US", "999,999,999,999,999"},
        {1e15, "en_US", "1e+15"},
        {-1e15, "en_US", "-1e+15"},
        {1.23456789e20, "de_DE", "1.23457e+20"},
        {0.000001, "en_US", "0.000001"},
        {0.0000001, "en_US", "1e-07"},
        {-0.00000012345678, "en_US", "-1.23457e-07"},
        {std::numeric_limits<double>::infinity(), "en_US", "inf"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Calculator::format(c.value, c.locale), c.text);
    }
}

} // namespace
} // namespace vellory::search_tests
