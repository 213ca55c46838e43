// SPDX-License-Identifier: Apache-2.0
// Archives of recent documents, bookmark data and file links give absolute paths or nothing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "Usage/Bookmark.h"
#include "Usage/RecentDocuments.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void check(const std::filesystem::path& path) {
    require(path.is_absolute());
    require(path.native().size() < 4096);
    require(path.native().find('\0') == std::string::npos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto documents = RecentDocuments::urls(bytes, 20);
    require(documents.size() <= 20);
    for (const auto& document : documents) {
        check(document);
    }
    if (const auto location = Bookmark::location(bytes)) {
        check(*location);
    }
    if (const auto file = Bookmark::fileOfLink(bytes)) {
        check(*file);
    }
    return 0;
}
