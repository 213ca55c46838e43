// SPDX-License-Identifier: Apache-2.0
#include "Support/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <utility>

#include <unicode/coll.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>
#include <unicode/usetiter.h>

namespace vellory::Text {

namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

/// An ICU collator, and for locales that leave them in the root order a table of the weights of
/// printable ASCII and the basic Cyrillic letters: names of nothing else, plain ones, then compare
/// by short keys that give exactly the collator's answer.
class Collator::Rules {
  public:
    explicit Rules(std::string_view locale) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale wanted = icu::Locale::createCanonical(std::string(locale).c_str());
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
        weighPlainCharacters();
    }

    std::weak_ordering compare(std::string_view a, std::string_view b) const {
        std::string keyOfA;
        std::string keyOfB;
        if (appendPlainKey(keyOfA, a) && appendPlainKey(keyOfB, b)) {
            return keyOfA <=> keyOfB;
        }
        return compareByCollator(a, b);
    }

    /// Sorts texts that have a plain key apart from those that have not, each by keys that compare
    /// byte by byte, and merges the two lists by asking the collator.
    std::vector<std::size_t> sortedOrder(const std::vector<std::string>& names) const {
        std::string bytes; // all keys, one behind the other: no allocation for each
        bytes.reserve(names.size() * 24);
        std::vector<Key> plain;
        std::vector<Key> others;
        plain.reserve(names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::size_t begin = bytes.size();
            const bool isPlain = appendPlainKey(bytes, names[i]);
            if (!isPlain) {
                appendCollationKey(bytes, names[i]);
            }
            (isPlain ? plain : others)
                .push_back({.begin = begin,
                            .size = static_cast<std::uint32_t>(bytes.size() - begin),
                            .name = static_cast<std::uint32_t>(i)});
        }
        sortKeys(plain, bytes);
        sortKeys(others, bytes);
        std::vector<std::size_t> order;
        order.reserve(names.size());
        auto next = plain.cbegin();
        for (const Key& other : others) {
            const auto isBefore = [&](const Key& key) {
                const auto found = compareByCollator(names[key.name], names[other.name]);
                return found < 0 || (found == 0 && key.name < other.name);
            };
            // Mostly a few steps away: searched in a window that doubles until it holds the place.
            auto from = next;
            std::ptrdiff_t window = 1;
            while (plain.cend() - from > window && isBefore(from[window])) {
                from += window;
                window *= 2;
            }
            const auto to = from + std::min(window, plain.cend() - from);
            const auto end = std::partition_point(from, to, isBefore);
            for (; next != end; ++next) {
                order.push_back(next->name);
            }
            order.push_back(other.name);
        }
        for (; next != plain.cend(); ++next) {
            order.push_back(next->name);
        }
        return order;
    }

  private:
    /// Where the sort key of a name lies in a buffer of keys.
    struct Key {
        // The first bytes as numbers: most comparisons end there.
        std::uint64_t head = 0;
        std::uint64_t next = 0;
        std::size_t begin = 0;
        std::uint32_t size = 0;
        std::uint32_t name = 0; ///< index of the name
    };

    /// Up to eight bytes as a number that compares as they do.
    static std::uint64_t leading(std::string_view bytes) {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            number = number << 8U | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
        }
        return number;
    }

    static void sortKeys(std::vector<Key>& keys, std::string_view bytes) {
        const auto bytesOf = [&](const Key& key) { return bytes.substr(key.begin, key.size); };
        for (Key& key : keys) {
            const std::string_view all = bytesOf(key);
            key.head = leading(all);
            key.next = leading(all.substr(std::min<std::size_t>(8, all.size())));
        }
        std::ranges::sort(keys, [&](const Key& a, const Key& b) {
            if (a.head != b.head) {
                return a.head < b.head;
            }
            if (a.next != b.next) {
                return a.next < b.next;
            }
            const auto order = bytesOf(a) <=> bytesOf(b);
            return order < 0 || (order == 0 && a.name < b.name);
        });
    }

    static icu::StringPiece piece(std::string_view text) {
        return {text.data(), static_cast<std::int32_t>(text.size())};
    }

    std::weak_ordering compareByCollator(std::string_view a, std::string_view b) const {
        if (collator_ == nullptr) {
            return a <=> b;
        }
        UErrorCode status = U_ZERO_ERROR;
        return collator_->compareUTF8(piece(a), piece(b), status) <=> UCOL_EQUAL;
    }

    /// Whether the locale leaves the characters of a block where they stand in the root order, and
    /// treats no sequence of them (such as the Czech "ch") as one letter.
    static bool isInRootOrder(const icu::UnicodeSet& block, const icu::UnicodeSet& tailored) {
        icu::UnicodeSet moved(tailored);
        moved.retainAll(block);
        for (icu::UnicodeSetIterator element(tailored); element.next();) {
            if (element.isString() && block.containsAll(element.getString())) {
                return false;
            }
        }
        return moved.isEmpty();
    }

    /// Ranks the plain characters by asking the collator. None where the locale moves some of ASCII
    /// or passes some over (Thai does so with blanks), and no Cyrillic where it moves some of that.
    void weighPlainCharacters() {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::UnicodeSet> tailored(collator_->getTailoredSet(status));
        icu::UnicodeSet plain(0x00, 0x7F);
        if (U_FAILURE(status) || tailored == nullptr || !isInRootOrder(plain, *tailored)) {
            return;
        }
        std::vector<char16_t> characters(u'\x7F' - u' ');
        std::iota(characters.begin(), characters.end(), u' ');
        if (isInRootOrder(plain.add(firstCyrillic, lastCyrillic), *tailored)) {
            for (char16_t c = firstCyrillic; c <= lastCyrillic; ++c) {
                characters.push_back(c);
            }
        }
        const auto before = [&](char16_t a, char16_t b) {
            UErrorCode ignored = U_ZERO_ERROR;
            return collator_->compare(&a, 1, &b, 1, ignored) == UCOL_LESS;
        };
        const auto isPassedOver = [&](char16_t c) {
            UErrorCode ignored = U_ZERO_ERROR;
            return collator_->compare(&c, 1, u"", 0, ignored) == UCOL_EQUAL;
        };
        if (std::ranges::any_of(characters, isPassedOver)) {
            return;
        }
        std::ranges::sort(characters, before);
        // Weight 0 is "not in the table". With case aside there are about a hundred weights.
        std::uint8_t weight = 1;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            if (i > 0 && before(characters[i - 1], characters[i])) {
                ++weight;
            }
            weights_[characters[i]] = weight;
        }
    }

    /// The weight of the character at `text[at]`, which `size` bytes spell; 0 when it has none.
    std::uint8_t weightAt(std::string_view text, std::size_t at, std::size_t& size) const {
        const auto first = static_cast<unsigned char>(text[at]);
        size = 1;
        if (first < 0x80) {
            return weights_[first];
        }
        // Two bytes spell every character from U+0400 to U+047F.
        if ((first & 0xFEU) != 0xD0 || at + 1 == text.size()) {
            return 0;
        }
        const auto second = static_cast<unsigned char>(text[at + 1]);
        size = 2;
        return (second & 0xC0U) == 0x80 ? weights_[(first & 0x1FU) << 6U | (second & 0x3FU)] : 0;
    }

    /// Appends a key whose bytes compare as the collator compares the texts. A run of digits
    /// becomes the weight of "0", its length without leading zeros, and its digits. Appends nothing
    /// and returns false for a text with characters that the table does not know.
    bool appendPlainKey(std::string& key, std::string_view text) const {
        const std::size_t begin = key.size();
        for (std::size_t i = 0; i < text.size();) {
            std::size_t size = 0;
            const std::uint8_t weight = weightAt(text, i, size);
            if (weight == 0) {
                key.resize(begin);
                return false;
            }
            if (isDigit(text[i])) {
                i = appendNumber(key, text, i);
            } else {
                key.push_back(static_cast<char>(weight));
                i += size;
            }
        }
        return true;
    }

    /// Appends the key of the digits from `first` on; returns where they end. Numbers of more than
    /// 254 digits are compared piece by piece, each without its leading zeros, as ICU does.
    std::size_t appendNumber(std::string& key, std::string_view text, std::size_t first) const {
        std::size_t end = first;
        while (end < text.size() && isDigit(text[end])) {
            ++end;
        }
        while (first < end) {
            while (first + 1 < end && text[first] == '0') {
                ++first;
            }
            const std::size_t count = std::min(maxDigits, end - first);
            key.push_back(static_cast<char>(weights_['0']));
            key.push_back(static_cast<char>(count));
            key.append(text.substr(first, count));
            first += count;
        }
        return end;
    }

    void appendCollationKey(std::string& key, std::string_view text) const {
        if (collator_ == nullptr) {
            key.append(text);
            return;
        }
        const icu::UnicodeString wide = icu::UnicodeString::fromUTF8(piece(text));
        std::array<std::uint8_t, 256> small{};
        const std::int32_t size =
            collator_->getSortKey(wide, small.data(), static_cast<std::int32_t>(small.size()));
        if (std::cmp_less_equal(size, small.size())) {
            key.append(reinterpret_cast<const char*>(small.data()), static_cast<std::size_t>(size));
            return;
        }
        const std::size_t begin = key.size();
        key.resize(begin + static_cast<std::size_t>(size));
        collator_->getSortKey(wide, reinterpret_cast<std::uint8_t*>(key.data() + begin), size);
    }

    static constexpr std::size_t maxDigits = 254;
    // А to я: every letter of them has a weight of its own, unlike ё, an е with an accent.
    static constexpr char16_t firstCyrillic = 0x410;
    static constexpr char16_t lastCyrillic = 0x44F;

    std::unique_ptr<icu::Collator> collator_;
    /// By character; 0 for those that have none, which are all when the table is not in use.
    std::array<std::uint8_t, 0x480> weights_{};
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
    return rules_->sortedOrder(names);
}

} // namespace vellory::Text
