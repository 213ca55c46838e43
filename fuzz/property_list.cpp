// SPDX-License-Identifier: Apache-2.0
// A property list of any content, XML or binary, is read within its limits or refused.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Support/PropertyList.h"
#include "Support/Text.h"

namespace {

using namespace vellory;

constexpr PropertyList::Limits limits{.bytes = 1U << 20U, .depth = 40, .values = 5'000};

struct Size {
    std::size_t depth = 0;
    std::size_t values = 1;
    std::size_t bytes = 0;
};

Size measured(const PropertyList::Value& value) {
    Size size;
    const auto add = [&](const PropertyList::Value& member) {
        const Size inner = measured(member);
        size.depth = std::max(size.depth, inner.depth);
        size.values += inner.values;
        size.bytes += inner.bytes;
    };
    if (const auto* text = value.string()) {
        if (!Text::isValidUtf8(*text)) {
            std::abort();
        }
        size.bytes = text->size();
    } else if (const auto* array = value.array()) {
        std::ranges::for_each(*array, add);
        ++size.depth;
    } else if (const auto* dictionary = value.dictionary()) {
        for (const auto& [key, member] : *dictionary) {
            if (value.find(key) != &member || !Text::isValidUtf8(key)) {
                std::abort();
            }
            add(member);
        }
        ++size.depth;
    }
    return size;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto value = PropertyList::parse(bytes, limits);
    if (value) {
        const Size found = measured(*value);
        // Bytes of UTF-16 and such that are no UTF-8 may take up to three times as many.
        if (found.depth > limits.depth || found.values > limits.values ||
            found.bytes > 3 * limits.bytes) {
            std::abort();
        }
    }
    return 0;
}
