// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "view/LauncherWindow.h"

namespace vellory::test {

inline Workspace workspaceNamed(std::uint32_t number, std::string name,
                                const std::vector<BundleID>& apps) {
    Workspace workspace;
    workspace.id = uuid(number);
    workspace.name = std::move(name);
    workspace.symbol = "book";
    for (const BundleID& app : apps) {
        workspace.items.push_back(Workspace::Item::app(app));
    }
    return workspace;
}

class WorkspaceViewTest : public testing::Test, public LauncherWindow {
  protected:
    /// Rows and chips take their places at once: a click finds them where they are.
    WorkspaceViewTest() { defaults.set("reduceMotion", true); }

    void openWithWorkspaces(const std::vector<Workspace>& list, int apps = 12) {
        ASSERT_TRUE(Workspace::save(list, paths().workspaces()).has_value());
        openWith(apps);
    }
    void openWithTwo() {
        openWithWorkspaces(
            {workspaceNamed(1, "Deep Work", {"a00", "a01"}), workspaceNamed(2, "Mail", {"a02"})});
    }
    std::vector<Workspace> stored() { return Workspace::load(paths().workspaces()); }
    Workspace storedFirst() {
        const auto all = stored();
        EXPECT_FALSE(all.empty());
        return all.empty() ? Workspace() : all.front();
    }
    std::vector<std::string> storedNames() {
        std::vector<std::string> names;
        for (const Workspace& workspace : stored()) {
            names.push_back(workspace.name);
        }
        return names;
    }
    void edit(std::uint32_t number) {
        controller->workspaces().edit(QString::fromStdString(uuid(number).string()));
        settle();
    }
    std::string noticeShown() {
        const NoticeList& shown = *controller->viewModel().notices();
        return shown.rowCount() == 0
                   ? ""
                   : shown.data(shown.index(shown.rowCount() - 1), NoticeList::TextRole)
                         .toString()
                         .toStdString();
    }

    /// The control that assistive technology knows by this name; null for none that can be seen.
    QQuickItem* control(const QString& name) { return controlOf(window(), name); }
    QPoint middleOfControl(const QString& name) {
        QQuickItem* item = control(name);
        EXPECT_NE(item, nullptr) << "no control " << name.toStdString();
        return item == nullptr
                   ? QPoint()
                   : item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }
    /// Brings a control of the editor into view and clicks it.
    void clickControl(const QString& name) {
        if (QQuickItem* item = control(name)) {
            item->forceActiveFocus();
            settle();
            window().grabWindow(); // rows and columns take their places with a frame
            settle();
            ASSERT_TRUE(eventually([&] { return control(name) != nullptr; })) << "it faded in";
        }
        QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, middleOfControl(name));
        settle();
    }
    /// Replaces what stands in the focused field.
    void retype(const char* text) {
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        type(text);
    }
    void rightClickControl(const QString& name) {
        window().grabWindow();
        QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, middleOfControl(name));
    }
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
    void carry(QPoint from, QPoint to) {
        constexpr int steps = 8;
        QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= steps; ++step) {
            QTest::mouseMove(&window(), from + (to - from) * step / steps);
        }
        QTest::mouseMove(&window(), to + QPoint(1, 0));
        QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, to);
        settle();
    }

    /// The controls that can be seen; each must have a name.
    int countNamed() {
        settle();
        int count = 0;
        std::vector<std::string> nameless;
        walk(QAccessible::queryAccessibleInterface(&window()), count, nameless);
        EXPECT_THAT(nameless, testing::IsEmpty());
        return count;
    }

  private:
    static void walk(QAccessibleInterface* item, int& count, std::vector<std::string>& nameless) {
        if (item == nullptr || item->state().invisible) {
            return;
        }
        static const std::set<QAccessible::Role> controls{
            QAccessible::Button,   QAccessible::EditableText, QAccessible::CheckBox,
            QAccessible::ListItem, QAccessible::RadioButton,  QAccessible::Dialog,
            QAccessible::List,     QAccessible::ToolBar,      QAccessible::Grouping};
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
};

} // namespace vellory::test
