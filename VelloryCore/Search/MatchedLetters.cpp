// SPDX-License-Identifier: Apache-2.0
#include "Search/MatchedLetters.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Search/CharacterTable.h"
#include "Search/MatchRules.h"
#include "Support/Text.h"

namespace vellory::FuzzySearch {

namespace {

constexpr std::size_t longestName = 1000; // bytes

using Places = std::vector<std::size_t>;

/// A name in characters as they are compared, each with the written character it comes from.
struct SpelledName {
    std::vector<std::string_view> written;
    std::u32string text;
    Places owners; ///< for each of `text`, its index in `written`
    Places firsts; ///< where in `text` words begin
    Places camel;  ///< where in `text` words inside the written name begin

    SpelledName(std::string_view name, CharacterTable& characters) {
        written = Text::graphemes(name);
        std::string_view previous = " ";
        for (std::size_t i = 0; i < written.size(); ++i) {
            const std::string_view character = written[i];
            const bool beginsWord =
                Text::isLetter(character) && !Text::isLetter(previous) && !Text::isNumber(previous);
            const bool beginsCapital = Text::isUppercase(character) && !Text::isUppercase(previous);
            if (beginsWord || (beginsCapital && Text::isLetter(character))) {
                camel.push_back(text.size());
            }
            const bool isSpace = Text::isWhitespace(character);
            text += characters.add(isSpace ? " " : Text::normalized(character));
            owners.resize(text.size(), i);
            previous = character;
        }
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool beginsWord = i == 0 || rules::separatesWords(text[i - 1]);
            if (beginsWord && !rules::separatesWords(text[i])) {
                firsts.push_back(i);
            }
        }
    }
};

Places range(std::size_t begin, std::size_t count) {
    Places places(count);
    for (std::size_t i = 0; i < count; ++i) {
        places[i] = begin + i;
    }
    return places;
}

/// The first of `places` when the characters there spell the query.
Places spelledAt(const Places& places, const SpelledName& name, std::u32string_view query) {
    if (query.size() < rules::shortestInitials || places.size() < query.size()) {
        return {};
    }
    for (std::size_t i = 0; i < query.size(); ++i) {
        if (places[i] >= name.text.size() || name.text[places[i]] != query[i]) {
            return {};
        }
    }
    return {places.begin(), places.begin() + static_cast<std::ptrdiff_t>(query.size())};
}

Places subsequence(const SpelledName& name, std::u32string_view query) {
    Places places;
    std::size_t next = 0;
    for (const char32_t c : query) {
        const std::size_t found = name.text.find(c, next);
        if (found == std::u32string::npos) {
            return {};
        }
        places.push_back(found);
        next = found + 1;
    }
    return places;
}

/// Where the letters of the query are in the name, by the first rule that applies.
Places matchedPlaces(const SpelledName& name, std::u32string_view query) {
    if (name.text.starts_with(query)) {
        return range(0, query.size());
    }
    const bool inOneWord = std::ranges::none_of(query, rules::separatesWords<char32_t>);
    for (const std::size_t first : name.firsts) {
        if (inOneWord && std::u32string_view(name.text).substr(first).starts_with(query)) {
            return range(first, query.size());
        }
    }
    Places initials = name.firsts;
    initials.insert(initials.end(), name.camel.begin(), name.camel.end());
    for (const Places& places : {initials, name.camel}) {
        if (Places found = spelledAt(places, name, query); !found.empty()) {
            return found;
        }
    }
    if (const std::size_t found = name.text.find(query); found != std::u32string::npos) {
        return range(found, query.size());
    }
    return subsequence(name, query);
}

} // namespace

std::vector<Run> matchedLetters(std::string_view query, std::string_view name) {
    if (name.size() > longestName) {
        return {};
    }
    CharacterTable characters;
    // What a blank at the front would hide from the rule of beginnings.
    const std::string_view trimmed = Text::trimmed(name);
    const SpelledName spelled(trimmed, characters);
    const std::u32string wanted = characters.spell(Text::normalized(query));
    if (wanted.empty() || wanted.size() > spelled.text.size()) {
        return {};
    }
    Places characterIndexes;
    for (const std::size_t place : matchedPlaces(spelled, wanted)) {
        characterIndexes.push_back(spelled.owners[place]);
    }
    std::ranges::sort(characterIndexes);
    const auto repeated = std::ranges::unique(characterIndexes);
    characterIndexes.erase(repeated.begin(), repeated.end());

    std::vector<Run> runs;
    for (const std::size_t index : characterIndexes) {
        const std::string_view character = spelled.written[index];
        const auto begin = static_cast<std::size_t>(character.data() - name.data());
        if (!runs.empty() && runs.back().begin + runs.back().length == begin) {
            runs.back().length += character.size();
        } else {
            runs.push_back({begin, character.size()});
        }
    }
    return runs;
}

} // namespace vellory::FuzzySearch
