// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <memory>
#include <unordered_map>
#include <vector>

#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include "shell/search/SearchCell.h"
#include "shell/search/SearchViewModel.h"

namespace vellory {

/// The results of a search from top to bottom: sections of cells in rows, each below its heading.
/// Its height is that of all of them; `viewTop` and `viewHeight` say which part can be seen.
///
/// Only what can be seen has delegates. A result that stays in view keeps its delegate, whatever
/// its new place; the others take over delegates that are free before any is made. Those are kept
/// when the search is over, and `warm` makes a screenful of them in idle moments before the first
/// one.
///
/// A delegate has one required property, `cell`, of type SearchCell.
class SearchGrid : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vellory::SearchViewModel* search READ search WRITE setSearch NOTIFY searchChanged)
    Q_PROPERTY(QQmlComponent* appDelegate MEMBER appDelegate_ NOTIFY delegatesChanged)
    Q_PROPERTY(QQmlComponent* emojiDelegate MEMBER emojiDelegate_ NOTIFY delegatesChanged)
    Q_PROPERTY(QQmlComponent* sumDelegate MEMBER sumDelegate_ NOTIFY delegatesChanged)
    Q_PROPERTY(QQmlComponent* headingDelegate MEMBER headingDelegate_ NOTIFY delegatesChanged)
    Q_PROPERTY(int columns MEMBER columns_ NOTIFY measuresChanged)
    Q_PROPERTY(qreal sideMargin MEMBER sideMargin_ NOTIFY measuresChanged)
    Q_PROPERTY(qreal appHeight MEMBER appHeight_ NOTIFY measuresChanged)
    Q_PROPERTY(qreal emojiHeight MEMBER emojiHeight_ NOTIFY measuresChanged)
    Q_PROPERTY(qreal sumHeight MEMBER sumHeight_ NOTIFY measuresChanged)
    Q_PROPERTY(qreal headingHeight MEMBER headingHeight_ NOTIFY measuresChanged)
    Q_PROPERTY(bool mirrored MEMBER mirrored_ NOTIFY measuresChanged)
    Q_PROPERTY(qreal viewTop MEMBER viewTop_ NOTIFY viewChanged)
    Q_PROPERTY(qreal viewHeight MEMBER viewHeight_ NOTIFY viewChanged)
    Q_PROPERTY(bool warm READ isWarm WRITE setWarm NOTIFY warmChanged)
    Q_PROPERTY(QRectF highlightRect READ highlightRect NOTIFY highlightRectChanged)

  public:
    explicit SearchGrid(QQuickItem* parent = nullptr);
    ~SearchGrid() override;

    SearchViewModel* search() const { return search_; }
    void setSearch(SearchViewModel* search);
    bool isWarm() const { return warm_; }
    void setWarm(bool warm);
    /// The highlighted cell, with its section's heading when it is in the first row; empty for
    /// none.
    QRectF highlightRect() const { return highlightRect_; }

  Q_SIGNALS:
    void searchChanged();
    void delegatesChanged();
    void measuresChanged();
    void viewChanged();
    void warmChanged();
    void highlightRectChanged();

  protected:
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void updatePolish() override;
    void timerEvent(QTimerEvent* event) override;

  private:
    using Kind = SearchResults::Kind;
    enum class Shape { app, emoji, sum, heading };
    static constexpr std::size_t shapes = 4;

    /// One section on the screen.
    struct Band {
        SearchResults::Section section;
        QString title;
        qreal top = 0; ///< of the heading
        qreal cellsTop = 0;
        int columns = 1;
        qreal cellHeight = 0;
        qreal bottom = 0;
    };
    /// Something to be shown at a place.
    struct Placement {
        Shape shape = Shape::app;
        int cell = -1; ///< -1 for a heading
        QRectF place;
        SearchCell::Content content;
    };
    struct Slot {
        QQuickItem* item = nullptr;
        std::unique_ptr<SearchCell> cell;
    };

    static Shape shapeOf(Kind kind);
    QQmlComponent* delegateOf(Shape shape) const;
    void relayout();
    void layOut();
    QRectF rectOfHighlight() const;
    QRectF cellRect(const Band& band, int index) const;
    std::vector<Placement> visiblePlacements() const;
    void show(const std::vector<Placement>& placements);
    std::unique_ptr<Slot> make(Shape shape);
    void applyHighlight();

    QPointer<SearchViewModel> search_;
    QQmlComponent* appDelegate_ = nullptr;
    QQmlComponent* emojiDelegate_ = nullptr;
    QQmlComponent* sumDelegate_ = nullptr;
    QQmlComponent* headingDelegate_ = nullptr;
    int columns_ = 7;
    qreal sideMargin_ = 48;
    qreal appHeight_ = 140;
    qreal emojiHeight_ = 104;
    qreal sumHeight_ = 96;
    qreal headingHeight_ = 32;
    bool mirrored_ = false;
    qreal viewTop_ = 0;
    qreal viewHeight_ = 0;
    bool warm_ = false;
    bool layoutDirty_ = true;
    bool isPolishing_ = false;
    QRectF highlightRect_;
    int warmTimer_ = 0;

    std::vector<Band> bands_;
    /// What is on the screen, by shape and identity.
    std::array<std::unordered_map<QString, std::unique_ptr<Slot>>, shapes> shown_;
    std::array<std::vector<std::unique_ptr<Slot>>, shapes> free_;
};

} // namespace vellory
