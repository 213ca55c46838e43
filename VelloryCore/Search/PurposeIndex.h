// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Search/AppKeywords.h"

namespace vellory {

/// The keywords of all apps, made ready for purpose search on every keystroke: for each stem, the
/// apps that have it. Agrees with `AppKeywords::score` on every app.
class PurposeIndex {
  public:
    struct Match {
        std::size_t index = 0; ///< the how-manieth app that was added, from 0
        int score = 0;

        friend bool operator==(const Match&, const Match&) = default;
    };

    /// Apps with equal scores are found in the order of adding: add them in the order of their
    /// display names.
    void add(const AppKeywords::Keywords& keywords);

    std::size_t size() const { return size_; }

    /// The apps that `query` describes, best first. A query of fewer than three characters finds
    /// nothing: it would be answered by names long before.
    std::vector<Match> search(std::string_view query) const;

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>{}(text);
        }
    };

    std::unordered_map<std::string, std::vector<std::uint32_t>, Hash, std::equal_to<>> apps_;
    std::size_t size_ = 0;
};

} // namespace vellory
