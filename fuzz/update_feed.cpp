// SPDX-License-Identifier: Apache-2.0
// Whatever an update source answers, reading it ends, and what it yields holds together.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Support/Text.h"
#include "Updates/AppUpdates.h"
#include "Updates/Versions.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view answer(reinterpret_cast<const char*>(data), size);

    if (const auto latest = AppUpdates::appcastLatest(answer)) {
        require(!latest->empty() && Text::isValidUtf8(*latest));
        require(Text::trimmed(*latest).size() == latest->size());
    }
    for (const auto& cask : AppUpdates::brewOutdated(answer)) {
        require(!cask.name.empty() && !cask.installed.empty() && !cask.current.empty());
        if (const auto command = AppUpdates::brewUpgradeCommand(cask.name)) {
            require(command->find_first_of(";|&$`<>(){}\"'\\\n\r* ", 20) == std::string::npos);
        }
    }
    const AppUpdates::AppInfo app{
        {"com.example.app", "App", "/Applications/App.app"}, "1.2", true, {}};
    for (const auto source : {AppUpdates::Source::feed, AppUpdates::Source::appStore}) {
        if (const auto update = AppUpdates::updateFor(app, source, answer)) {
            require(Versions::isNewer(update->newer, app.version));
        }
    }
    return 0;
}
