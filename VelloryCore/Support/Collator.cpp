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

/// An ICU collator, and for locales that leave ASCII in the root order a table of its weights:
/// names of printable ASCII then compare by short keys that give exactly the collator's answer.
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
        weighAscii();
    }

    std::weak_ordering compare(std::string_view a, std::string_view b) const {
        std::string keyOfA;
        std::string keyOfB;
        if (appendAsciiKey(keyOfA, a) && appendAsciiKey(keyOfB, b)) {
            return keyOfA <=> keyOfB;
        }
        return compareByCollator(a, b);
    }

    /// Sorts texts that have an ASCII key apart from those that have not, each by keys that compare
    /// byte by byte, and merges the two lists by asking the collator.
    std::vector<std::size_t> sortedOrder(const std::vector<std::string>& names) const {
        std::string bytes; // all keys, one behind the other: no allocation for each
        bytes.reserve(names.size() * 24);
        std::vector<Key> ascii;
        std::vector<Key> others;
        ascii.reserve(names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::size_t begin = bytes.size();
            const bool isAscii = appendAsciiKey(bytes, names[i]);
            if (!isAscii) {
                appendCollationKey(bytes, names[i]);
            }
            (isAscii ? ascii : others)
                .push_back({.begin = begin,
                            .size = static_cast<std::uint32_t>(bytes.size() - begin),
                            .name = static_cast<std::uint32_t>(i)});
        }
        sortKeys(ascii, bytes);
        sortKeys(others, bytes);
        std::vector<std::size_t> order;
        order.reserve(names.size());
        auto next = ascii.cbegin();
        for (const Key& other : others) {
            const auto isBefore = [&](const Key& key) {
                const auto found = compareByCollator(names[key.name], names[other.name]);
                return found < 0 || (found == 0 && key.name < other.name);
            };
            // Mostly a few steps away: searched in a window that doubles until it holds the place.
            auto from = next;
            std::ptrdiff_t window = 1;
            while (ascii.cend() - from > window && isBefore(from[window])) {
                from += window;
                window *= 2;
            }
            const auto to = from + std::min(window, ascii.cend() - from);
            const auto end = std::partition_point(from, to, isBefore);
            for (; next != end; ++next) {
                order.push_back(next->name);
            }
            order.push_back(other.name);
        }
        for (; next != ascii.cend(); ++next) {
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

    /// Ranks the printable ASCII characters by asking the collator, unless the locale moves some of
    /// them, passes some over (Thai does so with blanks) or treats a sequence of them (such as the
    /// Czech "ch") as one letter.
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
        const auto isPassedOver = [&](char c) {
            UErrorCode ignored = U_ZERO_ERROR;
            return collator_->compareUTF8({&c, 1}, "", ignored) == UCOL_EQUAL;
        };
        if (std::ranges::any_of(characters, isPassedOver)) {
            return;
        }
        std::ranges::sort(characters, before);
        // Weight 0 is "not in the table"; steps of one leave room for 95 characters in a byte.
        std::uint8_t weight = 1;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            if (i > 0 && before(characters[i - 1], characters[i])) {
                ++weight;
            }
            weights_[static_cast<unsigned char>(characters[i])] = weight;
        }
    }

    /// Appends a key whose bytes compare as the collator compares the texts. A run of digits
    /// becomes the weight of "0", its length without leading zeros, and its digits. Appends nothing
    /// and returns false for a text with characters that the table does not know.
    bool appendAsciiKey(std::string& key, std::string_view text) const {
        const std::size_t begin = key.size();
        for (std::size_t i = 0; i < text.size();) {
            const std::uint8_t weight = weights_[static_cast<unsigned char>(text[i])];
            if (weight == 0) {
                key.resize(begin);
                return false;
            }
            if (isDigit(text[i])) {
                i = appendNumber(key, text, i);
            } else {
                key.push_back(static_cast<char>(weight));
                ++i;
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

    std::unique_ptr<icu::Collator> collator_;
    /// By character; 0 for those that have none, which are all when the table is not in use.
    std::array<std::uint8_t, 0x100> weights_{};
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
