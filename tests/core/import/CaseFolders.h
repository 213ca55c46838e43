// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Board/Layout.h"
#include "support/TemporaryFolder.h"
#include "support/TestDatabase.h"

namespace vellory::test {

/// One folder of `cases/<kind>`: what is imported, and in the file "out" what comes of it, as
/// `drawn` tells it. "in" with some extension is imported as it is; "rows.sql" fills a database
/// with the usual tables, "in.sql" one without any.
struct ImportCase {
    std::filesystem::path folder;

    std::filesystem::path input() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().filename() != "out") {
                return entry.path();
            }
        }
        throw std::runtime_error("no input in " + folder.string());
    }

    /// Makes the case's database; `tables` is the SQL that makes the usual ones.
    void makeDatabase(const std::filesystem::path& file, const std::string& tables) const {
        const std::string sql = contentOf(input());
        TestDatabase(file).run(input().stem() == "rows" ? tables + sql : sql);
    }

    std::string expected() const { return contentOf(folder / "out"); }

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

/// "a, Title <b>, [Folder: c | d]": items with the titles that are not just the identifier, and
/// the pages of folders.
inline std::string drawn(const LayoutPage& page) {
    std::string out;
    for (const LayoutItem& item : page) {
        out += out.empty() ? "" : ", ";
        if (const auto* app = item.app()) {
            out +=
                app->title == app->bundleID ? app->title : app->title + " <" + app->bundleID + ">";
            continue;
        }
        out += "[" + item.folder()->title;
        for (const LayoutPage& inner : item.folder()->pages) {
            out += (&inner == item.folder()->pages.data() ? ": " : " | ") + drawn(inner);
        }
        out += "]";
    }
    return out;
}

/// The pages of a layout, each on a line, or "error: " and the kind of error.
template <class Result, class NameOfError>
std::string drawn(const Result& result, NameOfError nameOfError) {
    if (!result) {
        return "error: " + std::string(nameOfError(result.error().kind)) + "\n";
    }
    std::string out;
    for (const LayoutPage& page : result->pages) {
        out += drawn(page) + "\n";
    }
    return out;
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
