// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Text.h"

/// The matcher's rules, each done in the most obvious way and without regard to speed: what the
/// real one is held against. Nothing is shared with it but the text functions.
namespace vellory::slow {

using Characters = std::vector<std::string>;

inline Characters characters(std::string_view text) {
    const auto views = Text::graphemes(text);
    return {views.begin(), views.end()};
}

inline Characters prefix(const Characters& text, std::size_t count) {
    return {text.begin(), text.begin() + static_cast<std::ptrdiff_t>(std::min(count, text.size()))};
}

inline bool beginsWith(const Characters& text, const Characters& query) {
    return text.size() >= query.size() && prefix(text, query.size()) == query;
}

inline bool contains(const Characters& text, const Characters& query) {
    return !std::ranges::search(text, query).empty();
}

inline std::vector<Characters> words(const Characters& text) {
    std::vector<Characters> out(1);
    for (const std::string& c : text) {
        if (c == " " || c == "-" || c == "." || c == "_") {
            out.emplace_back();
        } else {
            out.back().push_back(c);
        }
    }
    std::erase_if(out, [](const Characters& word) { return word.empty(); });
    return out;
}

inline Characters camelInitials(std::string_view name) {
    std::string taken;
    std::string previous = " ";
    for (const std::string& c : characters(name)) {
        const bool capital = Text::isUppercase(c) && !Text::isUppercase(previous);
        const bool fresh = !Text::isLetter(previous) && !Text::isNumber(previous);
        if (Text::isLetter(c) && (capital || fresh)) {
            taken += c;
        }
        previous = c;
    }
    return characters(Text::normalized(taken));
}

inline std::optional<std::size_t> gaps(const Characters& query, const Characters& name) {
    std::vector<std::size_t> positions;
    for (const std::string& c : query) {
        std::size_t at = positions.empty() ? 0 : positions.back() + 1;
        while (at < name.size() && name[at] != c) {
            ++at;
        }
        if (at >= name.size()) {
            return std::nullopt;
        }
        positions.push_back(at);
    }
    std::size_t sum = 0;
    for (std::size_t i = 1; i < positions.size(); ++i) {
        sum += positions[i] - positions[i - 1] - 1;
    }
    return sum;
}

/// Tries every single edit.
inline bool oneEditApart(const Characters& a, const Characters& b) {
    const auto without = [](Characters text, std::size_t i) {
        text.erase(text.begin() + static_cast<std::ptrdiff_t>(i));
        return text;
    };
    const auto swapped = [](Characters text, std::size_t i) {
        std::swap(text[i], text[i + 1]);
        return text;
    };
    const auto replaced = [](Characters text, std::size_t i, const std::string& by) {
        text[i] = by;
        return text;
    };
    bool is = a == b;
    for (std::size_t i = 0; i < a.size(); ++i) {
        is = is || without(a, i) == b || (i + 1 < a.size() && swapped(a, i) == b) ||
             (i < b.size() && replaced(a, i, b[i]) == b);
    }
    for (std::size_t i = 0; i < b.size(); ++i) {
        is = is || without(b, i) == a;
    }
    return is;
}

inline std::optional<int> score(std::string_view rawQuery, std::string_view rawName) {
    const Characters q = characters(Text::normalized(rawQuery));
    const Characters n = characters(Text::normalized(rawName));
    const auto capped = [](std::size_t size) { return static_cast<int>(size < 99 ? size : 99); };
    if (q.empty()) {
        return 0;
    }
    if (n.empty()) {
        return std::nullopt;
    }
    if (n == q) {
        return 1000;
    }
    if (beginsWith(n, q)) {
        return 900 - capped(n.size() - q.size());
    }
    const std::vector<Characters> parts = words(n);
    for (std::size_t i = 1; i < parts.size(); ++i) {
        if (beginsWith(parts[i], q)) {
            return 800 - capped(n.size());
        }
    }
    Characters initials;
    for (const Characters& word : parts) {
        initials.push_back(word.front());
    }
    const Characters camel = camelInitials(rawName);
    initials.insert(initials.end(), camel.begin(), camel.end());
    if (q.size() >= 2 && (beginsWith(initials, q) || beginsWith(camel, q))) {
        return 700;
    }
    if (contains(n, q)) {
        return 600 - capped(n.size());
    }
    if (const auto skipped = gaps(q, n)) {
        return 400 - (*skipped < 30 ? 10 * static_cast<int>(*skipped) : 300);
    }
    if (q.size() < 4) {
        return std::nullopt;
    }
    std::vector<Characters> candidates{n};
    candidates.insert(candidates.end(), parts.begin(), parts.end());
    for (const Characters& c : candidates) {
        if (oneEditApart(q, prefix(c, q.size() + 1)) || oneEditApart(q, prefix(c, q.size()))) {
            return 300;
        }
    }
    return std::nullopt;
}

} // namespace vellory::slow
