// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/LinuxAppIcons.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <mutex>

#include "platform/linux/apps/DesktopEntryFile.h"
#include "platform/linux/apps/IconCache.h"
#include "platform/linux/apps/IconTheme.h"
#include "platform/linux/apps/PictureFile.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr int maxPixels = 2048;

/// How much of the frame an icon fills at least before it is drawn larger: transparent margins of
/// an eighth at each side are usual, wider ones make it look small beside others.
constexpr double usualPart = 0.75;
/// How much of the frame such an icon fills afterwards.
constexpr double filledPart = 0.875;
constexpr double maxEnlargement = 4;

/// What the entry says its icon is: a name or an absolute path.
std::string iconOf(const fs::path& file) {
    const glib::KeyFile entry = DesktopEntryFile::load(file);
    return entry == nullptr
               ? ""
               : DesktopEntryFile::translation(entry.get(), DesktopEntryFile::mainGroup,
                                               G_KEY_FILE_DESKTOP_KEY_ICON);
}

/// Draws a picture in the middle of a square.
std::optional<Image> draw(const fs::path& source, int pixels) {
    auto picture = PictureFile::load(source, pixels, pixels, PictureFile::Fit::within);
    if (picture == nullptr) {
        return std::nullopt;
    }
    auto bounds = PictureFile::visibleBounds(picture.get());
    if (bounds.isEmpty()) {
        return std::nullopt;
    }
    const int largest = std::max(bounds.right - bounds.left, bounds.bottom - bounds.top);
    if (largest < usualPart * pixels) {
        const double factor = std::min(filledPart * pixels / largest, maxEnlargement);
        const int side = static_cast<int>(std::lround(pixels * factor));
        if (auto larger = PictureFile::load(source, side, side, PictureFile::Fit::within)) {
            picture = std::move(larger);
            bounds = PictureFile::visibleBounds(picture.get());
            return PictureFile::framed(picture.get(), (bounds.left + bounds.right - pixels) / 2,
                                       (bounds.top + bounds.bottom - pixels) / 2, pixels, pixels);
        }
    }
    return PictureFile::framed(picture.get(), (gdk_pixbuf_get_width(picture.get()) - pixels) / 2,
                               (gdk_pixbuf_get_height(picture.get()) - pixels) / 2, pixels, pixels);
}

} // namespace

class LinuxAppIcons::Work {
  public:
    explicit Work(Options options) : options_(std::move(options)) {
        if (options_.cacheFolder) {
            cache_.emplace(*options_.cacheFolder);
        }
    }

    std::optional<Image> icon(const InstalledApp& app, int pixels) {
        const std::string name = iconOf(app.url);
        const auto source =
            name.starts_with('/') ? std::optional<fs::path>(name) : theme().find(name, pixels);
        if (name.empty() || !source || pixels < 1 || pixels > maxPixels) {
            return std::nullopt;
        }
        const auto key = cache_ ? IconCache::key(*source, pixels) : std::nullopt;
        if (key) {
            if (auto image = cache_->read(*key)) {
                return image;
            }
        }
        auto image = draw(*source, pixels);
        ++drawn_;
        if (image && key) {
            cache_->write(*key, *image);
        }
        return image;
    }

    int drawn() const { return drawn_; }

  private:
    /// Not in the constructor: finding out which theme is set reads the desktop's settings.
    IconTheme& theme() {
        std::call_once(themeOnce_, [this] {
            std::vector<fs::path> loose;
            for (const fs::path& folder : options_.environment.dataDirs()) {
                loose.push_back(folder / "pixmaps");
            }
            theme_.emplace(
                options_.theme ? *options_.theme : currentIconTheme(options_.environment),
                IconTheme::baseFolders(options_.environment), std::move(loose), options_.trust);
        });
        return *theme_;
    }

    const Options options_;
    std::optional<IconCache> cache_;
    std::once_flag themeOnce_;
    std::optional<IconTheme> theme_;
    std::atomic<int> drawn_ = 0;
};

LinuxAppIcons::LinuxAppIcons(Options options) : work_(std::make_unique<Work>(std::move(options))) {}

LinuxAppIcons::~LinuxAppIcons() = default;

std::optional<Image> LinuxAppIcons::icon(const InstalledApp& app, int pixels) const {
    return work_->icon(app, pixels);
}

int LinuxAppIcons::drawn() const {
    return work_->drawn();
}

} // namespace vellory
