// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <filesystem>
#include <system_error>

namespace vellory {

/// A copy of the user's files in a temporary folder, for a run that must leave them alone: what
/// such a run writes goes with it.
class ScratchCopy {
  public:
    /// Copies what is in `support`, and `settings` under its own name beside it. What is missing is
    /// passed over. Pictures are left out: boards name them by their whole path, and they are only
    /// read. Fails with the file system's error; nothing is left behind then.
    static std::expected<ScratchCopy, std::error_code> make(const std::filesystem::path& support,
                                                            const std::filesystem::path& settings);

    ScratchCopy(ScratchCopy&& other) noexcept;
    ScratchCopy& operator=(ScratchCopy&&) = delete;
    /// Removes the folder and all that was written into it.
    ~ScratchCopy();

    const std::filesystem::path& folder() const { return folder_; }

  private:
    explicit ScratchCopy(std::filesystem::path folder);

    std::filesystem::path folder_;
};

} // namespace vellory
