// SPDX-License-Identifier: Apache-2.0
#include "Support/KeyedArchive.h"

#include <algorithm>
#include <cstdint>

namespace vellory {

namespace {

constexpr PropertyList::Limits limits{.bytes = 8U * 1024U * 1024U, .depth = 64, .values = 200'000};

/// Entries of one dictionary that a key is looked for in; the lists we read have ten at most.
constexpr std::size_t mostEntries = 256;

/// The place that a reference names. XML has no references of its own and spells them as
/// dictionaries.
std::optional<std::uint64_t> reference(const PropertyList::Value& value) {
    if (const PropertyList::Uid* uid = value.uid()) {
        return uid->index;
    }
    const PropertyList::Value* spelled = value.find("CF$UID");
    const std::int64_t* index = spelled == nullptr ? nullptr : spelled->integer();
    return index == nullptr ? std::nullopt : std::optional(static_cast<std::uint64_t>(*index));
}

} // namespace

std::optional<KeyedArchive> KeyedArchive::parse(std::string_view bytes) {
    auto archive = PropertyList::parse(bytes, limits);
    if (!archive) {
        return std::nullopt;
    }
    const Value* objects = archive->find("$objects");
    if (objects == nullptr || objects->array() == nullptr) {
        return std::nullopt;
    }
    return KeyedArchive(std::make_unique<const Value>(std::move(*archive)));
}

const KeyedArchive::Value* KeyedArchive::root() const {
    const Value* top = archive_->find("$top");
    return top == nullptr ? nullptr : resolved(top->find("root"));
}

const KeyedArchive::Value* KeyedArchive::member(const Value* object, std::string_view key) const {
    if (object == nullptr) {
        return nullptr;
    }
    const PropertyList::Array* keys = list(object, "NS.keys");
    const PropertyList::Array* values = list(object, "NS.objects");
    if (keys == nullptr || values == nullptr) {
        return resolved(object->find(key));
    }
    const std::size_t count = std::min({keys->size(), values->size(), mostEntries});
    for (std::size_t i = 0; i < count; ++i) {
        const std::string* name = string(resolved(&(*keys)[i]));
        if (name != nullptr && *name == key) {
            return resolved(&(*values)[i]);
        }
    }
    return nullptr;
}

std::vector<const KeyedArchive::Value*> KeyedArchive::elements(const Value* object,
                                                               std::size_t limit) const {
    std::vector<const Value*> out;
    const PropertyList::Array* values = object == nullptr ? nullptr : list(object, "NS.objects");
    if (values != nullptr) {
        out.resize(std::min(limit, values->size()));
        std::transform(values->begin(), values->begin() + std::ssize(out), out.begin(),
                       [this](const Value& value) { return resolved(&value); });
    }
    return out;
}

const std::string* KeyedArchive::string(const Value* object) const {
    if (object != nullptr && object->string() == nullptr) {
        object = resolved(object->find("NS.string"));
    }
    return object == nullptr ? nullptr : object->string();
}

const std::string* KeyedArchive::data(const Value* object) const {
    if (object != nullptr && object->data() == nullptr) {
        object = resolved(object->find("NS.data"));
    }
    const PropertyList::Data* data = object == nullptr ? nullptr : object->data();
    return data == nullptr ? nullptr : &data->bytes;
}

const KeyedArchive::Value* KeyedArchive::resolved(const Value* value) const {
    const auto index = value == nullptr ? std::nullopt : reference(*value);
    if (!index) {
        return value;
    }
    // The first object is the text "$null", which every reference to nothing names.
    const PropertyList::Array& objects = *archive_->find("$objects")->array();
    return *index == 0 || *index >= objects.size() ? nullptr : &objects[*index];
}

const PropertyList::Array* KeyedArchive::list(const Value* object, std::string_view key) const {
    const Value* found = object->find(key);
    return found == nullptr ? nullptr : found->array();
}

} // namespace vellory
