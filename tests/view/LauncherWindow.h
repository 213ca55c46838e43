// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QAccessible>
#include <QQuickItem>
#include <QTest>

#include "model/LauncherState.h"
#include "model/World.h"
#include "platform/AppIcons.h"
#include "shell/LauncherController.h"

namespace vellory::test {

/// Apps without icons: the views draw their stand-ins.
class NoIcons final : public AppIcons {
  public:
    std::optional<Image> icon(const InstalledApp&, int) const override { return std::nullopt; }
};

/// The launcher's real window over a machine of fakes, shown and ready for input.
class LauncherWindow : public World {
  public:
    /// Opens the grid with apps "a00", "a01", …, after the board that an earlier run left behind.
    void openWith(int count) {
        std::vector<BundleID> ids;
        for (int i = 0; i < count; ++i) {
            ids.push_back(appID(i));
        }
        open(ids, board(std::vector<Tile>(tilesOf(ids))));
    }

    void open(const std::vector<BundleID>& installed, const Board& left) {
        startWith(installed, left);
        state = std::make_unique<LauncherState>(*model);
        controller = std::make_unique<LauncherController>(
            LauncherController::Parts{*model, *state, icons, desktop, scheduler});
        show();
    }

    void show() {
        controller->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
        settle();
    }

    static BundleID appID(int index) { return (index < 10 ? "a0" : "a") + std::to_string(index); }
    static std::vector<Tile> tilesOf(const std::vector<BundleID>& ids) {
        std::vector<Tile> tiles;
        for (const BundleID& id : ids) {
            tiles.emplace_back(id);
        }
        return tiles;
    }

    QQuickView& window() { return controller->window(); }
    QQuickItem& root() { return *window().rootObject(); }

    /// Lets queued changes and animations come to rest.
    void settle() {
        QCoreApplication::processEvents();
        ASSERT_TRUE(eventually([&] { return !root().property("moving").toBool(); }));
    }
    /// Whether `condition` comes true before the deadline; events run meanwhile.
    template <class Condition>
    static bool eventually(Condition condition) {
        constexpr int deadlineMilliseconds = 10'000;
        return QTest::qWaitFor(condition, deadlineMilliseconds);
    }

    /// The delegate of a tile that can be seen now; null for none.
    QQuickItem* tile(const std::string& id) { return find(root(), QString::fromStdString(id)); }
    QPoint middleOf(const std::string& id) {
        const QQuickItem* item = tile(id);
        EXPECT_NE(item, nullptr) << id << " is not on the screen";
        return item == nullptr
                   ? QPoint()
                   : item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }
    /// The control that assistive technology knows by this name; null for none that can be seen.
    static QQuickItem* controlOf(const QQuickWindow& in, const QString& name) {
        return named(accessible(in), name);
    }
    static QAccessibleInterface* accessible(const QQuickWindow& window) {
        return QAccessible::queryAccessibleInterface(const_cast<QQuickWindow*>(&window));
    }
    /// How many of these can be seen at an item and below it.
    static int countOf(QAccessibleInterface* item, QAccessible::Role role) {
        if (item == nullptr || item->state().invisible) {
            return 0;
        }
        int count = item->role() == role ? 1 : 0;
        for (int i = 0; i < item->childCount(); ++i) {
            count += countOf(item->child(i), role);
        }
        return count;
    }
    void click(const std::string& id, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(&window(), Qt::LeftButton, modifiers, middleOf(id));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&window(), key, modifiers);
    }
    void type(const char* text) {
        for (const char* c = text; *c != '\0'; ++c) {
            QTest::keyClick(&window(), *c);
        }
    }

    NoIcons icons;
    std::unique_ptr<LauncherState> state;
    std::unique_ptr<LauncherController> controller;

  private:
    static QQuickItem* named(QAccessibleInterface* below, const QString& name) {
        if (below == nullptr || below->state().invisible) {
            return nullptr;
        }
        if (below->text(QAccessible::Name) == name) {
            if (auto* item = qobject_cast<QQuickItem*>(below->object())) {
                return item;
            }
        }
        for (int i = 0; i < below->childCount(); ++i) {
            if (QQuickItem* found = named(below->child(i), name)) {
                return found;
            }
        }
        return nullptr;
    }
    static QQuickItem* find(const QQuickItem& below, const QString& id) {
        for (QQuickItem* child : below.childItems()) {
            if (!child->isVisible()) {
                continue;
            }
            if (child->property("tileId").toString() == id) {
                return child;
            }
            if (QQuickItem* found = find(*child, id)) {
                return found;
            }
        }
        return nullptr;
    }
};

} // namespace vellory::test
