// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <span>
#include <string_view>

/// Reading XML from outside as a stream of events: nothing of the document is kept but its open
/// elements, so that a reader holds only what it looks for.
///
/// Nothing in a document makes the reader fetch, open or expand anything: one that declares
/// entities of its own is turned away at the declaration, and external ones are never loaded.
/// Nesting and size are bounded.
namespace vellory::Xml {

struct Attribute {
    /// As written, with its prefix: "media:title". Prefixes are not resolved.
    std::string_view name;
    std::string_view value;
};

/// Receives a document in order. Views live until the call returns. A handler must not throw.
class Handler {
  public:
    virtual ~Handler() = default;

    virtual void startElement(std::string_view name, std::span<const Attribute> attributes) = 0;
    virtual void endElement(std::string_view name) = 0;
    /// A piece of character data as UTF-8, CDATA sections included; one text may come in many.
    virtual void text(std::string_view piece) = 0;
};

enum class Error {
    malformed,    ///< not well formed, cut short, or not in the encoding that it states
    declarations, ///< its document type declares entities, elements or attributes of its own
    tooLarge,     ///< past one of the limits
    unreadable    ///< the file is missing, no regular file, or cannot be read
};

struct Limits {
    std::size_t bytes = 16U * 1024U * 1024U;
    /// Elements within elements.
    std::size_t depth = 256;
    /// Different names of elements and attributes; each costs the parser an entry that stays.
    std::size_t names = 4096;
};

/// Reads a whole document, in UTF-8, UTF-16 or the single-byte encoding that it states, and tells
/// the handler. After an error the handler has seen what came before it.
std::expected<void, Error> parse(std::string_view bytes, Handler& handler,
                                 const Limits& limits = {});

/// The longest tag, comment or other piece of markup in a file that is read piece by piece: one
/// that stays open is scanned again with every piece that comes, which this bounds.
inline constexpr std::size_t longestToken = 1U * 1024U * 1024U;

/// The same from a file, which is read in pieces and never held whole: needs a few megabytes
/// however large the file is.
std::expected<void, Error> parseFile(const std::filesystem::path& file, Handler& handler,
                                     const Limits& limits = {});

} // namespace vellory::Xml
