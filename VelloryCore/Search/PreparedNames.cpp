// SPDX-License-Identifier: Apache-2.0
#include "Search/PreparedNames.h"

#include <algorithm>
#include <array>
#include <cstring>
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

// What adding a name needs to know of a byte, in one look.
constexpr std::uint8_t upper = 1;
constexpr std::uint8_t letter = 2;
constexpr std::uint8_t digit = 4;
constexpr std::uint8_t separator = 8;
/// The byte is not a character by itself: it is not ASCII, or a carriage return, which forms one
/// character with a line feed that follows.
constexpr std::uint8_t notAlone = 16;

struct Byte {
    char lower = 0;
    std::uint8_t kind = 0;
    std::uint64_t mask = 0;
};

constexpr auto byteTable = [] {
    std::array<Byte, 0x100> out;
    for (unsigned i = 0; i < 0x80; ++i) {
        const char c = static_cast<char>(i);
        unsigned kind = 0;
        kind |= isUpper(c) ? upper | letter : 0;
        kind |= isLower(c) ? letter : 0;
        kind |= isDigit(c) ? digit : 0;
        kind |= rules::separatesWords(c) ? separator : 0;
        kind |= c == '\r' ? notAlone : 0;
        const char lower = isUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c;
        out[i] = {.lower = lower,
                  .kind = static_cast<std::uint8_t>(kind),
                  .mask = maskBit(static_cast<unsigned char>(lower))};
    }
    for (unsigned i = 0x80; i < out.size(); ++i) {
        out[i].kind = notAlone;
    }
    return out;
}();

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
    narrow_.reserve(bytes + names * 6);
}

void PreparedNames::add(std::string_view name) {
    if (!addPlain(name)) {
        addWide(name);
    }
}

bool PreparedNames::addPlain(std::string_view name) {
    while (!name.empty() && isSpace(name.front())) {
        name.remove_prefix(1);
    }
    while (!name.empty() && isSpace(name.back())) {
        name.remove_suffix(1);
    }
    // Every part is at most as long as the name. All three are written without a branch, each byte
    // over the last one that did not count; then the initials move up behind one another.
    const std::size_t begin = narrow_.size();
    narrow_.resize(begin + 3 * name.size());
    char* const text = narrow_.data() + begin;
    char* const firsts = text + name.size();
    char* const camel = firsts + name.size();
    std::size_t firstsCount = 0;
    std::size_t camelCount = 0;
    std::uint64_t mask = 0;
    unsigned kinds = 0;
    unsigned previous = separator;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const Byte& byte = byteTable[static_cast<unsigned char>(name[i])];
        const unsigned kind = byte.kind;
        mask |= byte.mask;
        kinds |= kind;
        text[i] = byte.lower;
        firsts[firstsCount] = byte.lower;
        firstsCount += (previous & separator) != 0 && (kind & separator) == 0 ? 1 : 0;
        camel[camelCount] = byte.lower;
        const bool beginsCapital = (kind & ~previous & upper) != 0;
        const bool beginsWord = (kind & letter) != 0 && (previous & (letter | digit)) == 0;
        camelCount += beginsCapital || beginsWord ? 1 : 0;
        previous = kind;
    }
    if ((kinds & notAlone) != 0) {
        narrow_.resize(begin);
        return false;
    }
    std::memmove(firsts + firstsCount, camel, camelCount);
    narrow_.resize(begin + name.size() + firstsCount + camelCount);
    masks_.push_back(mask);
    entries_.push_back({.begin = begin,
                        .length = static_cast<std::uint32_t>(name.size()),
                        .firsts = static_cast<std::uint32_t>(firstsCount),
                        .camel = static_cast<std::uint32_t>(camelCount)});
    return true;
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
