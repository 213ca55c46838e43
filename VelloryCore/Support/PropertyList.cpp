// SPDX-License-Identifier: Apache-2.0
#include "Support/PropertyList.h"

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

} // namespace vellory::PropertyList
