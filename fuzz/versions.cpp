// SPDX-License-Identifier: Apache-2.0
// Versions are in a strict weak order: antisymmetric, and both "newer" and "equal" are transitive.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Updates/Versions.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

/// The input is three versions, one to a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    std::array<std::string_view, 3> versions;
    for (std::string_view& version : versions) {
        version = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), version.size() + 1));
    }
    for (const std::string_view a : versions) {
        require(Versions::compare(a, a) == 0);
        for (const std::string_view b : versions) {
            const auto order = Versions::compare(a, b);
            require((Versions::compare(b, a) < 0) == (order > 0));
            require(Versions::isNewer(a, b) == (order > 0));
            for (const std::string_view c : versions) {
                if (order >= 0 && Versions::compare(b, c) >= 0) {
                    require(Versions::compare(a, c) >= 0);
                }
                if (order == 0 && Versions::compare(b, c) == 0) {
                    require(Versions::compare(a, c) == 0);
                }
            }
        }
    }
    return 0;
}
