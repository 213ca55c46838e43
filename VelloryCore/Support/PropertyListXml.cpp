// SPDX-License-Identifier: Apache-2.0
#include "Support/PropertyListReaders.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include <expat.h>

#include "Support/Text.h"

namespace vellory::PropertyList {

namespace {

std::optional<std::int64_t> integerFrom(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal) {
        text.remove_prefix(2);
    }
    std::uint64_t magnitude = 0; // as the binary form, which knows unsigned numbers of 64 bits
    const char* const end = text.data() + text.size();
    const auto [parsed, error] =
        std::from_chars(text.data(), end, magnitude, isHexadecimal ? 16 : 10);
    if (error != std::errc{} || parsed != end) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(isNegative ? 0 - magnitude : magnitude);
}

std::optional<double> realFrom(std::string_view text) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && parsed == end ? std::optional(number) : std::nullopt;
}

/// A moment such as "2001-01-01T00:01:00Z", the only form that is used.
std::optional<Date> dateFrom(std::string_view text) {
    constexpr std::string_view form = "0000-00-00T00:00:00Z";
    if (text.size() != form.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == '0' ? !isDigit : text[i] != form[i]) {
            return std::nullopt;
        }
    }
    const auto number = [&](std::size_t from, std::size_t size) {
        int out = 0;
        std::from_chars(text.data() + from, text.data() + from + size, out);
        return out;
    };
    using namespace std::chrono;
    const year_month_day day{year(number(0, 4)), month(static_cast<unsigned>(number(5, 2))),
                             std::chrono::day(static_cast<unsigned>(number(8, 2)))};
    if (!day.ok()) {
        return std::nullopt;
    }
    const auto time = sys_days(day).time_since_epoch() + hours(number(11, 2)) +
                      minutes(number(14, 2)) + seconds(number(17, 2));
    return Date::since1970(static_cast<double>(duration_cast<seconds>(time).count()));
}

/// The bytes that a Base64 text spells; white space and what else is no digit of it is passed over.
std::string bytesFrom(std::string_view text) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t digit = digits.find(c);
        if (digit == std::string_view::npos) {
            continue;
        }
        bits = bits << 6U | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            out.push_back(static_cast<char>(bits >> count & 0xFFU));
        }
    }
    return out;
}

/// Builds the tree from the elements as Expat meets them, and stops it at the first fault.
class XmlReader {
  public:
    explicit XmlReader(const Limits& limits) : limits_(limits), parser_(XML_ParserCreate(nullptr)) {
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(),
            [](void* self, const char* name, const char**) {
                static_cast<XmlReader*>(self)->begin(name);
            },
            [](void* self, const char*) { static_cast<XmlReader*>(self)->end(); });
        XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* text, int size) {
            static_cast<XmlReader*>(self)->text_.append(text, static_cast<std::size_t>(size));
        });
        // Property lists declare no entities; what does is out to grow.
        XML_SetEntityDeclHandler(parser_.get(),
                                 [](void* self, const char*, int, const char*, int, const char*,
                                    const char*, const char*, const char*) {
                                     static_cast<XmlReader*>(self)->fail(Error::malformed);
                                 });
    }

    std::expected<Value, Error> read(std::string_view bytes) {
        // In pieces, because Expat counts in int. Large ones: a token that does not end within a
        // piece is read from its start again with the next.
        constexpr std::size_t piece = 1U << 30U;
        bool isLast = false;
        while (!isLast && !error_) {
            const std::string_view part = bytes.substr(0, piece);
            bytes.remove_prefix(part.size());
            isLast = bytes.empty();
            if (XML_Parse(parser_.get(), part.data(), static_cast<int>(part.size()),
                          isLast ? XML_TRUE : XML_FALSE) != XML_STATUS_OK &&
                !error_) {
                error_ = Error::malformed;
            }
        }
        if (error_ || !root_) {
            return std::unexpected(error_.value_or(Error::malformed));
        }
        return *std::move(root_);
    }

  private:
    enum class Element { plist, key, array, dictionary, plain };

    /// A container that is being filled.
    struct Open {
        Value value;
        std::optional<std::string> key; ///< the key that waits for its value
    };

    struct ParserDeleter {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    void fail(Error error) {
        error_ = error_ ? error_ : error;
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    void begin(std::string_view name) {
        if (error_) {
            return;
        }
        const bool isRoot = elements_.empty();
        const bool isWithinText =
            !isRoot && (elements_.back() == Element::key || elements_.back() == Element::plain);
        if (isRoot != (name == "plist") || isWithinText) {
            fail(Error::malformed);
            return;
        }
        text_.clear();
        if (name == "plist") {
            elements_.push_back(Element::plist);
        } else if (name == "key") {
            elements_.push_back(Element::key);
        } else if (++values_ > limits_.values ||
                   ((name == "array" || name == "dict") && open_.size() == limits_.depth)) {
            fail(Error::tooLarge);
        } else if (name == "array") {
            elements_.push_back(Element::array);
            open_.push_back({{Array()}, {}});
        } else if (name == "dict") {
            elements_.push_back(Element::dictionary);
            open_.push_back({{Dictionary()}, {}});
        } else {
            elements_.push_back(Element::plain);
            plainName_ = name;
        }
    }

    void end() {
        if (error_) {
            return;
        }
        const Element element = elements_.back();
        elements_.pop_back();
        switch (element) {
        case Element::plist:
            return;
        case Element::key:
            if (open_.empty() || open_.back().value.dictionary() == nullptr || open_.back().key) {
                fail(Error::malformed);
            } else {
                open_.back().key = std::move(text_);
            }
            break;
        case Element::plain:
            if (auto value = plainValue()) {
                add(*std::move(value));
            } else {
                fail(Error::malformed);
            }
            break;
        case Element::array:
        case Element::dictionary: {
            Open finished = std::move(open_.back());
            open_.pop_back();
            if (finished.key) {
                fail(Error::malformed); // a key without a value
            } else {
                add(asUid(finished.value).value_or(std::move(finished.value)));
            }
            break;
        }
        }
        text_.clear();
    }

    std::optional<Value> plainValue() {
        const std::string_view trimmed = Text::trimmed(text_);
        const auto wrapped = [](auto parsed) {
            return parsed ? std::optional(Value{*std::move(parsed)}) : std::nullopt;
        };
        if (plainName_ == "string") {
            return Value{std::move(text_)};
        }
        if (plainName_ == "true" || plainName_ == "false") {
            return Value{plainName_ == "true"};
        }
        if (plainName_ == "integer") {
            return wrapped(integerFrom(trimmed));
        }
        if (plainName_ == "real") {
            return wrapped(realFrom(trimmed));
        }
        if (plainName_ == "date") {
            return wrapped(dateFrom(trimmed));
        }
        if (plainName_ == "data") {
            return Value{Data{bytesFrom(text_)}};
        }
        return std::nullopt;
    }

    /// XML has no element for references within a keyed archive: they are dictionaries of one key.
    static std::optional<Value> asUid(const Value& value) {
        const Dictionary* members = value.dictionary();
        if (members == nullptr || members->size() != 1) {
            return std::nullopt;
        }
        const Value* index = value.find("CF$UID");
        if (index == nullptr || index->integer() == nullptr) {
            return std::nullopt;
        }
        return Value{Uid{static_cast<std::uint64_t>(*index->integer())}};
    }

    void add(Value value) {
        if (open_.empty()) {
            if (root_) {
                fail(Error::malformed); // a list is one value
            } else {
                root_ = std::move(value);
            }
            return;
        }
        Open& outer = open_.back();
        if (auto* array = std::get_if<Array>(&outer.value.content)) {
            array->push_back(std::move(value));
        } else if (outer.key) {
            std::get<Dictionary>(outer.value.content)
                .insert_or_assign(*std::exchange(outer.key, std::nullopt), std::move(value));
        } else {
            fail(Error::malformed); // a value without a key
        }
    }

    const Limits& limits_;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter> parser_;
    std::optional<Error> error_;
    std::vector<Element> elements_;
    std::vector<Open> open_;
    std::string text_;      ///< since the last tag
    std::string plainName_; ///< of the element that is being read
    std::size_t values_ = 0;
    std::optional<Value> root_;
};

} // namespace

std::expected<Value, Error> parseXml(std::string_view bytes, const Limits& limits) {
    return XmlReader(limits).read(bytes);
}

} // namespace vellory::PropertyList
