// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

#include "platform/Image.h"

namespace vellory {

/// Drawn icons on disk, so that the next start reads pixels instead of drawing. An entry holds for
/// one state of its source file; damaged entries count as missing. Any thread.
class IconCache {
  public:
    /// About 1,500 icons of 128 pixels; beyond it the oldest half goes.
    static constexpr std::uint64_t defaultMaxBytes = 96ULL * 1024 * 1024;

    explicit IconCache(std::filesystem::path folder, std::uint64_t maxBytes = defaultMaxBytes)
        : folder_(std::move(folder)), maxBytes_(maxBytes) {}

    /// What identifies the drawing of `source` at this size; nothing when there is no such file.
    static std::optional<std::string> key(const std::filesystem::path& source, int pixels);

    std::optional<Image> read(const std::string& key) const;
    void write(const std::string& key, const Image& image);

  private:
    std::filesystem::path fileOf(const std::string& key) const;
    void makeRoom(std::uint64_t added);

    const std::filesystem::path folder_;
    const std::uint64_t maxBytes_;
    std::mutex mutex_;
    std::optional<std::uint64_t> bytes_; ///< in the folder; unknown until the first write
};

} // namespace vellory
