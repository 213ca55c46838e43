// SPDX-License-Identifier: Apache-2.0
#include "Search/FuzzySearch.h"

#include "Search/MatchRules.h"
#include "Support/Text.h"

namespace vellory::FuzzySearch {

std::optional<int> score(std::string_view query, std::string_view name) {
    PreparedNames one;
    one.add(name);
    return one.score(query, 0);
}

std::string camelInitials(std::string_view name) {
    std::string taken;
    std::string_view previous = " ";
    for (const std::string_view character : Text::graphemes(name)) {
        if (Text::isLetter(character)) {
            const bool beginsCapital = Text::isUppercase(character) && !Text::isUppercase(previous);
            const bool beginsWord = !Text::isLetter(previous) && !Text::isNumber(previous);
            if (beginsCapital || beginsWord) {
                taken.append(character);
            }
        }
        previous = character;
    }
    return Text::normalized(taken);
}

std::optional<std::size_t> subsequenceGaps(std::string_view query, std::string_view name) {
    CharacterTable characters;
    const std::u32string in = characters.add(name);
    return rules::gaps<char32_t>(characters.spell(query), in);
}

bool editDistanceAtMostOne(std::string_view a, std::string_view b) {
    CharacterTable characters;
    const std::u32string first = characters.add(a);
    return rules::atMostOneEdit<char32_t>(first, characters.add(b));
}

} // namespace vellory::FuzzySearch
