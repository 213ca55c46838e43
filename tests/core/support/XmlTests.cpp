// SPDX-License-Identifier: Apache-2.0
#include "Support/Xml.h"

#include <string>

#include <gtest/gtest.h>

#include "support/Lists.h"
#include "support/TemporaryFolder.h"

namespace vellory::Xml {
namespace {

/// Writes down what it is told: "<a k=v>text</a>", with neighbouring pieces of text as one.
class Transcript final : public Handler {
  public:
    void startElement(std::string_view name, std::span<const Attribute> attributes) override {
        written.append("<").append(name);
        for (const Attribute& attribute : attributes) {
            written.append(" ").append(attribute.name).append("=").append(attribute.value);
        }
        written.append(">");
    }
    void endElement(std::string_view name) override { written.append("</").append(name) += '>'; }
    void text(std::string_view piece) override { written.append(piece); }

    std::string written;
};

using test::repeated;

struct Outcome {
    std::string written;
    std::optional<Error> error;
};

Outcome read(std::string_view document, const Limits& limits = {}) {
    Transcript transcript;
    const auto done = parse(document, transcript, limits);
    return {transcript.written, done ? std::nullopt : std::optional(done.error())};
}

TEST(Xml, TellsADocumentInOrder) {
    const struct {
        std::string_view document;
        std::string_view written;
    } cases[] = {
        {"<a/>", "<a></a>"},
        {"<a k='1' x:l=\"&lt;2&gt;\">t<b>u</b>v</a>", "<a k=1 x:l=<2>>t<b>u</b>v</a>"},
        {"<a>1 &amp; <![CDATA[<2>]]> &#x20AC;</a>", "<a>1 & <2> €</a>"},
        {"<a><!-- <b/> --><?php x?>t</a>", "<a>t</a>"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><a>é</a>", "<a>é</a>"},
        {"<?xml version='1.0' encoding='iso-8859-1'?><a>\xE9</a>", "<a>é</a>"},
        {"<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>", "<a>€</a>"},
        {"<!DOCTYPE rss PUBLIC 'id' 'http://example.invalid/rss.dtd'><rss/>", "<rss></rss>"},
    };
    for (const auto& test : cases) {
        const Outcome outcome = read(test.document);
        EXPECT_EQ(outcome.written, test.written) << test.document;
        EXPECT_FALSE(outcome.error) << test.document;
    }
    const std::string utf16("\xFF\xFE<\0a\0>\0\xAC\x20<\0/\0a\0>\0", 18);
    EXPECT_EQ(read(utf16).written, "<a>€</a>");
}

TEST(Xml, RefusesWhatIsNotWellFormed) {
    for (const std::string_view document :
         {"", " ", "text", "<a>", "<a></b>", "<a/><b/>", "<a k=1/>", "<a k='1' k='2'/>",
          "<a>&bogus;</a>", "<a>\xE9</a>", "<?xml version='1.0' encoding='no-such'?><a/>",
          "<?xml version='1.0' encoding='Shift_JIS'?><a/>", "<a>\x01</a>"}) {
        EXPECT_EQ(read(document).error, Error::malformed) << document;
    }
    EXPECT_EQ(read(std::string_view("<a>\0</a>", 8)).error, Error::malformed);
}

TEST(Xml, NothingInADocumentIsExpandedOrLoaded) {
    const std::string_view cases[] = {
        "<!DOCTYPE a [<!ENTITY b 'x'>]><a>&b;</a>",
        "<!DOCTYPE a [<!ENTITY b 'x'>]><a k='&b;'/>",
        "<!DOCTYPE a [<!ENTITY b SYSTEM 'file:///etc/passwd'>]><a>&b;</a>",
        "<!DOCTYPE a [<!ENTITY % b SYSTEM 'file:///etc/passwd'> %b;]><a/>",
        "<!DOCTYPE a [<!ATTLIST a k CDATA 'default'>]><a/>",
        "<!DOCTYPE a [<!ENTITY x0 'lol'><!ENTITY x1 '&x0;&x0;&x0;&x0;&x0;&x0;&x0;&x0;&x0;&x0;'>"
        "<!ENTITY x2 '&x1;&x1;&x1;&x1;&x1;&x1;&x1;&x1;&x1;&x1;'>]><a>&x2;</a>",
    };
    for (const std::string_view document : cases) {
        const Outcome outcome = read(document);
        EXPECT_EQ(outcome.error, Error::declarations) << document;
        EXPECT_EQ(outcome.written, "") << document;
    }
}

TEST(Xml, NestingAndSizeAreBounded) {
    const Limits limits{.bytes = 4'000'000, .depth = 100};
    EXPECT_FALSE(read(repeated("<a>", 100) + repeated("</a>", 100), limits).error);
    EXPECT_EQ(read(repeated("<a>", 101) + repeated("</a>", 101), limits).error, Error::tooLarge);
    EXPECT_EQ(read(repeated("<a>", 99) + "<b><c/></b>", limits).error, Error::tooLarge);
    EXPECT_EQ(read(repeated("<a>", 100'000)).error, Error::tooLarge);
    EXPECT_FALSE(read("<a>" + repeated("<b/>", 100'000) + "</a>", limits).error);

    EXPECT_FALSE(read("<a><b c='1'/><b c='2'/></a>", {.names = 3}).error);
    EXPECT_EQ(read("<a><b c='1'/><b d='2'/></a>", {.names = 3}).error, Error::tooLarge);
    EXPECT_EQ(read("<a><b c='1'/><d/></a>", {.names = 3}).error, Error::tooLarge);

    EXPECT_FALSE(read("<abcd/>", {.bytes = 7}).error);
    EXPECT_EQ(read("<abcde/>", {.bytes = 7}).error, Error::tooLarge);
}

TEST(Xml, NothingIsToldAfterAnError) {
    EXPECT_EQ(read("<a><b>1</b></a", {}).written, "<a><b>1</b>");
    EXPECT_EQ(read("<a><b><c/>text</b>text</a>", {.depth = 2}).written, "<a><b>");
}

// --- From files ---

Outcome readFile(const std::string& document, const Limits& limits = {}) {
    const TemporaryFolder folder;
    Transcript transcript;
    const auto done = parseFile(folder.write("in.xml", document), transcript, limits);
    return {transcript.written, done ? std::nullopt : std::optional(done.error())};
}

TEST(XmlFile, TellsWhatTheTextTellsHoweverItIsCutIntoPieces) {
    // Several pieces of reading, with tags and characters of several bytes across their borders.
    std::string large = "<a>";
    for (int i = 0; large.size() < 500'000; ++i) {
        large += "<b k='é" + std::to_string(i) + "'>ü &amp; <![CDATA[<c>]]></b>";
    }
    large += "</a>";
    EXPECT_FALSE(readFile(large).error);
    EXPECT_EQ(readFile(large).written, read(large).written);
    for (const std::string document :
         {"", "<a>", "<a/><b/>", "<a k='1'/>", "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"}) {
        EXPECT_EQ(readFile(document).error, read(document).error) << document;
    }
}

TEST(XmlFile, WhatIsTooLongOrNoFileIsTurnedAway) {
    EXPECT_EQ(readFile("<a>" + std::string(1000, 'x') + "</a>", {.bytes = 1000}).error,
              Error::tooLarge);
    // A tag that never ends would be scanned again with every piece.
    EXPECT_EQ(readFile("<a k='" + std::string(3 * longestToken, 'x')).error, Error::tooLarge);
    EXPECT_FALSE(readFile("<a k='" + std::string(longestToken / 2, 'x') + "'/>").error);

    const TemporaryFolder folder;
    Transcript transcript;
    EXPECT_EQ(parseFile(folder.path() / "none", transcript).error(), Error::unreadable);
    EXPECT_EQ(parseFile(folder.path(), transcript).error(), Error::unreadable);
    EXPECT_EQ(parseFile("/dev/zero", transcript).error(), Error::unreadable);
}

} // namespace
} // namespace vellory::Xml
