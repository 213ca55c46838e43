// SPDX-License-Identifier: Apache-2.0
#include "Updates/Versions.h"

#include <algorithm>

namespace vellory::Versions {

namespace {

/// Takes the next part off `version` and returns its number as digits without leading zeros: empty
/// for zero. Digits rather than an integer, because build numbers may have any number of them.
std::string_view nextNumber(std::string_view& version) {
    version.remove_prefix(std::min(version.find_first_not_of('.'), version.size()));
    std::string_view part = version.substr(0, version.find('.'));
    version.remove_prefix(part.size());
    part = part.substr(0, part.find_first_not_of("0123456789"));
    part.remove_prefix(std::min(part.find_first_not_of('0'), part.size()));
    return part;
}

} // namespace

std::weak_ordering compare(std::string_view a, std::string_view b) {
    while (!a.empty() || !b.empty()) {
        const std::string_view left = nextNumber(a);
        const std::string_view right = nextNumber(b);
        if (left.size() != right.size()) {
            return left.size() <=> right.size();
        }
        if (const auto order = left <=> right; order != 0) {
            return order;
        }
    }
    return std::weak_ordering::equivalent;
}

bool isNewer(std::string_view a, std::string_view than) {
    return compare(a, than) == std::weak_ordering::greater;
}

} // namespace vellory::Versions
