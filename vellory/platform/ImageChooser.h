// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace vellory {

/// Lets the user pick a picture from their files. Main thread.
class ImageChooser {
  public:
    virtual ~ImageChooser() = default;

    /// `chosen` is called once with the file, later, or never when the user cancels.
    virtual void chooseImage(const std::string& title,
                             std::function<void(const std::filesystem::path&)> chosen) = 0;
};

} // namespace vellory
