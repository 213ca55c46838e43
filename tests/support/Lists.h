// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace vellory::test {

/// `part` as often as `count` says.
inline std::string repeated(std::string_view part, std::size_t count) {
    std::string out;
    out.reserve(part.size() * count);
    for (; count > 0; --count) {
        out += part;
    }
    return out;
}

/// What `of` (a member or a function) gives of each item: `each(apps, &InstalledApp::name)`.
template <class Items, class Of>
auto each(const Items& items, Of of) {
    std::vector<std::decay_t<std::invoke_result_t<Of, typename Items::const_reference>>> out;
    for (const auto& item : items) {
        out.push_back(std::invoke(of, item));
    }
    return out;
}

/// `text` with one passage changed. Fails the test when the passage is not there.
inline std::string changed(std::string text, std::string_view what, std::string_view with) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

} // namespace vellory::test
