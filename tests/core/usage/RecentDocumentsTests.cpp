// SPDX-License-Identifier: Apache-2.0
#include "Usage/RecentDocuments.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Usage/Bookmark.h"
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

std::string base64(std::string_view bytes) {
    static constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 3; ++j) {
            group = group << 8U |
                    (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0U);
        }
        for (std::size_t j = 0; j < 4; ++j) {
            out.push_back(i + j > bytes.size() ? '=' : digits[group >> (18 - 6 * j) & 63U]);
        }
    }
    return out;
}

std::string uid(std::size_t index) {
    return "<dict><key>CF$UID</key><integer>" + std::to_string(index) + "</integer></dict>";
}
std::string text(std::string_view content) {
    return "<string>" + std::string(content) + "</string>";
}
std::string blob(std::string_view content) {
    return "<data>" + base64(content) + "</data>";
}

/// Writes a keyed archive object by object.
class ArchiveWriter {
  public:
    std::size_t add(std::string object) {
        objects_.push_back(std::move(object));
        return objects_.size() - 1;
    }
    std::size_t list(const std::vector<std::size_t>& elements) {
        return add("<dict><key>NS.objects</key>" + references(elements) + "</dict>");
    }
    std::size_t dictionary(const std::vector<std::pair<std::string, std::size_t>>& members) {
        std::vector<std::size_t> keys;
        std::vector<std::size_t> values;
        for (const auto& [key, value] : members) {
            keys.push_back(add(text(key)));
            values.push_back(value);
        }
        return add("<dict><key>NS.keys</key>" + references(keys) + "<key>NS.objects</key>" +
                   references(values) + "</dict>");
    }
    /// The whole archive, whose root holds `items`.
    std::string archive(const std::vector<std::size_t>& items) {
        return archiveOf(dictionary({{"items", list(items)}}));
    }
    std::string archiveOf(std::size_t root) const {
        std::string out = "<plist version=\"1.0\"><dict><key>$top</key><dict><key>root</key>" +
                          uid(root) + "</dict><key>$objects</key><array>";
        for (const std::string& object : objects_) {
            out += object;
        }
        return out + "</array></dict></plist>";
    }

  private:
    static std::string references(const std::vector<std::size_t>& elements) {
        std::string out = "<array>";
        for (const std::size_t element : elements) {
            out += uid(element);
        }
        return out + "</array>";
    }

    std::vector<std::string> objects_{"<string>$null</string>"};
};

TEST(RecentDocuments, BookmarksAreReadInTheOrderStoredUpToTheLimit) {
    ArchiveWriter w;
    std::vector<std::size_t> items;
    for (const char* name : {"b.txt", "a.txt", "ö.txt"}) {
        const auto bytes = w.add(blob(bookmark({"Users", "me", name})));
        items.push_back(w.dictionary({{"Name", w.add(text(name))}, {"Bookmark", bytes}}));
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
    const auto wrapped =
        w.add("<dict><key>NS.data</key>" + blob(bookmark({"wrapped"})) + "</dict>");
    const auto raw = w.add(blob(bookmark({"field"})));
    const auto field = w.add("<dict><key>bookmark</key>" + uid(raw) + "</dict>");
    const auto link = w.add(text("file:///with%20link"));
    const auto url = w.add("<dict><key>NS.base</key>" + uid(0) + "<key>NS.relative</key>" +
                           uid(w.add(text("file://localhost/url"))) + "</dict>");
    const auto broken = w.add(blob("book, but broken"));
    EXPECT_THAT(urls(w.archive({w.dictionary({{"Bookmark", wrapped}}), field,
                                w.dictionary({{"URL", link}}), w.dictionary({{"URL", url}}),
                                w.dictionary({{"Bookmark", broken}, {"URL", link}})}),
                     10),
                ElementsAre("/wrapped", "/field", "/with link", "/url", "/with link"));
}

TEST(RecentDocuments, BrokenItemsAreLeftOutAndTheOthersStay) {
    ArchiveWriter w;
    const auto good = w.dictionary({{"Bookmark", w.add(blob(bookmark({"good"})))}});
    const auto remote = w.add(text("https://example.com/x"));
    const std::vector<std::size_t> items{
        w.dictionary({{"Name", remote}}),
        w.dictionary({{"Bookmark", std::size_t{0}}}),
        w.dictionary({{"Bookmark", std::size_t{999'999}}}),
        w.dictionary({{"Bookmark", remote}}),
        w.dictionary({{"URL", remote}}),
        0,
        888'888,
        remote,
        good,
    };
    EXPECT_THAT(urls(w.archive(items), 10), ElementsAre("/good"));
}

TEST(RecentDocuments, ArchivesThatRunInCirclesOrAreNoneGiveNothing) {
    const std::string circle = uid(1);
    const std::vector<std::string> objects{
        // The root is its own list of items, its own item and its own bookmark.
        "<dict><key>items</key>" + circle + "<key>Bookmark</key>" + circle + "<key>NS.data</key>" +
            circle + "<key>NS.string</key>" + circle + "<key>URL</key>" + circle +
            "<key>NS.relative</key>" + circle + "</dict>",
        // The same as a list and as a dictionary of itself.
        "<dict><key>items</key>" + circle + "<key>NS.objects</key><array>" + circle + circle +
            "</array></dict>",
        "<dict><key>NS.keys</key><array>" + circle + "</array><key>NS.objects</key><array>" +
            circle + "</array></dict>",
        circle, // a reference to itself
        "<string>items</string>",
        "<array>" + circle + "</array>",
    };
    for (const std::string& object : objects) {
        ArchiveWriter w;
        w.add(object);
        EXPECT_THAT(urls(w.archiveOf(1), 10), IsEmpty()) << object;
    }
    for (const std::string archive :
         {"", "bplist00", "<plist><array/></plist>", "<plist><dict/></plist>",
          "<plist><dict><key>$objects</key><array/></dict></plist>",
          "<plist><dict><key>$objects</key><dict/><key>$top</key><string/></dict></plist>"}) {
        EXPECT_THAT(urls(archive, 10), IsEmpty()) << archive;
    }
    EXPECT_THAT(urls(ArchiveWriter().archiveOf(999), 10), IsEmpty());
}

TEST(RecentDocuments, ListIsTheAppsOwnFileAndNoOther) {
    const TemporaryFolder home;
    const auto lists = folder(home.path());
    EXPECT_EQ(lists.string(), home.path().string() +
                                  "/Library/Application Support/com.apple.sharedfilelist/"
                                  "com.apple.LSSharedFileList.ApplicationRecentDocuments");
    const auto archive = [](const char* name) {
        ArchiveWriter w;
        return w.archive({w.dictionary({{"Bookmark", w.add(blob(bookmark({name})))}})});
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
        {"file:///a?query#part", "/a"},
        {"file:///a%2", std::nullopt},
        {"file:///a%zz", std::nullopt},
        {"file:///a%00b", std::nullopt},
        {"file://host/a", std::nullopt},
        {"file://localhostile/a", std::nullopt},
        {"file://", std::nullopt},
        {"https:///a", std::nullopt},
        {"/a", std::nullopt},
        {"file:///" + std::string(4096, 'x'), std::nullopt},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Bookmark::fileOfLink(c.link), c.file) << c.link.substr(0, 40);
    }
}

} // namespace
} // namespace vellory::RecentDocuments
