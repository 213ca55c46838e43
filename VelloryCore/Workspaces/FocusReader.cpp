// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/FocusReader.h"

#include <algorithm>
#include <initializer_list>

#include "Support/AtomicFile.h"
#include "Support/Json.h"
#include "Support/Text.h"

namespace vellory::FocusReader {

namespace fs = std::filesystem;

namespace {

constexpr const char* configurationsFile = "ModeConfigurations.json";
constexpr const char* assertionsFile = "Assertions.json";

/// The document in a file; null when there is none.
json::Value document(const fs::path& file) {
    if (const auto text = AtomicFile::read(file, fileLimit)) {
        if (auto parsed = json::parse(*text)) {
            return std::move(*parsed);
        }
    }
    return nullptr;
}

/// What stands at the end of a path of keys; nothing where a step is missing or no object.
const json::Value* find(const json::Value& from, std::initializer_list<const char*> keys) {
    const json::Value* at = &from;
    for (const char* key : keys) {
        if (!at->is_object()) {
            return nullptr;
        }
        const auto member = at->find(key);
        if (member == at->end()) {
            return nullptr;
        }
        at = &*member;
    }
    return at;
}

const std::string* findString(const json::Value& from, std::initializer_list<const char*> keys) {
    const json::Value* found = find(from, keys);
    return found != nullptr ? found->get_ptr<const std::string*>() : nullptr;
}

/// The elements of an array that may not be there.
const json::Value::array_t& findArray(const json::Value& from, const char* key) {
    static const json::Value::array_t none;
    const json::Value* found = find(from, {key});
    const auto* elements =
        found != nullptr ? found->get_ptr<const json::Value::array_t*>() : nullptr;
    return elements != nullptr ? *elements : none;
}

/// In the order of the file.
std::vector<Mode> readModes(const fs::path& directory) {
    const json::Value root = document(directory / configurationsFile);
    std::vector<Mode> out;
    for (const json::Value& element : findArray(root, "data")) {
        const json::Value* configurations = find(element, {"modeConfigurations"});
        if (configurations == nullptr || !configurations->is_object()) {
            continue;
        }
        for (const auto& [identifier, configuration] : configurations->items()) {
            if (const std::string* name = findString(configuration, {"mode", "name"})) {
                out.push_back({identifier, *name});
            }
        }
    }
    return out;
}

} // namespace

fs::path defaultDirectory(const fs::path& home) {
    return home / "Library" / "DoNotDisturb" / "DB";
}

bool canRead(const fs::path& directory) {
    return AtomicFile::read(directory / configurationsFile, fileLimit).has_value();
}

std::vector<Mode> modes(const fs::path& directory, std::string_view locale) {
    std::vector<Mode> out = readModes(directory);
    std::ranges::stable_sort(out, {}, &Mode::identifier);
    Text::sortByName(out, Text::Collator(locale), [](const Mode& mode) { return mode.name; });
    return out;
}

std::optional<Mode> active(const fs::path& directory) {
    const json::Value root = document(directory / assertionsFile);
    const std::string* identifier = nullptr;
    for (const json::Value& element : findArray(root, "data")) {
        for (const json::Value& record : findArray(element, "storeAssertionRecords")) {
            if (const auto* found =
                    findString(record, {"assertionDetails", "assertionDetailsModeIdentifier"})) {
                identifier = found;
            }
        }
    }
    if (identifier == nullptr) {
        return std::nullopt;
    }
    const std::vector<Mode> all = readModes(directory);
    const auto mode = std::ranges::find(all, *identifier, &Mode::identifier);
    return mode != all.end() ? std::optional(*mode) : std::nullopt;
}

} // namespace vellory::FocusReader
