// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/Prefs.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Prefs, NumbersFromAHandEditedFileAreBroughtIntoRange) {
    struct Case {
        UserDefaults::Value stored;
        int iconSize;
        int rows;
    };
    const std::vector<Case> cases{{std::int64_t{64}, 64, 20},
                                  {std::int64_t{-7}, 48, 1},
                                  {std::int64_t{1} << 40, 160, 20},
                                  {std::string("72"), 72, 20},
                                  {std::string("huge"), 96, 5},
                                  {true, 96, 5},
                                  {std::vector<std::string>{"1"}, 96, 5}};
    for (const Case& each : cases) {
        MemoryDefaults defaults;
        defaults.set("iconSize", each.stored);
        defaults.set("rows", each.stored);
        const Prefs prefs(defaults);
        EXPECT_EQ(prefs.iconSize(), each.iconSize) << each.stored.index();
        EXPECT_EQ(prefs.rows(), each.rows) << each.stored.index();
    }
}

TEST(Prefs, FoldersThatAreNoAbsolutePathsAreLeftOut) {
    MemoryDefaults defaults;
    defaults.set("extraFolders", std::vector<std::string>{"/opt/apps", "", "apps", "~/apps"});
    EXPECT_THAT(Prefs(defaults).extraFolders(), ElementsAre("/opt/apps"));
}

TEST(Prefs, AnUnknownDisplayModeMeansPages) {
    MemoryDefaults defaults;
    defaults.set("displayMode", std::string("spiral"));
    Prefs prefs(defaults);
    EXPECT_EQ(prefs.displayMode(), Prefs::DisplayMode::pages);
    prefs.setDisplayMode(Prefs::DisplayMode::list);
    EXPECT_EQ(defaults.string("displayMode"), "list");
}

TEST(Prefs, TellOfAChangeOnceAndOnlyWhenThereIsOne) {
    MemoryDefaults defaults;
    Prefs prefs(defaults);
    std::vector<std::string> told;
    QObject::connect(&prefs, &Prefs::changed, [&](const std::string& key) { told.push_back(key); });
    prefs.setShowLabels(true);
    prefs.setColumns(7);
    prefs.setProtectedApps({});
    EXPECT_THAT(told, IsEmpty());
    prefs.setShowLabels(false);
    prefs.setColumns(500);
    prefs.setProtectedApps({"b", "a"});
    EXPECT_THAT(told, ElementsAre("showLabels", "columns", "protectedApps"));
    EXPECT_EQ(prefs.columns(), 20);
    EXPECT_THAT(prefs.protectedApps(), ElementsAre("a", "b"));
}

} // namespace vellory::test
