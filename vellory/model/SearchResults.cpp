// SPDX-License-Identifier: Apache-2.0
#include "model/SearchResults.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "Ask/AskQuery.h"
#include "Search/Calculator.h"
#include "Support/Text.h"
#include "model/AppModel.h"

namespace vellory {

namespace {

constexpr std::string_view appPrefix = "app:";
constexpr std::string_view emojiPrefix = "emoji:";
constexpr std::string_view sumID = "sum";

bool isAllLetters(std::string_view text) {
    return std::ranges::all_of(
        text, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

SearchResults appResults(const AppModel& model, const std::string& query) {
    SearchResults out;
    const std::set<BundleID>& hidden = model.board().hidden;
    out.byName = model.search(query);
    std::erase_if(out.byName, [&](const BundleID& id) { return hidden.contains(id); });
    out.byPurpose = model.purposeSearch(query, hidden);
    if (!out.byPurpose.empty()) {
        const std::unordered_set<std::string_view> listed(out.byName.begin(), out.byName.end());
        std::erase_if(out.byPurpose, [&](const BundleID& id) { return listed.contains(id); });
    }
    if (const auto value = Calculator::evaluate(query)) {
        out.sum = Calculator::format(*value, model.locale());
        // "pi" is a number, but more likely the beginning of a name.
        out.firstChoice = !out.byName.empty() && isAllLetters(Text::trimmed(query)) ? 1 : 0;
    }
    return out;
}

} // namespace

SearchResults SearchResults::find(const AppModel& model, const std::string& query) {
    const std::string_view text = Text::trimmed(query);
    if (query.size() > longestQuery) {
        return {};
    }
    if (AskQuery::parse(text)) {
        return {.mode = Mode::ask};
    }
    if (text.starts_with(':')) {
        return {.mode = Mode::emoji, .emoji = EmojiSearch::search(text, emojiLimit)};
    }
    return appResults(model, query);
}

std::vector<SearchResults::Section> SearchResults::sections() const {
    std::vector<Section> out;
    int first = 0;
    const auto add = [&](Kind kind, std::size_t count) {
        if (count > 0) {
            out.push_back({kind, first, static_cast<int>(count)});
            first += static_cast<int>(count);
        }
    };
    add(Kind::sum, sum ? 1 : 0);
    add(Kind::name, byName.size());
    add(Kind::purpose, byPurpose.size());
    add(Kind::emoji, emoji.size());
    return out;
}

int SearchResults::count() const {
    return static_cast<int>((sum ? 1 : 0) + byName.size() + byPurpose.size() + emoji.size());
}

std::optional<SearchResults::Kind> SearchResults::kind(int cell) const {
    for (const Section& section : sections()) {
        if (cell >= section.first && cell < section.first + section.count) {
            return section.kind;
        }
    }
    return std::nullopt;
}

const BundleID* SearchResults::app(int cell) const {
    const int index = cell - (sum ? 1 : 0);
    const auto names = static_cast<int>(byName.size());
    if (index >= 0 && index < names) {
        return &byName[static_cast<std::size_t>(index)];
    }
    if (index >= names && index - names < static_cast<int>(byPurpose.size())) {
        return &byPurpose[static_cast<std::size_t>(index - names)];
    }
    return nullptr;
}

std::optional<std::string> SearchResults::text(int cell) const {
    const auto what = kind(cell);
    if (what == Kind::sum) {
        return sum;
    }
    if (what == Kind::emoji) {
        return emoji[static_cast<std::size_t>(cell)].emoji;
    }
    return std::nullopt;
}

std::string SearchResults::cellID(int cell) const {
    if (const BundleID* id = app(cell)) {
        return std::string(appPrefix) + *id;
    }
    const auto what = kind(cell);
    if (what == Kind::sum) {
        return std::string(sumID);
    }
    return what ? std::string(emojiPrefix) + text(cell).value_or("") : std::string();
}

std::optional<int> SearchResults::cellWith(std::string_view id) const {
    for (int cell = 0; cell < count(); ++cell) {
        if (cellID(cell) == id) {
            return cell;
        }
    }
    return std::nullopt;
}

std::vector<BundleID> SearchResults::apps() const {
    std::vector<BundleID> all = byName;
    all.insert(all.end(), byPurpose.begin(), byPurpose.end());
    return all;
}

int SearchResults::moved(int cell, GridNavigation::Move move, int columns, int rows) const {
    using GridNavigation::Move;
    const int last = count() - 1;
    switch (move) {
    case Move::back:
        return std::max(cell - 1, 0);
    case Move::on:
        return std::min(cell + 1, last);
    case Move::first:
        return 0;
    case Move::last:
        return last;
    case Move::up:
    case Move::down:
    case Move::pageBack:
    case Move::pageOn:
        break;
    }
    struct Row {
        int first = 0;
        int count = 0;
    };
    std::vector<Row> all;
    int current = 0;
    for (const Section& section : sections()) {
        for (int first = 0; first < section.count; first += columns) {
            all.push_back({section.first + first, std::min(columns, section.count - first)});
            if (cell >= all.back().first) {
                current = static_cast<int>(all.size()) - 1;
            }
        }
    }
    if (all.empty()) {
        return cell;
    }
    const bool isPage = move == Move::pageBack || move == Move::pageOn;
    const int step = (move == Move::up || move == Move::pageBack ? -1 : 1) * (isPage ? rows : 1);
    const int target = std::clamp(current + step, 0, static_cast<int>(all.size()) - 1);
    if (target == current) {
        return isPage ? (step < 0 ? 0 : last) : cell;
    }
    const int column = cell - all[static_cast<std::size_t>(current)].first;
    const Row& row = all[static_cast<std::size_t>(target)];
    return row.first + std::min(column, row.count - 1);
}

} // namespace vellory
