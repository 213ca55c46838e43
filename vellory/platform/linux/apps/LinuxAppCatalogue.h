// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Support/Text.h"
#include "platform/AppCatalogue.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/MimeGlobs.h"

namespace vellory {

/// The apps that have a desktop entry which this desktop's menus would show.
class LinuxAppCatalogue final : public AppCatalogue {
  public:
    /// Shares `entries` with `LinuxRunningApps`, which knows windows by them. `sortLocale` is the
    /// locale of the order of names.
    LinuxAppCatalogue(std::shared_ptr<DesktopEntries> entries, std::string_view sortLocale);

    std::vector<std::filesystem::path>
    roots(const std::vector<std::filesystem::path>& extraFolders) const override;
    std::vector<InstalledApp> scan(const std::vector<std::filesystem::path>& roots) override;
    std::vector<std::filesystem::path> scannedFolders() const override;
    std::optional<std::string> category(const InstalledApp& app) const override;
    AppInfo info(const InstalledApp& app) const override;
    std::vector<AppAction> actions(const InstalledApp& app) const override;
    std::optional<InstalledApp> find(const BundleID& id) const override;

  private:
    std::shared_ptr<DesktopEntries> entries_;
    MimeGlobs globs_;
    Text::Collator collator_;
};

} // namespace vellory
