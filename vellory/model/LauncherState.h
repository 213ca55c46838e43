// SPDX-License-Identifier: Apache-2.0
#pragma once

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
#include "model/KeyCommand.h"
#include "model/ScrollPager.h"
#include "model/SearchState.h"

namespace vellory {

class AppModel;

/// What one launcher window shows of the model: text typed, page, open folder, highlight,
/// selection. Main thread only.
class LauncherState : public QObject {
    Q_OBJECT

  public:
    /// How many apps an open folder shows before it pages.
    static constexpr int folderColumns = 5;
    static constexpr int folderRows = 4;

    explicit LauncherState(AppModel& model, QObject* parent = nullptr);

    const std::string& query() const { return query_; }
    /// The first match is highlighted.
    void setQuery(const std::string& query);
    bool searching() const { return !query_.empty(); }
    /// What the query finds, beside apps also sums and emoji.
    SearchState& search() { return search_; }
    const SearchState& search() const { return search_; }

    /// The page of the grid, from 0.
    int page() const { return page_; }
    /// How many pages the grid has: none when it is empty, always one while searching.
    int pageCount() const { return pageCount_; }
    /// The nearest page there is, with an animation.
    void goToPage(int page);
    /// So many pages on (or back), in the open folder when there is one.
    void step(int pages);
    int columns() const { return columns_; }
    void setColumns(int columns);
    int rows() const { return rows_; }
    /// As many rows as fit into this height of the grid and the settings allow.
    void fitRows(double height);
    /// How wide one page is on the screen; flicks are measured by it.
    double pageWidth() const { return pageWidth_; }
    void setPageWidth(double width);

    const std::optional<Uuid>& openFolder() const { return openFolder_; }
    void setOpenFolder(const std::optional<Uuid>& folder);
    int folderPage() const { return folderPage_; }
    int folderPageCount() const;

    /// An index into `currentItems`.
    std::optional<int> highlight() const { return highlight_; }
    /// Also turns to the page that holds it. An index past the end takes the highlight away.
    void setHighlight(std::optional<int> index);

    const std::set<BundleID>& selected() const { return selected_; }
    void setSelected(const std::set<BundleID>& apps);
    void toggleSelected(const BundleID& id);

    bool hintsMode() const { return hintsMode_; }
    void setHintsMode(bool on);
    const std::string& hintBuffer() const { return hintBuffer_; }
    /// The two letters that activate the item of `currentItems` in hints mode.
    static std::string hint(int index);

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
    bool rightToLeft() const { return rightToLeft_; }
    void setRightToLeft(bool on);

    /// What can be activated now: the matches while searching, else the shown apps of the open
    /// folder, else the grid's tiles.
    const std::vector<Tile>& currentItems() const { return currentItems_; }

    /// One step out: the selection, the open folder, the query, the windows view, the launcher.
    void back();
    /// Opens a folder over the grid; launches an app and asks to be hidden unless kept open.
    void activate(const Tile& tile);
    /// What Return does: opens the highlighted item, or copies what it shows. False for none.
    bool activateHighlighted(bool newInstance);
    /// Asks that `text` be copied for the user, and to be hidden unless kept open.
    void copy(const std::string& text);
    /// Everything typed, opened, highlighted and selected is forgotten, and the first page shown.
    void reset();

    // Input. Both tell whether they used the event.
    bool handleKey(const KeyPress& press);
    bool handleScroll(const Scroll& scroll);

  Q_SIGNALS:
    void queryChanged();
    void pageChanged(bool animated);
    void pageCountChanged();
    void columnsChanged();
    void rowsChanged();
    void openFolderChanged();
    void folderPageChanged();
    void highlightChanged();
    void selectedChanged();
    void hintsModeChanged();
    void hintBufferChanged();
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
    bool assign(Field& field, const Value& value, void (LauncherState::*changed)());

    GridNavigation::Grid shownGrid() const;
    bool isPaged() const;
    void applyPrefs();
    void onGridChanged();
    void updateItems();
    void updatePageCount();
    void setPage(int page, bool animated);
    void setFolderPage(int page);
    void showItem(int index);
    const Tile* highlighted() const;
    void moveHighlight(GridNavigation::Move move);
    void hideAfterLaunch();
    void type(const std::string& text);
    void handleHintKey(const KeyCommand& command, const QString& text);

    AppModel& model_;
    SearchState search_;
    std::string query_;
    int page_ = 0;
    int pageCount_ = 0;
    int pageBeforeSearch_ = 0;
    int columns_ = 7;
    int rows_ = 5;
    std::optional<double> height_;
    double pageWidth_ = 1280;
    std::optional<Uuid> openFolder_;
    int folderPage_ = 0;
    std::optional<int> highlight_;
    std::set<BundleID> selected_;
    bool hintsMode_ = false;
    std::string hintBuffer_;
    bool keepOpen_ = false;
    bool compact_ = false;
    bool showWindows_ = false;
    bool presented_ = false;
    bool rightToLeft_ = false;
    double dragOffset_ = 0;
    QPointF rippleOrigin_;
    ScrollPager pager_;
    std::vector<Tile> currentItems_;
};

} // namespace vellory
