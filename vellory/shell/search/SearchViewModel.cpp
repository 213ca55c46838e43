// SPDX-License-Identifier: Apache-2.0
#include "shell/search/SearchViewModel.h"

#include <QClipboard>
#include <QGuiApplication>

#include "Search/MatchedLetters.h"
#include "shell/images/IconProvider.h"

namespace vellory {

SearchViewModel::SearchViewModel(AppModel& model, LauncherState& state, QObject* parent)
    : QObject(parent), model_(model), state_(state) {
    connect(&state_.search(), &SearchState::resultsChanged, this, &SearchViewModel::resultsChanged);
    connect(&state_.search(), &SearchState::highlightChanged, this,
            &SearchViewModel::highlightChanged);
    connect(&model_, &AppModel::runningChanged, this, &SearchViewModel::resultsChanged);
    connect(&model_, &AppModel::badgesChanged, this, &SearchViewModel::resultsChanged);
    connect(&state_, &LauncherState::copyRequested, this, [this](const std::string& text) {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
        model_.notices().post(Notice::confirmation(text + " copied"));
    });
}

void SearchViewModel::setMatchColor(const QColor& color) {
    if (color != matchColor_) {
        matchColor_ = color;
        Q_EMIT matchColorChanged();
        Q_EMIT resultsChanged();
    }
}

QString SearchViewModel::title(SearchResults::Kind section) const {
    switch (section) {
    case SearchResults::Kind::name:
        return results().sum ? tr("Apps") : QString();
    case SearchResults::Kind::purpose:
        return tr("By what they do");
    case SearchResults::Kind::emoji:
        return tr("Emoji · click to copy");
    case SearchResults::Kind::sum:
        break;
    }
    return {};
}

SearchCell::Content SearchViewModel::content(int cell) const {
    SearchCell::Content out;
    out.id = QString::fromStdString(results().cellID(cell));
    if (const BundleID* id = results().app(cell)) {
        const std::string name = model_.name(*id);
        const auto icon = model_.board().icons.find(*id);
        const auto badge = model_.badges().find(*id);
        out.title = QString::fromStdString(name);
        out.marked = results().kind(cell) == SearchResults::Kind::name ? marked(name) : QString();
        out.picture = IconProvider::appSource(
            *id, icon == model_.board().icons.end() ? std::string() : icon->second);
        out.isRunning = model_.running().contains(*id);
        out.badge =
            badge == model_.badges().end() ? QString() : QString::fromStdString(badge->second);
    } else if (results().kind(cell) == SearchResults::Kind::sum) {
        out.title = QString::fromStdString(*results().sum);
        out.picture = QString::fromStdString(state_.query());
    } else if (results().kind(cell) == SearchResults::Kind::emoji) {
        const EmojiSearch::Hit& hit = results().emoji[static_cast<std::size_t>(cell)];
        out.title = QString::fromStdString(hit.name);
        out.picture = QString::fromStdString(hit.emoji);
    }
    return out;
}

QString SearchViewModel::marked(const std::string& name) const {
    const auto escaped = [&](std::size_t begin, std::size_t end) {
        return QString::fromStdString(name.substr(begin, end - begin)).toHtmlEscaped();
    };
    QString out;
    std::size_t done = 0;
    for (const auto& [begin, length] : FuzzySearch::matchedLetters(state_.query(), name)) {
        out += escaped(done, begin) + "<font color=\"" + matchColor_.name() + "\">" +
               escaped(begin, begin + length) + "</font>";
        done = begin + length;
    }
    return done == 0 ? QString() : out + escaped(done, name.size());
}

void SearchViewModel::activate(const QString& cellId, bool newWindow) {
    if (const auto cell = results().cellWith(cellId.toStdString())) {
        state_.search().setHighlight(cell);
        state_.activateHighlighted(newWindow);
    }
}

} // namespace vellory
