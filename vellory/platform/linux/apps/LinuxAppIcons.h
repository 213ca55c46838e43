// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/AppIcons.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// The pictures that desktop entries name, from the user's icon theme, drawn once for each size and
/// kept on disk.
class LinuxAppIcons final : public AppIcons {
  public:
    struct Options {
        SessionEnvironment environment;
        /// Where drawn icons are kept between runs; nothing keeps none.
        std::optional<std::filesystem::path> cacheFolder;
        /// The icon theme; nothing takes the one that the user's desktop is set to.
        std::optional<std::string> theme;
        /// For how long the theme's folders are taken to be as they were.
        std::chrono::milliseconds trust = std::chrono::seconds(1);
    };

    explicit LinuxAppIcons(Options options);
    ~LinuxAppIcons() override;

    std::optional<Image> icon(const InstalledApp& app, int pixels) const override;

    /// How many pictures were drawn from their sources rather than taken from the cache.
    int drawn() const;

  private:
    class Work;
    std::unique_ptr<Work> work_;
};

} // namespace vellory
