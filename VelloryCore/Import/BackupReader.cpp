// SPDX-License-Identifier: Apache-2.0
#include "Import/BackupReader.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "Import/EntryResolver.h"
#include "Support/Json.h"
#include "Support/PropertyList.h"

namespace vellory::RivalImport {

namespace {

// Each table in the order in which its keys are tried.
constexpr std::array<std::string_view, 9> identityKeys{"bundleIdentifier", "bundleID",   "bundleId",
                                                       "bundle_id",        "identifier", "path",
                                                       "appPath",          "url",        "appURL"};
constexpr std::array<std::string_view, 4> nameKeys{"name", "title", "folderName", "label"};
constexpr std::array<std::string_view, 6> childrenKeys{"apps",     "items",        "children",
                                                       "appPaths", "applications", "contents"};

constexpr std::size_t maxDepth = 256;
/// Lists and dictionaries, whatever is in them.
constexpr std::size_t maxContainers = 3'000'000;
/// Longer texts neither identify nor name anything: pictures are kept as texts, too.
constexpr std::size_t maxTextBytes = 4096;
/// Values in the tree of a property list, whose memory comes on top.
constexpr std::size_t maxValues = 600'000;
constexpr std::size_t maxWeight = 96U * 1024U * 1024U;

template <std::size_t n>
std::optional<std::size_t> indexIn(const std::array<std::string_view, n>& keys,
                                   std::string_view key) {
    const auto found = std::ranges::find(keys, key);
    return found == keys.end() ? std::nullopt : std::optional<std::size_t>(found - keys.begin());
}

bool holdsFolder(const LayoutPage& items) {
    return std::ranges::any_of(items, [](const auto& item) { return item.folder() != nullptr; });
}

/// Builds items as the document goes by. A container is decided when it ends, because its keys come
/// in any order.
class Walk final : public DocumentVisitor {
  public:
    explicit Walk(const Resolver& resolver) : resolver_(resolver) {}

    /// Items of the grid, with folders still nested as the document has them.
    LayoutPage takeItems() { return std::move(found_); }

    bool text(std::string_view value) override {
        if (ignoring_ > 0 || value.size() > maxTextBytes) {
            return true;
        }
        if (open_.empty() || !open_.back().isDictionary) {
            if (const auto id = resolver_.resolve(value)) {
                add(itemsBeingFilled(), {LayoutItem::App{*id, *id}});
            }
            return isWithinWeight();
        }
        Container& dictionary = open_.back();
        if (const auto index = indexIn(identityKeys, dictionary.key)) {
            dictionary.identities.insert_or_assign(*index, value);
        } else if (const auto name = indexIn(nameKeys, dictionary.key);
                   name && (!dictionary.nameKey || name <= dictionary.nameKey)) {
            dictionary.nameKey = name;
            dictionary.name = value;
        }
        return true;
    }

    bool other() override { return true; }

    bool beginList() override {
        const bool isWanted = open_.empty() || !open_.back().isDictionary ||
                              indexIn(childrenKeys, open_.back().key).has_value();
        return begin(false, isWanted);
    }

    bool endList() override {
        if (endIgnored()) {
            return true;
        }
        Container list = std::move(open_.back());
        open_.pop_back();
        if (!open_.empty() && open_.back().isDictionary) {
            Container& dictionary = open_.back();
            const auto index = indexIn(childrenKeys, dictionary.key);
            // The first key of the table that gives items counts; of one key, the later value.
            const bool isFirst = !dictionary.childrenKey || index <= dictionary.childrenKey;
            if (isFirst && !list.items.empty()) {
                dictionary.childrenKey = index;
                dictionary.items = std::move(list.items);
            }
        } else {
            append(itemsBeingFilled(), std::move(list.items));
        }
        return true;
    }

    bool beginDictionary() override {
        return begin(true, open_.empty() || !open_.back().isDictionary);
    }

    bool key(std::string_view name) override {
        if (ignoring_ == 0) {
            open_.back().key = name;
        }
        return true;
    }

    bool endDictionary() override {
        if (endIgnored()) {
            return true;
        }
        Container dictionary = std::move(open_.back());
        open_.pop_back();
        const bool hasName = dictionary.nameKey.has_value();
        for (const auto& [rank, identity] : dictionary.identities) {
            if (auto id = resolver_.resolve(identity)) {
                std::string title = hasName ? std::move(dictionary.name) : *id;
                add(itemsBeingFilled(), {LayoutItem::App{std::move(*id), std::move(title)}});
                return isWithinWeight();
            }
        }
        if (dictionary.items.empty()) {
            return true;
        }
        const bool isDocument = open_.empty();
        if (isDocument && (!hasName || holdsFolder(dictionary.items))) {
            found_ = std::move(dictionary.items);
            return true;
        }
        LayoutItem::Folder folder;
        folder.title = hasName ? std::move(dictionary.name) : "Folder";
        folder.pages.push_back(std::move(dictionary.items));
        add(itemsBeingFilled(), {std::move(folder)});
        return isWithinWeight();
    }

  private:
    /// A list or dictionary that has not ended yet.
    struct Container {
        bool isDictionary = false;
        /// Of a list its elements, of a dictionary its children.
        LayoutPage items;
        std::string key;
        std::optional<std::size_t> childrenKey; ///< where the children come from
        std::map<std::size_t, std::string> identities;
        std::optional<std::size_t> nameKey; ///< where the name comes from
        std::string name;
    };

    bool begin(bool isDictionary, bool isWanted) {
        if (ignoring_ > 0 || !isWanted) {
            ++ignoring_;
        } else {
            open_.emplace_back().isDictionary = isDictionary;
        }
        return open_.size() + ignoring_ <= maxDepth && ++containers_ <= maxContainers;
    }

    bool endIgnored() {
        if (ignoring_ == 0) {
            return false;
        }
        --ignoring_;
        return true;
    }

    LayoutPage& itemsBeingFilled() { return open_.empty() ? found_ : open_.back().items; }

    void add(LayoutPage& items, LayoutItem item) {
        if (const auto* app = item.app()) {
            weight_ += app->bundleID.capacity() + app->title.capacity();
        } else {
            weight_ += item.folder()->title.capacity() + sizeof(LayoutPage) + sizeof(LayoutItem);
        }
        weight_ += sizeof(LayoutItem);
        items.push_back(std::move(item));
    }

    static void append(LayoutPage& items, LayoutPage more) {
        if (items.empty()) {
            items = std::move(more);
        } else {
            std::ranges::move(more, std::back_inserter(items));
        }
    }

    bool isWithinWeight() const { return weight_ <= maxWeight; }

    EntryResolver resolver_;
    LayoutPage found_;
    std::vector<Container> open_;
    std::size_t containers_ = 0;
    std::size_t ignoring_ = 0; ///< containers open within a value that nobody asked for
    std::size_t weight_ = 0;   ///< bytes of memory that the items need, about
};

/// Puts items on pages: folders that hold folders become pages of their own. Recursion is bounded
/// by the depth of the walk.
void paginate(LayoutPage items, std::vector<LayoutPage>& pages) {
    LayoutPage page;
    const auto finishPage = [&] {
        if (!page.empty()) {
            pages.push_back(std::exchange(page, {}));
        }
    };
    for (LayoutItem& item : items) {
        auto* folder = std::get_if<LayoutItem::Folder>(&item.content);
        if (folder != nullptr && holdsFolder(folder->pages.front())) {
            finishPage();
            paginate(std::move(folder->pages.front()), pages);
        } else {
            page.push_back(std::move(item));
        }
    }
    finishPage();
}

VisitResult visitPropertyList(std::string_view bytes, DocumentVisitor& visitor) {
    const auto root = PropertyList::parse(bytes, {.depth = maxDepth, .values = maxValues});
    if (!root) {
        return root.error() == PropertyList::Error::tooLarge ? VisitResult::stopped
                                                             : VisitResult::malformed;
    }
    return PropertyList::visit(*root, visitor) ? VisitResult::complete : VisitResult::stopped;
}

} // namespace

Result layoutInBackup(std::string_view bytes, const Resolver& resolver) {
    const auto unreadable = [](std::string why) {
        return std::unexpected(ImportError{ImportError::Kind::unreadable, std::move(why)});
    };
    LayoutPage items;
    Walk json(resolver);
    VisitResult result = json::visit(bytes, json);
    if (result == VisitResult::malformed) {
        Walk list(resolver);
        result = visitPropertyList(bytes, list);
        items = list.takeItems();
    } else {
        items = json.takeItems();
    }
    if (result != VisitResult::complete) {
        return unreadable(result == VisitResult::stopped
                              ? "The backup is nested too deeply or lists too many apps."
                              : "The file is neither JSON nor a property list.");
    }
    Layout layout;
    paginate(std::move(items), layout.pages);
    if (layout.pages.empty()) {
        return std::unexpected(ImportError{ImportError::Kind::nothingFound, {}});
    }
    return layout;
}

} // namespace vellory::RivalImport
