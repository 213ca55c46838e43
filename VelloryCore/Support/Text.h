// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Text as people see it: every rule about letters, characters and their order lives here and rests
/// on Unicode (ICU). Texts are UTF-8; a byte that is none counts as U+FFFD. ASCII, which most names
/// are, takes a shorter way to the same answer.
namespace vellory::Text {

/// `text` as searches compare it: case, diacritics and width folded without regard to any locale
/// (É, e and ｅ are one letter), then white space trimmed at both ends. A text of nothing but
/// diacritics becomes empty.
std::string normalized(std::string_view text);

/// `text` without the white space at its ends.
std::string_view trimmed(std::string_view text);

/// Lower and upper case without regard to any locale.
std::string lowercased(std::string_view text);
std::string uppercased(std::string_view text);

/// Whether two texts differ in letter case only, without regard to any locale. Accents count; how
/// they are spelled (é as one code point or as two) does not.
bool equalsIgnoringCase(std::string_view a, std::string_view b);

/// Whether `part` occurs in `text`, letter case aside by the rules of a locale such as "tr_TR"
/// (where I is the capital of ı, not of i). The empty text occurs in every text.
bool containsIgnoringCase(std::string_view text, std::string_view part,
                          std::string_view locale = {});

/// The first letter of every word in upper case and the others in lower case.
std::string capitalized(std::string_view text);

/// What a reader calls characters (extended grapheme clusters), in order, as views into `text`.
std::vector<std::string_view> graphemes(std::string_view text);

/// At most the first `count` characters of `text`.
std::string_view prefix(std::string_view text, std::size_t count);

/// How many characters a reader sees.
std::size_t length(std::string_view text);

// What a character is, by the first code point of the grapheme cluster.
bool isLetter(std::string_view character);
bool isNumber(std::string_view character);
bool isUppercase(std::string_view character);
bool isWhitespace(std::string_view character);

/// Whether every byte belongs to well-formed UTF-8.
bool isValidUtf8(std::string_view text);

/// `text` with what is not UTF-8 replaced by U+FFFD.
std::string repairedUtf8(std::string_view text);

/// Every occurrence of `what` in `text` replaced by `with`.
std::string replacingAll(std::string_view text, std::string_view what, std::string_view with);

/// The order in which a desktop lists names in a locale: letter case does not count, accents do,
/// and runs of digits compare as numbers, so that "App 2" stands before "app 10".
class Collator {
  public:
    /// The order of a locale such as "en_US" or "sv". An unknown locale gets the root order.
    explicit Collator(std::string_view locale);
    Collator(const Collator&);
    Collator& operator=(const Collator&);
    Collator(Collator&&) noexcept;
    Collator& operator=(Collator&&) noexcept;
    ~Collator();

    /// `equivalent` for names that differ in letter case only.
    std::weak_ordering compare(std::string_view a, std::string_view b) const;

    /// Where each of `names` belongs: indexes into `names` in ascending order. Stable. Costs one
    /// key for each name and then byte comparisons: what sorting long lists wants.
    std::vector<std::size_t> sortedOrder(const std::vector<std::string>& names) const;

  private:
    class Rules;
    std::shared_ptr<const Rules> rules_;
};

/// Sorts `items` stably by the name that `name(item)` gives.
template <class Item, class NameOf>
void sortByName(std::vector<Item>& items, const Collator& collator, NameOf name) {
    std::vector<std::string> names;
    names.reserve(items.size());
    for (const Item& item : items) {
        names.emplace_back(name(item));
    }
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (const std::size_t index : collator.sortedOrder(names)) {
        sorted.push_back(std::move(items[index]));
    }
    items = std::move(sorted);
}

} // namespace vellory::Text
