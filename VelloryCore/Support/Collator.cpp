// SPDX-License-Identifier: Apache-2.0
#include "Support/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

#include <unicode/coll.h>
#include <unicode/uniset.h>
#include <unicode/usetiter.h>
#include <unicode/unistr.h>

namespace vellory::Text {

namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

/// An ICU collator, and for locales that leave ASCII in the root order a table of its weights: names
/// of printable ASCII then compare by short keys that give exactly the collator's answer.
class Collator::Rules {
  public:
    explicit Rules(std::string_view locale) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale wanted =
            icu::Locale::createCanonical(std::string(locale).c_str());
        collator_.reset(icu::Collator::createInstance(wanted, status));
        if (U_FAILURE(status)) {
            status = U_ZERO_ERROR;
            collator_.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
        }
        if (U_FAILURE(status) || collator_ == nullptr) {
            collator_.reset();
            return; // Only when ICU has no data at all: names then compare byte by byte.
        }
        collator_->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
        collator_->setStrength(icu::Collator::SECONDARY);
        weighAscii();
    }

    std::weak_ordering compare(std::string_view a, std::string_view b) const {
        if (weighted(a) && weighted(b)) {
            return asciiKey(a) <=> asciiKey(b);
        }
        if (collator_ == nullptr) {
            return a <=> b;
        }
        UErrorCode status = U_ZERO_ERROR;
        const auto result = collator_->compareUTF8(piece(a), piece(b), status);
        return result <=> UCOL_EQUAL;
    }

    std::vector<std::string> keys(const std::vector<std::string>& names) const {
        std::vector<std::string> out;
        out.reserve(names.size());
        const bool allWeighted =
            std::ranges::all_of(names, [&](const auto& name) { return weighted(name); });
        for (const auto& name : names) {
            out.push_back(allWeighted ? asciiKey(name) : collationKey(name));
        }
        return out;
    }

  private:
    static icu::StringPiece piece(std::string_view text) {
        return {text.data(), static_cast<std::int32_t>(text.size())};
    }

    /// Ranks the printable ASCII characters by asking the collator, unless the locale moves some of
    /// them or treats a sequence of them (such as the Czech "ch") as one letter.
    void weighAscii() {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::UnicodeSet> tailored(collator_->getTailoredSet(status));
        const icu::UnicodeSet ascii(0x00, 0x7F);
        if (U_FAILURE(status) || tailored == nullptr) {
            return;
        }
        icu::UnicodeSet moved(*tailored);
        moved.retainAll(ascii);
        bool sequences = false;
        for (icu::UnicodeSetIterator element(*tailored); element.next();) {
            sequences = sequences || (element.isString() && ascii.containsAll(element.getString()));
        }
        if (!moved.isEmpty() || sequences) {
            return;
        }
        std::array<char, 0x7F - 0x20> characters{};
        std::iota(characters.begin(), characters.end(), ' ');
        const auto before = [&](char a, char b) {
            UErrorCode ignored = U_ZERO_ERROR;
            return collator_->compareUTF8({&a, 1}, {&b, 1}, ignored) == UCOL_LESS;
        };
        std::ranges::stable_sort(characters, before);
        // Weight 0 is "not in the table"; steps of one leave room for 95 characters in a byte.
        std::uint8_t weight = 1;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            if (i > 0 && before(characters[i - 1], characters[i])) {
                ++weight;
            }
            weights_[static_cast<unsigned char>(characters[i])] = weight;
        }
        ready_ = true;
    }

    bool weighted(std::string_view text) const {
        return ready_ && std::ranges::all_of(text, [&](char c) {
                   return static_cast<unsigned char>(c) < weights_.size() &&
                          weights_[static_cast<unsigned char>(c)] != 0;
               });
    }

    /// A key whose bytes compare as the collator compares the texts. A run of digits becomes the
    /// weight of "0", its length without leading zeros, and its digits.
    std::string asciiKey(std::string_view text) const {
        std::string key;
        key.reserve(text.size() + 4);
        for (std::size_t i = 0; i < text.size();) {
            if (!isDigit(text[i])) {
                key.push_back(static_cast<char>(weights_[static_cast<unsigned char>(text[i])]));
                ++i;
                continue;
            }
            while (i + 1 < text.size() && text[i] == '0' && isDigit(text[i + 1])) {
                ++i;
            }
            const std::size_t begin = i;
            while (i < text.size() && isDigit(text[i])) {
                ++i;
            }
            // ICU compares numbers of more than 254 digits piece by piece.
            for (std::size_t from = begin; from < i; from += maxDigits) {
                const std::size_t count = std::min(maxDigits, i - from);
                key.push_back(static_cast<char>(weights_['0']));
                key.push_back(static_cast<char>(count));
                key.append(text.substr(from, count));
            }
        }
        return key;
    }

    std::string collationKey(std::string_view text) const {
        if (collator_ == nullptr) {
            return std::string(text);
        }
        const icu::UnicodeString wide = icu::UnicodeString::fromUTF8(piece(text));
        std::string key(std::max<std::size_t>(32, text.size() * 2), '\0');
        auto fill = [&] {
            return collator_->getSortKey(wide, reinterpret_cast<std::uint8_t*>(key.data()),
                                         static_cast<std::int32_t>(key.size()));
        };
        const std::int32_t needed = fill();
        const bool fits = static_cast<std::size_t>(needed) <= key.size();
        key.resize(static_cast<std::size_t>(needed));
        if (!fits) {
            fill();
        }
        return key;
    }

    static constexpr std::size_t maxDigits = 254;

    std::unique_ptr<icu::Collator> collator_;
    std::array<std::uint8_t, 0x80> weights_{};
    bool ready_ = false;
};

Collator::Collator(std::string_view locale) : rules_(std::make_shared<const Rules>(locale)) {}
Collator::Collator(const Collator&) = default;
Collator& Collator::operator=(const Collator&) = default;
Collator::Collator(Collator&&) noexcept = default;
Collator& Collator::operator=(Collator&&) noexcept = default;
Collator::~Collator() = default;

std::weak_ordering Collator::compare(std::string_view a, std::string_view b) const {
    return rules_->compare(a, b);
}

std::vector<std::size_t> Collator::sortedOrder(const std::vector<std::string>& names) const {
    const std::vector<std::string> keys = rules_->keys(names);
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
        const int difference = keys[a].compare(keys[b]);
        return difference < 0 || (difference == 0 && a < b);
    });
    return order;
}

} // namespace vellory::Text
