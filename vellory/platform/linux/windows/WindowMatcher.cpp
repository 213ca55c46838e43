// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/WindowMatcher.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "Support/Text.h"

namespace vellory {

namespace {

/// Programs that start others: finding one of them in an Exec line says nothing about the app.
constexpr auto starters = std::to_array<std::string_view>(
    {"bash",         "dash",        "dbus-launch", "electron", "env",  "flatpak",
     "gapplication", "gjs",         "gtk-launch",  "java",     "node", "perl",
     "pkexec",       "python",      "python3",     "ruby",     "sh",   "snap",
     "sudo",         "systemd-run", "wine",        "xdg-open", "zsh"});

std::string fileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

/// An index that keeps only keys that name one app.
class UniqueIndex {
  public:
    void add(std::string key, const BundleID& id) {
        if (!ambiguous_.contains(key) && !index_.emplace(key, id).second) {
            index_.erase(key);
            ambiguous_.insert(std::move(key));
        }
    }
    std::map<std::string, BundleID> take() { return std::move(index_); }

  private:
    std::map<std::string, BundleID> index_;
    std::set<std::string> ambiguous_;
};

std::optional<BundleID> lookUp(const std::map<std::string, BundleID>& index,
                               const std::string& key) {
    const auto found = key.empty() ? index.end() : index.find(key);
    return found == index.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

WindowMatcher::WindowMatcher(const std::map<BundleID, DesktopEntry>& entries) {
    UniqueIndex lastParts;
    UniqueIndex programs;
    // Apps that menus show come first: of two entries with one class the visible one is meant.
    for (const bool shown : {true, false}) {
        for (const auto& [id, entry] : entries) {
            if (entry.isShown != shown) {
                continue;
            }
            ids_.emplace(id, id);
            files_.emplace(entry.file.string(), id);
            foldedIds_.emplace(Text::lowercased(id), id);
            if (!entry.windowClass.empty()) {
                classes_.emplace(entry.windowClass, id);
                foldedClasses_.emplace(Text::lowercased(entry.windowClass), id);
            }
            if (!shown) {
                continue;
            }
            if (const auto dot = id.rfind('.'); dot != std::string::npos) {
                lastParts.add(Text::lowercased(id.substr(dot + 1)), id);
            }
            const std::string program = fileName(entry.program);
            if (!std::ranges::binary_search(starters, program)) {
                programs.add(program, id);
            }
        }
    }
    lastParts_ = lastParts.take();
    programs_ = programs.take();
}

std::optional<BundleID> WindowMatcher::match(const WindowEvidence& window) const {
    if (auto id = known(window.gtkApplicationId)) {
        return id;
    }
    if (auto id = lookUp(files_, window.desktopFileHint)) {
        return id;
    }
    if (auto id = known(std::filesystem::path(window.desktopFileHint).stem().string())) {
        return id;
    }
    if (auto id = byClass(window)) {
        return id;
    }
    if (auto id = known(window.startedAs)) {
        return id;
    }
    return byProcess(window.process);
}

std::optional<BundleID> WindowMatcher::known(const std::string& id) const {
    return lookUp(ids_, id);
}

std::optional<BundleID> WindowMatcher::byClass(const WindowEvidence& window) const {
    // Browsers give the window of a web app its own instance and the browser's class, hence the
    // instance first among the names that entries state. Entries that state none go by their ids,
    // and there the class is what toolkits derive from the program.
    struct Try {
        const Index& index;
        const std::string& name;
    };
    const std::string foldedClass = Text::lowercased(window.windowClass);
    const std::string foldedInstance = Text::lowercased(window.windowInstance);
    for (const Try& attempt : std::to_array<Try>({{classes_, window.windowInstance},
                                                  {classes_, window.windowClass},
                                                  {ids_, window.windowClass},
                                                  {ids_, window.windowInstance},
                                                  {foldedClasses_, foldedInstance},
                                                  {foldedClasses_, foldedClass},
                                                  {foldedIds_, foldedClass},
                                                  {foldedIds_, foldedInstance},
                                                  {lastParts_, foldedClass}})) {
        if (auto id = lookUp(attempt.index, attempt.name)) {
            return id;
        }
    }
    return std::nullopt;
}

std::optional<BundleID> WindowMatcher::byProcess(const ProcessInfo& process) const {
    if (auto id = lookUp(files_, process.launchedFile)) {
        return id;
    }
    if (auto id = known(std::filesystem::path(process.launchedFile).stem().string())) {
        return id;
    }
    for (const std::string& candidate : process.unitIds) {
        if (auto id = known(candidate)) {
            return id;
        }
    }
    for (const std::string& program : process.programs) {
        if (auto id = lookUp(programs_, program)) {
            return id;
        }
    }
    return std::nullopt;
}

} // namespace vellory
