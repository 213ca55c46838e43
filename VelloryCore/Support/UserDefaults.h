// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vellory {

/// The user's settings by key. The program keeps them where the desktop keeps settings; tests keep
/// them in memory.
class UserDefaults {
  public:
    /// Binary data (an encoded record) is held as a string.
    using Value = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

    virtual ~UserDefaults() = default;

    virtual std::optional<Value> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, const Value& value) = 0;
    virtual void remove(std::string_view key) = 0;

    // What a key holds as the type wanted, or nothing. Settings files are edited by hand and some
    // formats keep every value as text, so "true", "7" and whole doubles are understood.
    std::optional<bool> boolean(std::string_view key) const;
    std::optional<std::int64_t> integer(std::string_view key) const;
    std::optional<double> number(std::string_view key) const;
    std::optional<std::string> string(std::string_view key) const;
    std::optional<std::vector<std::string>> strings(std::string_view key) const;
};

/// Settings that live as long as the object: for tests and for pictures made without a user.
class MemoryDefaults final : public UserDefaults {
  public:
    std::optional<Value> value(std::string_view key) const override;
    void set(std::string_view key, const Value& value) override;
    void remove(std::string_view key) override;

  private:
    std::map<std::string, Value, std::less<>> values_;
};

} // namespace vellory
