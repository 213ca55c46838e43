// SPDX-License-Identifier: Apache-2.0
#include "Support/Json.h"

#include <algorithm>
#include <cmath>

namespace vellory::json {

namespace {

/// No JSON holds this byte, but the parser would take it for the end of the text.
bool holdsNul(std::string_view text) {
    return text.find('\0') != std::string_view::npos;
}

/// A text that is about to be parsed.
struct Prepared {
    /// Runs of blanks outside of strings as one space: the parser takes its time over each of the
    /// blanks that a pretty text is half made of.
    std::string text;
    /// How deep arrays and objects nest, from the brackets outside of strings. Known before
    /// parsing, so that a hostile text is turned away before anything is built from it.
    int depth = 0;
    /// Never less than the values in the text: the first, and one after each bracket and comma.
    std::size_t values = 1;
};

Prepared prepared(std::string_view text) {
    Prepared out;
    out.text.resize(text.size());
    char* end = out.text.data();
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            *end++ = c;
            if (c == '\\' && i + 1 < text.size()) {
                *end++ = text[++i];
            } else if (c == '"') {
                inString = false;
            }
            continue;
        }
        switch (c) {
        case ' ':
        case '\t':
        case '\n':
        case '\r':
            if (end == out.text.data() || end[-1] != ' ') {
                *end++ = ' ';
            }
            continue;
        case '"':
            inString = true;
            break;
        case '[':
        case '{':
            out.depth = std::max(out.depth, ++depth);
            ++out.values;
            break;
        case ',':
            ++out.values;
            break;
        case ']':
        case '}':
            --depth;
            break;
        default:
            break;
        }
        *end++ = c;
    }
    out.text.resize(static_cast<std::size_t>(end - out.text.data()));
    return out;
}

/// Passes the parser's events on.
class VisitorEvents final : public nlohmann::json_sax<Value> {
  public:
    explicit VisitorEvents(DocumentVisitor& visitor) : visitor_(visitor) {}

    bool isMalformed() const { return isMalformed_; }

    bool null() override { return visitor_.other(); }
    bool boolean(bool /*value*/) override { return visitor_.other(); }
    bool number_integer(number_integer_t /*value*/) override { return visitor_.other(); }
    bool number_unsigned(number_unsigned_t /*value*/) override { return visitor_.other(); }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override {
        return visitor_.other();
    }
    bool string(string_t& value) override { return visitor_.text(value); }
    bool binary(binary_t& /*value*/) override { return visitor_.other(); }
    bool start_object(std::size_t /*count*/) override { return visitor_.beginDictionary(); }
    bool key(string_t& name) override { return visitor_.key(name); }
    bool end_object() override { return visitor_.endDictionary(); }
    bool start_array(std::size_t /*count*/) override { return visitor_.beginList(); }
    bool end_array() override { return visitor_.endList(); }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        isMalformed_ = true;
        return false;
    }

  private:
    DocumentVisitor& visitor_;
    bool isMalformed_ = false;
};

[[noreturn]] void mismatch(const char* wanted, const Value& value) {
    throw DecodingError(std::string("expected ") + wanted + ", found " + value.type_name());
}

} // namespace

std::expected<Value, Error> parse(std::string_view text) {
    if (holdsNul(text)) {
        return std::unexpected(Error::syntax);
    }
    const Prepared ready = prepared(text);
    if (ready.depth > maxDepth || ready.values > maxValues) {
        return std::unexpected(Error::syntax);
    }
    const char* const begin = ready.text.data();
    Value document = Value::parse(begin, begin + ready.text.size(), nullptr, false);
    if (document.is_discarded()) {
        return std::unexpected(Error::syntax);
    }
    return document;
}

VisitResult visit(std::string_view text, DocumentVisitor& visitor) {
    if (holdsNul(text)) {
        return VisitResult::malformed;
    }
    VisitorEvents events(visitor);
    if (Value::sax_parse(text.begin(), text.end(), &events)) {
        return VisitResult::complete;
    }
    return events.isMalformed() ? VisitResult::malformed : VisitResult::stopped;
}

std::string dump(const Value& value, Style style) {
    const int indent = style == Style::pretty ? 2 : -1;
    return value.dump(indent, ' ', false, Value::error_handler_t::replace);
}

void fromJson(const Value& value, bool& out) {
    if (!value.is_boolean()) {
        mismatch("a boolean", value);
    }
    out = value.get<bool>();
}

void fromJson(const Value& value, std::int64_t& out) {
    // A whole number may be spelled 3.0, as other writers of JSON do.
    if (value.is_number_float()) {
        const double number = value.get<double>();
        constexpr double limit = 9'007'199'254'740'992.0; // 2^53: past it a double skips integers
        if (!(std::fabs(number) <= limit) || std::trunc(number) != number) {
            mismatch("an integer", value);
        }
        out = static_cast<std::int64_t>(number);
        return;
    }
    if (value.is_number_unsigned() &&
        value.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
        mismatch("an integer of 64 bits", value);
    }
    if (!value.is_number_integer()) {
        mismatch("an integer", value);
    }
    out = value.get<std::int64_t>();
}

void fromJson(const Value& value, int& out) {
    std::int64_t wide = 0;
    fromJson(value, wide);
    if (wide < std::numeric_limits<int>::min() || wide > std::numeric_limits<int>::max()) {
        mismatch("an integer of 32 bits", value);
    }
    out = static_cast<int>(wide);
}

void fromJson(const Value& value, double& out) {
    if (!value.is_number()) {
        mismatch("a number", value);
    }
    out = value.get<double>();
}

void fromJson(const Value& value, std::string& out) {
    if (!value.is_string()) {
        mismatch("a string", value);
    }
    out = value.get_ref<const std::string&>();
}

void fromJson(const Value& value, Uuid& out) {
    if (!value.is_string()) {
        mismatch("a UUID", value);
    }
    const auto uuid = Uuid::parse(value.get_ref<const std::string&>());
    if (!uuid) {
        mismatch("a UUID", value);
    }
    out = *uuid;
}

void fromJson(const Value& value, Date& out) {
    fromJson(value, out.secondsSince2001);
}

const Value::array_t& array(const Value& value) {
    if (!value.is_array()) {
        mismatch("an array", value);
    }
    return value.get_ref<const Value::array_t&>();
}

const Value::object_t& object(const Value& value) {
    if (!value.is_object()) {
        mismatch("an object", value);
    }
    return value.get_ref<const Value::object_t&>();
}

Case onlyCase(const Value& value) {
    const auto& members = object(value);
    if (members.size() != 1) {
        throw DecodingError("a choice needs exactly one key");
    }
    return {members.begin()->first, members.begin()->second};
}

} // namespace vellory::json
