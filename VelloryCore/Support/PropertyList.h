// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Support/Date.h"
#include "Support/DocumentVisitor.h"

/// Property lists, the format of bundle information files, preferences and keyed archives, in their
/// XML and binary forms. Reading is bounded before anything is built: by nesting, by the number of
/// values (a binary list may name one value many times), and by size.
namespace vellory::PropertyList {

struct Value;

using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;

struct Data {
    std::string bytes;
    friend bool operator==(const Data&, const Data&) = default;
};

/// A reference to another object inside a keyed archive.
struct Uid {
    std::uint64_t index = 0;
    friend bool operator==(const Uid&, const Uid&) = default;
};

struct Value {
    std::variant<bool, std::int64_t, double, std::string, Date, Data, Uid, Array, Dictionary>
        content;

    const bool* boolean() const { return std::get_if<bool>(&content); }
    const std::int64_t* integer() const { return std::get_if<std::int64_t>(&content); }
    const double* real() const { return std::get_if<double>(&content); }
    const std::string* string() const { return std::get_if<std::string>(&content); }
    const Date* date() const { return std::get_if<Date>(&content); }
    const Data* data() const { return std::get_if<Data>(&content); }
    const Uid* uid() const { return std::get_if<Uid>(&content); }
    const Array* array() const { return std::get_if<Array>(&content); }
    const Dictionary* dictionary() const { return std::get_if<Dictionary>(&content); }

    /// The member of a dictionary; nothing when this is none or has no such key.
    const Value* find(std::string_view key) const;

    friend bool operator==(const Value&, const Value&) = default;
};

enum class Error {
    malformed, ///< neither an XML nor a binary property list, or one that is damaged
    tooLarge   ///< past one of the limits
};

struct Limits {
    /// Of the file; and of the tree's texts and data once shared ones are counted wherever they
    /// occur.
    std::size_t bytes = 64U * 1024U * 1024U;
    /// Containers within containers.
    std::size_t depth = 256;
    /// Values in the tree once shared ones are counted wherever they occur.
    std::size_t values = 2'000'000;
};

/// All texts are well-formed UTF-8. Whole numbers past 2^63 wrap around to negative ones.
std::expected<Value, Error> parse(std::string_view bytes, const Limits& limits = {});

/// Tells `visitor` what a value holds. False when it stopped.
bool visit(const Value& value, DocumentVisitor& visitor);

} // namespace vellory::PropertyList
