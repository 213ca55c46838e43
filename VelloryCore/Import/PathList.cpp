// SPDX-License-Identifier: Apache-2.0
#include "Import/PathList.h"

#include <utility>

#include "Support/Json.h"
#include "Support/PropertyList.h"

namespace vellory::RivalImport {

namespace {

using PropertyList::Value;

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

/// An archive is a table of objects that refer to each other by index. Only what is asked for is
/// followed, one step at a time, so that references in circles lead nowhere.
class KeyedArchive {
  public:
    explicit KeyedArchive(const Value& root)
        : root_(root), objects_(root.find("$objects") ? root.find("$objects")->array() : nullptr) {}

    std::optional<std::vector<std::string>> rootTexts() const {
        const Value* top = root_.find("$top");
        const Value* list = top != nullptr ? referred(top->find("root")) : nullptr;
        const Value* elements = list != nullptr ? list->find("NS.objects") : nullptr;
        if (elements == nullptr || elements->array() == nullptr || !isArray(*list)) {
            return std::nullopt;
        }
        std::vector<std::string> texts;
        for (const Value& element : *elements->array()) {
            const std::string* text = textOf(referred(&element));
            if (text == nullptr) {
                return std::nullopt;
            }
            texts.push_back(*text);
        }
        return texts;
    }

  private:
    /// The object that a reference names; null when it is no reference or out of range.
    const Value* referred(const Value* reference) const {
        if (reference == nullptr || objects_ == nullptr) {
            return nullptr;
        }
        const auto* uid = reference->uid();
        const bool isInRange = uid != nullptr && uid->index < objects_->size();
        return isInRange ? &(*objects_)[uid->index] : nullptr;
    }

    bool isArray(const Value& object) const {
        const Value* kind = referred(object.find("$class"));
        const Value* name = kind != nullptr ? kind->find("$classname") : nullptr;
        const std::string* text = name != nullptr ? name->string() : nullptr;
        return text != nullptr && (*text == "NSArray" || *text == "NSMutableArray");
    }

    /// A text stands in the table as itself or, if it was a mutable one, inside an object.
    static const std::string* textOf(const Value* object) {
        if (object == nullptr || object->string() != nullptr) {
            return object != nullptr ? object->string() : nullptr;
        }
        const Value* inner = object->find("NS.string");
        return inner != nullptr ? inner->string() : nullptr;
    }

    const Value& root_;
    const PropertyList::Array* objects_;
};

} // namespace

std::optional<std::vector<std::string>> pathList(std::string_view bytes) {
    ListOfTexts json;
    if (json::visit(bytes, json) == VisitResult::complete) {
        return std::move(json.texts);
    }
    // Values: what the tree of them takes memory for.
    const auto root = PropertyList::parse(bytes, {.depth = 64, .values = 200'000});
    if (!root) {
        return std::nullopt;
    }
    ListOfTexts list;
    if (PropertyList::visit(*root, list)) {
        return std::move(list.texts);
    }
    return KeyedArchive(*root).rootTexts();
}

} // namespace vellory::RivalImport
