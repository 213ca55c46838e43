// SPDX-License-Identifier: Apache-2.0
#include "Support/PropertyList.h"

#include <limits>

#include <gtest/gtest.h>

#include "support/BinaryPlist.h"
#include "support/Lists.h"

namespace vellory::support_tests {
namespace {

using test::BinaryPlist;
using test::repeated;

PropertyList::Value text(std::string_view value) {
    return {std::string(value)};
}

std::string plist(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE plist PUBLIC \"-//x\" \"y\">"
           "<plist version=\"1.0\">" +
           content + "</plist>";
}

void expectError(const std::string& list, PropertyList::Error error,
                 const PropertyList::Limits& limits = {}) {
    EXPECT_EQ(PropertyList::parse(list, limits), std::unexpected(error))
        << testing::PrintToString(list.substr(0, 80)) << ", " << list.size() << " bytes";
}

TEST(PropertyList, ValuesAreFoundByKindAndKey) {
    const auto parsed = PropertyList::parse(
        plist("<dict><key>b</key><true/><key>a</key><array><string/><false/></array></dict>"));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(*parsed->find("b")->boolean(), true);
    EXPECT_EQ(*parsed->find("a")->array(),
              (PropertyList::Array{text(""), PropertyList::Value{false}}));
    EXPECT_EQ(parsed->find("none"), nullptr);
    EXPECT_EQ(parsed->find("a")->find("b"), nullptr);
    EXPECT_EQ(parsed->find("a")->boolean(), nullptr);
}

TEST(PropertyList, BinaryValuesMayBeShared) {
    BinaryPlist list;
    const auto shared = list.addText("shared");
    const auto key = list.addText("key");
    const auto numbers = list.addArray({list.addInteger(7), list.addBoolean(true), shared});
    const auto parsed =
        PropertyList::parse(list.bytes(list.addDictionary({{key, numbers}, {shared, shared}})));
    ASSERT_TRUE(parsed);
    const auto& array = *parsed->find("key")->array();
    ASSERT_EQ(array.size(), 3);
    EXPECT_EQ(*array[0].integer(), 7);
    EXPECT_EQ(*array[1].boolean(), true);
    EXPECT_EQ(array[2], text("shared"));
    EXPECT_EQ(*parsed->find("shared"), text("shared"));
}

TEST(PropertyList, NestingIsBoundedInBothForms) {
    const auto xml = [](std::size_t depth, const char* open, const char* close) {
        return plist(repeated(open, depth) + repeated(close, depth));
    };
    const auto binary = [](int depth, bool dictionaries) {
        BinaryPlist list;
        const auto key = list.addText("k");
        auto inner = list.addArray({});
        for (int i = 1; i < depth; ++i) {
            inner = dictionaries ? list.addDictionary({{key, inner}}) : list.addArray({inner});
        }
        return list.bytes(inner);
    };
    EXPECT_TRUE(PropertyList::parse(xml(200, "<array>", "</array>")));
    EXPECT_TRUE(PropertyList::parse(binary(200, false)));
    EXPECT_TRUE(PropertyList::parse(binary(200, true)));
    for (const std::string& deep :
         {xml(100'000, "<array>", "</array>"), xml(100'000, "<dict><key>k</key>", "</dict>"),
          xml(100'000, "<array><!-- </array> -->", ""), xml(100'000, "<array x='/>'>", ""),
          "<plist>" + repeated("<array>", 100'000), binary(100'000, false),
          binary(100'000, true)}) {
        expectError(deep, PropertyList::Error::tooLarge);
    }
    // To a counter that takes these tags for real, every one of these closes again.
    for (const char* open : {"<array><!--</array>-->", "<array><![CDATA[</array>]]>",
                             "<array><?x </array>?>", "<array><!-- /> </array>-->"}) {
        EXPECT_FALSE(PropertyList::parse(plist(repeated(open, 100'000)))) << open;
    }
}

TEST(PropertyList, ValuesThatHoldThemselvesAreRefused) {
    BinaryPlist list;
    const auto itself = list.addArray({0});
    const auto array = list.addArray({2});
    const auto dictionary = list.addDictionary({{3, array}});
    list.addText("k");
    const auto asKey = list.addDictionary({{4, 3}}); // as the key of its own dictionary
    for (const auto top : {itself, array, dictionary, asKey}) {
        expectError(list.bytes(top), PropertyList::Error::malformed);
    }
}

TEST(PropertyList, SharedValuesCountWhereverTheyOccur) {
    BinaryPlist bomb; // 40 levels of ten names for the level below: 10^40 values
    auto inner = bomb.addText("lol");
    for (int i = 0; i < 40; ++i) {
        inner = bomb.addArray(std::vector(10, inner));
    }
    expectError(bomb.bytes(inner), PropertyList::Error::tooLarge);

    // One large text under many names: the values are few, the bytes are not.
    BinaryPlist heavy;
    const auto large = heavy.addText(std::string(1'000'000, 'x'));
    expectError(heavy.bytes(heavy.addArray(std::vector(1'000, large))),
                PropertyList::Error::tooLarge);
}

TEST(PropertyList, EntitiesAreNeitherExpandedNorFetched) {
    for (const char* declared :
         {"<!ENTITY a \"xxxxxxxx\">", "<!ENTITY a SYSTEM \"file:///etc/hostname\">",
          "<!ENTITY % p \"x\"><!ENTITY a \"y\">"}) {
        expectError("<!DOCTYPE plist [" + std::string(declared) +
                        "]><plist version=\"1.0\"><string>&a;</string></plist>",
                    PropertyList::Error::malformed);
    }
}

TEST(PropertyList, TextsAreUtf8AndMayHoldAnyCharacter) {
    BinaryPlist list;
    const auto nul = list.add(std::string("\x53"
                                          "a\0b",
                                          4));
    const auto latin = list.add("\x52\xe9!"); // bytes that are no UTF-8 in a text of ASCII
    const auto wide =
        list.add(std::string("\x64\0\xe9\xd8\x3d\xdc\x4d\xd8\0", 9)); // é👍 and half of one
    const auto parsed = PropertyList::parse(
        list.bytes(list.addDictionary({{nul, nul}, {latin, latin}, {wide, wide}})));
    ASSERT_TRUE(parsed);
    for (const std::string& expected :
         {std::string("a\0b", 3), std::string("\uFFFD!"), std::string("é👍\uFFFD")}) {
        ASSERT_NE(parsed->find(expected), nullptr) << expected;
        EXPECT_EQ(*parsed->find(expected), text(expected));
    }
    EXPECT_FALSE(PropertyList::parse(plist("<string>a&#0;</string>")));
    EXPECT_FALSE(PropertyList::parse(plist("<string>\xe9!</string>")));
}

TEST(PropertyList, NumbersAndDatesInXmlAreReadStrictly) {
    const std::pair<const char*, PropertyList::Value> values[] = {
        {"<string>a &amp; é</string>", text("a & é")},
        {"<integer> +7\n</integer>", {std::int64_t{7}}},
        {"<integer>0x1F</integer>", {std::int64_t{31}}},
        {"<integer>-9223372036854775808</integer>", {std::numeric_limits<std::int64_t>::min()}},
        {"<integer>18446744073709551615</integer>", {std::int64_t{-1}}},
        {"<real>-1e3</real>", {-1000.0}},
        {"<date>2024-02-29T23:59:59Z</date>", {Date::since1970(1'709'251'199)}},
        {"<data>\n\tAP\n8=\n</data>", {PropertyList::Data{std::string("\0\xff", 2)}}},
        {"<dict><key>CF$UID</key><integer>4</integer></dict>", {PropertyList::Uid{4}}},
        {"<dict/>", {PropertyList::Dictionary{}}},
    };
    for (const auto& [element, value] : values) {
        EXPECT_EQ(PropertyList::parse(plist(element)), value) << element;
    }
    for (const char* bad :
         {"<integer></integer>", "<integer>7x</integer>", "<integer>99999999999999999999</integer>",
          "<real>1,5</real>", "<date>2023-02-29T00:00:00Z</date>", "<date>2023-02-28</date>",
          "<date>2023-02-28T00:00:00+01</date>", "<widget/>", "<true/><true/>", "", "<key>k</key>",
          "<dict><key>k</key></dict>", "<dict><true/></dict>",
          "<dict><key>k</key><key>l</key><true/></dict>", "<string>a<true/></string>",
          "<plist><true/></plist>"}) {
        expectError(plist(bad), PropertyList::Error::malformed);
    }
}

TEST(PropertyList, DamagedListsAreRefused) {
    BinaryPlist list;
    const auto missing = list.addArray({9});
    BinaryPlist hugeCount;
    hugeCount.add(std::string("\xAF\x13") + BinaryPlist::number(1ULL << 60U, 8));
    BinaryPlist hugeText;
    hugeText.add(std::string("\x5F\x13") + BinaryPlist::number(~0ULL, 8));
    BinaryPlist keyless; // a dictionary whose key is no text
    const auto number = keyless.addInteger(1);
    const auto holder = keyless.addDictionary({{number, number}});
    std::string badOffset = list.bytes(missing);
    badOffset[badOffset.size() - 33] = '\x7f';
    for (const std::string& bad :
         {std::string(), std::string("bplist00"), std::string("bplist00") + std::string(31, '\0'),
          std::string("bplist00") + std::string(32, '\0'),
          std::string("bplist00") + std::string(32, '\xff'), list.bytes(missing), list.bytes(1),
          hugeCount.bytes(0), hugeText.bytes(0), badOffset, std::string("no property list"),
          std::string("{ a = b; }"), std::string("<plist><dict><key>"),
          std::string("<plist version=\"1.0\"><array><string>a"), std::string("<html></html>")}) {
        expectError(bad, PropertyList::Error::malformed);
    }
    const auto parsed = PropertyList::parse(keyless.bytes(holder));
    EXPECT_TRUE(!parsed || parsed->dictionary() != nullptr);
}

TEST(PropertyList, LimitsAreThoseOfTheCaller) {
    BinaryPlist binary;
    const auto top = binary.addArray({binary.addDictionary({}), binary.addBoolean(true)});
    for (const std::string& list : {plist("<array><dict/><true/></array>"), binary.bytes(top)}) {
        const std::pair<PropertyList::Limits, bool> cases[] = {
            {{.bytes = list.size(), .depth = 2, .values = 3}, true},
            {{.bytes = list.size() - 1}, false},
            {{.depth = 1}, false},
            {{.values = 2}, false},
        };
        for (const auto& [limits, fits] : cases) {
            EXPECT_EQ(PropertyList::parse(list, limits).has_value(), fits)
                << limits.bytes << " " << limits.depth << " " << limits.values;
        }
    }
    // Shared values count as often as they occur.
    BinaryPlist shared;
    const auto six = shared.addArray(std::vector(5, shared.addBoolean(true)));
    EXPECT_TRUE(PropertyList::parse(shared.bytes(six), {.values = 6}));
    expectError(shared.bytes(six), PropertyList::Error::tooLarge, {.values = 5});
}

TEST(PropertyList, EveryTruncationIsRefused) {
    BinaryPlist list;
    const auto key = list.addText("key");
    const auto value = list.addArray({list.addInteger(1), key, list.addBoolean(false)});
    for (const std::string& whole :
         {list.bytes(list.addDictionary({{key, value}})),
          plist("<dict><key>k</key><array><integer>1</integer></array></dict>")}) {
        ASSERT_TRUE(PropertyList::parse(whole));
        for (std::size_t size = 0; size < whole.size() - 10; ++size) {
            EXPECT_FALSE(PropertyList::parse(whole.substr(0, size))) << size;
        }
    }
}

} // namespace
} // namespace vellory::support_tests
