// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Board/Layout.h"
#include "Support/Json.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {

/// One folder of `cases/<kind>`: an input file named "in" with some extension, and what comes of
/// it: the layout in "out.json", or the kind of error in "error".
struct ImportCase {
    std::filesystem::path folder;

    std::filesystem::path input() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().stem() == "in") {
                return entry.path();
            }
        }
        throw std::runtime_error("no input in " + folder.string());
    }

    friend void PrintTo(const ImportCase& test, std::ostream* out) {
        *out << test.folder.filename();
    }
};

inline std::vector<ImportCase> importCases(const std::string& kind) {
    std::vector<ImportCase> cases;
    const auto folder = std::filesystem::path(VELLORY_CORE_TESTS) / "import/cases" / kind;
    for (const std::string& name : namesIn(folder)) {
        cases.push_back({folder / name});
    }
    return cases;
}

inline std::string caseName(const testing::TestParamInfo<ImportCase>& info) {
    std::string name = info.param.folder.filename().string();
    std::ranges::replace(name, '-', '_');
    return name;
}

/// Compares what an importer gave with what the case's folder says.
template <class Result, class NameOfError>
void expectOutcome(const ImportCase& test, const Result& result, NameOfError nameOfError) {
    if (std::filesystem::exists(test.folder / "error")) {
        ASSERT_FALSE(result) << json::encode(*result);
        EXPECT_EQ(nameOfError(result.error().kind) + std::string("\n"),
                  contentOf(test.folder / "error"));
        return;
    }
    ASSERT_TRUE(result) << nameOfError(result.error().kind) << ": " << result.error().detail;
    const auto expected = json::decode<Layout>(contentOf(test.folder / "out.json"));
    ASSERT_TRUE(expected);
    EXPECT_EQ(json::encode(*result), json::encode(*expected));
}

/// Knows the apps "/Applications/<name>.app", with or without a slash behind, as
/// "org.test.<name in lower case, without spaces>", but not the app "Nobody Knows".
inline std::optional<BundleID> testApps(const std::string& path) {
    constexpr std::string_view folder = "/Applications/";
    std::string_view name = path;
    if (!name.starts_with(folder) || name.find("..") != std::string_view::npos) {
        return std::nullopt;
    }
    name.remove_prefix(folder.size());
    name = name.substr(0, name.rfind(".app"));
    if (name == "Nobody Knows") {
        return std::nullopt;
    }
    std::string id = "org.test.";
    for (const char c : name) {
        if (c != ' ') {
            id += static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
        }
    }
    return id;
}

} // namespace vellory::test
