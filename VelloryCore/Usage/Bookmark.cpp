// SPDX-License-Identifier: Apache-2.0
#include "Usage/Bookmark.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vellory::Bookmark {

namespace {

/// The longest path that a system call takes, on either desktop.
constexpr std::size_t longestPath = 4096;
constexpr std::uint32_t mostComponents = 512;
/// Real data has one table, or two.
constexpr int mostTables = 8;
constexpr std::uint32_t mostEntries = 256;

enum Property : std::uint32_t { link = 0x1003, path = 0x1004 };
enum Type : std::uint32_t { text = 0x0101, list = 0x0601, url = 0x0901 };
constexpr std::uint32_t tableMagic = 0xFFFFFFFE;

/// An absolute path, if `path` is one that can be opened.
std::optional<std::filesystem::path> checked(std::string path) {
    const bool usable =
        path.starts_with('/') && path.size() < longestPath && path.find('\0') == std::string::npos;
    return usable ? std::optional<std::filesystem::path>(std::move(path)) : std::nullopt;
}

struct Record {
    std::uint32_t type = 0;
    std::string_view content;
};

/// Bookmark data whose every offset is checked before it is followed. Offsets count from the end of
/// the header.
class Reader {
  public:
    static std::optional<Reader> of(std::string_view data) {
        const auto headerSize = number(data, 12);
        if (!data.starts_with("book") || !headerSize || *headerSize > data.size()) {
            return std::nullopt;
        }
        return Reader(data.substr(*headerSize));
    }

    /// The record for a property, from the first table that has it.
    std::optional<Record> property(Property wanted) const {
        auto table = number(body_, 0);
        for (int i = 0; i < mostTables && table && *table != 0; ++i) {
            const auto magic = at(*table, 4);
            const auto count = at(*table, 16);
            if (magic != tableMagic || !count) {
                return std::nullopt;
            }
            for (std::uint32_t entry = 0; entry < std::min(*count, mostEntries); ++entry) {
                const std::size_t place = 20 + std::size_t{entry} * 12;
                if (at(*table, place) == wanted) {
                    const auto offset = at(*table, place + 4);
                    return offset ? record(*offset) : std::nullopt;
                }
            }
            table = at(*table, 12);
        }
        return std::nullopt;
    }

    std::optional<Record> record(std::uint32_t offset) const {
        const auto size = at(offset, 0);
        const auto type = at(offset, 4);
        const std::size_t begin = std::size_t{offset} + 8;
        if (!size || !type || *size > body_.size() - begin) {
            return std::nullopt;
        }
        return Record{*type, body_.substr(begin, *size)};
    }

    static std::optional<std::uint32_t> number(std::string_view bytes, std::size_t offset) {
        if (bytes.size() < 4 || offset > bytes.size() - 4) {
            return std::nullopt;
        }
        std::uint32_t out = 0;
        for (std::size_t i = 4; i-- > 0;) {
            out = out << 8U | static_cast<unsigned char>(bytes[offset + i]);
        }
        return out;
    }

  private:
    explicit Reader(std::string_view body) : body_(body) {}

    std::optional<std::uint32_t> at(std::uint32_t base, std::size_t offset) const {
        return number(body_, std::size_t{base} + offset);
    }

    std::string_view body_;
};

/// The path whose components a list record refers to.
std::optional<std::filesystem::path> joined(const Reader& reader, const Record& components) {
    const std::size_t count = components.content.size() / 4;
    if (components.type != Type::list || count == 0 || count > mostComponents) {
        return std::nullopt;
    }
    std::string out;
    for (std::size_t i = 0; i < count; ++i) {
        const auto component = reader.record(*Reader::number(components.content, i * 4));
        if (!component || component->type != Type::text) {
            return std::nullopt;
        }
        const std::string_view name = component->content;
        if (name.empty() || name == "." || name == ".." || name.contains('/') ||
            out.size() + name.size() >= longestPath) {
            return std::nullopt;
        }
        out.append("/").append(name);
    }
    return checked(std::move(out));
}

std::optional<unsigned> hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional<unsigned>(lower - 'a' + 10) : std::nullopt;
}

} // namespace

std::optional<std::filesystem::path> location(std::string_view data) {
    const auto reader = Reader::of(data);
    if (!reader) {
        return std::nullopt;
    }
    if (const auto components = reader->property(Property::path)) {
        if (auto path = joined(*reader, *components)) {
            return path;
        }
    }
    const auto stored = reader->property(Property::link);
    const bool isLink = stored && (stored->type == Type::url || stored->type == Type::text);
    return isLink ? fileOfLink(stored->content) : std::nullopt;
}

std::optional<std::filesystem::path> fileOfLink(std::string_view link) {
    constexpr std::string_view scheme = "file://";
    constexpr std::string_view localHost = "localhost";
    if (!link.starts_with(scheme) || link.size() > 3 * longestPath) {
        return std::nullopt;
    }
    link.remove_prefix(scheme.size());
    if (link.starts_with(localHost)) {
        link.remove_prefix(localHost.size());
    }
    link = link.substr(0, link.find_first_of("?#"));
    std::string path;
    for (std::size_t i = 0; i < link.size(); ++i) {
        if (link[i] != '%') {
            path.push_back(link[i]);
            continue;
        }
        const auto high = i + 2 < link.size() ? hexDigit(link[i + 1]) : std::nullopt;
        const auto low = high ? hexDigit(link[i + 2]) : std::nullopt;
        if (!low) {
            return std::nullopt;
        }
        path.push_back(static_cast<char>(*high * 16 + *low));
        i += 2;
    }
    return checked(std::move(path));
}

} // namespace vellory::Bookmark
