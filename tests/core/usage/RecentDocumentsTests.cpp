// SPDX-License-Identifier: Apache-2.0
#include "Usage/RecentDocuments.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Usage/Bookmark.h"
#include "support/BinaryPlist.h"
#include "support/TemporaryFolder.h"

namespace vellory::RecentDocuments {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void append(std::string& out, std::initializer_list<std::uint32_t> numbers) {
    for (const std::uint32_t number : numbers) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            out.push_back(static_cast<char>(number >> shift & 0xFFU));
        }
    }
}

/// Writes bookmark data as the system does: records, then one table of them.
class BookmarkWriter {
  public:
    /// Adds a record and tells its offset.
    std::uint32_t record(std::uint32_t type, std::string_view content) {
        const auto offset = static_cast<std::uint32_t>(body_.size());
        append(body_, {static_cast<std::uint32_t>(content.size()), type});
        body_.append(content);
        body_.resize((body_.size() + 3) / 4 * 4);
        return offset;
    }
    void property(std::uint32_t key, std::uint32_t offset) { append(entries_, {key, offset, 0}); }

    void path(const std::vector<std::string>& components) {
        std::string offsets;
        for (const std::string& component : components) {
            append(offsets, {record(0x0101, component)});
        }
        property(0x1004, record(0x0601, offsets));
    }
    void link(std::string_view link) { property(0x1003, record(0x0901, link)); }

    std::string data() const {
        constexpr std::uint32_t headerSize = 48;
        std::string body = body_;
        std::string first;
        append(first, {static_cast<std::uint32_t>(body.size())});
        body.replace(0, 4, first);
        append(body, {static_cast<std::uint32_t>(12 + entries_.size()), 0xFFFFFFFE, 1, 0,
                      static_cast<std::uint32_t>(entries_.size() / 12)});
        body += entries_;
        std::string out = "book";
        append(out, {headerSize + static_cast<std::uint32_t>(body.size()), 0x10040000, headerSize});
        out.resize(headerSize);
        return out + body;
    }

  private:
    std::string body_ = std::string(4, '\0');
    std::string entries_;
};

std::string bookmark(const std::vector<std::string>& components) {
    BookmarkWriter writer;
    writer.path(components);
    return writer.data();
}

/// Writes a keyed archive object by object. Objects are told by their numbers in the archive; 0 is
/// no object.
class ArchiveWriter {
  public:
    using Number = std::uint32_t;
    using Index = test::BinaryPlist::Index;

    Number text(std::string_view content) { return add(list_.addText(content)); }
    Number data(std::string_view content) { return add(list_.addData(content)); }
    Number listOf(const std::vector<Number>& elements) {
        return object({{"NS.objects", references(elements)}});
    }
    Number dictionary(const std::vector<std::pair<std::string, Number>>& members) {
        std::vector<Number> keys;
        std::vector<Number> values;
        for (const auto& [key, value] : members) {
            keys.push_back(text(key));
            values.push_back(value);
        }
        return object({{"NS.keys", references(keys)}, {"NS.objects", references(values)}});
    }
    Number object(const std::vector<std::pair<std::string, Index>>& fields) {
        return add(plain(fields));
    }

    Number add(Index object) {
        objects_.push_back(object);
        return static_cast<Number>(objects_.size() - 1);
    }
    Index reference(Number object) { return list_.addUid(object); }
    Index references(const std::vector<Number>& objects) {
        std::vector<Index> out;
        for (const Number object : objects) {
            out.push_back(reference(object));
        }
        return list_.addArray(out);
    }

    /// The whole archive, whose root holds `items`.
    std::string archive(const std::vector<Number>& items) {
        return archiveOf(dictionary({{"items", listOf(items)}}));
    }
    std::string archiveOf(Number root) {
        return list_.bytes(plain({{"$top", plain({{"root", reference(root)}})},
                                  {"$objects", list_.addArray(objects_)}}));
    }

  private:
    Index plain(const std::vector<std::pair<std::string, Index>>& members) {
        std::vector<std::pair<Index, Index>> out;
        for (const auto& [key, value] : members) {
            out.emplace_back(list_.addText(key), value);
        }
        return list_.addDictionary(out);
    }

    test::BinaryPlist list_;
    std::vector<Index> objects_{list_.addText("$null")};
};

TEST(RecentDocuments, BookmarksAreReadInTheOrderStoredUpToTheLimit) {
    ArchiveWriter w;
    std::vector<ArchiveWriter::Number> items;
    for (const char* name : {"b.txt", "a.txt", "ö.txt"}) {
        items.push_back(w.dictionary({{"Bookmark", w.data(bookmark({"Users", "me", name}))}}));
    }
    const std::string archive = w.archive(items);
    EXPECT_THAT(urls(archive, 10),
                ElementsAre("/Users/me/b.txt", "/Users/me/a.txt", "/Users/me/ö.txt"));
    EXPECT_THAT(urls(archive, 2), ElementsAre("/Users/me/b.txt", "/Users/me/a.txt"));
    EXPECT_THAT(urls(archive, 0), IsEmpty());
}

TEST(RecentDocuments, ItemsOfEveryGenerationAreUnderstood) {
    ArchiveWriter w;
    // Data in an object of its own; fields of an object instead of a dictionary; links.
    const auto wrapped = w.object({{"NS.data", w.reference(w.data(bookmark({"wrapped"})))}});
    const auto field = w.object({{"bookmark", w.reference(w.data(bookmark({"field"})))}});
    const auto link = w.text("file:///with%20link");
    const auto url = w.object({{"NS.base", w.reference(0)},
                               {"NS.relative", w.reference(w.text("file://localhost/url"))}});
    const auto broken = w.data("book, but broken");
    EXPECT_THAT(urls(w.archive({w.dictionary({{"Bookmark", wrapped}}), field,
                                w.dictionary({{"URL", link}}), w.dictionary({{"URL", url}}),
                                w.dictionary({{"Bookmark", broken}, {"URL", link}})}),
                     10),
                ElementsAre("/wrapped", "/field", "/with link", "/url", "/with link"));
}

TEST(RecentDocuments, BrokenItemsAreLeftOutAndTheOthersStay) {
    ArchiveWriter w;
    const auto good = w.dictionary({{"Bookmark", w.data(bookmark({"good"}))}});
    const auto remote = w.text("https://example.com/x");
    EXPECT_THAT(
        urls(w.archive({w.dictionary({{"Name", remote}}), w.dictionary({{"Bookmark", 0}}),
                        w.dictionary({{"Bookmark", 999'999}}), w.dictionary({{"Bookmark", remote}}),
                        w.dictionary({{"URL", remote}}), 0, 888'888, remote, good}),
             10),
        ElementsAre("/good"));
}

TEST(RecentDocuments, ArchivesThatRunInCirclesOrAreNoneGiveNothing) {
    ArchiveWriter circle; // the root is its own list of items, its own item and its own bookmark
    std::vector<std::pair<std::string, ArchiveWriter::Index>> fields;
    for (const char* key : {"items", "Bookmark", "NS.data", "NS.string", "URL", "NS.relative"}) {
        fields.emplace_back(key, circle.reference(1));
    }
    ArchiveWriter list; // the same as a list of itself
    ArchiveWriter dictionary;
    ArchiveWriter itself;
    for (const std::string& archive :
         {circle.archiveOf(circle.object(fields)),
          list.archiveOf(
              list.object({{"items", list.reference(1)}, {"NS.objects", list.references({1, 1})}})),
          dictionary.archiveOf(dictionary.object({{"NS.keys", dictionary.references({1})},
                                                  {"NS.objects", dictionary.references({1})}})),
          itself.archiveOf(itself.add(itself.reference(1))), ArchiveWriter().archiveOf(999),
          std::string(), std::string("bplist00"), std::string("<plist><array/></plist>"),
          std::string("<plist><dict><key>$objects</key><dict/></dict></plist>")}) {
        EXPECT_THAT(urls(archive, 10), IsEmpty());
    }
}

TEST(RecentDocuments, ListIsTheAppsOwnFileAndNoOther) {
    const TemporaryFolder home;
    const auto lists = folder(home.path());
    EXPECT_EQ(lists.string(), home.path().string() +
                                  "/Library/Application Support/com.apple.sharedfilelist/"
                                  "com.apple.LSSharedFileList.ApplicationRecentDocuments");
    const auto archive = [](const char* name) {
        ArchiveWriter w;
        return w.archive({w.dictionary({{"Bookmark", w.data(bookmark({name}))}})});
    };
    home.write(lists / "com.example.editor.sfl2", archive("old"));
    EXPECT_THAT(list("com.example.Editor", 5, lists), ElementsAre("/old"));
    home.write(lists / "com.example.editor.sfl3", archive("new"));
    EXPECT_THAT(list("com.example.Editor", 5, lists), ElementsAre("/new"));
    home.write(lists.parent_path() / "secret.sfl3", archive("secret"));
    for (const std::string& id : {std::string("../secret"), std::string("a/../../secret"),
                                  std::string("com.example.editor.sfl3\0", 24), std::string(),
                                  std::string("unknown"), std::string(10'000, 'x')}) {
        EXPECT_THAT(list(id, 5, lists), IsEmpty()) << id.substr(0, 30);
    }
}

TEST(Bookmark, PathIsPreferredToTheLink) {
    BookmarkWriter both;
    both.link("file:///link");
    both.path({"Volumes", "Disk", "a b.txt"});
    EXPECT_EQ(Bookmark::location(both.data()), "/Volumes/Disk/a b.txt");
    BookmarkWriter link;
    link.link("file:///link%C3%A9");
    EXPECT_EQ(Bookmark::location(link.data()), "/linké");
}

TEST(Bookmark, ComponentsThatLeadElsewhereAreRefused) {
    for (const std::string& bad :
         {std::string("."), std::string(".."), std::string(), std::string("a/b"),
          std::string("a\0b", 3), std::string(5000, 'x')}) {
        EXPECT_EQ(Bookmark::location(bookmark({"Users", bad})), std::nullopt) << bad.substr(0, 9);
    }
    EXPECT_EQ(Bookmark::location(bookmark({})), std::nullopt);
    EXPECT_EQ(Bookmark::location(bookmark(std::vector<std::string>(513, "x"))), std::nullopt);
}

TEST(Bookmark, DamagedDataNamesNothingAndNeverReadsPastItsEnd) {
    const std::string good = bookmark({"Users", "me"});
    ASSERT_TRUE(Bookmark::location(good));
    // Cut anywhere: the table with the path is at the end, before four bytes that say nothing.
    for (std::size_t size = 0; size < good.size() - 4; ++size) {
        EXPECT_FALSE(Bookmark::location(std::string(good, 0, size))) << size;
    }
    // Any four bytes set to numbers that lead out: a path of other files' names never appears.
    for (std::size_t i = 4; i + 4 <= good.size(); i += 4) {
        for (const std::uint32_t number : {0xFFFFFFFFU, 0x7FFFFFFFU, 0xFFFFFFF8U, 0U}) {
            std::string damaged = good;
            std::string bytes;
            append(bytes, {number});
            damaged.replace(i, 4, bytes);
            const auto location = Bookmark::location(damaged);
            if (location) {
                EXPECT_THAT(location->string(), testing::StartsWith("/")) << i;
                EXPECT_LT(location->string().size(), 100U) << i;
            }
        }
    }
    // A chain of tables that comes back to its begin ends.
    std::string endless = good;
    const std::size_t table = endless.find(std::string("\xFE\xFF\xFF\xFF", 4)) - 4;
    std::string next;
    append(next, {static_cast<std::uint32_t>(table - 48)});
    endless.replace(table + 12, 4, next);
    endless[table + 20] = 'x'; // and does not hold the path
    EXPECT_EQ(Bookmark::location(endless), std::nullopt);
}

TEST(Bookmark, FileLinksAreDecodedStrictly) {
    struct Case {
        std::string link;
        std::optional<std::filesystem::path> file;
    };
    const Case cases[] = {
        {"file:///a%20b/c", "/a b/c"},
        {"file://localhost/a", "/a"},
        {"file:///a%2", std::nullopt},
        {"file:///a%00b", std::nullopt},
        {"file://host/a", std::nullopt},
        {"file://localhostile/a", std::nullopt},
        {"file://", std::nullopt},
        {"/a", std::nullopt},
        {"file:///" + std::string(4096, 'x'), std::nullopt},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Bookmark::fileOfLink(c.link), c.file) << c.link.substr(0, 40);
    }
}

} // namespace
} // namespace vellory::RecentDocuments
