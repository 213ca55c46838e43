// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "shell/search/SearchCell.h"

namespace vellory {

/// What the views see of the search, and what they ask of it. What a cell shows is made when a view
/// wants it, so that a keystroke costs no more than what is on the screen.
class SearchViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Search)
    QML_UNCREATABLE("There is one search, made by the program")
    Q_PROPERTY(bool empty READ isEmpty NOTIFY resultsChanged)
    Q_PROPERTY(bool asking READ isAsking NOTIFY resultsChanged)
    Q_PROPERTY(bool listsEmoji READ listsEmoji NOTIFY resultsChanged)
    Q_PROPERTY(int longestQuery READ longestQuery CONSTANT)
    Q_PROPERTY(QColor matchColor READ matchColor WRITE setMatchColor NOTIFY matchColorChanged)

  public:
    SearchViewModel(AppModel& model, LauncherState& state, QObject* parent = nullptr);

    const SearchResults& results() const { return state_.search().results(); }
    bool isEmpty() const { return results().count() == 0; }
    /// The text is a request in words and no search.
    bool isAsking() const { return results().mode == SearchResults::Mode::ask; }
    bool listsEmoji() const { return results().mode == SearchResults::Mode::emoji; }
    /// Longer texts find nothing.
    int longestQuery() const { return static_cast<int>(SearchResults::longestQuery); }
    /// In which matched letters are drawn.
    QColor matchColor() const { return matchColor_; }
    void setMatchColor(const QColor& color);

    /// -1 for none.
    int highlight() const { return state_.search().highlight().value_or(-1); }
    QString title(SearchResults::Kind section) const;
    SearchCell::Content content(int cell) const;

    /// Opens the app or copies what the cell shows.
    Q_INVOKABLE void activate(const QString& cellId, bool newWindow);

  Q_SIGNALS:
    /// Also when what the same cells show has changed.
    void resultsChanged();
    void highlightChanged();
    void matchColorChanged();

  private:
    QString marked(const std::string& name) const;

    AppModel& model_;
    LauncherState& state_;
    QColor matchColor_ = Qt::white;
};

} // namespace vellory
