// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include <QPointF>

#include "model/GridNavigation.h"
#include "model/ListScroll.h"
#include "model/PageDrag.h"

namespace vellory {

/// The part of the grid that one window shows: a page of its tiles, or some rows of one list. It is
/// always a part that there is: what changes the grid brings it back to the nearest one.
class GridView {
  public:
    /// What the settings say about the grid.
    struct Settings {
        int columns = 7;
        int rows = 5; ///< as far as they fit
        double iconSize = 96;
        bool hasLabels = true;
        bool isList = false; ///< one list that scrolls, not pages
        friend bool operator==(const Settings&, const Settings&) = default;
    };
    void follow(const Settings& settings);
    void setColumns(int columns);
    /// How many tiles the grid has.
    void setCount(int count);
    /// The room on the screen, in device-independent pixels. As many rows are shown as fit into the
    /// height and the settings allow.
    void setWidth(double width) { width_ = width; }
    void fitRows(double height);
    /// Pages go on to the left.
    void setRightToLeft(bool on) { rightToLeft_ = on; }

    int columns() const { return settings_.columns; }
    int rows() const { return rows_; }
    double width() const { return width_; }
    bool isList() const { return settings_.isList; }
    bool rightToLeft() const { return rightToLeft_; }
    /// None for an empty grid, one for a list.
    int pageCount() const;
    int page() const { return page_; }
    /// The page that is shown, or the row at the top of a list, with fractions.
    double position() const { return isList() ? top_ : page_; }
    GridNavigation::Grid grid() const;
    /// The tiles that can be seen, partly or wholly: from the first to before `end`.
    struct Range {
        int first = 0;
        int end = 0;
    };
    Range inView() const;

    void goToPage(int page);
    void scrollTo(double row);
    /// So many pages on or back; screens of a list.
    void step(int pages);
    /// Brings a tile into view.
    void show(int index);
    void showStart();

    PageDrag pageDrag() const { return PageDrag({page_, pageCount(), width_, rightToLeft_}); }
    ListScroll list() const;
    /// Where a drag has brought the grid, by how far it has travelled on the screen.
    double draggedPosition(QPointF travelled) const;
    /// Ends a drag; the speed with which the grid sets out for its new position, in pages or rows a
    /// second.
    double letGo(QPointF travelled, QPointF velocity);
    /// How many steps on or back a tile asks for that is held at this point of the grid.
    int turnAt(QPointF point) const;

  private:
    void updateRows();
    void stayWithin();

    Settings settings_;
    int rows_ = 5;
    int count_ = 0;
    double width_ = 1280;
    std::optional<double> height_;
    bool rightToLeft_ = false;
    int page_ = 0;
    double top_ = 0;
};

} // namespace vellory
