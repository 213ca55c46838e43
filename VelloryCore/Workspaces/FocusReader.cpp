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

/// The text of a file; empty, which holds no modes, when it cannot be read.
std::string textOf(const fs::path& file) {
    return AtomicFile::read(file, fileLimit).value_or("");
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

} // namespace

std::vector<Mode> modesIn(std::string_view configurations) {
    const json::Value root = json::parse(configurations).value_or(json::Value());
    std::vector<Mode> out;
    for (const json::Value& element : findArray(root, "data")) {
        const json::Value* modes = find(element, {"modeConfigurations"});
        if (modes == nullptr || !modes->is_object()) {
            continue;
        }
        for (const auto& [identifier, configuration] : modes->items()) {
            if (const std::string* name = findString(configuration, {"mode", "name"})) {
                out.push_back({identifier, *name});
            }
        }
    }
    return out;
}

std::optional<std::string> activeIdentifierIn(std::string_view assertions) {
    const json::Value root = json::parse(assertions).value_or(json::Value());
    const std::string* identifier = nullptr;
    for (const json::Value& element : findArray(root, "data")) {
        for (const json::Value& record : findArray(element, "storeAssertionRecords")) {
            if (const auto* found =
                    findString(record, {"assertionDetails", "assertionDetailsModeIdentifier"})) {
                identifier = found;
            }
        }
    }
    return identifier != nullptr ? std::optional(*identifier) : std::nullopt;
}

fs::path defaultDirectory(const fs::path& home) {
    return home / "Library" / "DoNotDisturb" / "DB";
}

bool canRead(const fs::path& directory) {
    return AtomicFile::read(directory / configurationsFile, fileLimit).has_value();
}

std::vector<Mode> modes(const fs::path& directory, std::string_view locale) {
    std::vector<Mode> out = modesIn(textOf(directory / configurationsFile));
    std::ranges::stable_sort(out, {}, &Mode::identifier);
    Text::sortByName(out, Text::Collator(locale), [](const Mode& mode) { return mode.name; });
    return out;
}

std::optional<Mode> active(const fs::path& directory) {
    const auto identifier = activeIdentifierIn(textOf(directory / assertionsFile));
    if (!identifier) {
        return std::nullopt;
    }
    const std::vector<Mode> all = modesIn(textOf(directory / configurationsFile));
    const auto mode = std::ranges::find(all, *identifier, &Mode::identifier);
    return mode != all.end() ? std::optional(*mode) : std::nullopt;
}

} // namespace vellory::FocusReader
