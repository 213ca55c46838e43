// SPDX-License-Identifier: Apache-2.0
#include "model/IconLibrary.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "Support/AtomicFile.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// File systems take names of 255 bytes; this leaves room for the prefix, the extension and the
/// name of the temporary file.
constexpr std::size_t longestStem = 160;
constexpr std::size_t longestExtension = 16;

bool isAlphanumeric(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::string hexadecimal(std::uint64_t number, int digits) {
    std::string text(static_cast<std::size_t>(digits), '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= 4U) {
        *digit = "0123456789ABCDEF"[number & 0xFU];
    }
    return text;
}

/// 64-bit FNV-1a: tells identifiers apart that are too long to stand in a file name whole.
std::uint64_t digest(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    return hash;
}

/// A file name for any identifier, different for different ones: what could mean something to a
/// file system is written as "%" and two hexadecimal digits.
std::string stemFor(const BundleID& app) {
    std::string stem = "app-";
    for (const char c : app) {
        if (isAlphanumeric(c) || c == '.' || c == '-' || c == '_') {
            stem += c;
        } else {
            stem += '%' + hexadecimal(static_cast<unsigned char>(c), 2);
        }
    }
    if (stem.size() > longestStem) {
        stem.resize(longestStem);
        stem += '%' + hexadecimal(digest(app), 16);
    }
    return stem;
}

/// The picture's extension with its dot, when it is an ordinary one.
std::string extensionOf(const fs::path& picture) {
    std::string extension = picture.extension().string();
    const bool isOrdinary = extension.size() > 1 && extension.size() <= longestExtension &&
                            std::all_of(extension.begin() + 1, extension.end(), isAlphanumeric);
    return isOrdinary ? extension : "";
}

} // namespace

IconLibrary::IconLibrary(fs::path folder) : folder_(std::move(folder)) {}

std::expected<fs::path, std::error_code> IconLibrary::addIcon(const BundleID& app,
                                                              const fs::path& picture) const {
    return add(stemFor(app), picture);
}

std::expected<fs::path, std::error_code> IconLibrary::addCover(const Uuid& folder,
                                                               const fs::path& picture) const {
    return add("folder-" + folder.string(), picture);
}

std::expected<fs::path, std::error_code> IconLibrary::add(const std::string& stem,
                                                          const fs::path& picture) const {
    const auto content = AtomicFile::read(picture, limit);
    if (!content) {
        return std::unexpected(content.error());
    }
    if (const auto created = AtomicFile::createFolder(folder_); !created) {
        return std::unexpected(created.error());
    }
    fs::path copy = folder_ / (stem + extensionOf(picture));
    // Writing would follow a link that lies under this name, and so leave the folder.
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(copy, error))) {
        fs::remove(copy, error);
    }
    if (const auto written = AtomicFile::write(copy, *content); !written) {
        return std::unexpected(written.error());
    }
    return copy;
}

} // namespace vellory
