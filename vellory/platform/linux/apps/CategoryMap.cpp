// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/CategoryMap.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vellory {

namespace {

struct Row {
    std::string_view category;
    std::string_view value;
    /// A second category that must be there too, or "".
    std::string_view with;
};

// The first row that applies decides, so the order is from narrow to broad. Games come first: shops
// for games also call themselves file transfer or package managers.
constexpr auto rows = std::to_array<Row>({
    {"ActionGame", "action-games", ""},
    {"AdventureGame", "adventure-games", ""},
    {"ArcadeGame", "arcade-games", ""},
    {"BlocksGame", "puzzle-games", ""},
    {"BoardGame", "board-games", ""},
    {"CardGame", "card-games", ""},
    {"KidsGame", "kids-games", ""},
    {"LogicGame", "puzzle-games", ""},
    {"RolePlaying", "role-playing-games", ""},
    {"Shooter", "action-games", ""},
    {"Simulation", "simulation-games", "Game"},
    {"SportsGame", "sports-games", ""},
    {"StrategyGame", "strategy-games", ""},
    {"Game", "games", ""},

    {"IDE", "developer-tools", ""},
    {"Debugger", "developer-tools", ""},
    {"GUIDesigner", "developer-tools", ""},
    {"Profiling", "developer-tools", ""},
    {"RevisionControl", "developer-tools", ""},
    {"WebDevelopment", "developer-tools", ""},
    {"Building", "developer-tools", ""},
    {"Translation", "developer-tools", "Development"},
    {"Database", "developer-tools", "Development"},

    {"Finance", "finance", ""},
    {"MedicalSoftware", "medical", ""},
    {"Sports", "sports", ""},
    {"Maps", "navigation", ""},
    {"Dictionary", "reference", ""},
    {"Documentation", "reference", ""},
    {"Literature", "books", ""},
    {"News", "news", ""},
    {"Feed", "news", ""},

    {"InstantMessaging", "social-networking", ""},
    {"Chat", "social-networking", ""},
    {"IRCClient", "social-networking", ""},
    {"Telephony", "social-networking", ""},
    {"VideoConference", "social-networking", ""},

    {"Viewer", "productivity", "Office"},
    {"WordProcessor", "productivity", ""},
    {"Spreadsheet", "productivity", ""},
    {"Presentation", "productivity", ""},
    {"Calendar", "productivity", ""},
    {"ContactManagement", "productivity", ""},
    {"Email", "productivity", ""},
    {"ProjectManagement", "business", ""},
    {"Chart", "productivity", ""},
    {"FlowChart", "productivity", ""},
    {"Database", "business", ""},
    {"WebBrowser", "productivity", ""},

    {"Photography", "photography", ""},
    {"2DGraphics", "graphics-design", ""},
    {"3DGraphics", "graphics-design", ""},
    {"RasterGraphics", "graphics-design", ""},
    {"VectorGraphics", "graphics-design", ""},
    {"Publishing", "graphics-design", ""},
    {"Scanning", "productivity", ""},

    {"AudioVideoEditing", "music", "Music"},
    {"AudioVideoEditing", "video", "Video"},
    {"AudioVideoEditing", "music", "Audio"},
    {"AudioVideoEditing", "video", ""},
    {"Music", "music", ""},
    {"Midi", "music", ""},
    {"Mixer", "music", ""},
    {"Sequencer", "music", ""},
    {"Tuner", "music", ""},
    {"TV", "entertainment", ""},
    {"Player", "entertainment", "Video"},
    {"Player", "music", ""},
    {"DiscBurning", "utilities", ""},
    {"Recorder", "music", "Audio"},
    {"Recorder", "video", ""},
    {"Amusement", "entertainment", ""},

    {"TerminalEmulator", "utilities", ""},
    {"FileManager", "utilities", ""},
    {"PackageManager", "utilities", ""},
    {"RemoteAccess", "utilities", ""},
    {"FileTransfer", "utilities", ""},
    {"P2P", "utilities", ""},
    {"Calculator", "utilities", ""},
    {"Clock", "utilities", ""},
    {"Monitor", "utilities", ""},
    {"Security", "utilities", ""},
    {"TextEditor", "productivity", ""},
    {"Geography", "education", ""},

    {"Development", "developer-tools", ""},
    {"Graphics", "graphics-design", ""},
    {"Office", "productivity", ""},
    {"Video", "video", ""},
    {"Audio", "music", ""},
    {"AudioVideo", "music", ""},
    {"Education", "education", ""},
    {"Science", "education", ""},
    {"Settings", "utilities", ""},
    {"System", "utilities", ""},
    {"Utility", "utilities", ""},
});

} // namespace

std::optional<std::string> appStoreCategory(const std::vector<std::string>& categories) {
    const auto declares = [&](std::string_view category) {
        return std::ranges::find(categories, category) != categories.end();
    };
    const auto row = std::ranges::find_if(rows, [&](const Row& candidate) {
        return declares(candidate.category) && (candidate.with.empty() || declares(candidate.with));
    });
    if (row == rows.end()) {
        return std::nullopt;
    }
    return std::string("public.app-category.").append(row->value);
}

} // namespace vellory
