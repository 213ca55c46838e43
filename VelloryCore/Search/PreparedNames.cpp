// SPDX-License-Identifier: Apache-2.0
#include "Search/PreparedNames.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Search/MatchRules.h"
#include "Support/Text.h"

namespace vellory::FuzzySearch {

namespace {

constexpr bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

constexpr bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The bit that stands for a character: its own for small letters and digits, a shared one for all
/// others. Scripts beyond ASCII lie in blocks, so that the low bits keep their letters apart.
constexpr std::uint64_t maskBit(char32_t c) {
    unsigned bit = 0;
    if (c >= U'a' && c <= U'z') {
        bit = c - U'a';
    } else if (c >= U'0' && c <= U'9') {
        bit = 26 + (c - U'0');
    } else if (c < 0x80) {
        bit = 36 + c % 28;
    } else {
        bit = c % 64;
    }
    return std::uint64_t{1} << bit;
}

/// What adding a plain name needs to know of a byte, in one look.
struct PlainByte {
    char lower = 0;
    bool upper = false;
    bool letter = false;
    bool letterOrDigit = false;
    bool separator = false;
    std::uint64_t mask = 0;
};

constexpr auto plainBytes = [] {
    std::array<PlainByte, 0x80> out;
    for (unsigned i = 0; i < out.size(); ++i) {
        const char c = static_cast<char>(i);
        const char lower = isUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c;
        out[i] = {.lower = lower,
                  .upper = isUpper(c),
                  .letter = isUpper(c) || isLower(c),
                  .letterOrDigit = isUpper(c) || isLower(c) || isDigit(c),
                  .separator = rules::separatesWords(c),
                  .mask = maskBit(static_cast<unsigned char>(lower))};
    }
    return out;
}();

/// Whether every byte is a character: ASCII, and no carriage return, which forms one character with
/// a line feed that follows.
bool isPlain(std::string_view text) {
    return std::ranges::none_of(
        text, [](char c) { return static_cast<unsigned char>(c) >= 0x80 || c == '\r'; });
}

constexpr char notPlain = '\xFF';

} // namespace

/// A query in both forms that names are kept in.
class PreparedNames::Query {
  public:
    Query(std::string_view query, const CharacterTable& characters)
        : wide_(characters.spell(Text::normalized(query))) {
        narrow_.reserve(wide_.size());
        for (const char32_t c : wide_) {
            const bool ascii = c < 0x80;
            plain_ = plain_ && ascii;
            narrow_.push_back(ascii ? static_cast<char>(c) : notPlain);
            mask_ |= maskBit(c);
            isInOneWord_ = isInOneWord_ && !rules::separatesWords(c);
        }
        borders_ = rules::borders<char32_t>(wide_);
    }

    bool isEmpty() const { return wide_.empty(); }

    /// Whether a name with that mask can match at all: it lacks none of the query's characters, or
    /// one, which then is the typo.
    bool mayMatch(std::uint64_t mask) const {
        const std::uint64_t missing = mask_ & ~mask;
        return missing == 0 ||
               ((missing & (missing - 1)) == 0 && wide_.size() >= rules::shortestTypo);
    }

    /// Whether a name with that mask can have every character of the query.
    bool mayContain(std::uint64_t mask) const { return (mask_ & ~mask) == 0; }

    template <class Char>
    std::optional<int> score(const rules::NameParts<Char>& name, std::uint64_t mask) const {
        const rules::View<Char> query = text<Char>();
        if (mayContain(mask) && (plain_ || sizeof(Char) > 1)) {
            if (const auto score = rules::scoreWithoutTypo(query, borders_, isInOneWord_, name)) {
                return score;
            }
        }
        if (rules::matchesByTypo(query, name.text)) {
            return Tier::typo;
        }
        return std::nullopt;
    }

  private:
    template <class Char>
    rules::View<Char> text() const {
        if constexpr (sizeof(Char) > 1) {
            return wide_;
        } else {
            return narrow_;
        }
    }

    std::u32string wide_;
    /// `wide_` in bytes, with `notPlain`, which is in no narrow name, for what has no byte.
    std::string narrow_;
    std::vector<std::uint32_t> borders_;
    std::uint64_t mask_ = 0;
    bool plain_ = true;
    bool isInOneWord_ = true;
};

void PreparedNames::reserve(std::size_t names, std::size_t bytes) {
    masks_.reserve(names);
    entries_.reserve(names);
    // Initials take a few bytes for each name beside its text.
    narrow_.reserve(bytes + names * 4);
}

void PreparedNames::add(std::string_view name) {
    if (isPlain(name)) {
        addPlain(name);
    } else {
        addWide(name);
    }
}

void PreparedNames::addPlain(std::string_view name) {
    while (!name.empty() && isSpace(name.front())) {
        name.remove_prefix(1);
    }
    while (!name.empty() && isSpace(name.back())) {
        name.remove_suffix(1);
    }
    Entry entry{.begin = narrow_.size(), .length = static_cast<std::uint32_t>(name.size())};
    // Every part is at most as long as the name; what is not needed is cut off at the end.
    narrow_.resize(entry.begin + 3 * name.size());
    char* text = narrow_.data() + entry.begin;
    char* firsts = text + name.size();
    std::uint64_t mask = 0;
    PlainByte previous = plainBytes[' '];
    for (const char c : name) {
        const PlainByte& byte = plainBytes[static_cast<unsigned char>(c)];
        *text++ = byte.lower;
        mask |= byte.mask;
        if (previous.separator && !byte.separator) {
            *firsts++ = byte.lower;
        }
        previous = byte;
    }
    char* camel = firsts;
    previous = plainBytes[' '];
    for (const char c : name) {
        const PlainByte& byte = plainBytes[static_cast<unsigned char>(c)];
        if (byte.letter && ((byte.upper && !previous.upper) || !previous.letterOrDigit)) {
            *camel++ = byte.lower;
        }
        previous = byte;
    }
    entry.firsts = static_cast<std::uint32_t>(firsts - text);
    entry.camel = static_cast<std::uint32_t>(camel - firsts);
    narrow_.resize(static_cast<std::size_t>(camel - narrow_.data()));
    masks_.push_back(mask);
    entries_.push_back(entry);
}

void PreparedNames::addWide(std::string_view name) {
    const std::string normalized = Text::normalized(name);
    const std::u32string text = characters_.add(normalized);
    const std::u32string camel = characters_.add(camelInitials(name));
    std::u32string firsts;
    rules::anyWord<char32_t>(text, [&](rules::View<char32_t> word) {
        firsts.push_back(word.front());
        return false;
    });
    Entry entry{.begin = wide_.size(),
                .length = static_cast<std::uint32_t>(text.size()),
                .firsts = static_cast<std::uint32_t>(firsts.size()),
                .camel = static_cast<std::uint32_t>(camel.size()),
                .wide = true};
    const std::array<std::u32string_view, 3> parts{text, firsts, camel};
    std::uint64_t mask = 0;
    bool narrow = true;
    for (const auto part : parts) {
        for (const char32_t c : part) {
            mask |= maskBit(c);
            narrow = narrow && c < 0x80;
        }
    }
    if (narrow) {
        // "Café" is as plain as "Cafe" by now.
        entry.begin = narrow_.size();
        entry.wide = false;
    }
    for (const auto part : parts) {
        if (narrow) {
            narrow_.append(part.begin(), part.end());
        } else {
            wide_.append(part);
        }
    }
    masks_.push_back(mask);
    entries_.push_back(entry);
}

std::optional<int> PreparedNames::score(const Query& query, std::size_t index) const {
    const Entry& entry = entries_[index];
    const auto scoreIn = [&]<class Char>(const std::basic_string<Char>& block) {
        const auto all = rules::View<Char>(block).substr(
            entry.begin, std::size_t{entry.length} + entry.firsts + entry.camel);
        const rules::NameParts<Char> name{.text = all.substr(0, entry.length),
                                          .initials = all.substr(entry.length),
                                          .camel = all.substr(entry.length + entry.firsts)};
        return query.score(name, masks_[index]);
    };
    return entry.wide ? scoreIn(wide_) : scoreIn(narrow_);
}

std::optional<int> PreparedNames::score(std::string_view text, std::size_t index) const {
    const Query query(text, characters_);
    if (query.isEmpty()) {
        return 0;
    }
    return query.mayMatch(masks_[index]) ? score(query, index) : std::nullopt;
}

std::vector<Match> PreparedNames::rank(std::string_view text) const {
    const Query query(text, characters_);
    std::vector<Match> found;
    if (query.isEmpty()) {
        found.resize(size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            found[i].index = i;
        }
        return found;
    }
    // There are few scores, so counting them sorts: stable, and linear whatever the names.
    std::array<std::size_t, Tier::exact + 2> counts{};
    for (std::size_t i = 0; i < size(); ++i) {
        if (!query.mayMatch(masks_[i])) {
            continue;
        }
        if (const auto score = this->score(query, i)) {
            found.push_back({.index = i, .score = *score});
            ++counts[static_cast<std::size_t>(*score)];
        }
    }
    std::size_t place = 0;
    for (std::size_t score = counts.size(); score-- > 0;) {
        place += std::exchange(counts[score], place);
    }
    std::vector<Match> ranked(found.size());
    for (const Match& match : found) {
        ranked[counts[static_cast<std::size_t>(match.score)]++] = match;
    }
    return ranked;
}

} // namespace vellory::FuzzySearch
