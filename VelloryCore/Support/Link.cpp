// SPDX-License-Identifier: Apache-2.0
#include "Support/Link.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <ranges>

#include <uriparser/Uri.h>

#include "Support/Text.h"

namespace vellory {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";

/// A parsed URI of the library, with its memory.
class Parsed {
  public:
    explicit Parsed(std::string_view text) {
        valid_ = uriParseSingleUriExA(&uri_, text.data(), text.data() + text.size(), nullptr) ==
                 URI_SUCCESS;
    }
    Parsed(const Parsed&) = delete;
    Parsed& operator=(const Parsed&) = delete;
    ~Parsed() {
        if (valid_) {
            uriFreeUriMembersA(&uri_);
        }
    }

    bool isValid() const { return valid_; }
    const UriUriA* operator->() const { return &uri_; }

  private:
    UriUriA uri_{};
    bool valid_ = false;
};

/// The text of a part; nothing for a part that is not there.
std::optional<std::string> part(const UriTextRangeA& range) {
    if (range.first == nullptr) {
        return std::nullopt;
    }
    return std::string(range.first, range.afterLast);
}

/// The value of a hexadecimal digit, -1 for any other character.
int hexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

bool isEscape(std::string_view text, std::size_t at) {
    return at + 2 < text.size() && text[at] == '%' && hexValue(text[at + 1]) >= 0 &&
           hexValue(text[at + 2]) >= 0;
}

bool isUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

void appendEscaped(std::string& out, char c) {
    const auto byte = static_cast<unsigned char>(c);
    out += '%';
    out += hexDigits[byte >> 4U];
    out += hexDigits[byte & 0xFU];
}

} // namespace

std::expected<Link, Link::Error> Link::parse(std::string_view text) {
    if (text.size() > maxLength) {
        return std::unexpected(Error::tooLong);
    }
    if (text.empty()) {
        return std::unexpected(Error::malformed);
    }
    const Parsed uri(text);
    if (!uri.isValid() || uri->scheme.first == nullptr) {
        return std::unexpected(Error::malformed);
    }

    Link link;
    link.text_ = text;
    link.scheme_ = part(uri->scheme).value_or("");
    link.userInfo_ = part(uri->userInfo);
    link.host_ = part(uri->hostText);
    if (const auto digits = part(uri->portText); digits && !digits->empty()) {
        std::uint16_t number = 0;
        const auto* end = digits->data() + digits->size();
        if (std::from_chars(digits->data(), end, number).ec != std::errc{}) {
            return std::unexpected(Error::malformed);
        }
        link.port_ = number;
    }
    for (const auto* segment = uri->pathHead; segment != nullptr; segment = segment->next) {
        // After an authority the library leaves the first slash out of its account.
        if (segment != uri->pathHead || uri->absolutePath != 0 || link.host_) {
            link.path_ += '/';
        }
        link.path_.append(segment->text.first, segment->text.afterLast);
    }
    link.query_ = part(uri->query);
    link.fragment_ = part(uri->fragment);
    return link;
}

std::expected<Link, Link::Error> Link::parseTyped(std::string_view text) {
    text = Text::trimmed(text);
    if (text.size() > maxLength) {
        return std::unexpected(Error::tooLong);
    }
    static constexpr std::string_view alwaysEncoded = " \"<>\\^`{|}";
    std::size_t authorityEnd = text.find("://");
    authorityEnd = authorityEnd == std::string_view::npos
                       ? 0
                       : std::min(text.find_first_of("/?#", authorityEnd + 3), text.size());
    const std::size_t fragment = text.find('#');

    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isMisplaced = ((c == '[' || c == ']') && i >= authorityEnd) ||
                                 (c == '#' && i != fragment) || (c == '%' && !isEscape(text, i));
        if (isMisplaced || static_cast<unsigned char>(c) >= 0x80 ||
            alwaysEncoded.find(c) != std::string_view::npos) {
            appendEscaped(out, c);
        } else {
            out += c;
        }
    }
    return parse(out);
}

std::string Link::command(std::string_view host, std::string_view name) {
    return "vellory://" + std::string(host) + "/" + encoded(name);
}

std::string Link::encoded(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        if (isUnreserved(c)) {
            out += c;
        } else {
            appendEscaped(out, c);
        }
    }
    return out;
}

std::optional<std::string> Link::decoded(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '%') {
            if (!isEscape(text, i)) {
                return std::nullopt;
            }
            c = static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]));
            i += 2;
        }
        if (c == '\0') {
            return std::nullopt;
        }
        out += c;
    }
    if (!Text::isValidUtf8(out)) {
        return std::nullopt;
    }
    return out;
}

std::vector<std::string> Link::pathComponents() const {
    std::vector<std::string> out;
    for (const auto component : std::views::split(path_, '/')) {
        if (!component.empty()) {
            out.emplace_back(component.begin(), component.end());
        }
    }
    return out;
}

std::optional<std::string> Link::pathName() const {
    std::string joined;
    for (const std::string& component : pathComponents()) {
        joined += joined.empty() ? "" : "/";
        joined += component;
    }
    return decoded(joined);
}

std::string Link::lastPathComponent() const {
    const auto components = pathComponents();
    return components.empty() ? std::string() : decoded(components.back()).value_or("");
}

std::vector<Link::QueryItem> Link::queryItems() const {
    std::vector<QueryItem> out;
    if (!query_) {
        return out;
    }
    for (const auto piece : std::views::split(*query_, '&')) {
        const std::string_view item(piece.begin(), piece.end());
        const auto equals = item.find('=');
        if (auto name = decoded(item.substr(0, equals)); name && !item.empty()) {
            auto value =
                equals == std::string_view::npos ? std::nullopt : decoded(item.substr(equals + 1));
            out.push_back({std::move(*name), std::move(value)});
        }
    }
    return out;
}

std::optional<std::string> Link::queryValue(std::string_view name) const {
    for (QueryItem& item : queryItems()) {
        if (item.name == name) {
            return std::move(item.value);
        }
    }
    return std::nullopt;
}

std::vector<std::string> Link::queryValues(std::string_view name) const {
    std::vector<std::string> out;
    for (QueryItem& item : queryItems()) {
        if (item.name == name && item.value) {
            out.push_back(std::move(*item.value));
        }
    }
    return out;
}

} // namespace vellory
