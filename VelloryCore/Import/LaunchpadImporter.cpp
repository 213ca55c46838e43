// SPDX-License-Identifier: Apache-2.0
#include "Import/LaunchpadImporter.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace vellory::LaunchpadImporter {

namespace fs = std::filesystem;

namespace {

constexpr const char* query =
    "SELECT i.rowid, i.uuid, i.type, i.parent_id, i.ordering, COALESCE(a.title, g.title), "
    "a.bundleid\n"
    "FROM items i LEFT JOIN apps a ON a.item_id = i.rowid LEFT JOIN groups g ON g.item_id = "
    "i.rowid";

const Row* findRoot(const std::vector<Row>& rows) {
    const Row* smallest = nullptr;
    for (const Row& row : rows) {
        if (row.type != Type::root) {
            continue;
        }
        if (row.uuid == "ROOTPAGE") {
            return &row;
        }
        const bool isHolder =
            row.uuid.find("HOLDING") == std::string::npos && !row.uuid.ends_with("_DB");
        if (isHolder && (smallest == nullptr || row.id < smallest->id)) {
            smallest = &row;
        }
    }
    return smallest;
}

/// The rows by the item that holds them, each group in the order of the arrangement.
class Children {
  public:
    explicit Children(const std::vector<Row>& rows) : rows_(rows), order_(rows.size()) {
        std::iota(order_.begin(), order_.end(), std::size_t{0});
        std::ranges::stable_sort(order_, {}, [&](std::size_t index) {
            return std::pair(rows[index].parent, rows[index].ordering);
        });
    }

    /// Indexes of the rows that name `parent`.
    std::span<const std::size_t> of(std::int64_t parent) const {
        return std::ranges::equal_range(order_, parent, {},
                                        [&](std::size_t index) { return rows_[index].parent; });
    }

  private:
    const std::vector<Row>& rows_;
    std::vector<std::size_t> order_;
};

/// Walks the tree from the root without recursion, because folders may nest without end.
class TreeWalk {
  public:
    explicit TreeWalk(const std::vector<Row>& rows) : rows_(rows), children_(rows) {}

    std::vector<LayoutPage> pages(const Row& root) {
        open_.push_back(opened(root));
        while (true) {
            Folder& folder = open_.back();
            if (!folder.items.empty()) {
                const std::size_t index = folder.items.front();
                folder.items = folder.items.subspan(1);
                place(index);
            } else if (!folder.pages.empty()) {
                finishPage(folder);
                const std::size_t index = folder.pages.front();
                folder.pages = folder.pages.subspan(1);
                if (rows_[index].type == Type::page && pagesSeen_.insert(rows_[index].id).second) {
                    folder.items = children_.of(rows_[index].id);
                }
            } else {
                finishPage(folder);
                Folder finished = std::move(folder);
                open_.pop_back();
                if (open_.empty()) {
                    return std::move(finished.found);
                }
                if (!finished.found.empty()) {
                    open_.back().page.push_back({LayoutItem::Folder{
                        finished.row->title.value_or("Folder"), std::move(finished.found)}});
                }
            }
        }
    }

  private:
    /// A folder, or the root, whose pages are being walked.
    struct Folder {
        const Row* row = nullptr;
        std::span<const std::size_t> pages; ///< children still to be looked at
        std::span<const std::size_t> items; ///< children of the open page still to be looked at
        LayoutPage page;                    ///< items found on the open page
        std::vector<LayoutPage> found;      ///< pages that are done and not empty
    };

    Folder opened(const Row& row) const { return {&row, children_.of(row.id), {}, {}, {}}; }

    /// The folder whose open page takes what is found now: past the greatest nesting an ancestor.
    Folder& holder() { return open_[std::min(open_.size() - 1, maxNesting)]; }

    static void finishPage(Folder& folder) {
        if (!folder.page.empty()) {
            folder.found.push_back(std::exchange(folder.page, {}));
        }
    }

    void place(std::size_t index) {
        const Row& row = rows_[index];
        if (row.type == Type::app && row.bundleID && !row.bundleID->empty()) {
            holder().page.push_back(
                {LayoutItem::App{*row.bundleID, row.title.value_or(*row.bundleID)}});
        } else if (row.type == Type::folder && foldersSeen_.insert(row.id).second) {
            open_.push_back(opened(row));
        }
    }

    const std::vector<Row>& rows_;
    Children children_;
    std::vector<Folder> open_;
    // Ids ought to be unique. Where they are not, these keep the walk from going in circles.
    std::unordered_set<std::int64_t> foldersSeen_;
    std::unordered_set<std::int64_t> pagesSeen_;
};

} // namespace

std::optional<fs::path> defaultDatabaseURL(const std::optional<fs::path>& userTemporaryFolder) {
    if (!userTemporaryFolder || userTemporaryFolder->empty()) {
        return std::nullopt;
    }
    return *userTemporaryFolder / "com.apple.dock.launchpad" / "db" / "db";
}

std::expected<Layout, ImportError> importLayout(const fs::path& location) {
    std::error_code error;
    if (!fs::exists(location, error)) {
        return std::unexpected(ImportError{ImportError::Kind::notFound, location.string()});
    }
    const auto database = Sqlite::Database::open(location);
    if (!database) {
        return std::unexpected(ImportError{ImportError::Kind::unreadable, location.string()});
    }
    const auto rows = readItems(*database);
    if (!rows) {
        return std::unexpected(rows.error());
    }
    return layoutFrom(*rows);
}

std::expected<std::vector<Row>, ImportError> readItems(const Sqlite::Database& database) {
    auto statement = database.prepare(query);
    if (!statement) {
        return std::unexpected(
            ImportError{ImportError::Kind::unreadable, statement.error().message});
    }
    std::vector<Row> rows;
    std::size_t textBytes = 0;
    while (rows.size() < maxRows && textBytes < maxTextBytes && statement->step()) {
        Row& row = rows.emplace_back();
        row.id = statement->integer(0).value_or(0);
        row.uuid = statement->text(1).value_or("");
        row.type = statement->integer(2).value_or(0);
        row.parent = statement->integer(3).value_or(0);
        row.ordering = statement->integer(4).value_or(0);
        row.title = statement->text(5);
        row.bundleID = statement->text(6);
        textBytes +=
            row.uuid.size() + row.title.value_or("").size() + row.bundleID.value_or("").size();
    }
    return rows;
}

std::expected<Layout, ImportError> layoutFrom(const std::vector<Row>& rows) {
    const Row* root = findRoot(rows);
    if (root == nullptr) {
        return std::unexpected(ImportError{ImportError::Kind::noRoot, {}});
    }
    return Layout{TreeWalk(rows).pages(*root)};
}

} // namespace vellory::LaunchpadImporter
