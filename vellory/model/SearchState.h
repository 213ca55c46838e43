// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include <QObject>

#include "model/GridNavigation.h"
#include "model/SearchResults.h"

namespace vellory {

class AppModel;

/// The search of one launcher window: what the typed text finds, and which cell of it the keyboard
/// is on. It is right as soon as a call returns, whatever the views show by then: Return acts on
/// the text as typed. Main thread only.
class SearchState : public QObject {
    Q_OBJECT

  public:
    explicit SearchState(const AppModel& model, QObject* parent = nullptr);

    /// The first match is highlighted.
    void setQuery(const std::string& query);
    const std::string& query() const { return query_; }
    /// Asks anew after the apps, their names or the hidden ones changed.
    void refresh();

    /// Empty without a query.
    const SearchResults& results() const { return results_; }

    /// A cell of `results`; nothing when there is none.
    std::optional<int> highlight() const { return highlight_; }
    void setHighlight(std::optional<int> cell);
    /// The cell of an app by its place among all apps found.
    void highlightApp(std::optional<int> place);
    void moveHighlight(GridNavigation::Move move, int columns, int rows);

    /// The place of the highlighted app among all apps found; nothing for other cells.
    std::optional<int> highlightedApp() const;
    /// What activating the highlighted cell copies; nothing for an app.
    std::optional<std::string> highlightedText() const;

  Q_SIGNALS:
    void resultsChanged();
    void highlightChanged();

  private:
    const AppModel& model_;
    std::string query_;
    SearchResults results_;
    std::optional<int> highlight_;
};

} // namespace vellory
