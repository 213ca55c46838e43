// SPDX-License-Identifier: Apache-2.0
#include <set>

#include <sys/stat.h>

#include <gmock/gmock.h>

#include "model/IconLibrary.h"
#include "support/Boards.h"
#include "support/HostileTexts.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {

namespace fs = std::filesystem;

TEST(IconLibrary, CopiesStayInTheFolderWhateverTheIdentifierSays) {
    const TemporaryFolder folder;
    const fs::path picture = folder.write("cat.png", "meow");
    const IconLibrary icons(folder.path() / "Icons");
    std::vector<BundleID> ids =
        wordsOf("com.apple.Safari . .. ../../etc/passwd /etc/passwd a/b a%2Fb "
                "a\\b Bücher");
    ids.insert(ids.end(), {"", std::string("a\0b", 3), std::string(5000, 'x'),
                           std::string(5000, 'x') + "y", "folder-" + uuid(1).string()});
    std::set<fs::path> copies;
    for (const BundleID& id : ids) {
        const auto copy = icons.addIcon(id, picture);
        ASSERT_TRUE(copy) << id << copy.error().message();
        EXPECT_EQ(copy->parent_path(), folder.path() / "Icons") << id;
        EXPECT_EQ(contentOf(*copy), "meow") << id;
        copies.insert(*copy);
    }
    copies.insert(icons.addCover(uuid(1), picture).value());
    EXPECT_EQ(copies.size(), ids.size() + 1) << "a file of its own for each";
    EXPECT_EQ(namesIn(folder.path() / "Icons").size(), copies.size());
}

TEST(IconLibrary, KeepsOrdinaryExtensionsOnly) {
    const TemporaryFolder folder;
    const IconLibrary icons(folder.path() / "Icons");
    const std::vector<std::pair<std::string, std::string>> cases{
        {"cat.jpeg", ".jpeg"}, {"cat.SVG", ".SVG"}, {"cat", ""},
        {"cat.", ""},          {"cat.p n", ""},     {"cat." + std::string(100, 'x'), ""}};
    for (const auto& [name, extension] : cases) {
        const auto copy = icons.addCover(uuid(1), folder.write(name, name));
        ASSERT_TRUE(copy);
        EXPECT_EQ(copy->filename(), "folder-" + uuid(1).string() + extension);
        EXPECT_EQ(contentOf(*copy), name);
    }
}

TEST(IconLibrary, RefusesWhatIsNoFileOrTooLarge) {
    const TemporaryFolder folder;
    const IconLibrary icons(folder.path() / "Icons");
    const fs::path pipe = folder.path() / "pipe.png";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const fs::path huge = folder.write("huge.png", "");
    fs::resize_file(huge, IconLibrary::limit + 1);

    EXPECT_EQ(icons.addIcon("a", pipe).error(), std::errc::invalid_argument);
    EXPECT_FALSE(icons.addIcon("a", folder.path()));
    EXPECT_EQ(icons.addIcon("a", huge).error(), std::errc::file_too_large);
    EXPECT_EQ(icons.addIcon("a", folder.path() / "missing.png").error(),
              std::errc::no_such_file_or_directory);
    EXPECT_FALSE(fs::exists(folder.path() / "Icons"));
}

TEST(IconLibrary, ALinkInTheFolderIsReplacedNotFollowed) {
    const TemporaryFolder folder;
    const fs::path outside = folder.write("outside.png", "precious");
    fs::create_directories(folder.path() / "Icons");
    const fs::path copy = folder.path() / "Icons" / ("folder-" + uuid(1).string() + ".png");
    fs::create_symlink(outside, copy);

    const IconLibrary icons(folder.path() / "Icons");
    EXPECT_EQ(icons.addCover(uuid(1), folder.write("cat.png", "meow")), copy);
    EXPECT_EQ(contentOf(outside), "precious");
    EXPECT_EQ(contentOf(copy), "meow");
    EXPECT_FALSE(fs::is_symlink(copy));

    EXPECT_EQ(icons.addCover(uuid(1), copy), copy) << "the copy itself may be chosen again";
    EXPECT_EQ(contentOf(copy), "meow");
}

} // namespace vellory::test
