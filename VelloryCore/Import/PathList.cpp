// SPDX-License-Identifier: Apache-2.0
#include "Import/PathList.h"

#include <limits>
#include <utility>

#include "Support/Json.h"
#include "Support/KeyedArchive.h"
#include "Support/PropertyList.h"

namespace vellory::RivalImport {

namespace {

/// Takes a document that is one list of texts, and stops at anything else.
class ListOfTexts final : public DocumentVisitor {
  public:
    std::vector<std::string> texts;

    bool text(std::string_view value) override {
        texts.emplace_back(value);
        return isOpen_;
    }
    bool beginList() override { return !std::exchange(isOpen_, true); }
    bool endList() override { return true; }
    bool other() override { return false; }
    bool beginDictionary() override { return false; }
    bool key(std::string_view /*name*/) override { return false; }
    bool endDictionary() override { return false; }

  private:
    bool isOpen_ = false;
};

std::optional<std::vector<std::string>> textsIn(const KeyedArchive& archive) {
    const auto* list = archive.root();
    const auto* kind = archive.string(archive.member(archive.member(list, "$class"), "$classname"));
    if (kind == nullptr || (*kind != "NSArray" && *kind != "NSMutableArray")) {
        return std::nullopt;
    }
    std::vector<std::string> texts;
    for (const auto* element : archive.elements(list, std::numeric_limits<std::size_t>::max())) {
        const std::string* text = archive.string(element);
        if (text == nullptr) {
            return std::nullopt;
        }
        texts.push_back(*text);
    }
    return texts;
}

} // namespace

std::optional<std::vector<std::string>> pathList(std::string_view bytes) {
    ListOfTexts json;
    if (json::visit(bytes, json) == VisitResult::complete) {
        return std::move(json.texts);
    }
    // Values: what the tree of them takes memory for.
    if (const auto root = PropertyList::parse(bytes, {.depth = 64, .values = 200'000})) {
        ListOfTexts list;
        if (PropertyList::visit(*root, list)) {
            return std::move(list.texts);
        }
    }
    const auto archive = KeyedArchive::parse(bytes);
    return archive ? textsIn(*archive) : std::nullopt;
}

} // namespace vellory::RivalImport
