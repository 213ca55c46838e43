// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <memory>
#include <set>
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
    void openWith(int count) { open(numbered(count), boardOf(numbered(count))); }

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
    QPoint middleOf(const std::string& id) { return pointOn(tile(id), id); }
    /// A point of an item, at a share of its width; `what` tells which is missing.
    static QPoint pointOn(const QQuickItem* item, const std::string& what, double across = 0.5) {
        EXPECT_NE(item, nullptr) << what << " is not on the screen";
        return item == nullptr
                   ? QPoint()
                   : item->mapToScene({item->width() * across, item->height() / 2}).toPoint();
    }
    /// The control that assistive technology knows by this name; null for none that can be seen.
    static QQuickItem* controlOf(const QQuickWindow& in, const QString& name) {
        return named(accessible(in), name);
    }
    QQuickItem* control(const QString& name) { return controlOf(window(), name); }
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
    /// How many controls can be seen; each must have a name.
    int countNamed() {
        settle();
        int count = 0;
        std::vector<std::string> nameless;
        walk(accessible(window()), count, nameless);
        EXPECT_EQ(nameless, std::vector<std::string>());
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

    void rightClick(QPoint at) {
        QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, at);
    }
    /// Presses at a point and carries what lies there to another, in steps as a hand does.
    void carry(QPoint from, QPoint to) {
        constexpr int steps = 8;
        QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= steps; ++step) {
            QTest::mouseMove(&window(), from + (to - from) * step / steps);
        }
        QTest::mouseMove(&window(), to + QPoint(1, 0));
    }
    void letGo(QPoint at) {
        QTest::mouseMove(&window(), at);
        QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, at);
        settle();
    }
    void drag(QPoint from, QPoint to) {
        carry(from, to);
        letGo(to);
    }
    /// One notch of the wheel down, over the middle of the grid.
    void turnWheel() {
        const QPoint middle(window().width() / 2, window().height() / 2);
        QWheelEvent wheel(middle, window().mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window(), &wheel);
    }
    bool menuIsOpen() { return controller->viewModel().menu()->isOpen(); }
    /// Moves down the open menu to the entry with this text.
    void choose(const QString& text) {
        settle();
        const QVariantList entries = controller->viewModel().menu()->entries();
        press(Qt::Key_Home);
        for (const QVariant& entry : entries) {
            if (entry.toMap().value("kind") == "separator") {
                continue;
            }
            if (entry.toMap().value("text") == text) {
                press(Qt::Key_Return);
                settle();
                return;
            }
            press(Qt::Key_Down);
        }
        FAIL() << "no entry " << text.toStdString();
    }
    /// Whether the keyboard is in a field that shows this text.
    bool fieldBecomes(const QString& text) {
        return eventually([&] { return window().activeFocusItem()->property("text") == text; });
    }

    NoIcons icons;
    std::unique_ptr<LauncherState> state;
    std::unique_ptr<LauncherController> controller;

  private:
    static void walk(QAccessibleInterface* item, int& count, std::vector<std::string>& nameless) {
        if (item == nullptr || item->state().invisible) {
            return;
        }
        static const std::set<QAccessible::Role> controls{
            QAccessible::Button,   QAccessible::EditableText, QAccessible::CheckBox,
            QAccessible::ListItem, QAccessible::RadioButton,  QAccessible::Dialog,
            QAccessible::List,     QAccessible::ToolBar,      QAccessible::Grouping,
            QAccessible::MenuItem, QAccessible::PageTab};
        if (controls.contains(item->role())) {
            ++count;
            if (item->text(QAccessible::Name).isEmpty()) {
                nameless.push_back(item->object()->metaObject()->className());
            }
        }
        for (int i = 0; i < item->childCount(); ++i) {
            walk(item->child(i), count, nameless);
        }
    }
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
