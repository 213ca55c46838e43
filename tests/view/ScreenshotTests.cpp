// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "shell/CommandLine.h"
#include "view/WorkspaceWindow.h"

namespace vellory::test {
namespace {

using ScreenshotTest = WorkspaceViewTest;

// A view that is listed is one that can be had.
TEST_F(ScreenshotTest, EveryViewOfTheTableCanBeAskedForAndArranged) {
    ASSERT_TRUE(Workspace::save({workspaceNamed(1, "Deep Work", {"a02"})}, paths().workspaces())
                    .has_value());
    openWith(3);
    model->makeFolder({"a00", "a01"});
    runningApps.starts("a02");
    controller->hide();
    show();
    for (const ScreenshotView& view : ScreenshotView::all()) {
        const auto parsed = CommandLine::parse(
            {"vellory", "--screenshot", "x.png", "--support", "x", "--view", view.name});
        ASSERT_TRUE(parsed.has_value()) << parsed.error();
        EXPECT_EQ(parsed->view, &view) << "two views are named " << view.name;
        // These wait: for a habit, and until notices have gone.
        static const std::set<std::string_view> slow{"habit-bar", "focus-session", "history"};
        if (slow.contains(view.name)) {
            continue;
        }
        const auto arranged = view.arrange({*controller, *model, *state, window().size()});
        EXPECT_TRUE(arranged.has_value()) << view.name << ": " << arranged.error();
        settle();
        if (view.act != nullptr) {
            view.act({*controller, *model, *state, window().size()});
        }
        state->reset();
    }
}

// The user's own grid is not there to be rearranged for a picture, or by other apps.
TEST_F(ScreenshotTest, PicturesAndOtherAppsNeedACopyUnlessAFolderIsNamed) {
    const QStringList plain{"vellory"};
    const QStringList picture = plain + QStringList{"--screenshot", "x.png", "--view", "history"};
    const QStringList apps = plain + QStringList{"--apps", "x"};
    const QStringList support{"--support", "y"};
    EXPECT_FALSE(CommandLine::parse(plain)->leavesFilesAlone());
    for (const QStringList& asked : {picture, apps}) {
        EXPECT_TRUE(CommandLine::parse(asked)->leavesFilesAlone());
        EXPECT_FALSE(CommandLine::parse(asked + support)->leavesFilesAlone());
    }
    EXPECT_FALSE(CommandLine::parse({"vellory", "--view", "spiral"}).has_value());
}

} // namespace
} // namespace vellory::test
