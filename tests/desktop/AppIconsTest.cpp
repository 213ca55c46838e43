// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <latch>
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

/// Whether the theme has changed is looked at every time.
constexpr std::chrono::milliseconds always{0};
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
        return LinuxAppIcons({environment(), folder.path() / "cache", theme, always});
    }
    /// What an app with this icon shows.
    std::optional<Image> drawn(const fs::path& icon, int pixels = 64) const {
        return icons().icon(app(icon.string()), pixels);
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
    struct Row {
        std::string name;
        int pixels;
        std::string file; ///< "" for nothing
    };
    const std::vector<Row> rows{
        {"both", 16, "icons/Mine/16/apps/both.png"},
        {"both", 47, "icons/Mine/48/apps/both.png"},    // Within the threshold.
        {"both", 96, "icons/Mine/48@2/apps/both.png"},  // 48 at twice the scale.
        {"both", 20, "icons/Mine/48/apps/both.png"},    // Rather made smaller than larger.
        {"both", 512, "icons/Mine/48@2/apps/both.png"}, // Nothing is large enough.
        {"user", 48, "../home/.local/share/icons/Mine/48/apps/user.png"}, // It is spread out.
        {"vector", 16, "icons/Mine/16/apps/vector.png"},                  // Made for this size.
        {"vector", 96, "icons/Mine/scalable/apps/vector.svg"},
        {"vector", 1024, "icons/Mine/scalable/apps/vector.svg"}, // Larger than it says it may be.
        {"inherited", 32, "icons/Parent/a/inherited.png"},
        {"basic", 32, "icons/hicolor/a/basic.png"},
        {"basic.png", 32, "icons/hicolor/a/basic.png"},
        {"loose", 32, "pixmaps/loose.xpm"},
        {"missing", 32, ""},
        {"evil", 32, ""},
        {"../escape/evil", 32, ""},
        {"", 32, ""},
    };
    const fs::path system = folder.path() / "system";
    for (const Row& row : rows) {
        folder.write(row.file.empty() ? "system/icons/escape/evil.png" : system / row.file, "x");
    }
    folder.write("system/icons/hicolor/a/inherited.png", "x");
    IconTheme theme("Mine", IconTheme::baseFolders(environment()), {system / "pixmaps"}, always);
    for (const Row& row : rows) {
        const auto expected =
            row.file.empty() ? std::nullopt : std::optional((system / row.file).lexically_normal());
        EXPECT_EQ(theme.find(row.name, row.pixels), expected) << row.name << ' ' << row.pixels;
    }
    // An icon that is installed later is found.
    folder.write("system/icons/hicolor/a/missing.png", "x");
    EXPECT_EQ(theme.find("missing", 32), folder.path() / "system/icons/hicolor/a/missing.png");
}

TEST_F(AppIconsTest, PicturesFillTheSquareAndKeepTheirProportions) {
    EXPECT_EQ(drawn(svg("icon.svg", "#00f")),
              (Image{64, 64, std::vector<std::uint32_t>(64 * 64, blue)}));

    const auto wide = drawn(png("wide.png", 80, 40, red), 32);
    ASSERT_TRUE(wide.has_value());
    ASSERT_EQ(wide->pixels.size(), 32U * 32U);
    EXPECT_EQ(wide->pixels[7 * 32], 0U);
    EXPECT_EQ(wide->pixels[8 * 32], red);
    EXPECT_EQ(wide->pixels[24 * 32 - 1], red);
    EXPECT_EQ(wide->pixels[24 * 32], 0U);

    const std::uint32_t half = middle(drawn(svg("half.svg", "#f00' fill-opacity='.5")));
    EXPECT_NEAR(half >> 24, 128, 1);
    EXPECT_NEAR(half >> 16 & 0xFF, half >> 24, 1) << "not premultiplied";
}

TEST_F(AppIconsTest, WideTransparentMarginsAreCut) {
    const auto extent = [&](int edge) {
        const auto image = drawn(svg("icon.svg", "#0f0", edge), 100);
        return image ? std::ranges::count(image->pixels.begin() + 50 * 100,
                                          image->pixels.begin() + 51 * 100, green)
                     : -1;
    };
    EXPECT_EQ(extent(100), 100);
    EXPECT_EQ(extent(80), 80); // Usual margins stay.
    EXPECT_NEAR(extent(50), 87, 2);
    EXPECT_NEAR(extent(30), 87, 2);
    EXPECT_EQ(middle(drawn(svg("icon.svg", "none"), 100)), 0U);
}

TEST_F(AppIconsTest, WhatCannotBeReadGivesNothing) {
    const fs::path pipe = folder.path() / "pipe.png";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const fs::path vast = folder.write("vast.png", "x");
    fs::resize_file(vast, 33LL * 1024 * 1024);
    const fs::path bomb = folder.write(
        "bomb.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='1e9' height='1e9'/>");
    for (const fs::path& icon :
         {png("large.png", 20'000, 1, red), pipe, vast, bomb,
          folder.write("text.png", "no picture"), folder.write("empty.svg", ""), folder.path(),
          fs::path("/no/such/icon.png"), fs::path("no-such-name"), fs::path("../../large"),
          fs::path()}) {
        EXPECT_FALSE(drawn(icon).has_value()) << icon;
    }
    EXPECT_FALSE(icons().icon({"gone", "Gone", "/nowhere.desktop"}, 64).has_value());
    for (const int pixels : {0, -1, 1'000'000}) {
        EXPECT_FALSE(drawn(svg("a.svg", "red"), pixels).has_value());
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
    std::vector<InstalledApp> apps;
    for (int i = 0; i < 8; ++i) {
        const std::string id = "icon" + std::to_string(i);
        svg("system/icons/hicolor/s/" + id + ".svg", "#00f");
        apps.push_back(
            {id, id, folder.write(id + ".desktop", "[Desktop Entry]\nIcon=" + id + "\n")});
    }
    for (int round = 0; round < 60; ++round) {
        const LinuxAppIcons shared = icons("hicolor"); // which has read nothing yet
        std::array<std::ptrdiff_t, 4> good{};
        std::latch start(good.size());
        {
            std::vector<std::jthread> threads;
            for (std::ptrdiff_t& count : good) {
                threads.emplace_back([&] {
                    start.arrive_and_wait();
                    count = std::ranges::count_if(apps, [&](const auto& app) {
                        return middle(shared.icon(app, 32)) == blue;
                    });
                });
            }
        }
        EXPECT_THAT(good, testing::Each(8));
    }
}

} // namespace
} // namespace vellory::test
