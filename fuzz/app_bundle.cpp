// SPDX-License-Identifier: Apache-2.0
// Any bytes as what an app's bundle says of itself: it is an app or none, and no word, category or
// feed of it leads anywhere that it should not.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Apps/AppDiscovery.h"
#include "Board/AutoFolders.h"
#include "InputFile.h"
#include "Search/AppKeywords.h"
#include "Updates/AppUpdates.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::InputFile file("Some.app/Contents/Info.plist");
    static const auto bundle = file.folder() / "Some.app";
    file.holding(data, size);
    const auto information = AppDiscovery::information(bundle);
    const auto app = AppDiscovery::appAt(bundle, {"de", "en-GB"});
    require(!app || (information && !app->bundleID.empty() && app->name == "Some"));
    if (!information) {
        return 0;
    }
    for (const std::string& word : AppKeywords::keywords("Some", *information->dictionary())) {
        require(AppKeywords::stem(word).size() <= word.size());
    }
    if (app) {
        AutoFolders::folderTitleForCategory(AutoFolders::categoryOf(*app));
        for (const bool receipt : {false, true}) {
            const auto request =
                AppUpdates::requestFor(AppUpdates::appInfo(*app, *information, receipt), true);
            // A scheme in any letter case is one scheme.
            require(!request || Text::lowercased(request->url).starts_with("https://"));
            require(!request || receipt == (request->source == AppUpdates::Source::appStore));
        }
    }
    return 0;
}
