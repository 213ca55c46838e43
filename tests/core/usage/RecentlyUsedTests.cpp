// SPDX-License-Identifier: Apache-2.0
#include "Usage/RecentlyUsed.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/Lists.h"

namespace vellory::RecentlyUsed {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string list(const std::string& bookmarks) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xbel version=\"1.0\"\n"
           "      xmlns:bookmark=\"http://www.freedesktop.org/standards/desktop-bookmarks\"\n"
           "      xmlns:mime=\"http://www.freedesktop.org/standards/shared-mime-info\">\n" +
           bookmarks + "</xbel>";
}

/// An app's use of a file: "modified" and its value, or another attribute.
std::string use(const std::string& name, const std::string& exec, const std::string& when) {
    return "<bookmark:application name=\"" + name + "\" exec=\"" + exec + "\" " + when +
           " count=\"1\"/>";
}

std::string bookmark(const std::string& link, const std::string& uses,
                     const std::string& more = "") {
    return "<bookmark href=\"" + link + "\" added=\"2024-01-01T00:00:00Z\"><info>" +
           "<metadata owner=\"http://freedesktop.org\"><mime:mime-type type=\"text/plain\"/>" +
           "<bookmark:applications>" + uses + "</bookmark:applications>" + more +
           "</metadata></info></bookmark>\n";
}

std::string on(int day) {
    return std::string("modified=\"2024-03-") + (day < 10 ? "0" : "") + std::to_string(day) +
           "T09:30:00.123456Z\"";
}

std::string editorUse(int day) {
    return use("Text Editor", "&apos;gedit %u&apos;", on(day));
}

const App editor{"Text Editor", "gedit"};

std::vector<std::filesystem::path> documentsOf(const std::string& text, const App& app = editor,
                                               std::size_t most = defaultDocuments) {
    return test::each(parse(text, most).value()[app].documents, &Document::file);
}

TEST(RecentlyUsed, TheLatestDocumentsOfEachAppComeFirst) {
    const std::string text =
        list(bookmark("file:///home/me/old.txt", editorUse(1)) +
             bookmark("file:///home/me/A%20%C3%A9.txt", editorUse(20)) +
             bookmark("file:///home/me/middle.txt",
                      editorUse(9) + use("Viewer", "/usr/bin/viewer --open %f", on(28))));
    EXPECT_THAT(documentsOf(text),
                ElementsAre("/home/me/A é.txt", "/home/me/middle.txt", "/home/me/old.txt"));
    EXPECT_THAT(documentsOf(text, editor, 2),
                ElementsAre("/home/me/A é.txt", "/home/me/middle.txt"));
    EXPECT_THAT(documentsOf(text, {"Viewer", "viewer"}), ElementsAre("/home/me/middle.txt"));
    // 2024-03-20 09:30 UTC, by `date -u -d … +%s`.
    EXPECT_EQ(parse(text)->at(editor).last, Date::since1970(1'710'927'000));
}

TEST(RecentlyUsed, WhatIsNoFileOfThisMachineOrPrivateIsNoDocumentButStillAUse) {
    for (const std::string link :
         {"notes.txt", "../notes.txt", "file:notes.txt", "file://server/share/x", "https://a.b/c",
          "file:///home/../../etc/passwd", "file:///a%00b", "file:///broken%2", ""}) {
        const std::string text = list(bookmark(link, editorUse(5)));
        EXPECT_THAT(documentsOf(text), IsEmpty()) << link;
        EXPECT_TRUE(parse(text)->contains(editor)) << link;
    }
    EXPECT_THAT(documentsOf(list(bookmark("file:///a", editorUse(5), "<bookmark:private/>") +
                                 bookmark("file:///b", editorUse(4)))),
                ElementsAre("/b"));
}

TEST(RecentlyUsed, UsesWithoutAMomentOrANameAreNone) {
    for (const std::string when :
         {"modified=\"2024-02-30T09:30:00Z\"", "modified=\"yesterday\"", "modified=\"\"",
          "modified=\"2024-03-01T09:30:00+01:00\"", "modified=\"2024-03-01 09:30:00Z\"",
          "modified=\"2024-13-01T09:30:00Z\"", "timestamp=\"-1\"", "timestamp=\"1e9\"", ""}) {
        EXPECT_THAT(*parse(list(bookmark("file:///a", use("X", "x", when)))), IsEmpty()) << when;
    }
    EXPECT_THAT(*parse(list(bookmark("file:///a", use("", "", on(1))))), IsEmpty());
    EXPECT_EQ(parse(list(bookmark("file:///a", use("X", "", "timestamp=\"1710927000\""))))
                  ->at({"X", ""})
                  .last,
              Date::since1970(1'710'927'000));
}

TEST(RecentlyUsed, AFileThatIsListedTwiceCountsOnceAtItsLatestUse) {
    const std::string text =
        list(bookmark("file:///a", editorUse(3)) + bookmark("file:///b", editorUse(4)) +
             bookmark("file:///a", editorUse(5)) + bookmark("file:///b", editorUse(1)));
    EXPECT_THAT(documentsOf(text), ElementsAre("/a", "/b"));
}

TEST(RecentlyUsed, DamagedListsAndDeclaredEntitiesGiveNothing) {
    const std::string whole = list(bookmark("file:///a", editorUse(1)));
    EXPECT_EQ(parse("<!DOCTYPE xbel [<!ENTITY a \"ha\">]>" + whole).error(),
              Xml::Error::declarations);
    EXPECT_EQ(parse(whole.substr(0, whole.size() - 3)).error(), Xml::Error::malformed);
    EXPECT_EQ(read("/nowhere/recently-used.xbel").error(), Xml::Error::unreadable);
}

TEST(RecentlyUsed, KeepsABoundedNumberOfApps) {
    std::string bookmarks;
    for (std::size_t i = 0; i < mostApps + 100; ++i) {
        bookmarks += bookmark("file:///a", use("App " + std::to_string(i), "x", on(1)));
    }
    EXPECT_EQ(parse(list(bookmarks))->size(), mostApps);
}

} // namespace
} // namespace vellory::RecentlyUsed
