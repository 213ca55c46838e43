// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/BrowserTabs.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

#include "Support/AtomicFile.h"
#include "Support/Json.h"

namespace vellory::BrowserTabs {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

/// Whatever listens on the port may be slow, hostile or somebody else.
constexpr milliseconds answerTime{1'000};
constexpr milliseconds timeForAll{3'000};
constexpr std::size_t maxAnswerBytes = 4U * 1024U * 1024U;
constexpr std::size_t maxPortFileBytes = 1'024;

/// The profiles' folders: below the folder for settings, then below home (Flatpak, Snap).
constexpr auto inSettings = std::to_array<const char*>(
    {"chromium", "google-chrome", "google-chrome-beta", "google-chrome-unstable",
     "BraveSoftware/Brave-Browser", "microsoft-edge", "vivaldi"});
constexpr auto inHome = std::to_array<const char*>(
    {".var/app/org.chromium.Chromium/config/chromium",
     ".var/app/com.google.Chrome/config/google-chrome",
     ".var/app/com.brave.Browser/config/BraveSoftware/Brave-Browser",
     ".var/app/com.microsoft.Edge/config/microsoft-edge", "snap/chromium/common/chromium"});

/// The port on the first line of a profile's file.
std::optional<std::uint16_t> portIn(const std::filesystem::path& profile) {
    const auto content = AtomicFile::read(profile / "DevToolsActivePort", maxPortFileBytes);
    if (!content) {
        return std::nullopt;
    }
    std::uint16_t port = 0;
    const char* end = content->data() + content->size();
    const auto [after, error] = std::from_chars(content->data(), end, port);
    const bool isWhole = after == end || *after == '\n' || *after == '\r';
    return error == std::errc() && isWhole && port != 0 ? std::optional(port) : std::nullopt;
}

void addPages(std::vector<std::string>& tabs, const std::string& answer) {
    const auto targets = json::parse(answer);
    if (!targets || !targets->is_array()) {
        return;
    }
    const auto text = [](const json::Value& target, const char* key) {
        const auto found = target.find(key);
        return found != target.end() && found->is_string() ? found->get<std::string>()
                                                           : std::string();
    };
    for (const json::Value& target : *targets) {
        if (target.is_object() && text(target, "type") == "page") {
            if (std::string address = text(target, "url"); !address.empty()) {
                tabs.push_back(std::move(address));
            }
        }
    }
}

} // namespace

std::vector<std::string> open(const SessionEnvironment& environment, const HttpClient& http) {
    std::vector<std::filesystem::path> profiles;
    for (const char* folder : inSettings) {
        profiles.push_back(environment.configHome() / folder);
    }
    for (const char* folder : inHome) {
        profiles.push_back(environment.home() / folder);
    }
    const auto until = Clock::now() + timeForAll;
    std::vector<std::string> tabs;
    for (const auto& profile : profiles) {
        const auto left = std::chrono::duration_cast<milliseconds>(until - Clock::now());
        const auto port = portIn(profile);
        if (!port || left <= milliseconds::zero()) {
            continue;
        }
        const auto answer =
            http.get({.url = "http://127.0.0.1:" + std::to_string(*port) + "/json/list",
                      .patience = std::min(left, answerTime),
                      .maxBytes = maxAnswerBytes,
                      .direct = true});
        if (answer) {
            addPages(tabs, *answer);
        }
    }
    return tabs;
}

} // namespace vellory::BrowserTabs
