// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellory {

/// An absolute URI (RFC 3986), kept letter by letter: nothing is lower-cased, resolved or decoded
/// until asked, so that "vellory://Open" and "vellory://open" stay two links.
///
/// A value. Costs time and memory in proportion to the text, which is bounded.
class Link {
  public:
    enum class Error {
        malformed, ///< no URI, or a relative one; a "%" without two hexadecimal digits; a port past
                   ///< 65535
        tooLong    ///< past `maxLength`
    };

    static constexpr std::size_t maxLength = 64U * 1024U;

    /// The link that `text` spells exactly.
    static std::expected<Link, Error> parse(std::string_view text);

    /// The link that a person meant who typed or pasted `text`: white space at the ends is dropped,
    /// and what a URI must encode (spaces, "ö", a lone "%") is encoded.
    static std::expected<Link, Error> parseTyped(std::string_view text);

    /// The link "vellory://<host>/<name>" with the name encoded.
    static std::string command(std::string_view host, std::string_view name);

    /// `text` with all but RFC 3986's unreserved characters (letters, digits, "-._~") encoded.
    static std::string encoded(std::string_view text);

    /// `text` with its percent escapes resolved; nothing when an escape is malformed or the result
    /// is not UTF-8 or holds a NUL. A "+" stays a "+".
    static std::optional<std::string> decoded(std::string_view text);

    const std::string& text() const { return text_; }

    // The parts as written, without decoding. Absent is not the same as empty: "a://?" has an empty
    // host and an empty query, "a:" has neither.
    const std::string& scheme() const { return scheme_; }
    const std::optional<std::string>& userInfo() const { return userInfo_; }
    /// An address in brackets comes without them.
    const std::optional<std::string>& host() const { return host_; }
    std::optional<std::uint16_t> port() const { return port_; }
    const std::string& path() const { return path_; }
    const std::optional<std::string>& query() const { return query_; }
    const std::optional<std::string>& fragment() const { return fragment_; }

    /// The path between its slashes, as written; empty components are left out, so that a slash at
    /// the end does not count.
    std::vector<std::string> pathComponents() const;

    /// What the path names: its components joined with "/", then decoded once. A slash that is
    /// written as %2F is a slash here. Nothing when it cannot be decoded.
    std::optional<std::string> pathName() const;

    /// The last component decoded; empty when there is none or it cannot be decoded.
    std::string lastPathComponent() const;

    struct QueryItem {
        std::string name;
        /// Absent without "=", and when it cannot be decoded.
        std::optional<std::string> value;

        friend bool operator==(const QueryItem&, const QueryItem&) = default;
    };

    /// The query taken apart at "&" and the first "=" of each, and decoded. Items whose name cannot
    /// be decoded are left out.
    std::vector<QueryItem> queryItems() const;

    /// The value of the first item of that name (letter case counts), if it has one.
    std::optional<std::string> queryValue(std::string_view name) const;
    /// The values of all items of that name that have one.
    std::vector<std::string> queryValues(std::string_view name) const;

    friend bool operator==(const Link& a, const Link& b) { return a.text_ == b.text_; }

  private:
    Link() = default;

    std::string text_;
    std::string scheme_;
    std::optional<std::string> userInfo_;
    std::optional<std::string> host_;
    std::optional<std::uint16_t> port_;
    std::string path_;
    std::optional<std::string> query_;
    std::optional<std::string> fragment_;
};

} // namespace vellory
