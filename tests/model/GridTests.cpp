// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/World.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Workspace workspace(std::uint32_t id, const std::vector<BundleID>& apps, bool focusGrid) {
    Workspace out;
    out.id = uuid(id);
    out.name = "Writing";
    for (const BundleID& each : apps) {
        out.items.push_back(Workspace::Item::app(each));
    }
    out.focusGrid = focusGrid;
    return out;
}

Board gridBoard() {
    Board out = board({app("a"), folder(1, "Work", {"b", "c"}), folder(2, "Rest", {"h"}), app("d"),
                       app("gone"), app("h2")});
    out.hidden = {"h", "h2"};
    return out;
}

} // namespace

TEST(Grid, ShowsWhatIsInstalledNotHiddenAndLetThrough) {
    struct Case {
        const char* when;
        std::function<void(AppModel&)> given;
        std::string expected;
    };
    const GridFilter onlyWork{.name = "Deep", .folders = {uuid(1)}};
    const GridFilter onlyWriting{.name = "Deep", .folders = {}, .workspaces = {uuid(7)}};
    const auto opens = [](AppModel& m, const std::vector<BundleID>& apps, bool focusGrid) {
        m.workspaces().update(workspace(7, apps, focusGrid));
        m.workspaces().setActive(uuid(7));
    };
    const std::vector<Case> cases{
        {"no restriction", [](AppModel&) {}, "a [Work: b c] d"},
        {"a workspace that focuses the grid",
         [&](AppModel& m) { opens(m, {"b", "d", "h2"}, true); }, "[Work: b] d"},
        {"a workspace that does not", [&](AppModel& m) { opens(m, {"b"}, false); },
         "a [Work: b c] d"},
        {"an active workspace that was deleted",
         [&](AppModel& m) {
             opens(m, {"b"}, true);
             m.workspaces().remove(uuid(7));
         },
         "a [Work: b c] d"},
        {"a filter to a workspace's apps",
         [&](AppModel& m) {
             m.workspaces().update(workspace(7, {"a", "b"}, false));
             m.setFocusFilter(onlyWriting);
         },
         "a"},
        {"filter and workspace together",
         [&](AppModel& m) {
             opens(m, {"c", "d"}, true);
             m.setFocusFilter(onlyWork);
         },
         "[Work: c]"},
        {"all of that, but everything is asked for",
         [&](AppModel& m) {
             opens(m, {"c"}, true);
             m.setFocusFilter(onlyWork);
             m.setShowAllApps(true);
         },
         "a [Work: b c] d"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.when);
        World world;
        Board start = gridBoard();
        world.install({"a", "b", "c", "d", "h", "h2"});
        world.leaveBoard(start);
        each.given(world.start());
        EXPECT_EQ(world.grid(), each.expected);
        EXPECT_EQ(world.inMemory(), "a [Work: b c] [Rest: h] d h2") << "the board is not touched";
    }
}

TEST(Grid, TheFocusFilterSurvivesARestart) {
    World world;
    world.startWith({"a", "b", "c", "d"}, gridBoard());
    world.model->setFocusFilter(GridFilter{.name = "Deep", .folders = {uuid(1)}});
    world.model.reset();
    world.start();
    EXPECT_EQ(world.grid(), "[Work: b c]");
    world.model->setFocusFilter(std::nullopt);
    world.model.reset();
    world.start();
    EXPECT_EQ(world.grid(), "a [Work: b c] d");
}

TEST(Grid, SearchFindsInstalledAppsOfTheBoardByTheNameTheUserGave) {
    World world;
    AppModel& model = world.startWith({"a", "b", "c", "d", "h", "h2"}, gridBoard());
    EXPECT_THAT(model.search("  "), ElementsAre("a", "b", "c", "h", "d", "h2"))
        << "in board order, without what is not installed";
    model.rename("c", "Photo Studio");
    EXPECT_THAT(model.search("ps"), ElementsAre("c"));
    EXPECT_THAT(model.search("PHOTO"), ElementsAre("c"));
    EXPECT_THAT(model.search("xyz"), IsEmpty());
}

TEST(Grid, NamesAreTheUsersThenTheAppsThenTheIdentifier) {
    World world;
    AppModel& model = world.startWith({"a"}, gridBoard());
    world.catalogue.knownElsewhere = {{"agent", "Update Agent"}, {"a", "unused"}};
    EXPECT_EQ(model.name("a"), "A");
    EXPECT_EQ(model.name("agent"), "agent");
    EXPECT_EQ(model.displayName("agent"), "Update Agent");
    EXPECT_EQ(model.displayName("nobody"), "nobody");
    model.rename("a", "Notes");
    EXPECT_EQ(model.displayName("a"), "Notes");
}

TEST(Grid, ProtectedAppsAreTheUsersTheDesktopsAndThisProgram) {
    World world;
    world.defaults.set("protectedApps", std::vector<std::string>{"org.backup"});
    EXPECT_THAT(world.make().protectedApps(),
                ElementsAre("com.apple.finder", "com.quorvel.vellory", "org.backup", "org.files"));
}

} // namespace vellory::test
