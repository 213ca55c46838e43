// SPDX-License-Identifier: Apache-2.0
// The former launcher's database: any bytes give a layout without empty pages, or an error. Inputs
// that do not begin as a database does are taken as rows, so that trees of every shape are built.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

#include "Import/LaunchpadImporter.h"
#include "InputFile.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void checkPages(const std::vector<LayoutPage>& pages) {
    for (const LayoutPage& page : pages) {
        require(!page.empty());
        for (const LayoutItem& item : page) {
            if (const auto* folder = item.folder()) {
                require(!folder->pages.empty());
                checkPages(folder->pages);
            } else {
                require(!item.app()->bundleID.empty());
            }
        }
    }
}

/// Small numbers, so that rows hold each other, share ids and run in circles.
std::vector<LaunchpadImporter::Row> rowsFrom(FuzzedDataProvider& input) {
    const auto titles = {"", "A", "Folder"};
    std::vector<LaunchpadImporter::Row> rows;
    while (input.remaining_bytes() > 0 && rows.size() < 400) {
        LaunchpadImporter::Row& row = rows.emplace_back();
        row.id = input.ConsumeIntegralInRange(0, 60);
        row.uuid = input.PickValueInArray({"ROOTPAGE", "HOLDINGPAGE", "x_DB", ""});
        row.type = input.ConsumeIntegralInRange(0, 5);
        row.parent = input.ConsumeIntegralInRange(0, 60);
        row.ordering = input.ConsumeIntegralInRange(-2, 4);
        if (input.ConsumeBool()) {
            row.title = *(titles.begin() + input.ConsumeIntegralInRange(0, 2));
        }
        if (input.ConsumeBool()) {
            row.bundleID = input.ConsumeRandomLengthString(2);
        }
    }
    return rows;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::InputFile file("db");
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (bytes.starts_with("SQLite")) {
        if (const auto layout = LaunchpadImporter::importLayout(file.holding(data, size))) {
            checkPages(layout->pages);
        }
        return 0;
    }
    FuzzedDataProvider input(data, size);
    const auto rows = rowsFrom(input);
    const auto layout = LaunchpadImporter::layoutFrom(rows);
    require(layout.has_value() ||
            layout.error().kind == LaunchpadImporter::ImportError::Kind::noRoot);
    if (layout) {
        checkPages(layout->pages);
        const auto isApp = [](const auto& row) {
            return row.type == LaunchpadImporter::Type::app && row.bundleID &&
                   !row.bundleID->empty();
        };
        // Each row is placed at most once: its parent is walked once.
        require(std::cmp_less_equal(layout->appCount(), std::ranges::count_if(rows, isApp)));
    }
    return 0;
}
