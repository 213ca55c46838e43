// SPDX-License-Identifier: Apache-2.0
#include "Support/UserDefaults.h"

#include <charconv>
#include <cmath>

namespace vellory {

namespace {

template <class Number>
std::optional<Number> parsed(const std::string& text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

} // namespace

std::optional<bool> UserDefaults::boolean(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) {
        return std::nullopt;
    }
    if (const auto* flag = std::get_if<bool>(&*stored)) {
        return *flag;
    }
    if (const auto* whole = std::get_if<std::int64_t>(&*stored)) {
        return *whole != 0;
    }
    if (const auto* text = std::get_if<std::string>(&*stored)) {
        if (*text == "true" || *text == "1") {
            return true;
        }
        if (*text == "false" || *text == "0") {
            return false;
        }
    }
    return std::nullopt;
}

std::optional<std::int64_t> UserDefaults::integer(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) {
        return std::nullopt;
    }
    if (const auto* whole = std::get_if<std::int64_t>(&*stored)) {
        return *whole;
    }
    if (const auto* number = std::get_if<double>(&*stored)) {
        if (std::fabs(*number) < 9e15 && std::trunc(*number) == *number) {
            return static_cast<std::int64_t>(*number);
        }
    }
    if (const auto* text = std::get_if<std::string>(&*stored)) {
        return parsed<std::int64_t>(*text);
    }
    return std::nullopt;
}

std::optional<double> UserDefaults::number(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) {
        return std::nullopt;
    }
    std::optional<double> result;
    if (const auto* number = std::get_if<double>(&*stored)) {
        result = *number;
    } else if (const auto* whole = std::get_if<std::int64_t>(&*stored)) {
        result = static_cast<double>(*whole);
    } else if (const auto* text = std::get_if<std::string>(&*stored)) {
        result = parsed<double>(*text);
    }
    return result && std::isfinite(*result) ? result : std::nullopt;
}

std::optional<std::string> UserDefaults::string(std::string_view key) const {
    const auto stored = value(key);
    if (stored) {
        if (const auto* text = std::get_if<std::string>(&*stored)) {
            return *text;
        }
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> UserDefaults::strings(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) {
        return std::nullopt;
    }
    if (const auto* list = std::get_if<std::vector<std::string>>(&*stored)) {
        return *list;
    }
    if (const auto* text = std::get_if<std::string>(&*stored)) {
        // Some formats cannot tell a list of one from its only element.
        return text->empty() ? std::vector<std::string>{} : std::vector<std::string>{*text};
    }
    return std::nullopt;
}

std::optional<UserDefaults::Value> MemoryDefaults::value(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void MemoryDefaults::set(std::string_view key, const Value& value) {
    values_.insert_or_assign(std::string(key), value);
}

void MemoryDefaults::remove(std::string_view key) {
    const auto found = values_.find(key);
    if (found != values_.end()) {
        values_.erase(found);
    }
}

} // namespace vellory
