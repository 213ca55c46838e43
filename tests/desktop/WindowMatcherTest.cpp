// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/apps/Launcher.h"
#include "platform/linux/windows/WindowMatcher.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;

WindowEvidence withClass(std::string instance, std::string windowClass) {
    WindowEvidence window;
    window.windowInstance = std::move(instance);
    window.windowClass = std::move(windowClass);
    return window;
}

WindowEvidence ofProcess(ProcessInfo process) {
    WindowEvidence window;
    window.process = std::move(process);
    return window;
}

TEST(WindowMatcher, KnowsAppsByTheirStrongestEvidence) {
    std::map<BundleID, DesktopEntry> entries;
    const auto add = [&](const std::string& id, const std::string& windowClass,
                         const std::string& program, bool isShown = true) {
        entries[id] = {id, "/apps/" + id + ".desktop", id, windowClass, program, isShown};
    };
    add("org.gnome.Nautilus", "", "nautilus");
    add("browser", "Browser-stable", "/opt/browser/browser");
    add("web-mail", "crx_mail", "/opt/browser/browser");
    add("org.office.writer", "office-writer", "office");
    add("org.office.calc", "office-calc", "office");
    add("org.a.Files", "", "a-files");
    add("org.b.Files", "", "b-files");
    add("script", "", "env");
    add("app-handler", "Shared", "tool", false);
    add("tool", "Shared", "tool");
    add("google-chrome", "", "chrome");
    const WindowMatcher matcher(entries);

    WindowEvidence gtk = withClass("x", "Browser-stable");
    gtk.gtkApplicationId = "org.gnome.Nautilus";
    WindowEvidence hint = withClass("x", "Browser-stable");
    hint.desktopFileHint = "/apps/tool.desktop";
    WindowEvidence started = withClass("x", "Unknown");
    started.startedAs = "tool";
    struct Row {
        const char* what;
        WindowEvidence window;
        std::optional<BundleID> app;
    };
    const std::vector<Row> rows{
        {"GTK's id beats the class", gtk, "org.gnome.Nautilus"},
        {"the entry that the window names beats the class", hint, "tool"},
        {"a web app by its instance", withClass("crx_mail", "Browser-stable"), "web-mail"},
        {"the browser itself", withClass("browser", "Browser-stable"), "browser"},
        {"the class as id", withClass("x", "browser"), "browser"},
        {"letter case counts last", withClass("x", "OFFICE-CALC"), "org.office.calc"},
        {"the id in another letter case", withClass("org.gnome.nautilus", "Org.gnome.Nautilus"),
         "org.gnome.Nautilus"},
        {"the last part of an id", withClass("n", "Nautilus"), "org.gnome.Nautilus"},
        {"the last part of two ids", withClass("f", "Files"), std::nullopt},
        {"of two entries the one in the menus", withClass("s", "Shared"), "tool"},
        {"our own start", started, "tool"},
        {"the file it was started from", ofProcess({"/apps/browser.desktop", {}, {}}), "browser"},
        {"a copy of that file", ofProcess({"/home/u/Desktop/browser.desktop", {}, {}}), "browser"},
        {"the unit, longest id first",
         ofProcess({"", {"x-google-chrome", "google-chrome", "chrome"}, {}}), "google-chrome"},
        {"the program", ofProcess({"", {}, {"nautilus"}}), "org.gnome.Nautilus"},
        {"a program of two apps", ofProcess({"", {}, {"office"}}), std::nullopt},
        {"a program that starts others", ofProcess({"", {}, {"env"}}), std::nullopt},
        {"nothing known", withClass("x", "Stranger"), std::nullopt},
        {"nothing at all", {}, std::nullopt},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(matcher.match(row.window), row.app) << row.what;
    }
}

TEST(ProcessInfo, UnitNamesTellTheApp) {
    struct Row {
        std::string unit;
        std::vector<std::string> ids;
    };
    const std::vector<Row> rows{
        {"app-gnome-org.gnome.Maps-4711.scope", {"gnome-org.gnome.Maps", "org.gnome.Maps"}},
        {"app-flatpak-org.x.Y-12.scope", {"flatpak-org.x.Y", "org.x.Y"}},
        {"app-vellory-google\\x2dchrome-7.scope", {"vellory-google-chrome", "google-chrome"}},
        {"app-org.x.Y@0123.service", {"org.x.Y"}},
        {"snap.firefox.firefox-0aa1-bb.scope", {"firefox_firefox", "firefox_firefox"}},
        {"snap.code.url-handler.0aa1.scope", {"code_url", "code_code"}},
        {"app-.scope", {}},
        {"app-x.scope", {}},
        {"session-2.scope", {}},
        {"snap.scope", {}},
        {"", {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(appIdsOfUnit(row.unit), row.ids) << row.unit;
    }
    // What we name ourselves, everybody can read back.
    for (const std::string id : {"org.x.Y", "a-b_c", "späth", "x y"}) {
        EXPECT_THAT(appIdsOfUnit(Launcher::scopeName(id, 42)), testing::Contains(id));
    }
    EXPECT_LE(Launcher::scopeName(std::string(5000, '-'), 1234567).size(), 255U);
}

} // namespace
} // namespace vellory::test
