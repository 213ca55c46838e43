// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vellory {

/// A 128-bit universally unique identifier (RFC 9562).
class Uuid {
  public:
    /// The nil identifier, all zero.
    constexpr Uuid() = default;
    constexpr explicit Uuid(const std::array<std::uint8_t, 16>& bytes) : bytes_(bytes) {}

    /// The identifier that `text` spells in the canonical form of 36 characters, in either case.
    static std::optional<Uuid> parse(std::string_view text);

    /// A fresh random identifier (version 4).
    static Uuid random();

    /// The canonical text in upper case, the form that stored files use.
    std::string string() const;

    const std::array<std::uint8_t, 16>& bytes() const { return bytes_; }

    friend auto operator<=>(const Uuid&, const Uuid&) = default;

  private:
    std::array<std::uint8_t, 16> bytes_{};
};

/// Where an operation takes a fresh identifier from: `Uuid::random` in the program, a counter in
/// tests.
using UuidSource = std::function<Uuid()>;

} // namespace vellory

template <>
struct std::hash<vellory::Uuid> {
    std::size_t operator()(const vellory::Uuid& uuid) const noexcept {
        return std::hash<std::string_view>{}(
            {reinterpret_cast<const char*>(uuid.bytes().data()), uuid.bytes().size()});
    }
};
