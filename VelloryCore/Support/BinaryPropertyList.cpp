// SPDX-License-Identifier: Apache-2.0
#include "Support/BinaryPropertyList.h"

#include <algorithm>
#include <limits>

#include "Support/Text.h"

namespace vellory::PropertyList {

namespace {

/// Where the walk gives up going deeper: no reader takes lists nested like this.
constexpr std::size_t maxNesting = 100'000;

void appendUtf8(std::string& out, char32_t c) {
    const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | c >> 6U);
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12U);
        put(0x80 | (c >> 6U & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | c >> 18U);
        put(0x80 | (c >> 12U & 0x3F));
        put(0x80 | (c >> 6U & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

/// Big-endian UTF-16 as UTF-8; half a pair of surrogates becomes U+FFFD.
void convertUtf16(std::string_view bytes, std::string& out) {
    const auto unit = [&](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[i]) << 8U |
                                     static_cast<unsigned char>(bytes[i + 1]));
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unit(i);
        if (c >= 0xD800 && c < 0xE000) {
            const char32_t low = c < 0xDC00 && i + 3 < bytes.size() ? unit(i + 2) : 0;
            const bool isPair = low >= 0xDC00 && low < 0xE000;
            c = isPair ? 0x10000 + ((c - 0xD800) << 10U) + (low - 0xDC00) : 0xFFFD;
            i += isPair ? 2 : 0;
        }
        appendUtf8(out, c);
    }
}

} // namespace

std::uint64_t BinaryObjects::number(std::size_t offset, std::size_t size) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value = value << 8U | static_cast<unsigned char>(bytes_[offset + i]);
    }
    return value;
}

std::optional<BinaryObjects::Size> BinaryObjects::measure(std::size_t maxObjects) {
    constexpr std::size_t trailerSize = 32;
    if (bytes_.size() < magic.size() + trailerSize) {
        return std::nullopt;
    }
    const std::size_t trailer = bytes_.size() - trailerSize;
    offsetSize_ = static_cast<unsigned char>(bytes_[trailer + 6]);
    referenceSize_ = static_cast<unsigned char>(bytes_[trailer + 7]);
    const std::uint64_t objects = number(trailer + 8, 8);
    const std::uint64_t top = number(trailer + 16, 8);
    const std::uint64_t table = number(trailer + 24, 8);
    const bool sizesFit =
        offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
    if (!sizesFit || table > trailer || objects > (trailer - table) / offsetSize_ ||
        top >= objects) {
        return std::nullopt;
    }
    if (objects > maxObjects) {
        return Size{1, static_cast<std::size_t>(objects)};
    }
    table_ = static_cast<std::size_t>(table);
    end_ = trailer;
    top_ = static_cast<std::size_t>(top);
    sizes_.resize(static_cast<std::size_t>(objects));
    states_.resize(static_cast<std::size_t>(objects), State::untouched);
    return walk();
}

std::optional<std::size_t> BinaryObjects::start(std::size_t object) const {
    const std::uint64_t offset = number(table_ + object * offsetSize_, offsetSize_);
    if (offset >= table_) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(offset);
}

BinaryObjects::Kind BinaryObjects::kind(std::size_t object) const {
    const auto offset = start(object);
    switch (offset ? static_cast<unsigned char>(bytes_[*offset]) >> 4U : 0U) {
    case 0x5:
    case 0x6:
        return Kind::text;
    case 0xA:
    case 0xC:
        return Kind::list;
    case 0xD:
        return Kind::dictionary;
    default:
        return Kind::other;
    }
}

std::optional<std::size_t> BinaryObjects::count(std::size_t& offset) const {
    const auto marker = static_cast<unsigned char>(bytes_[offset++]);
    if ((marker & 0x0FU) != 0x0F) {
        return marker & 0x0FU;
    }
    if (offset >= end_) {
        return std::nullopt;
    }
    const auto lengthMarker = static_cast<unsigned char>(bytes_[offset++]);
    const std::size_t lengthSize = std::size_t{1} << (lengthMarker & 0x0FU);
    if (lengthMarker >> 4U != 1 || lengthSize > 8 || lengthSize > end_ - offset) {
        return std::nullopt;
    }
    const std::uint64_t counted = number(offset, lengthSize);
    offset += lengthSize;
    if (counted > end_) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(counted);
}

std::optional<BinaryObjects::Children> BinaryObjects::children(std::size_t object) const {
    auto offset = start(object);
    if (!offset) {
        return std::nullopt;
    }
    const Kind found = kind(object);
    if (found != Kind::list && found != Kind::dictionary) {
        return Children{};
    }
    auto counted = count(*offset);
    if (!counted) {
        return std::nullopt;
    }
    *counted *= found == Kind::dictionary ? 2 : 1;
    if (*counted > (end_ - *offset) / referenceSize_) {
        return std::nullopt;
    }
    return Children{*offset, *counted};
}

std::size_t BinaryObjects::child(const Children& children, std::size_t index) const {
    return static_cast<std::size_t>(
        number(children.first + index * referenceSize_, referenceSize_));
}

std::optional<std::string_view> BinaryObjects::text(std::size_t object,
                                                    std::string& storage) const {
    auto offset = start(object);
    if (!offset || kind(object) != Kind::text) {
        return std::nullopt;
    }
    const bool isWide = static_cast<unsigned char>(bytes_[*offset]) >> 4U == 0x6;
    const auto counted = count(*offset);
    if (!counted || *counted > (end_ - *offset) / (isWide ? 2 : 1)) {
        return std::nullopt;
    }
    const std::string_view found = bytes_.substr(*offset, *counted * (isWide ? 2 : 1));
    if (!isWide && Text::isValidUtf8(found)) {
        return found;
    }
    storage.clear();
    if (isWide) {
        convertUtf16(found, storage);
    } else {
        storage = Text::repairedUtf8(found);
    }
    return storage;
}

std::optional<BinaryObjects::Size> BinaryObjects::walk() {
    struct Frame {
        std::size_t object = 0;
        Children children;
        std::size_t next = 0;
    };
    std::vector<Frame> open;
    const auto enter = [&](std::size_t object) {
        const auto found = children(object);
        if (!found) {
            return false;
        }
        states_[object] = State::open;
        sizes_[object] = {1, 1};
        open.push_back({object, *found, 0});
        return true;
    };
    const auto add = [&](std::size_t parent, std::size_t part) {
        constexpr std::size_t most = std::numeric_limits<std::size_t>::max() / 4;
        sizes_[parent].depth = std::max(sizes_[parent].depth, sizes_[part].depth + 1);
        sizes_[parent].values = std::min(most, sizes_[parent].values + sizes_[part].values);
    };
    if (!enter(top_)) {
        return std::nullopt;
    }
    while (true) {
        Frame& frame = open.back();
        if (frame.next == frame.children.count) {
            const std::size_t object = frame.object;
            states_[object] = State::done;
            open.pop_back();
            if (open.empty()) {
                return sizes_[top_];
            }
            add(open.back().object, object);
            continue;
        }
        const std::size_t index = child(frame.children, frame.next++);
        if (index >= states_.size() || states_[index] == State::open) {
            return std::nullopt; // out of range, or a cycle
        }
        if (states_[index] == State::done) {
            add(frame.object, index);
        } else if (open.size() == maxNesting) {
            return Size{open.size() + 1, states_.size()};
        } else if (!enter(index)) {
            return std::nullopt;
        }
    }
}

} // namespace vellory::PropertyList
