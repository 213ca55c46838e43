// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <expat.h>

#include "Support/BinaryPropertyList.h"
#include "Support/PropertyList.h"

namespace vellory::PropertyList {

namespace {

constexpr std::size_t maxBytes = 64U * 1024U * 1024U;
/// What the survey of a binary list needs memory for.
constexpr std::size_t maxObjects = 3'000'000;
/// What visiting needs time for: values and bytes of text, counted wherever they are referred to.
constexpr std::size_t maxValues = 10'000'000;
constexpr std::size_t maxTextBytes = 2 * maxBytes;

// ---------------------------------------------------------------------------------------------

class BinaryVisit {
  public:
    BinaryVisit(std::string_view bytes, DocumentVisitor& visitor)
        : objects_(bytes), visitor_(visitor) {}

    VisitResult run() {
        const auto size = objects_.measure(maxObjects);
        if (!size || size->values > maxValues) {
            return VisitResult::malformed;
        }
        VisitResult result = enter(objects_.top());
        while (result == VisitResult::complete && !open_.empty()) {
            result = step();
        }
        return result;
    }

  private:
    struct Frame {
        bool isDictionary = false;
        BinaryObjects::Children children;
        std::size_t next = 0;
    };

    static VisitResult went(bool on) { return on ? VisitResult::complete : VisitResult::stopped; }

    std::optional<std::string_view> text(std::size_t object) {
        const auto found = objects_.text(object, storage_);
        textBytes_ += found ? found->size() : 0;
        return textBytes_ <= maxTextBytes ? found : std::nullopt;
    }

    VisitResult enter(std::size_t object) {
        const auto kind = objects_.kind(object);
        if (kind == BinaryObjects::Kind::text) {
            const auto value = text(object);
            return value ? went(visitor_.text(*value)) : VisitResult::malformed;
        }
        if (kind == BinaryObjects::Kind::other) {
            return went(visitor_.other());
        }
        const bool isDictionary = kind == BinaryObjects::Kind::dictionary;
        open_.push_back({isDictionary, *objects_.children(object), 0});
        return went(isDictionary ? visitor_.beginDictionary() : visitor_.beginList());
    }

    VisitResult step() {
        Frame& frame = open_.back();
        const std::size_t entries =
            frame.isDictionary ? frame.children.count / 2 : frame.children.count;
        if (frame.next == entries) {
            const bool isDictionary = frame.isDictionary;
            open_.pop_back();
            return went(isDictionary ? visitor_.endDictionary() : visitor_.endList());
        }
        const std::size_t index = frame.next++;
        if (!frame.isDictionary) {
            return enter(objects_.child(frame.children, index));
        }
        const auto name = text(objects_.child(frame.children, index));
        if (!name) {
            return VisitResult::malformed;
        }
        const std::size_t value = objects_.child(frame.children, entries + index);
        return visitor_.key(*name) ? enter(value) : VisitResult::stopped;
    }

    BinaryObjects objects_;
    DocumentVisitor& visitor_;
    std::vector<Frame> open_;
    std::string storage_;
    std::size_t textBytes_ = 0;
};

// ---------------------------------------------------------------------------------------------

class XmlVisit {
  public:
    explicit XmlVisit(DocumentVisitor& visitor) : visitor_(visitor) {}

    VisitResult run(std::string_view bytes) {
        const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(
            XML_ParserCreate(nullptr), XML_ParserFree);
        parser_ = parser.get();
        if (parser_ == nullptr) {
            return VisitResult::malformed;
        }
        XML_SetUserData(parser_, this);
        XML_SetElementHandler(parser_, onStart, onEnd);
        XML_SetCharacterDataHandler(parser_, onText);
        XML_SetEntityDeclHandler(parser_, onEntity);
        const auto status = XML_Parse(parser_, bytes.data(), static_cast<int>(bytes.size()), 1);
        if (status != XML_STATUS_OK) {
            return isStopped_ ? VisitResult::stopped : VisitResult::malformed;
        }
        return hasValue_ ? VisitResult::complete : VisitResult::malformed;
    }

  private:
    enum class Element : unsigned char { plist, list, dictionary, key, text, other };

    struct Frame {
        Element element = Element::other;
        bool hasKey = false; ///< of a dictionary: a key waits for its value
    };

    static XmlVisit& self(void* data) { return *static_cast<XmlVisit*>(data); }
    static void onStart(void* data, const XML_Char* name, const XML_Char** /*attributes*/) {
        self(data).start(name);
    }
    static void onEnd(void* data, const XML_Char* /*name*/) { self(data).end(); }
    static void onText(void* data, const XML_Char* text, int length) {
        self(data).characters({text, static_cast<std::size_t>(length)});
    }
    // Nothing that writes property lists declares entities; texts made to explode do.
    static void onEntity(void* data, const XML_Char* /*name*/, int /*isParameter*/,
                         const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                         const XML_Char* /*systemId*/, const XML_Char* /*publicId*/,
                         const XML_Char* /*notation*/) {
        self(data).fail();
    }

    static std::optional<Element> elementOf(std::string_view name) {
        constexpr std::array<std::pair<std::string_view, Element>, 11> elements{{
            {"string", Element::text},
            {"key", Element::key},
            {"dict", Element::dictionary},
            {"array", Element::list},
            {"integer", Element::other},
            {"real", Element::other},
            {"true", Element::other},
            {"false", Element::other},
            {"date", Element::other},
            {"data", Element::other},
            {"plist", Element::plist},
        }};
        const auto* found =
            std::ranges::find(elements, name, [](const auto& e) { return e.first; });
        return found == elements.end() ? std::nullopt : std::optional(found->second);
    }

    void fail() {
        hasFailed_ = true;
        XML_StopParser(parser_, XML_FALSE);
    }

    void went(bool on) {
        if (!on) {
            isStopped_ = true;
            XML_StopParser(parser_, XML_FALSE);
        }
    }

    /// Whether an element may begin here.
    bool admits(Element element) {
        if (open_.empty()) {
            return element != Element::key;
        }
        Frame& parent = open_.back();
        switch (parent.element) {
        case Element::plist:
            return !hasValue_ && element != Element::plist && element != Element::key;
        case Element::list:
            return element != Element::plist && element != Element::key;
        case Element::dictionary:
            // Keys and values take turns.
            return std::exchange(parent.hasKey, !parent.hasKey) == (element != Element::key) &&
                   element != Element::plist;
        default:
            return false;
        }
    }

    void start(std::string_view name) {
        const auto element = elementOf(name);
        if (hasFailed_ || isStopped_ || !element || !admits(*element)) {
            return fail();
        }
        open_.push_back({*element, false});
        hasValue_ = hasValue_ || element != Element::plist;
        characters_.clear();
        if (element == Element::list) {
            went(visitor_.beginList());
        } else if (element == Element::dictionary) {
            went(visitor_.beginDictionary());
        }
    }

    void end() {
        if (hasFailed_ || isStopped_ || open_.empty()) {
            return;
        }
        const Frame frame = open_.back();
        open_.pop_back();
        switch (frame.element) {
        case Element::list:
            return went(visitor_.endList());
        case Element::dictionary:
            return frame.hasKey ? fail() : went(visitor_.endDictionary());
        case Element::key:
            return went(visitor_.key(characters_));
        case Element::text:
            return went(visitor_.text(characters_));
        case Element::other:
            return went(visitor_.other());
        case Element::plist:
            return;
        }
    }

    void characters(std::string_view text) {
        if (!open_.empty() &&
            (open_.back().element == Element::text || open_.back().element == Element::key)) {
            characters_ += text;
        }
    }

    DocumentVisitor& visitor_;
    XML_Parser parser_ = nullptr;
    std::vector<Frame> open_;
    std::string characters_;
    bool hasValue_ = false;
    bool hasFailed_ = false;
    bool isStopped_ = false;
};

} // namespace

VisitResult visit(std::string_view bytes, DocumentVisitor& visitor) {
    if (bytes.size() > maxBytes) {
        return VisitResult::malformed;
    }
    if (bytes.starts_with(BinaryObjects::magic)) {
        return BinaryVisit(bytes, visitor).run();
    }
    return XmlVisit(visitor).run(bytes);
}

} // namespace vellory::PropertyList
