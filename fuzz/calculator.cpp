// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Search/Calculator.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vellory;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto value = Calculator::evaluate(text);
    if (!value) {
        return 0;
    }
    const auto same = [&](const std::string& other, double expected) {
        const auto result = Calculator::evaluate(other);
        return result && (*result == expected);
    };
    // A value is finite, can be shown, and does not depend on spaces, commas and letter case.
    std::string written;
    for (const char c : text) {
        written += c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
        written += static_cast<unsigned char>(c) < 0x80 ? ", " : "";
    }
    if (!std::isfinite(*value) || Calculator::format(*value, "en_US").empty() ||
        !same(written, *value)) {
        std::abort();
    }
    // What is a sum is a term in brackets, unless it nests too deep for one level more.
    const auto negated = Calculator::evaluate("-(" + text + ")");
    if (negated && *negated != -*value) {
        std::abort();
    }
    return 0;
}
