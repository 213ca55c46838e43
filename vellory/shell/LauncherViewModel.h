// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QObject>
#include <QPointF>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "shell/MenuViewModel.h"
#include "shell/grid/GridRestriction.h"
#include "shell/grid/TileDragViewModel.h"
#include "shell/grid/TileList.h"
#include "shell/images/IconProvider.h"
#include "shell/notices/NoticeList.h"
#include "shell/search/SearchViewModel.h"
#include "shell/settings/LayoutHistory.h"

namespace vellory {

/// What the launcher's views see of the model, in the types of QML; and the few things they ask of
/// it. It decides nothing: every rule is in `AppModel` and `LauncherState`.
class LauncherViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Launcher)
    QML_UNCREATABLE("There is one launcher, made by the program")

    Q_PROPERTY(vellory::TileList* tiles READ tiles CONSTANT)
    Q_PROPERTY(vellory::TileList* folderTiles READ folderTiles CONSTANT)
    Q_PROPERTY(vellory::SearchViewModel* search READ search CONSTANT)
    Q_PROPERTY(vellory::GridRestriction* restriction READ restriction CONSTANT)
    Q_PROPERTY(vellory::NoticeList* notices READ notices CONSTANT)

    Q_PROPERTY(vellory::TileDragViewModel* drag READ drag CONSTANT)
    Q_PROPERTY(vellory::MenuViewModel* menu READ menu CONSTANT)
    Q_PROPERTY(vellory::LayoutHistory* history READ history CONSTANT)
    Q_PROPERTY(Panel panel READ panel NOTIFY panelChanged)
    Q_PROPERTY(QString renaming READ renaming NOTIFY renamingChanged)
    Q_PROPERTY(QStringList hiddenApps READ hiddenApps NOTIFY hiddenAppsChanged)

    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    Q_PROPERTY(bool searching READ isSearching NOTIFY queryChanged)
    Q_PROPERTY(bool list READ isList NOTIFY displayModeChanged)
    Q_PROPERTY(qreal position READ position NOTIFY positionChanged)
    Q_PROPERTY(int listRows READ listRows NOTIFY listRowsChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)
    Q_PROPERTY(int columns READ columns NOTIFY gridChanged)
    Q_PROPERTY(int rows READ rows NOTIFY gridChanged)
    Q_PROPERTY(int highlight READ highlight NOTIFY highlightChanged)
    Q_PROPERTY(QString openFolder READ openFolder NOTIFY openFolderChanged)
    Q_PROPERTY(QString folderTitle READ folderTitle NOTIFY folderTitleChanged)
    Q_PROPERTY(int folderColumns READ folderColumns CONSTANT)
    Q_PROPERTY(int folderRows READ folderRows CONSTANT)
    Q_PROPERTY(int folderPage READ folderPage NOTIFY folderPageChanged)
    Q_PROPERTY(int folderPageCount READ folderPageCount NOTIFY folderTitleChanged)
    Q_PROPERTY(bool hintsMode READ hintsMode NOTIFY hintsChanged)
    Q_PROPERTY(QString hintBuffer READ hintBuffer NOTIFY hintsChanged)
    Q_PROPERTY(bool presented READ presented NOTIFY presentedChanged)
    Q_PROPERTY(bool mirrored READ mirrored NOTIFY mirroredChanged)
    Q_PROPERTY(QPointF rippleOrigin READ rippleOrigin NOTIFY rippleOriginChanged)
    Q_PROPERTY(int iconSize READ iconSize NOTIFY prefsChanged)
    Q_PROPERTY(bool showLabels READ showLabels NOTIFY prefsChanged)
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY prefsChanged)
    Q_PROPERTY(bool dark READ dark WRITE setDark NOTIFY darkChanged)
    Q_PROPERTY(bool welcoming READ isWelcoming NOTIFY welcomingChanged)
    Q_PROPERTY(QString backdrop READ backdrop NOTIFY backdropChanged)

  public:
    enum class Panel {
        None = static_cast<int>(LauncherState::Panel::none),
        History = static_cast<int>(LauncherState::Panel::history),
        HiddenApps = static_cast<int>(LauncherState::Panel::hiddenApps),
        Emoji = static_cast<int>(LauncherState::Panel::emoji),
        Workspaces = static_cast<int>(LauncherState::Panel::workspaces),
        WorkspaceFromOpen = static_cast<int>(LauncherState::Panel::workspaceFromOpen),
        FocusSession = static_cast<int>(LauncherState::Panel::focusSession),
        Settings = static_cast<int>(LauncherState::Panel::settings)
    };
    Q_ENUM(Panel)

    LauncherViewModel(AppModel& model, LauncherState& state,
                      std::shared_ptr<IconSources> iconSources, QObject* parent = nullptr);

    TileList* tiles() { return &tiles_; }
    TileList* folderTiles() { return &folderTiles_; }
    SearchViewModel* search() { return &search_; }
    GridRestriction* restriction() { return &restriction_; }
    NoticeList* notices() { return &notices_; }
    TileDragViewModel* drag() { return &drag_; }
    MenuViewModel* menu() { return &menu_; }
    LayoutHistory* history() { return &history_; }
    Panel panel() const { return static_cast<Panel>(state_.panel()); }
    /// The tile whose name is being edited, empty for none.
    QString renaming() const { return QString::fromStdString(state_.renaming().value_or("")); }
    /// The installed apps that the grid does not show, by name.
    QStringList hiddenApps() const;
    /// Tiles as the views show them.
    std::vector<TileItem> items(const std::vector<Tile>& tiles) const;

    QString query() const { return QString::fromStdString(state_.query()); }
    void setQuery(const QString& query) { state_.setQuery(query.toStdString()); }
    bool isSearching() const { return state_.searching(); }
    /// The grid is one list that scrolls, not pages.
    bool isList() const { return state_.view().isList(); }
    /// What is in view, see `GridView::position`.
    qreal position() const { return state_.view().position(); }
    int listRows() const { return state_.view().list().count; }
    int pageCount() const { return state_.pageCount(); }
    int columns() const { return state_.columns(); }
    int rows() const { return state_.rows(); }
    /// -1 for none.
    int highlight() const { return state_.highlight().value_or(-1); }
    /// The identity of the open folder's tile, empty for none.
    QString openFolder() const;
    QString folderTitle() const;
    int folderColumns() const { return LauncherState::folderColumns; }
    int folderRows() const { return LauncherState::folderRows; }
    int folderPage() const { return state_.folderPage(); }
    int folderPageCount() const { return state_.folderPageCount(); }
    bool hintsMode() const { return state_.hints().isOn(); }
    QString hintBuffer() const { return QString::fromStdString(state_.hints().typed()); }
    bool presented() const { return state_.presented(); }
    bool mirrored() const { return state_.rightToLeft(); }
    QPointF rippleOrigin() const { return state_.rippleOrigin(); }
    int iconSize() const;
    bool showLabels() const { return model_.prefs().showLabels(); }
    bool reduceMotion() const { return model_.prefs().reduceMotion(); }
    bool dark() const { return dark_; }
    void setDark(bool dark);
    /// The user has not chosen yet how the grid should start.
    bool isWelcoming() const { return welcoming_; }
    QString backdrop() const { return backdrop_; }
    void setBackdrop(const QString& source);

    // What the views ask.

    Q_INVOKABLE void activate(const QString& tileId, bool newWindow);
    Q_INVOKABLE void toggleSelected(const QString& tileId);
    /// Selects these tiles' apps, besides what was selected when the band began if Shift or Ctrl is
    /// held.
    Q_INVOKABLE void beginBand(int modifiers);
    Q_INVOKABLE void selectInBand(const QStringList& tileIds);
    /// Shows what can be done with a tile; with the background when there is no such tile.
    Q_INVOKABLE void showMenu(const QString& tileId);
    Q_INVOKABLE void beginRenaming(const QString& tileId);
    Q_INVOKABLE void endRenaming(const QString& name) { state_.endRenaming(name.toStdString()); }
    Q_INVOKABLE void cancelRenaming() { state_.endRenaming(std::nullopt); }
    Q_INVOKABLE void toggleSettings() { state_.togglePanel(LauncherState::Panel::settings); }
    Q_INVOKABLE void closePanel() { state_.setPanel(LauncherState::Panel::none); }
    Q_INVOKABLE void unhide(const QString& app) { model_.unhide(app.toStdString()); }
    Q_INVOKABLE QString appName(const QString& app) const;
    Q_INVOKABLE QString appIcon(const QString& app) const;
    /// The badge of the folder that the emoji panel is about.
    Q_INVOKABLE void setEmoji(const QString& emoji);
    /// Emoji whose names fit, each with `emoji` and `name`.
    Q_INVOKABLE QVariantList findEmoji(const QString& query) const;
    Q_INVOKABLE void closeFolder();
    Q_INVOKABLE void clearQuery();
    Q_INVOKABLE void back() { state_.back(); }
    Q_INVOKABLE void hide() { state_.requestHide(); }
    Q_INVOKABLE void goToPage(int page) { state_.goToPage(page); }
    Q_INVOKABLE void goToFolderPage(int page) { state_.step(page - state_.folderPage()); }
    /// What a drag of the mouse over the grid's background means, as `PageDrag` says: of the pages,
    /// or of a band that selects. With Shift or Ctrl it always selects.
    Q_INVOKABLE bool dragsPages(const QPointF& delta, int modifiers) const;
    Q_INVOKABLE qreal draggedPosition(const QPointF& travelled) const {
        return state_.view().draggedPosition(travelled);
    }
    /// Ends the drag: `position` is where it comes to; returns the speed with which it sets out.
    Q_INVOKABLE qreal letGo(const QPointF& travelled, const QPointF& velocity) {
        return state_.letGo(travelled, velocity);
    }
    /// How many steps on or back a tile asks for that is carried to this point of the grid.
    Q_INVOKABLE int turnAt(const QPointF& point) const { return state_.view().turnAt(point); }
    Q_INVOKABLE void step(int pages) { state_.step(pages); }
    Q_INVOKABLE void fitGrid(qreal width, qreal height);
    /// What a new user may start with; each ends the welcome.
    Q_INVOKABLE void startWithFolders();
    Q_INVOKABLE void startAlphabetically();
    Q_INVOKABLE void endWelcome();
    Q_INVOKABLE QString hint(int index) const;
    /// The numbers of a wheel event, and its phase. False when they mean nothing to the pages.
    Q_INVOKABLE bool wheel(const QPointF& pixels, const QPointF& angle, int phase);

  Q_SIGNALS:
    void panelChanged();
    void renamingChanged();
    void hiddenAppsChanged();
    /// The user asked for a menu by the keyboard: of this item, or of the background for -1.
    void menuRequested(int index);
    void queryChanged();
    void positionChanged(bool animated);
    void displayModeChanged();
    void listRowsChanged();
    void pageCountChanged();
    void gridChanged();
    void highlightChanged();
    void openFolderChanged();
    void folderTitleChanged();
    void folderPageChanged();
    void hintsChanged();
    void presentedChanged();
    void mirroredChanged();
    void rippleOriginChanged();
    void prefsChanged();
    void darkChanged();
    void backdropChanged();
    void welcomingChanged();

  private:
    void updateIconSources();
    void scheduleUpdate();
    void updateLists();

    AppModel& model_;
    LauncherState& state_;
    std::shared_ptr<IconSources> iconSources_;
    TileList tiles_;
    TileList folderTiles_;
    SearchViewModel search_;
    GridRestriction restriction_;
    NoticeList notices_;
    TileDragViewModel drag_;
    MenuViewModel menu_;
    LayoutHistory history_;
    bool updateScheduled_ = false;
    bool dark_ = true;
    bool welcoming_ = false;
    QString backdrop_;
};

} // namespace vellory
