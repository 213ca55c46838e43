// SPDX-License-Identifier: Apache-2.0
#include "model/Hints.h"

#include <algorithm>
#include <string_view>

#include "Support/Text.h"

namespace vellory {

namespace {
// Those under the fingers first.
constexpr std::string_view hintAlphabet = "ASDFGHJKLQWERTYUIOPZXCVBNM";
constexpr int hintLetters = static_cast<int>(hintAlphabet.size());
} // namespace

std::string Hints::label(int index) {
    const int wrapped = std::max(index, 0);
    return {hintAlphabet[static_cast<std::size_t>(wrapped / hintLetters % hintLetters)],
            hintAlphabet[static_cast<std::size_t>(wrapped % hintLetters)]};
}

void Hints::set(bool on) {
    isOn_ = on;
    typed_.clear();
}

std::optional<int> Hints::type(const std::string& text, Range items) {
    const std::string letter = Text::uppercased(text);
    if (letter.size() != 1 || hintAlphabet.find(letter) == std::string_view::npos) {
        set(false);
        return std::nullopt;
    }
    const std::string typed = typed_ + letter;
    for (int index = items.first; index < items.end; ++index) {
        const std::string each = label(index);
        if (each == typed) {
            set(false);
            return index;
        }
        if (each.starts_with(typed)) {
            typed_ = typed;
            return std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace vellory
