// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

#include <QSettings>

#include "Support/UserDefaults.h"

namespace vellory {

/// The user's settings in a text file of their own, which may be edited by hand while the program
/// is not running. Changes are written soon after they are made, at the latest when this object
/// goes.
class QtSettings final : public UserDefaults {
  public:
    explicit QtSettings(const std::filesystem::path& file);

    std::optional<Value> value(std::string_view key) const override;
    void set(std::string_view key, const Value& value) override;
    void remove(std::string_view key) override;

  private:
    QSettings settings_;
};

} // namespace vellory
