// SPDX-License-Identifier: Apache-2.0
#include "Updates/Versions.h"

#include <string>

#include <gtest/gtest.h>

namespace vellory::updates_tests {
namespace {

TEST(Versions, ALargerNumberAtTheFirstDifferenceIsNewer) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"1.2.10", "1.2.9"},
        {"2.0.1", "2.0"},
        {"1.2.0.0.1", "1.2"},
        {"1", ""},
        {"1..3", "1.2"},
        {"2024.01.15", "2024.1.9"},
        {"18446744073709551616", "18446744073709551615"},
        {"99999999999999999999999999", "99999999999999999999999998"},
        {"1.2", "v9"},
    };
    for (const auto& [newer, older] : cases) {
        EXPECT_TRUE(Versions::isNewer(newer, older)) << newer;
        EXPECT_FALSE(Versions::isNewer(older, newer)) << newer;
    }
}

TEST(Versions, WhatLooksDifferentMayBeEqual) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"1.2", "1.2.0"},        {"2.0 beta", "2.0"}, {"12b3", "12b4"},
        {"1..2.", ".1.2"},       {"007", "7"},        {"", "0.0"},
        {"beta", "..."},         {"1.x.3", "1.0.3"},  {"1.-2", "1"},
        {"1.\xEF\xBC\x92", "1"}, {" 1", "rc1"},
    };
    for (const auto& [a, b] : cases) {
        EXPECT_FALSE(Versions::isNewer(a, b)) << a;
        EXPECT_FALSE(Versions::isNewer(b, a)) << a;
    }
}

} // namespace
} // namespace vellory::updates_tests
