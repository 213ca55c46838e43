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

    QPoint middleOfControl(const QString& name) {
        return pointOn(control(name), name.toStdString());
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
        rightClick(middleOfControl(name));
    }
};

} // namespace vellory::test
