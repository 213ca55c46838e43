// SPDX-License-Identifier: Apache-2.0
#include "Support/JsonReader.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "Support/Text.h"

namespace vellory::json {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

void appendUtf8(std::string& out, char32_t c) {
    const auto tail = [&](unsigned shift) {
        out += static_cast<char>(0x80U | ((c >> shift) & 0x3FU));
    };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0U | (c >> 6U));
        tail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0U | (c >> 12U));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0U | (c >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

} // namespace

Reader::Reader(std::string_view text, std::size_t mostValues) : maxValues_(mostValues) {
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    at_ = text.data();
    end_ = at_ + text.size();
}

bool Reader::fail() {
    failed_ = true;
    at_ = end_;
    return false;
}

bool Reader::finish() {
    skipSpace();
    return !failed_ && at_ == end_ && depth_ == 0;
}

void Reader::skipSpace() {
    while (at_ != end_ && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t')) {
        ++at_;
    }
}

bool Reader::accept(char c) {
    if (at_ == end_ || *at_ != c) {
        return false;
    }
    ++at_;
    return true;
}

bool Reader::countValue() {
    return ++values_ <= maxValues_ || fail();
}

bool Reader::begin(char opening) {
    skipSpace();
    if (!accept(opening) || depth_ == maxDepth || !countValue()) {
        return fail();
    }
    isFirst_[static_cast<std::size_t>(depth_++)] = true;
    return true;
}

/// Whether another element follows: past its comma when it is not the first.
bool Reader::next(char closing) {
    if (failed_) {
        return false;
    }
    skipSpace();
    if (accept(closing)) {
        --depth_;
        return false;
    }
    bool& isFirst = isFirst_[static_cast<std::size_t>(depth_ - 1)];
    if (!isFirst && !accept(',')) {
        return fail();
    }
    isFirst = false;
    return true;
}

bool Reader::beginArray() {
    return begin('[');
}

bool Reader::nextElement() {
    return next(']');
}

bool Reader::beginObject() {
    return begin('{');
}

std::optional<std::string_view> Reader::nextKey() {
    if (!next('}')) {
        return std::nullopt;
    }
    const auto key = string();
    skipSpace();
    if (key && !accept(':')) {
        fail();
        return std::nullopt;
    }
    return key;
}

bool Reader::read(std::string& out) {
    const auto text = countValue() ? string() : std::nullopt;
    if (!text) {
        return false;
    }
    out = *text;
    return true;
}

bool Reader::read(std::optional<std::string>& out) {
    skipSpace();
    if (at_ != end_ && *at_ == 'n') {
        out.reset();
        return skip();
    }
    return read(out.emplace());
}

bool Reader::read(double& out) {
    const auto text = countValue() ? number() : std::nullopt;
    return text &&
           (std::from_chars(text->data(), text->data() + text->size(), out).ec == std::errc{} ||
            fail());
}

bool Reader::read(int& out) {
    double number = 0;
    if (!read(number)) {
        return false;
    }
    if (std::trunc(number) != number || number < std::numeric_limits<int>::min() ||
        number > std::numeric_limits<int>::max()) {
        return fail();
    }
    out = static_cast<int>(number);
    return true;
}

bool Reader::skip() {
    skipSpace();
    switch (at_ == end_ ? '\0' : *at_) {
    case '[':
        for (beginArray(); nextElement();) {
            skip();
        }
        return !failed_;
    case '{':
        for (beginObject(); nextKey();) {
            skip();
        }
        return !failed_;
    case '"':
        return countValue() && string().has_value();
    default:
        break;
    }
    for (const std::string_view word : {"null", "true", "false"}) {
        if (std::string_view(at_, end_).starts_with(word)) {
            at_ += word.size();
            return countValue();
        }
    }
    double number = 0;
    return read(number);
}

std::optional<std::string_view> Reader::string() {
    skipSpace();
    if (!accept('"')) {
        fail();
        return std::nullopt;
    }
    const char* const start = at_;
    unsigned char bits = 0;
    for (; at_ != end_; ++at_) {
        const auto c = static_cast<unsigned char>(*at_);
        if (c == '"') {
            const std::string_view text(start, at_++);
            if (bits >= 0x80 && !Text::isValidUtf8(text)) {
                break;
            }
            return text;
        }
        if (c == '\\') {
            return stringWithEscapes(start);
        }
        if (c < 0x20) {
            break;
        }
        bits |= c;
    }
    fail();
    return std::nullopt;
}

std::optional<std::string_view> Reader::stringWithEscapes(const char* start) {
    scratch_.assign(start, at_);
    while (at_ != end_) {
        const char c = *at_++;
        if (c == '"') {
            if (!Text::isValidUtf8(scratch_)) {
                break;
            }
            return scratch_;
        }
        if (c == '\\') {
            if (!appendEscape()) {
                break;
            }
        } else if (static_cast<unsigned char>(c) < 0x20) {
            break;
        } else {
            scratch_ += c;
        }
    }
    fail();
    return std::nullopt;
}

bool Reader::appendEscape() {
    static constexpr std::string_view names = "\"\\/bfnrt";
    static constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    if (at_ == end_) {
        return false;
    }
    const char name = *at_++;
    if (const auto index = names.find(name); index != std::string_view::npos) {
        scratch_ += meanings[index];
        return true;
    }
    const auto unit = name == 'u' ? hexUnit() : std::nullopt;
    if (!unit || (*unit >= 0xDC00 && *unit < 0xE000)) {
        return false;
    }
    if (*unit < 0xD800 || *unit >= 0xE000) {
        appendUtf8(scratch_, *unit);
        return true;
    }
    const auto low = accept('\\') && accept('u') ? hexUnit() : std::nullopt;
    if (!low || *low < 0xDC00 || *low >= 0xE000) {
        return false;
    }
    appendUtf8(scratch_, 0x10000 + ((*unit - 0xD800) << 10U) + (*low - 0xDC00));
    return true;
}

std::optional<char32_t> Reader::hexUnit() {
    std::uint32_t unit = 0;
    if (end_ - at_ < 4) {
        return std::nullopt;
    }
    const auto [stop, error] = std::from_chars(at_, at_ + 4, unit, 16);
    if (error != std::errc{} || stop != at_ + 4) {
        return std::nullopt;
    }
    at_ = stop;
    return unit;
}

/// The text of a number by JSON's grammar, which is narrower than that of the conversions: no "+1",
/// "01", "1." or "inf".
std::optional<std::string_view> Reader::number() {
    skipSpace();
    const char* const start = at_;
    const auto digits = [&] {
        const char* const first = at_;
        while (at_ != end_ && isDigit(*at_)) {
            ++at_;
        }
        return at_ != first;
    };
    accept('-');
    bool isValid = accept('0') || digits();
    if (isValid && accept('.')) {
        isValid = digits();
    }
    if (isValid && (accept('e') || accept('E'))) {
        if (!accept('+')) {
            accept('-');
        }
        isValid = digits();
    }
    if (!isValid) {
        fail();
        return std::nullopt;
    }
    return std::string_view(start, at_);
}

} // namespace vellory::json
