// SPDX-License-Identifier: Apache-2.0
#include "model/IconLibrary.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QCryptographicHash>

#include "Support/AtomicFile.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view iconPrefix = "app-";
constexpr std::string_view coverPrefix = "folder-";
/// File systems take names of 255 bytes; this leaves room for the marks, the extension and more.
constexpr std::size_t longestStem = 160;
constexpr std::size_t longestExtension = 16;

bool isAlphanumeric(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// A short mark that tells texts and pictures apart.
std::string digest(std::string_view bytes) {
    constexpr int length = 16;
    const QByteArray hash =
        QCryptographicHash::hash(QByteArrayView(bytes), QCryptographicHash::Sha256);
    return hash.toHex().left(length).toStdString();
}

/// A file name for any identifier, different for different ones: what could mean something to a
/// file system is written as "%" and two hexadecimal digits.
std::string stemFor(const BundleID& app) {
    const QByteArray name = QByteArray::fromStdString(app).toPercentEncoding({}, "~");
    std::string stem = std::string(iconPrefix) + name.toStdString();
    if (stem.size() > longestStem) {
        stem.resize(longestStem);
        stem += '%' + digest(app);
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
    const auto content = AtomicFile::read(picture, limit);
    if (!content) {
        return std::unexpected(content.error());
    }
    return add(stemFor(app) + '~' + digest(*content) + extensionOf(picture), *content);
}

std::expected<fs::path, std::error_code> IconLibrary::addCover(const Uuid& folder,
                                                               const fs::path& picture) const {
    const auto content = AtomicFile::read(picture, limit);
    if (!content) {
        return std::unexpected(content.error());
    }
    return add(std::string(coverPrefix) + folder.string() + extensionOf(picture), *content);
}

void IconLibrary::keepOnly(const std::set<std::string>& names) const {
    std::error_code error;
    std::vector<fs::path> unused;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const bool isOurs = name.starts_with(iconPrefix) || name.starts_with(coverPrefix);
        std::error_code ignored;
        if (isOurs && !names.contains(name) && entry->is_regular_file(ignored)) {
            unused.push_back(entry->path());
        }
    }
    for (const fs::path& file : unused) {
        fs::remove(file, error);
    }
}

std::expected<fs::path, std::error_code> IconLibrary::add(const std::string& name,
                                                          const std::string& content) const {
    if (const auto created = AtomicFile::createFolder(folder_); !created) {
        return std::unexpected(created.error());
    }
    fs::path copy = folder_ / name;
    // Writing would follow a link that lies under this name, and so leave the folder.
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(copy, error))) {
        fs::remove(copy, error);
    }
    if (const auto written = AtomicFile::write(copy, content); !written) {
        return std::unexpected(written.error());
    }
    return copy;
}

} // namespace vellory
