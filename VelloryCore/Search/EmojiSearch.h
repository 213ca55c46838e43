// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Emoji by name, for a search text that begins with ":".
namespace vellory::EmojiSearch {

struct Hit {
    std::string emoji; ///< one code point
    std::string name;  ///< its Unicode name in lower case, such as "sparkling heart"

    friend bool operator==(const Hit&, const Hit&) = default;
};

/// Every emoji of one code point that is shown in colour by itself: pictographs first, then the
/// older symbols. Built on the first call and kept.
const std::vector<Hit>& all();

/// The emoji every word of `query` begins a word of the name of, at most `limit`. A name that has a
/// whole word of the query comes first, then the shorter name, then the order of `all`. A bare ":"
/// lists the first ones.
std::vector<Hit> search(std::string_view query, std::size_t limit);

} // namespace vellory::EmojiSearch
