// SPDX-License-Identifier: Apache-2.0
#include "Support/PropertyList.h"

#include <algorithm>

#include "Support/PropertyListReaders.h"

namespace vellory::PropertyList {

const Value* Value::find(std::string_view key) const {
    const Dictionary* members = dictionary();
    if (members == nullptr) {
        return nullptr;
    }
    const auto member = members->find(key);
    return member == members->end() ? nullptr : &member->second;
}

std::expected<Value, Error> parse(std::string_view bytes, const Limits& limits) {
    if (bytes.size() > limits.bytes) {
        return std::unexpected(Error::tooLarge);
    }
    return bytes.starts_with(binaryMagic) ? parseBinary(bytes, limits) : parseXml(bytes, limits);
}

// Recursion is bounded by the depth that `parse` lets through.
bool visit(const Value& value, DocumentVisitor& visitor) {
    if (const auto* text = value.string()) {
        return visitor.text(*text);
    }
    if (const auto* list = value.array()) {
        return visitor.beginList() &&
               std::ranges::all_of(*list, [&](const Value& v) { return visit(v, visitor); }) &&
               visitor.endList();
    }
    if (const auto* members = value.dictionary()) {
        return visitor.beginDictionary() &&
               std::ranges::all_of(*members,
                                   [&](const auto& member) {
                                       return visitor.key(member.first) &&
                                              visit(member.second, visitor);
                                   }) &&
               visitor.endDictionary();
    }
    return visitor.other();
}

} // namespace vellory::PropertyList
