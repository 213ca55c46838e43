// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/LinuxDesktop.h"

#include "platform/linux/apps/DefaultApps.h"
#include "platform/linux/apps/FileLinks.h"
#include "platform/linux/apps/LinuxRunningApps.h"
#include "platform/linux/apps/PictureFile.h"
#include "platform/linux/desktop/BrowserTabs.h"
#include "platform/linux/desktop/FileManagerFolders.h"
#include "platform/linux/desktop/LauncherBadges.h"
#include "platform/linux/desktop/SoundPlayer.h"
#include "platform/linux/desktop/Wallpaper.h"

namespace vellory {

LinuxDesktop::LinuxDesktop(SessionEnvironment environment, LinuxRunningApps& apps,
                           const HttpClient& http, Scheduler& scheduler)
    : environment_(std::move(environment)), apps_(apps), http_(http), scheduler_(scheduler),
      badges_(std::make_unique<LauncherBadges>(environment_)),
      sounds_(std::make_shared<SoundPlayer>()) {}

LinuxDesktop::~LinuxDesktop() = default;

std::optional<Image> LinuxDesktop::backdrop(const Area& display) const {
    if (display.width < 1 || display.height < 1 || display.width > PictureFile::maxSide ||
        display.height > PictureFile::maxSide) {
        return std::nullopt;
    }
    if (const auto file = Wallpaper::file(environment_)) {
        const auto picture =
            PictureFile::load(*file, display.width, display.height, PictureFile::Fit::cover);
        if (picture != nullptr) {
            return PictureFile::framed(picture.get(),
                                       (gdk_pixbuf_get_width(picture.get()) - display.width) / 2,
                                       (gdk_pixbuf_get_height(picture.get()) - display.height) / 2,
                                       display.width, display.height);
        }
    }
    if (auto image = Wallpaper::ofRootWindow(environment_, display)) {
        return image;
    }
    return Wallpaper::ofScreen(environment_, display);
}

std::map<BundleID, std::string> LinuxDesktop::badges() const {
    return badges_->texts();
}

bool LinuxDesktop::openLink(const std::string& link) {
    if (const glib::Chars scheme(g_uri_parse_scheme(link.c_str())); scheme != nullptr) {
        if (g_ascii_strcasecmp(scheme.get(), "file") == 0) {
            const auto file = FileLinks::fileOf(link);
            return file && openFile(*file);
        }
        if (const auto app = DefaultApps::forScheme(scheme.get())) {
            apps_.openLink(*app, link, {});
            return true;
        }
    }
    return false;
}

bool LinuxDesktop::openFile(const std::filesystem::path& file) {
    std::error_code error;
    const auto link = FileLinks::linkTo(file);
    if (!link || !std::filesystem::exists(file, error)) {
        return false;
    }
    // What it holds is looked into: its disk may be slow.
    scheduler_.inBackground(
        [this, file, link = *link, alive = std::weak_ptr(alive_)]() -> Scheduler::Task {
            return [this, app = DefaultApps::forFile(file), link, alive] {
                if (app && !alive.expired()) {
                    apps_.openLink(*app, link, {});
                }
            };
        });
    return true;
}

void LinuxDesktop::playSound(const std::string& name) {
    // Finding the sound system takes a moment, or long when it hangs.
    scheduler_.inBackground([sounds = sounds_, name]() -> Scheduler::Task {
        sounds->play(name);
        return [] {};
    });
}

std::vector<std::string> LinuxDesktop::openFolders() const {
    return FileManagerFolders::open(environment_);
}

std::vector<std::string> LinuxDesktop::openTabs() const {
    return BrowserTabs::open(environment_, http_);
}

} // namespace vellory
