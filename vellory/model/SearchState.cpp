// SPDX-License-Identifier: Apache-2.0
#include "model/SearchState.h"

#include <utility>

#include "model/AppModel.h"

namespace vellory {

SearchState::SearchState(const AppModel& model, QObject* parent) : QObject(parent), model_(model) {}

void SearchState::setQuery(const std::string& query) {
    query_ = query;
    results_ = query_.empty() ? SearchResults{} : SearchResults::find(model_, query_);
    Q_EMIT resultsChanged();
    setHighlight(results_.firstChoice);
}

void SearchState::refresh() {
    if (query_.empty()) {
        return;
    }
    SearchResults now = SearchResults::find(model_, query_);
    if (now == results_) {
        // The same apps may have other names or pictures.
        Q_EMIT resultsChanged();
        return;
    }
    // What the user was about to open stays the one, wherever it is now.
    const std::string before = highlight_ ? results_.cellID(*highlight_) : std::string();
    results_ = std::move(now);
    Q_EMIT resultsChanged();
    setHighlight(results_.cellWith(before).value_or(results_.firstChoice));
}

void SearchState::setHighlight(std::optional<int> cell) {
    if (cell && (*cell < 0 || *cell >= results_.count())) {
        cell.reset();
    }
    if (cell != highlight_) {
        highlight_ = cell;
        Q_EMIT highlightChanged();
    }
}

void SearchState::moveHighlight(GridNavigation::Move move, int columns, int rows) {
    if (results_.count() > 0) {
        setHighlight(highlight_ ? results_.moved(*highlight_, move, columns, rows)
                                : results_.firstChoice);
    }
}

std::optional<int> SearchState::highlightedApp() const {
    if (!highlight_ || results_.app(*highlight_) == nullptr) {
        return std::nullopt;
    }
    return *highlight_ - (results_.sum ? 1 : 0);
}

void SearchState::highlightApp(std::optional<int> place) {
    setHighlight(place ? std::optional(*place + (results_.sum ? 1 : 0)) : std::nullopt);
}

std::optional<std::string> SearchState::highlightedText() const {
    return highlight_ ? results_.text(*highlight_) : std::nullopt;
}

} // namespace vellory
