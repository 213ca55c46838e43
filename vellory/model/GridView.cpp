// SPDX-License-Identifier: Apache-2.0
#include "model/GridView.h"

#include <algorithm>
#include <cmath>

namespace vellory {

namespace {
constexpr double labelHeight = 25;
constexpr double gapWithLabels = 26;
constexpr double gapWithoutLabels = 18;
} // namespace

void GridView::follow(const Settings& settings) {
    settings_ = settings;
    settings_.columns = std::max(settings.columns, 1);
    updateRows();
    stayWithin();
}

void GridView::setColumns(int columns) {
    settings_.columns = std::max(columns, 1);
    stayWithin();
}

void GridView::setCount(int count) {
    count_ = count;
    stayWithin();
}

void GridView::fitRows(double height) {
    height_ = height;
    updateRows();
    stayWithin();
}

void GridView::updateRows() {
    if (!height_) {
        rows_ = settings_.rows;
        return;
    }
    const double gap = settings_.hasLabels ? gapWithLabels : gapWithoutLabels;
    const double label = settings_.hasLabels ? labelHeight : 0;
    const double fitting = std::floor((*height_ + gap) / (gap + label + settings_.iconSize));
    // Written so that a height that is no number gives one row.
    rows_ = fitting >= 2 ? static_cast<int>(std::min<double>(fitting, settings_.rows)) : 1;
}

void GridView::stayWithin() {
    goToPage(page_);
    scrollTo(top_);
}

int GridView::pageCount() const {
    return isList() ? 1 : GridNavigation::Grid{count_, columns(), rows_}.pageCount();
}

GridNavigation::Grid GridView::grid() const {
    return {count_, columns(), rows_, !isList(), page_, static_cast<int>(std::ceil(top_))};
}

GridView::Range GridView::inView() const {
    if (isList()) {
        return {static_cast<int>(std::floor(top_)) * columns(),
                std::min(static_cast<int>(std::ceil(top_ + rows_)) * columns(), count_)};
    }
    const int first = grid().firstShown();
    return {first, std::min(first + grid().pageSize(), count_)};
}

// --- Moving on ---

void GridView::goToPage(int page) {
    page_ = std::clamp(page, 0, std::max(pageCount() - 1, 0));
}

void GridView::scrollTo(double row) {
    top_ = list().clamped(row);
}

void GridView::step(int pages) {
    if (isList()) {
        scrollTo(list().turned(pages));
    } else {
        goToPage(page_ + pages);
    }
}

void GridView::show(int index) {
    if (isList()) {
        scrollTo(list().showing(index / columns()));
    } else {
        goToPage(grid().pageOf(index));
    }
}

void GridView::showStart() {
    page_ = 0;
    top_ = 0;
}

// --- Drags ---

ListScroll GridView::list() const {
    return {top_, rows_, (count_ + columns() - 1) / columns(), height_.value_or(0) / rows_};
}

double GridView::draggedPosition(QPointF travelled) const {
    return isList() ? list().dragged(travelled.y()) : pageDrag().position(travelled.x());
}

double GridView::letGo(QPointF travelled, QPointF velocity) {
    if (isList()) {
        const ListScroll::Rest rest = list().letGo(travelled.y(), velocity.y());
        scrollTo(rest.place);
        return rest.speed;
    }
    const PageDrag::Rest rest = pageDrag().letGo(travelled.x(), velocity.x());
    goToPage(rest.page);
    return rest.speed;
}

int GridView::turnAt(QPointF point) const {
    return isList() ? list().turnAt(point.y()) : pageDrag().turnAt(point.x());
}

} // namespace vellory
