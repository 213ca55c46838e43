// SPDX-License-Identifier: Apache-2.0
// Any texts as the two files of the Focus state: the input is cut at its first NUL.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <algorithm>

#include "Workspaces/FocusReader.h"

namespace {

namespace fs = std::filesystem;

/// A folder for the run, gone at its end.
struct Folder {
    fs::path path;

    Folder() {
        std::string pattern = (fs::temp_directory_path() / "vellory-focus.XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            std::abort();
        }
        path = pattern;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vellory;
    static const Folder folder;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto cut = std::min(text.find('\0'), text.size());
    std::ofstream(folder.path / "ModeConfigurations.json") << text.substr(0, cut);
    std::ofstream(folder.path / "Assertions.json") << text.substr(std::min(cut + 1, text.size()));

    const auto modes = FocusReader::modes(folder.path, "en");
    const auto active = FocusReader::active(folder.path);
    if (active && std::ranges::find(modes, *active) == modes.end()) {
        std::abort();
    }
    return 0;
}
