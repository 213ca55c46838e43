// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QObject>
#include <QPointF>
#include <QString>

#include "Board/Board.h"
#include "Support/Uuid.h"
#include "model/GridNavigation.h"
#include "model/GridView.h"
#include "model/Hints.h"
#include "model/KeyCommand.h"
#include "model/ScrollPager.h"
#include "model/SearchState.h"
#include "model/Selection.h"
#include "model/TileDrag.h"

namespace vellory {

class AppModel;

/// What one launcher window shows of the model: text typed, page, open folder, highlight,
/// selection. Main thread only.
class LauncherState : public QObject {
    Q_OBJECT

  public:
    /// What may stand over the grid for a while; the workspaces stand beside it, and leave it in
    /// use.
    enum class Panel {
        none,
        history,
        hiddenApps,
        emoji,
        workspaces,
        workspaceFromOpen,
        focusSession,
        settings
    };

    /// How many apps an open folder shows before it pages.
    static constexpr int folderColumns = 5;
    static constexpr int folderRows = 4;

    explicit LauncherState(AppModel& model, QObject* parent = nullptr);
    ~LauncherState() override;

    const std::string& query() const { return query_; }
    /// The first match is highlighted; what stands over the matches is put away.
    void setQuery(const std::string& query);
    bool searching() const { return !query_.empty(); }
    /// What the query finds, beside apps also sums and emoji.
    SearchState& search() { return search_; }
    const SearchState& search() const { return search_; }

    /// What is in view of the grid, and what wheels and drags do to it.
    const GridView& view() const { return view_; }
    /// The page of the grid, from 0.
    int page() const { return searching() ? 0 : view_.page(); }
    /// How many pages the grid has: none when it is empty, always one while searching.
    int pageCount() const { return searching() ? 1 : view_.pageCount(); }
    int columns() const { return view_.columns(); }
    int rows() const { return view_.rows(); }
    /// The nearest page there is, with an animation.
    void goToPage(int page);
    /// So many pages on (or back), in the open folder when there is one; screens of a list.
    void step(int pages);
    void setColumns(int columns);
    /// The room for the grid on the screen, see `GridView`.
    void fitRows(double height);
    void setPageWidth(double width) { view_.setWidth(width); }
    /// Ends a drag of the whole grid, see `GridView::letGo`.
    double letGo(QPointF travelled, QPointF velocity);

    const std::optional<Uuid>& openFolder() const { return openFolder_; }
    void setOpenFolder(const std::optional<Uuid>& folder);
    int folderPage() const { return folderPage_; }
    int folderPageCount() const;

    /// An index into `currentItems`.
    std::optional<int> highlight() const { return highlight_; }
    /// Also turns to the page that holds it. An index past the end takes the highlight away.
    void setHighlight(std::optional<int> index);

    const std::set<BundleID>& selected() const { return selection_.apps(); }
    void setSelected(const std::set<BundleID>& apps);
    void toggleSelected(const BundleID& id);
    /// The selected apps in the order of the grid, folders expanded in place.
    std::vector<BundleID> selection() const;
    /// Every app that is shown now, at the top level or in the open folder.
    void selectAll();
    /// A band that selects what it covers.
    void beginBand(Selection::Before before) { selection_.beginSweep(before); }
    void selectInBand(const std::vector<BundleID>& covered);

    /// The letters that activate the `currentItems` on the page shown.
    const Hints& hints() const { return hints_; }
    void setHintsMode(bool on);

    /// The tile whose name is being edited in its place.
    const std::optional<std::string>& renaming() const { return renaming_; }
    void beginRenaming(const std::string& tileID);
    /// With no name the old one stays.
    void endRenaming(const std::optional<std::string>& name);

    Panel panel() const { return panel_; }
    void setPanel(Panel panel);
    /// Opens the panel, or puts it away when it is the one that is open.
    void togglePanel(Panel panel);
    /// Whether a panel keeps the grid, or what a search found, from being used.
    bool isCovered() const { return panel_ != Panel::none && panel_ != Panel::workspaces; }
    /// Opens the panel in which the user picks a badge for the folder.
    void chooseEmoji(const Uuid& folder);
    /// The folder that the emoji panel is about.
    const std::optional<Uuid>& emojiFolder() const { return emojiFolder_; }

    TileDrag& drag() { return *drag_; }
    const TileDrag& drag() const { return *drag_; }
    /// Begins a drag by keys: arrows move the tile, Tab aims it at the one after it, Return lets it
    /// go and Escape puts it back.
    void pickUp(const std::string& tileID);
    /// Lets the dragged tile go. A folder that this makes opens, its name ready to be typed.
    void dropTile();

    bool keepOpen() const { return keepOpen_; }
    void setKeepOpen(bool on);
    bool compact() const { return compact_; }
    void setCompact(bool on);
    bool showWindows() const { return showWindows_; }
    void setShowWindows(bool on);
    bool presented() const { return presented_; }
    void setPresented(bool on);
    double dragOffset() const { return dragOffset_; }
    void setDragOffset(double offset);
    QPointF rippleOrigin() const { return rippleOrigin_; }
    void setRippleOrigin(QPointF origin);
    /// The user reads from right to left: the left arrow and a push to the left go on instead of
    /// back.
    bool rightToLeft() const { return view_.rightToLeft(); }
    void setRightToLeft(bool on);

    /// What can be activated now: the matches while searching, else the shown apps of the open
    /// folder, else the grid's tiles.
    const std::vector<Tile>& currentItems() const { return currentItems_; }
    /// How these are laid out and what of them is in view.
    GridNavigation::Grid shownGrid() const;

    /// One step out: the selection, the open folder, the query, the windows view, the panel,
    /// the launcher.
    void back();
    /// Opens a folder over the grid; launches an app and asks to be hidden unless kept open.
    void activate(const Tile& tile);
    /// What Return does: opens the highlighted item, or copies what it shows. False for none.
    bool activateHighlighted(bool newInstance);
    /// Asks that `text` be copied for the user, and to be hidden unless kept open.
    void copy(const std::string& text);
    /// Opens another window of the app, or does one of its actions; then as `activate`.
    void activateNew(const BundleID& id);
    void perform(const BundleID& id, const std::string& action);
    void openFile(const BundleID& id, const std::filesystem::path& file);
    /// A new folder of these apps; it opens, its name ready to be typed.
    void makeFolder(const std::vector<BundleID>& ids);
    /// Everything typed, opened, highlighted and selected is forgotten, and the first page shown.
    void reset();

    /// Asks for the launcher to go from the screen.
    void requestHide() { Q_EMIT hideRequested(); }
    /// Asks for the menu of this item; -1 for the background's.
    void requestMenu(int index) { Q_EMIT menuRequested(index); }

    // Input. Both tell whether they used the event.
    bool handleKey(const KeyPress& press);
    bool handleScroll(const Scroll& scroll);

  Q_SIGNALS:
    void queryChanged();
    void positionChanged(bool animated);
    /// The grid is a list now, or on pages again.
    void displayModeChanged();
    void pageCountChanged();
    void columnsChanged();
    void rowsChanged();
    void openFolderChanged();
    void folderPageChanged();
    void highlightChanged();
    void selectedChanged();
    void renamingChanged();
    void panelChanged();
    void menuRequested(int index);
    void hintsChanged();
    void keepOpenChanged();
    void compactChanged();
    void showWindowsChanged();
    void presentedChanged();
    void dragOffsetChanged();
    void rippleOriginChanged();
    void rightToLeftChanged();
    void currentItemsChanged();
    /// The text should go to the clipboard.
    void copyRequested(const std::string& text);
    /// The launcher should go from the screen.
    void hideRequested();

  private:
    /// Sets a field and tells so when that changes it.
    template <class Field, class Value>
    bool assign(Field& field, const Value& value, void (LauncherState::*changed)()) {
        if (field == value) {
            return false;
        }
        field = value;
        Q_EMIT(this->*changed)();
        return true;
    }

    GridView::Range itemsInView() const;
    void applyPrefs();
    void onGridChanged();
    void updateItems();
    /// What of the view is told when it changes.
    struct Told {
        int columns;
        int rows;
        int pageCount;
        double position;
        bool isList;
    };
    Told told() const { return {columns(), rows(), pageCount(), view_.position(), view_.isList()}; }
    void tellSince(const Told& before, bool animated);
    enum class Motion { jump, animated };
    /// Changes what is in view and tells what is different then.
    template <class Change>
    void changeView(Motion motion, Change change) {
        const Told before = told();
        change(view_);
        tellSince(before, motion == Motion::animated);
    }
    void setFolderPage(int page);
    void showItem(int index);
    const Tile* highlighted() const;
    void openToName(const Uuid& folder);
    bool handleDragKey(const KeyCommand& command);
    void moveHighlight(GridNavigation::Move move);
    void extendSelection(GridNavigation::Move move);
    void hideAfterLaunch();
    void type(const std::string& text);
    void handleHintKey(const KeyCommand& command, const std::string& text);
    void tellIfSelected(bool isChanged);

    AppModel& model_;
    SearchState search_;
    std::string query_;
    GridView view_;
    std::optional<Uuid> openFolder_;
    int folderPage_ = 0;
    std::optional<int> highlight_;
    Selection selection_;
    std::optional<std::string> renaming_;
    Panel panel_ = Panel::none;
    std::optional<Uuid> emojiFolder_;
    Hints hints_;
    bool keepOpen_ = false;
    bool compact_ = false;
    bool showWindows_ = false;
    bool presented_ = false;
    double dragOffset_ = 0;
    QPointF rippleOrigin_;
    ScrollPager pager_;
    std::vector<Tile> currentItems_;
    std::unique_ptr<TileDrag> drag_;
};

} // namespace vellory
