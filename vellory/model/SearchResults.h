// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Search/EmojiSearch.h"
#include "model/GridNavigation.h"

namespace vellory {

class AppModel;

/// What a text in the search field finds, in the order in which it is shown: cells, counted from 0
/// over all sections.
struct SearchResults {
    enum class Mode {
        apps,  ///< a sum, apps by name, apps by what they do
        emoji, ///< the text began with ":"
        ask    ///< the text began with "?": a request in words, no search
    };
    enum class Kind { sum, name, purpose, emoji };

    /// Cells of one kind, side by side; a sum has a row to itself.
    struct Section {
        Kind kind = Kind::name;
        int first = 0;
        int count = 0;

        friend bool operator==(const Section&, const Section&) = default;
    };

    /// Longer texts find nothing: they were not typed, and were perhaps cut on the way.
    static constexpr std::size_t longestQuery = 1'000; // bytes
    static constexpr std::size_t emojiLimit = 120;

    Mode mode = Mode::apps;
    std::optional<std::string> sum = {}; ///< the value as people write it
    std::vector<BundleID> byName = {};
    std::vector<BundleID> byPurpose = {};
    std::vector<EmojiSearch::Hit> emoji = {};
    /// The cell that Return activates before any key moved the highlight.
    int firstChoice = 0;

    /// What `query` finds among the apps of `model` that are not hidden.
    static SearchResults find(const AppModel& model, const std::string& query);

    /// The sections that hold something, in order.
    std::vector<Section> sections() const;
    int count() const;
    /// Nothing for an index that is none.
    std::optional<Kind> kind(int cell) const;
    /// The app of a cell; null for other cells.
    const BundleID* app(int cell) const;
    /// What activating a cell copies; nothing for an app.
    std::optional<std::string> text(int cell) const;
    /// What a view knows a cell by from one list to the next: "app:…" as on the grid, "sum",
    /// "emoji:…".
    std::string cellID(int cell) const;
    std::optional<int> cellWith(std::string_view cellID) const;
    /// All apps, those found by name first.
    std::vector<BundleID> apps() const;

    /// Where the highlight goes on rows of `columns` cells, `rows` of which are seen at once. Up
    /// and down lead from one section into the next, in the same column where that is there.
    int moved(int cell, GridNavigation::Move move, int columns, int rows) const;

    friend bool operator==(const SearchResults&, const SearchResults&) = default;
};

} // namespace vellory
