// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "Support/Date.h"
#include "Support/DocumentVisitor.h"
#include "Support/Uuid.h"

/// JSON as the stores use it. Objects are written with sorted keys; required keys and value types
/// are checked strictly; keys nobody asked for are ignored.
///
/// A record becomes readable and writable by two free functions in its own namespace:
///
///     void toJson(json::Value& object, const Folder& folder);
///     void fromJson(const json::Value& object, Folder& folder);   // throws json::DecodingError
///
/// Only `decode` is called from outside: it catches, so no exception leaves a reader of files.
namespace vellory::json {

using Value = nlohmann::json;

enum class Error {
    syntax,  ///< not JSON, not UTF-8, nested deeper than `maxDepth` or of more than `maxValues`
    mismatch ///< JSON of another shape: a key is missing or holds another type
};

/// How deep a text may nest; our own files need fewer than ten levels.
inline constexpr int maxDepth = 128;

/// How many values a text may hold. A value of two bytes can cost more than a hundred once it is
/// built; the largest of our own files hold about a tenth of this.
inline constexpr std::size_t maxValues = 500'000;

enum class Style { pretty, compact };

/// Thrown inside `fromJson` functions only; see `decode`.
class DecodingError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The document that `text` spells.
std::expected<Value, Error> parse(std::string_view text);

/// Tells `visitor` what `text` holds, at any depth, without building a tree of it.
VisitResult visit(std::string_view text, DocumentVisitor& visitor);

/// The text of `value`, with bytes that are not UTF-8 replaced by U+FFFD.
std::string dump(const Value& value, Style style = Style::pretty);

// Reading one value, strictly: a number is no boolean, 1.5 is no integer, and so on.
void fromJson(const Value& value, bool& out);
void fromJson(const Value& value, int& out);
void fromJson(const Value& value, std::int64_t& out);
void fromJson(const Value& value, double& out);
void fromJson(const Value& value, std::string& out);
void fromJson(const Value& value, Uuid& out);
/// Seconds since 2001-01-01 00:00 UTC.
void fromJson(const Value& value, Date& out);

inline void toJson(Value& value, bool in) {
    value = in;
}
inline void toJson(Value& value, int in) {
    value = in;
}
inline void toJson(Value& value, std::int64_t in) {
    value = in;
}
inline void toJson(Value& value, double in) {
    value = in;
}
inline void toJson(Value& value, const std::string& in) {
    value = in;
}
inline void toJson(Value& value, const Uuid& in) {
    value = in.string();
}
inline void toJson(Value& value, const Date& in) {
    value = in.secondsSince2001;
}

template <class T>
void fromJson(const Value& value, std::vector<T>& out);
template <class T>
void fromJson(const Value& value, std::set<T>& out);
template <class T>
void fromJson(const Value& value, std::map<std::string, T>& out);
template <class T>
void toJson(Value& value, const std::vector<T>& in);
template <class T>
void toJson(Value& value, const std::set<T>& in);
template <class T>
void toJson(Value& value, const std::map<std::string, T>& in);

const Value::array_t& array(const Value& value);
const Value::object_t& object(const Value& value);

template <class T>
Value encoded(const T& in) {
    Value value;
    toJson(value, in);
    return value;
}

/// Reads the key of an object that must be there.
template <class T>
void require(const Value& from, const char* key, T& out) {
    const auto& members = object(from);
    const auto member = members.find(key);
    if (member == members.end()) {
        throw DecodingError(std::string("missing key ") + key);
    }
    fromJson(member->second, out);
}

/// Reads the key of an object if it is there and not null; else leaves `out` as it is.
template <class T>
void readIfPresent(const Value& from, const char* key, T& out) {
    const auto& members = object(from);
    const auto member = members.find(key);
    if (member != members.end() && !member->second.is_null()) {
        fromJson(member->second, out);
    }
}

/// Reads an optional field: absent and null are nothing.
template <class T>
void readIfPresent(const Value& from, const char* key, std::optional<T>& out) {
    T value{};
    const auto& members = object(from);
    const auto member = members.find(key);
    if (member != members.end() && !member->second.is_null()) {
        fromJson(member->second, value);
        out = std::move(value);
    } else {
        out.reset();
    }
}

template <class T>
void write(Value& into, const char* key, const T& in) {
    toJson(into[key], in);
}

/// Writes an optional field: nothing leaves the key out.
template <class T>
void write(Value& into, const char* key, const std::optional<T>& in) {
    if (in) {
        toJson(into[key], *in);
    }
}

/// The single member of an object that stands for a choice, such as {"app":{"_0":"…"}}: its key
/// names the case. Any other number of keys is a mismatch.
struct Case {
    const std::string& name;
    const Value& payload;
};
Case onlyCase(const Value& value);

/// A value of type T from a whole document.
template <class T>
std::expected<T, Error> decode(std::string_view text) {
    const auto document = parse(text);
    if (!document) {
        return std::unexpected(document.error());
    }
    try {
        T out{};
        fromJson(*document, out);
        return out;
    } catch (const DecodingError&) {
        return std::unexpected(Error::mismatch);
    }
}

/// The document of a value. Numbers that JSON cannot spell (NaN, infinities) become null.
template <class T>
std::string encode(const T& in, Style style = Style::pretty) {
    return dump(encoded(in), style);
}

template <class T>
void fromJson(const Value& value, std::vector<T>& out) {
    const auto& elements = array(value);
    out.clear();
    out.reserve(elements.size());
    for (const auto& element : elements) {
        fromJson(element, out.emplace_back());
    }
}

template <class T>
void fromJson(const Value& value, std::set<T>& out) {
    out.clear();
    for (const auto& element : array(value)) {
        T item{};
        fromJson(element, item);
        out.insert(std::move(item));
    }
}

template <class T>
void fromJson(const Value& value, std::map<std::string, T>& out) {
    out.clear();
    for (const auto& [key, member] : object(value)) {
        fromJson(member, out[key]);
    }
}

template <class T>
void toJson(Value& value, const std::vector<T>& in) {
    value = Value::array();
    for (const auto& element : in) {
        toJson(value.emplace_back(), element);
    }
}

template <class T>
void toJson(Value& value, const std::set<T>& in) {
    value = Value::array();
    for (const auto& element : in) {
        toJson(value.emplace_back(), element);
    }
}

template <class T>
void toJson(Value& value, const std::map<std::string, T>& in) {
    value = Value::object();
    for (const auto& [key, element] : in) {
        toJson(value[key], element);
    }
}

} // namespace vellory::json
