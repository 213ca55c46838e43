// SPDX-License-Identifier: Apache-2.0
// The first line of the input is the name of a saved layout, the rest its file. No name leads out
// of the folder, every listed name can be loaded, and what is saved is loaded again.
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "Board/SavedLayouts.h"
#include "InputFile.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void checkFileName(std::string_view name) {
    require(!name.empty() && name.size() < 256 && name != "." && name != "..");
    require(name.find_first_of(std::string_view("/:\0", 3)) == std::string_view::npos);
    require(Text::isValidUtf8(name));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::InputFile place("layouts/none");
    static const auto folder = place.folder() / "layouts";
    static const Text::Collator collator("en");
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view name = input.substr(0, input.find('\n'));
    const std::string_view content = input.substr(std::min(size, name.size() + 1));

    const std::string file = SavedLayouts::fileName(name);
    checkFileName(file);
    require(file.ends_with(".json"));
    const std::string stem = file.substr(0, file.size() - 5);
    require(SavedLayouts::fileName(stem) == file);
    const std::string key = SavedLayouts::displayKey(name);
    checkFileName(key);
    require(key.starts_with("display-"));

    std::ofstream(folder / file, std::ios::binary | std::ios::trunc) << content;
    const SavedLayouts layouts(folder);
    require(layouts.names(collator) == std::vector{stem});
    const auto board = layouts.load(name);
    const auto decoded = json::decode<Board>(content);
    require(board.has_value() == decoded.has_value());
    if (board) {
        require(*board == *decoded);
        require(layouts.save(*board, stem).has_value());
        require(layouts.load(name) == board);
    }
    require(layouts.remove(name).has_value());
    require(!layouts.load(name));
    return 0;
}
