// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/SuggestionsState.h"
#include "shell/grid/TileList.h"

namespace vellory {

class LauncherViewModel;

/// What the views see of the suggestions: the smart row, the habit that is offered, and an app's
/// recent documents.
class SuggestionsViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Suggestions)
    QML_UNCREATABLE("The suggestions come from the program")

    Q_PROPERTY(vellory::TileList* row READ row CONSTANT)
    Q_PROPERTY(QString heading READ heading NOTIFY rowChanged)
    Q_PROPERTY(int highlight READ highlight NOTIFY highlightChanged)

    Q_PROPERTY(bool hasOffer READ hasOffer NOTIFY offeredChanged)
    Q_PROPERTY(QStringList offerIcons READ offerIcons NOTIFY offeredChanged)
    Q_PROPERTY(QString offerNames READ offerNames NOTIFY offeredChanged)
    Q_PROPERTY(QString offerTime READ offerTime NOTIFY offeredChanged)
    Q_PROPERTY(QString offerSchedule READ offerSchedule NOTIFY offeredChanged)
    Q_PROPERTY(bool opensAtTime READ opensAtTime WRITE setOpensAtTime NOTIFY opensAtTimeChanged)

    Q_PROPERTY(QString documentsTile READ documentsTile NOTIFY documentsChanged)
    Q_PROPERTY(QString documentsApp READ documentsApp NOTIFY documentsChanged)
    Q_PROPERTY(QVariantList documents READ documents NOTIFY documentsChanged)

  public:
    SuggestionsViewModel(AppModel& model, LauncherState& launcher, SuggestionsState& state,
                         const LauncherViewModel& tiles, QObject* parent = nullptr);

    TileList* row() { return &row_; }
    QString heading() const;
    /// -1 for none.
    int highlight() const { return state_.highlight().value_or(-1); }

    bool hasOffer() const { return state_.offered().has_value(); }
    /// Image sources, one for each app.
    QStringList offerIcons() const;
    /// The apps by name, for who does not see their icons.
    QString offerNames() const;
    /// The usual time, such as "09:00".
    QString offerTime() const;
    /// When it would open: "Weekdays at 09:00".
    QString offerSchedule() const;
    bool opensAtTime() const { return state_.opensAtTime(); }
    void setOpensAtTime(bool on) { state_.setOpensAtTime(on); }

    /// The tile of the highlighted search hit and its documents; empty while nothing is searched.
    QString documentsTile() const;
    /// What that app is called.
    QString documentsApp() const;
    QVariantList documents() const { return recentDocuments(documentsTile()); }

    Q_INVOKABLE void activate(const QString& tileId, bool newWindow);
    Q_INVOKABLE void accept() { state_.accept(); }
    Q_INVOKABLE void dismiss() { state_.dismiss(); }
    /// Every key that the launcher gets goes through here.
    Q_INVOKABLE bool handleKey(int key, int modifiers, const QString& text);

    /// The documents that the app of a tile opened last, the latest first: each with `name`,
    /// `folder` (as people write it) and `path`.
    Q_INVOKABLE QVariantList recentDocuments(const QString& tileId) const;
    /// Opens a document with the app of a tile; the launcher goes away.
    Q_INVOKABLE void openDocument(const QString& tileId, const QString& path);
    /// Takes the app of a tile out of the row for good.
    Q_INVOKABLE void exclude(const QString& tileId);

  Q_SIGNALS:
    void rowChanged();
    void highlightChanged();
    void offeredChanged();
    void opensAtTimeChanged();
    void documentsChanged();

  private:
    void updateRow();

    AppModel& model_;
    LauncherState& launcher_;
    SuggestionsState& state_;
    const LauncherViewModel& tiles_;
    TileList row_;
};

} // namespace vellory
