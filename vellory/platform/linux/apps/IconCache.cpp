// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/IconCache.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "Support/AtomicFile.h"
#include "platform/linux/GLibPointers.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// What an entry begins with; its pixels follow.
struct Header {
    // Changes whenever icons are drawn differently: entries of other versions count as missing.
    char magic[8] = {'V', 'L', 'I', 'C', 'O', 'N', '0', '1'};
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint64_t sum = 0;
};

constexpr std::size_t maxSide = 4096;
constexpr std::string_view iconSuffix = ".icon";

/// Tells damage by a broken disk or program; no protection against anybody.
std::uint64_t checksum(const std::vector<std::uint32_t>& pixels) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const std::uint32_t pixel : pixels) {
        sum = (sum ^ pixel) * 0x100000001b3;
    }
    return sum;
}

} // namespace

std::optional<std::string> IconCache::key(const fs::path& source, int pixels) {
    std::error_code error;
    const auto size = fs::file_size(source, error);
    const auto time = error ? fs::file_time_type() : fs::last_write_time(source, error);
    if (error) {
        return std::nullopt;
    }
    const std::string text = source.string() + '\n' +
                             std::to_string(time.time_since_epoch().count()) + '\n' +
                             std::to_string(size) + '\n' + std::to_string(pixels);
    return glib::text(
        glib::Chars(g_compute_checksum_for_string(G_CHECKSUM_SHA256, text.c_str(), -1)).get());
}

fs::path IconCache::fileOf(const std::string& key) const {
    return folder_ / (key + std::string(iconSuffix));
}

std::optional<Image> IconCache::read(const std::string& key) const {
    const auto content = AtomicFile::read(fileOf(key), sizeof(Header) + maxSide * maxSide * 4);
    Header header;
    const Header expected;
    if (!content || content->size() < sizeof header) {
        return std::nullopt;
    }
    std::memcpy(&header, content->data(), sizeof header);
    if (std::memcmp(header.magic, expected.magic, sizeof header.magic) != 0 || header.width == 0 ||
        header.width > maxSide || header.height == 0 || header.height > maxSide ||
        content->size() != sizeof header + std::size_t{4} * header.width * header.height) {
        return std::nullopt;
    }
    Image image{static_cast<int>(header.width), static_cast<int>(header.height), {}};
    image.pixels.resize(std::size_t{header.width} * header.height);
    std::memcpy(image.pixels.data(), content->data() + sizeof header,
                content->size() - sizeof header);
    return checksum(image.pixels) == header.sum ? std::optional(std::move(image)) : std::nullopt;
}

void IconCache::write(const std::string& key, const Image& image) {
    Header header;
    header.width = static_cast<std::uint32_t>(image.width);
    header.height = static_cast<std::uint32_t>(image.height);
    header.sum = checksum(image.pixels);
    std::string content(sizeof header + image.pixels.size() * sizeof image.pixels[0], '\0');
    std::memcpy(content.data(), &header, sizeof header);
    std::memcpy(content.data() + sizeof header, image.pixels.data(),
                content.size() - sizeof header);
    if (!AtomicFile::createFolder(folder_)) {
        return;
    }
    makeRoom(content.size());
    // A cache that cannot be written costs time, nothing else.
    [[maybe_unused]] const auto written = AtomicFile::write(fileOf(key), content);
}

void IconCache::makeRoom(std::uint64_t added) {
    const std::lock_guard lock(mutex_);
    if (bytes_ && *bytes_ + added <= maxBytes_) {
        *bytes_ += added;
        return;
    }
    struct Entry {
        fs::file_time_type time;
        std::uint64_t size;
        fs::path file;
    };
    std::vector<Entry> entries;
    std::uint64_t total = added;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == iconSuffix) {
            entries.push_back(
                {entry->last_write_time(ignored), entry->file_size(ignored), entry->path()});
            total += entries.back().size;
        }
    }
    if (total > maxBytes_) {
        std::ranges::sort(entries, {}, &Entry::time);
        for (const Entry& oldest : entries) {
            if (total <= maxBytes_ / 2) {
                break;
            }
            std::error_code ignored;
            fs::remove(oldest.file, ignored);
            total -= oldest.size;
        }
    }
    bytes_ = total;
}

} // namespace vellory
