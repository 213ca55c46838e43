// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "DesktopSession.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/apps/IconCache.h"
#include "platform/linux/apps/IconTheme.h"
#include "platform/linux/apps/LinuxAppIcons.h"

namespace vellory::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t green = 0xFF00FF00;
constexpr std::uint32_t blue = 0xFF0000FF;

/// Icons on a machine that has nothing else.
class AppIconsTest : public testing::Test {
  protected:
    /// A PNG of one opaque colour.
    fs::path png(const std::string& name, int width, int height, std::uint32_t colour) const {
        const glib::Object<GdkPixbuf> picture(
            gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, width, height));
        gdk_pixbuf_fill(picture.get(), colour << 8 | 0xFF);
        const fs::path file = folder.write(name, "");
        EXPECT_NE(gdk_pixbuf_save(picture.get(), file.c_str(), "png", nullptr, nullptr), FALSE);
        return file;
    }
    /// A drawing of a square: `edge` of its 100 units wide, in its middle.
    fs::path svg(const std::string& name, const std::string& colour, int edge = 100) const {
        const std::string start = std::to_string((100 - edge) / 2);
        const std::string side = std::to_string(edge);
        return folder.write(name,
                            "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='100'>"
                            "<rect x='" +
                                start + "' y='" + start + "' width='" + side + "' height='" + side +
                                "' fill='" + colour + "'/></svg>");
    }
    InstalledApp app(const std::string& icon) const {
        const fs::path file =
            folder.write("app.desktop", "[Desktop Entry]\nType=Application\nName=A\nExec=gone\n"
                                        "Icon=" +
                                            icon + "\n");
        return {"app", "A", file};
    }
    SessionEnvironment environment() const {
        const std::string base = folder.path().string();
        return {{"HOME=" + base + "/home", "XDG_DATA_DIRS=" + base + "/system"}};
    }
    LinuxAppIcons icons(const std::string& theme = "Mine") const {
        return LinuxAppIcons({environment(), folder.path() / "cache", theme});
    }
    static std::uint32_t middle(const std::optional<Image>& image) {
        return image ? image->pixels[image->pixels.size() / 2 +
                                     static_cast<std::size_t>(image->width) / 2]
                     : 0;
    }

    TemporaryFolder folder;
};

TEST_F(AppIconsTest, ThemeGivesTheFileThatSuitsTheSize) {
    folder.write("system/icons/Mine/index.theme",
                 "[Icon Theme]\nInherits=Parent,Mine,../../etc\n"
                 "Directories=16/apps,48/apps,48@2/apps,scalable/apps,../escape\n"
                 "[16/apps]\nSize=16\nType=Fixed\n[48/apps]\nSize=48\nType=Threshold\n"
                 "[48@2/apps]\nSize=48\nScale=2\nType=Fixed\n"
                 "[scalable/apps]\nSize=128\nMinSize=8\nMaxSize=512\nType=Scalable\n");
    folder.write("system/icons/Parent/index.theme",
                 "[Icon Theme]\nDirectories=a\n[a]\nSize=32\nType=Fixed\n");
    folder.write("system/icons/hicolor/index.theme",
                 "[Icon Theme]\nDirectories=a\n[a]\nSize=32\nType=Fixed\n");
    const std::vector<std::string> files{
        "system/icons/Mine/16/apps/both.png",
        "system/icons/Mine/48/apps/both.png",
        "system/icons/Mine/48@2/apps/both.png",
        "home/.local/share/icons/Mine/48/apps/user.png",
        "system/icons/Mine/scalable/apps/vector.svg",
        "system/icons/Mine/16/apps/vector.png",
        "system/icons/Parent/a/inherited.png",
        "system/icons/hicolor/a/inherited.png",
        "system/icons/hicolor/a/basic.png",
        "system/pixmaps/loose.xpm",
        "system/icons/escape/evil.png",
    };
    for (const std::string& file : files) {
        folder.write(file, "x");
    }
    IconTheme theme("Mine", IconTheme::baseFolders(environment()),
                    {folder.path() / "system/pixmaps"});
    struct Row {
        std::string name;
        int pixels;
        std::string file; ///< "" for nothing
    };
    const std::vector<Row> rows{
        {"both", 16, files[0]},
        {"both", 47, files[1]},   // Within the threshold.
        {"both", 96, files[2]},   // 48 at twice the scale.
        {"both", 20, files[1]},   // Rather made smaller than larger.
        {"both", 512, files[2]},  // Nothing is large enough.
        {"user", 48, files[3]},   // A theme is spread over several folders.
        {"vector", 16, files[5]}, // Made for this size.
        {"vector", 96, files[4]},
        {"vector", 1024, files[4]}, // Drawings may be made larger than they say.
        {"inherited", 32, files[6]},
        {"basic", 32, files[8]},
        {"basic.png", 32, files[8]},
        {"loose", 32, files[9]},
        {"missing", 32, ""},
        {"evil", 32, ""},
        {"../escape/evil", 32, ""},
        {"", 32, ""},
    };
    for (const Row& row : rows) {
        const auto expected =
            row.file.empty() ? std::nullopt : std::optional(folder.path() / row.file);
        EXPECT_EQ(theme.find(row.name, row.pixels), expected) << row.name << ' ' << row.pixels;
    }
    // An icon that is installed later is found.
    folder.write("system/icons/hicolor/a/missing.png", "x");
    EXPECT_EQ(theme.find("missing", 32), folder.path() / "system/icons/hicolor/a/missing.png");
}

TEST_F(AppIconsTest, PicturesFillTheSquareAndKeepTheirProportions) {
    const auto drawn = icons().icon(app(svg("icon.svg", "#00f").string()), 64);
    ASSERT_TRUE(drawn.has_value());
    EXPECT_EQ(drawn->width, 64);
    EXPECT_EQ(drawn->height, 64);
    EXPECT_EQ(drawn->pixels, std::vector<std::uint32_t>(64 * 64, blue));

    const auto wide = icons().icon(app(png("wide.png", 80, 40, red).string()), 32);
    ASSERT_TRUE(wide.has_value());
    ASSERT_EQ(wide->pixels.size(), 32U * 32U);
    EXPECT_EQ(wide->pixels[7 * 32], 0U);
    EXPECT_EQ(wide->pixels[8 * 32], red);
    EXPECT_EQ(wide->pixels[24 * 32 - 1], red);
    EXPECT_EQ(wide->pixels[24 * 32], 0U);

    const auto half = icons().icon(
        app(folder
                .write("half.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
                                   "<rect width='8' height='8' fill='#f00' fill-opacity='.5'/>"
                                   "</svg>")
                .string()),
        8);
    ASSERT_TRUE(half.has_value());
    const std::uint32_t alpha = half->pixels[0] >> 24;
    EXPECT_NEAR(alpha, 128, 1);
    EXPECT_NEAR(half->pixels[0] >> 16 & 0xFF, alpha, 1) << "not premultiplied";
}

TEST_F(AppIconsTest, WideTransparentMarginsAreCut) {
    const auto extent = [&](int edge) {
        const auto image = icons().icon(app(svg("icon.svg", "#0f0", edge).string()), 100);
        return image ? std::ranges::count(image->pixels.begin() + 50 * 100,
                                          image->pixels.begin() + 51 * 100, green)
                     : -1;
    };
    EXPECT_EQ(extent(100), 100);
    EXPECT_EQ(extent(80), 80); // Usual margins stay.
    EXPECT_NEAR(extent(50), 87, 2);
    EXPECT_NEAR(extent(30), 87, 2);
    EXPECT_EQ(middle(icons().icon(app(svg("icon.svg", "none").string()), 100)), 0U);
}

TEST_F(AppIconsTest, WhatCannotBeReadGivesNothing) {
    const fs::path large = png("large.png", 20'000, 1, red);
    ASSERT_EQ(mkfifo((folder.path() / "pipe.png").c_str(), 0600), 0);
    fs::resize_file(folder.write("vast.png", "x"), 33LL * 1024 * 1024);
    for (const std::string& icon :
         {large.string(), (folder.path() / "pipe.png").string(),
          (folder.path() / "vast.png").string(), folder.write("text.png", "no picture").string(),
          folder.write("empty.svg", "").string(),
          folder
              .write("bomb.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='1e9' "
                                 "height='1e9'/>")
              .string(),
          folder.path().string(), std::string("/no/such/icon.png"), std::string("no-such-name"),
          std::string("../../large"), std::string()}) {
        EXPECT_FALSE(icons().icon(app(icon), 64).has_value()) << icon;
    }
    EXPECT_FALSE(icons().icon({"gone", "Gone", "/nowhere.desktop"}, 64).has_value());
    for (const int pixels : {0, -1, 1'000'000}) {
        EXPECT_FALSE(icons().icon(app(svg("a.svg", "red").string()), pixels).has_value());
    }
}

TEST_F(AppIconsTest, SecondStartDrawsNothingUnlessTheSourceChanged) {
    const InstalledApp shown = app(svg("icon.svg", "#00f").string());
    const auto first = icons().icon(shown, 64);
    const auto entries = [&] {
        std::vector<fs::path> files;
        for (const auto& file : fs::directory_iterator(folder.path() / "cache")) {
            files.push_back(file.path());
        }
        return files;
    };
    ASSERT_EQ(entries().size(), 1U);
    LinuxAppIcons second = icons();
    EXPECT_EQ(second.icon(shown, 64), first);
    EXPECT_EQ(second.drawn(), 0);

    svg("icon.svg", "#0f0", 98); // Other content, whatever the clock's resolution.
    fs::last_write_time(folder.path() / "icon.svg",
                        fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(middle(second.icon(shown, 64)), green);
    EXPECT_EQ(second.drawn(), 1);

    // Damage in any place counts as missing.
    for (const fs::path& file : entries()) {
        const std::string whole = contentOf(file);
        for (const std::string& damaged :
             {std::string(), whole.substr(0, whole.size() / 2), std::string(whole.size(), 'x'),
              whole.substr(0, whole.size() - 1) + 'x'}) {
            std::ofstream(file, std::ios::binary | std::ios::trunc) << damaged;
            EXPECT_EQ(middle(icons().icon(shown, 64)), green);
        }
    }
}

TEST_F(AppIconsTest, CacheStaysWithinItsBounds) {
    const fs::path cacheFolder = folder.path() / "bounded";
    IconCache cache(cacheFolder, 10'000);
    const Image image{16, 16, std::vector<std::uint32_t>(256, red)};
    for (int i = 0; i < 50; ++i) {
        cache.write("key" + std::to_string(i), image);
        std::uintmax_t bytes = 0;
        for (const auto& file : fs::directory_iterator(cacheFolder)) {
            bytes += file.file_size();
        }
        ASSERT_LE(bytes, 10'000U);
    }
    EXPECT_EQ(cache.read("key49"), image);
}

TEST_F(AppIconsTest, ManyThreadsMayAskAtOnce) {
    folder.write("system/icons/hicolor/index.theme",
                 "[Icon Theme]\nDirectories=s\n[s]\nSize=48\nMinSize=1\nMaxSize=512\n"
                 "Type=Scalable\n");
    for (int i = 0; i < 8; ++i) {
        svg("system/icons/hicolor/s/icon" + std::to_string(i) + ".svg", "#00f");
        folder.write("app" + std::to_string(i) + ".desktop",
                     "[Desktop Entry]\nIcon=icon" + std::to_string(i) + "\n");
    }
    const LinuxAppIcons shared = icons("hicolor");
    std::vector<int> good(4, 0);
    {
        std::vector<std::jthread> threads;
        for (int& count : good) {
            threads.emplace_back([&] {
                for (int i = 0; i < 8; ++i) {
                    const std::string id = "app" + std::to_string(i);
                    count +=
                        middle(shared.icon({id, id, folder.path() / (id + ".desktop")}, 32)) == blue
                            ? 1
                            : 0;
                }
            });
        }
    }
    EXPECT_THAT(good, testing::Each(8));
}

} // namespace
} // namespace vellory::test
