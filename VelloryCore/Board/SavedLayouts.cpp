// SPDX-License-Identifier: Apache-2.0
#include "Board/SavedLayouts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "Support/AtomicFile.h"
#include "Support/Json.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view layoutExtension = ".json";

/// Bytes. A file name may have 255, and writing a file needs some of them for the temporary one.
constexpr std::size_t longestName = 200;

/// `name` if it is short enough; else its begin, cut between two characters, and 16 digits that
/// differ for names that differ later (64-bit FNV-1a; the files outlive this program's versions).
std::string shortened(std::string name) {
    if (name.size() <= longestName) {
        return name;
    }
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    }
    std::string mark = "-";
    for (unsigned shift = 64; shift > 0; shift -= 4) {
        mark.push_back("0123456789abcdef"[hash >> (shift - 4) & 0xFU]);
    }
    std::size_t kept = 0;
    for (const std::string_view character : Text::graphemes(name)) {
        if (kept + character.size() + mark.size() > longestName) {
            break;
        }
        kept += character.size();
    }
    return name.substr(0, kept) + mark;
}

} // namespace

std::vector<std::string> SavedLayouts::names(const Text::Collator& collator) const {
    std::vector<std::string> out;
    std::error_code error;
    fs::directory_iterator entries(folder_, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        std::error_code ignored;
        const std::string file = entries->path().filename().string();
        if (!file.ends_with(layoutExtension) || !entries->is_regular_file(ignored)) {
            continue;
        }
        std::string name = file.substr(0, file.size() - layoutExtension.size());
        // A file put there by hand may have a name that no layout's file gets.
        if (fileName(name) == file) {
            out.push_back(std::move(name));
        }
    }
    // Folders list their entries in any order; names that differ in letter case only need one too.
    std::ranges::sort(out);
    Text::sortByName(out, collator, [](const std::string& name) { return name; });
    return out;
}

std::expected<void, std::error_code> SavedLayouts::save(const Board& board,
                                                        std::string_view name) const {
    if (auto created = AtomicFile::createFolder(folder_); !created) {
        return created;
    }
    return AtomicFile::write(file(name), json::encode(board));
}

std::optional<Board> SavedLayouts::load(std::string_view name) const {
    const auto content = AtomicFile::read(file(name));
    if (!content) {
        return std::nullopt;
    }
    auto board = json::decode<Board>(*content);
    return board ? std::optional(*std::move(board)) : std::nullopt;
}

std::expected<void, std::error_code> SavedLayouts::remove(std::string_view name) const {
    std::error_code error;
    fs::remove(file(name), error);
    if (error) {
        return std::unexpected(error);
    }
    return {};
}

std::string SavedLayouts::fileName(std::string_view name) {
    std::string out = Text::repairedUtf8(name);
    std::ranges::replace_if(
        out,
        [](char c) {
            return c == '/' || c == ':' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        },
        '-');
    if (out.empty()) {
        out = "Layout";
    }
    return shortened(std::move(out)).append(layoutExtension);
}

std::string SavedLayouts::displayKey(std::string_view display) {
    const std::string lower = Text::lowercased(display);
    std::string out = "display-";
    for (const std::string_view character : Text::graphemes(lower)) {
        const bool kept = Text::isLetter(character) || Text::isNumber(character);
        out.append(kept ? character : "-");
    }
    return shortened(std::move(out));
}

fs::path SavedLayouts::file(std::string_view name) const {
    return folder_ / fileName(name);
}

} // namespace vellory
