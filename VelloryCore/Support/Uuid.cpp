// SPDX-License-Identifier: Apache-2.0
#include "Support/Uuid.h"

#include <uuid/uuid.h>

namespace vellory {

namespace {
constexpr std::size_t canonicalLength = 36;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != canonicalLength) {
        return std::nullopt;
    }
    std::array<std::uint8_t, 16> bytes{};
    if (uuid_parse(std::string(text).c_str(), bytes.data()) != 0) {
        return std::nullopt;
    }
    return Uuid(bytes);
}

Uuid Uuid::random() {
    std::array<std::uint8_t, 16> bytes{};
    uuid_generate_random(bytes.data());
    return Uuid(bytes);
}

std::string Uuid::string() const {
    std::array<char, canonicalLength + 1> text{};
    uuid_unparse_upper(bytes_.data(), text.data());
    return {text.data(), canonicalLength};
}

} // namespace vellory
