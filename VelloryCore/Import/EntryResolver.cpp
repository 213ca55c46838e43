// SPDX-License-Identifier: Apache-2.0
#include "Import/EntryResolver.h"

#include "Support/Link.h"
#include "Support/Text.h"

namespace vellory::RivalImport {

namespace {

/// Longer texts name no app: paths and identifiers end well before.
constexpr std::size_t maxLength = 4096;

/// The path that a file link leads to; nothing for a link with broken escapes, or whose path would
/// hold a zero byte or no UTF-8. Spaces and letters that ought to be escaped may stand as they are.
std::optional<std::string> pathOfFileLink(std::string_view text) {
    if (!Link::decoded(text)) {
        return std::nullopt;
    }
    const auto link = Link::parseTyped(text);
    return link && !link->path().empty() ? Link::decoded(link->path()) : std::nullopt;
}

constexpr bool isIdentifierCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
}

/// Three or more parts joined by dots.
bool isBundleIdentifier(std::string_view text) {
    int parts = 1;
    bool partIsEmpty = true;
    for (const char c : text) {
        if (c == '.') {
            if (partIsEmpty) {
                return false;
            }
            ++parts;
            partIsEmpty = true;
        } else if (isIdentifierCharacter(c)) {
            partIsEmpty = false;
        } else {
            return false;
        }
    }
    return parts >= 3 && !partIsEmpty;
}

} // namespace

std::optional<BundleID> resolve(std::string_view text, const Resolver& resolver) {
    std::string_view named = Text::trimmed(text);
    if (named.empty() || named.size() > maxLength) {
        return std::nullopt;
    }
    std::string linked;
    if (named.starts_with("file://")) {
        if (auto path = pathOfFileLink(named)) {
            linked = std::move(*path);
            named = linked;
        }
    }
    if (named.ends_with(".app") || named.ends_with(".app/")) {
        if (named.find('\0') != std::string_view::npos) {
            return std::nullopt;
        }
        if (auto found = resolver(std::string(named)); found && !found->empty()) {
            return found;
        }
    }
    return isBundleIdentifier(named) ? std::optional<BundleID>(named) : std::nullopt;
}

EntryResolver::EntryResolver(const Resolver& resolver)
    : counted_([this, &resolver](const std::string& path) {
          return lookupsLeft_-- > 0 ? resolver(path) : std::nullopt;
      }) {}

std::optional<BundleID> EntryResolver::resolve(std::string_view text) const {
    return RivalImport::resolve(text, counted_);
}

} // namespace vellory::RivalImport
