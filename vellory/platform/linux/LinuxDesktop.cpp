// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/LinuxDesktop.h"

#include "platform/linux/LauncherBadges.h"
#include "platform/linux/PictureFile.h"
#include "platform/linux/Wallpaper.h"

namespace vellory {

LinuxDesktop::LinuxDesktop(SessionEnvironment environment)
    : environment_(std::move(environment)),
      badges_(std::make_unique<LauncherBadges>(environment_)) {}

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

bool LinuxDesktop::openLink(const std::string& /*link*/) {
    return false;
}

bool LinuxDesktop::openFile(const std::filesystem::path& /*file*/) {
    return false;
}

void LinuxDesktop::playSound(const std::string& /*name*/) {}

std::vector<std::string> LinuxDesktop::openFolders() const {
    return {};
}

std::vector<std::string> LinuxDesktop::openTabs() const {
    return {};
}

} // namespace vellory
