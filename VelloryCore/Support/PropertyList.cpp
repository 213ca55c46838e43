// SPDX-License-Identifier: Apache-2.0
#include "Support/PropertyList.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>

#include <plist/plist.h>

#include "Support/BinaryPropertyList.h"

namespace vellory::PropertyList {

namespace {

// ---------------------------------------------------------------------------------------------
// What libplist is given has been measured before, because it builds the tree by recursion and
// expands shared values: the forms are surveyed here, without building anything.

/// How deep the elements of an XML property list nest at most, and how many there are, counted from
/// its tags. Text inside comments counts as well: too high an answer only refuses odd files.
struct XmlSize {
    std::size_t depth = 0;
    std::size_t elements = 0;
};

XmlSize surveyXml(std::string_view text) {
    XmlSize size;
    std::size_t open = 0;
    for (std::size_t i = text.find('<'); i != std::string_view::npos; i = text.find('<', i + 1)) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (next == '/') {
            open -= open > 0 ? 1 : 0;
            continue;
        }
        if (next == '!' || next == '?') {
            continue;
        }
        ++size.elements;
        const std::size_t close = text.find('>', i);
        const bool isEmpty =
            close != std::string_view::npos && close > i && text[close - 1] == '/';
        if (!isEmpty) {
            size.depth = std::max(size.depth, ++open);
        }
        if (close == std::string_view::npos) {
            break;
        }
        i = close;
    }
    return size;
}

// ---------------------------------------------------------------------------------------------

struct PlistDeleter {
    void operator()(void* node) const { plist_free(node); }
};
using PlistPointer = std::unique_ptr<void, PlistDeleter>;

struct MemoryDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

std::string takeString(char* text, std::size_t length) {
    const std::unique_ptr<char, MemoryDeleter> owned(text);
    return text == nullptr ? std::string() : std::string(text, length);
}

std::string textOf(plist_t node) {
    char* text = nullptr;
    plist_get_string_val(node, &text);
    return takeString(text, text == nullptr ? 0 : std::string_view(text).size());
}

/// Recursion is bounded: the depth has been measured.
Value convert(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return {flag != 0};
    }
    case PLIST_UINT: {
        std::uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return {static_cast<std::int64_t>(number)};
    }
    case PLIST_REAL: {
        double number = 0;
        plist_get_real_val(node, &number);
        return {number};
    }
    case PLIST_STRING:
        return {textOf(node)};
    case PLIST_DATE: {
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return {Date::since2001(seconds + microseconds / 1e6)};
    }
    case PLIST_DATA: {
        char* bytes = nullptr;
        std::uint64_t length = 0;
        plist_get_data_val(node, &bytes, &length);
        return {Data{takeString(bytes, static_cast<std::size_t>(length))}};
    }
    case PLIST_UID: {
        std::uint64_t index = 0;
        plist_get_uid_val(node, &index);
        return {Uid{index}};
    }
    case PLIST_ARRAY: {
        Array out;
        const std::uint32_t count = plist_array_get_size(node);
        out.reserve(count);
        plist_array_iter iterator = nullptr;
        plist_array_new_iter(node, &iterator);
        const std::unique_ptr<void, MemoryDeleter> owned(iterator);
        for (std::uint32_t i = 0; i < count; ++i) {
            plist_t item = nullptr;
            plist_array_next_item(node, iterator, &item);
            out.push_back(convert(item));
        }
        return {std::move(out)};
    }
    case PLIST_DICT: {
        Dictionary out;
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(node, &iterator);
        const std::unique_ptr<void, MemoryDeleter> owned(iterator);
        while (true) {
            char* key = nullptr;
            plist_t item = nullptr;
            plist_dict_next_item(node, iterator, &key, &item);
            if (key == nullptr) {
                break;
            }
            const std::string name = takeString(key, std::string_view(key).size());
            if (item != nullptr) {
                out.insert_or_assign(name, convert(item));
            }
        }
        return {std::move(out)};
    }
    default:
        return {std::string()};
    }
}

} // namespace

const Value* Value::find(std::string_view key) const {
    const Dictionary* members = dictionary();
    if (members == nullptr) {
        return nullptr;
    }
    const auto member = members->find(key);
    return member == members->end() ? nullptr : &member->second;
}

std::expected<Value, Error> parse(std::string_view bytes, const Limits& limits) {
    if (bytes.size() > std::min<std::size_t>(limits.bytes, std::numeric_limits<std::int32_t>::max())) {
        return std::unexpected(Error::tooLarge);
    }
    const auto length = static_cast<std::uint32_t>(bytes.size());
    plist_t root = nullptr;
    if (bytes.starts_with(BinaryObjects::magic)) {
        const auto size = BinaryObjects(bytes).measure(limits.values);
        if (!size) {
            return std::unexpected(Error::malformed);
        }
        if (size->depth > limits.depth || size->values > limits.values) {
            return std::unexpected(Error::tooLarge);
        }
        plist_from_bin(bytes.data(), length, &root);
    } else {
        const XmlSize size = surveyXml(bytes);
        if (size.depth > limits.depth || size.elements > limits.values) {
            return std::unexpected(Error::tooLarge);
        }
        plist_from_xml(bytes.data(), length, &root);
    }
    if (root == nullptr) {
        return std::unexpected(Error::malformed);
    }
    const PlistPointer owned(root);
    return convert(root);
}

} // namespace vellory::PropertyList
