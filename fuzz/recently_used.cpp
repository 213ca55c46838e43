// SPDX-License-Identifier: Apache-2.0
// Lists of recently used files: whatever is in them, what comes out are absolute paths in order.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Usage/RecentlyUsed.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t most = 3;
    const auto summary = RecentlyUsed::parse({reinterpret_cast<const char*>(data), size}, most);
    if (!summary) {
        return 0;
    }
    for (const auto& [app, uses] : *summary) {
        require(!app.name.empty() || !app.program.empty());
        require(uses.last.isFinite() && uses.documents.size() <= most);
        Date before = uses.last;
        for (const RecentlyUsed::Document& document : uses.documents) {
            require(document.file.is_absolute() && document.at <= before);
            require(std::ranges::find(document.file, "..") == document.file.end());
            before = document.at;
        }
    }
    return 0;
}
