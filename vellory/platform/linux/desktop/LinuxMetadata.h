// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>

#include "platform/Metadata.h"
#include "platform/Scheduler.h"
#include "platform/linux/apps/DesktopEntries.h"

namespace vellory {

/// The desktop's memory as Linux keeps it: uses and documents from the list of recently used files
/// ("recently-used.xbel" in the user's data folder), dates from the desktop entries.
class LinuxMetadata final : public Metadata {
  public:
    struct Options {
        std::filesystem::path recentlyUsed; ///< the list
        /// Documents told of one app.
        std::size_t documents = 10;
    };

    /// `scheduler` must outlive this object.
    LinuxMetadata(Options options, std::shared_ptr<DesktopEntries> entries, Scheduler& scheduler);
    ~LinuxMetadata() override;

    void recall(const std::vector<InstalledApp>& apps,
                std::function<void(AppRecords)> done) override;

  private:
    class List;
    struct Names;

    std::shared_ptr<const Names> names();

    Options options_;
    std::shared_ptr<DesktopEntries> entries_;
    Scheduler& scheduler_;
    std::shared_ptr<List> list_; ///< outlives this object while it is being read
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
    std::shared_ptr<const Names> names_;
    unsigned namesRevision_ = 0;
};

} // namespace vellory
