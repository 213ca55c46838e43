// SPDX-License-Identifier: Apache-2.0
#include "Support/UserDefaults.h"

#include <limits>

#include <gtest/gtest.h>

namespace vellory::support_tests {
namespace {

using Value = UserDefaults::Value;
using Strings = std::vector<std::string>;

Value text(const char* value) {
    return std::string(value);
}

TEST(UserDefaults, UnderstandWhatAFormatMadeOfAValue) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    struct Case {
        Value stored;
        std::optional<bool> boolean;
        std::optional<std::int64_t> integer;
        std::optional<double> number;
        std::optional<std::string> string;
        std::optional<Strings> strings;
    };
    const auto none = std::nullopt;
    const Case cases[] = {
        {true, true, none, none, none, none},
        {std::int64_t{7}, true, 7, 7.0, none, none},
        {std::int64_t{0}, false, 0, 0.0, none, none},
        {2.0, none, 2, 2.0, none, none},
        {2.5, none, none, 2.5, none, none},
        {1e300, none, none, 1e300, none, none},
        {infinity, none, none, none, none, none},
        {text("true"), true, none, none, "true", Strings{"true"}},
        {text("false"), false, none, none, "false", Strings{"false"}},
        {text("1"), true, 1, 1.0, "1", Strings{"1"}},
        {text("-3"), none, -3, -3.0, "-3", Strings{"-3"}},
        {text("0.25"), none, none, 0.25, "0.25", Strings{"0.25"}},
        {text("0x10"), none, none, none, "0x10", Strings{"0x10"}},
        {text("nan"), none, none, none, "nan", Strings{"nan"}},
        {text("99999999999999999999"), none, none, 1e20, "99999999999999999999",
         Strings{"99999999999999999999"}},
        {text(""), none, none, none, "", Strings{}},
        {Strings{"a", "b"}, none, none, none, none, Strings{"a", "b"}},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        MemoryDefaults defaults;
        defaults.set("key", cases[i].stored);
        EXPECT_EQ(defaults.boolean("key"), cases[i].boolean) << i;
        EXPECT_EQ(defaults.integer("key"), cases[i].integer) << i;
        EXPECT_EQ(defaults.number("key"), cases[i].number) << i;
        EXPECT_EQ(defaults.string("key"), cases[i].string) << i;
        EXPECT_EQ(defaults.strings("key"), cases[i].strings) << i;
        EXPECT_EQ(defaults.boolean("other"), none) << i;
    }
}

} // namespace
} // namespace vellory::support_tests
