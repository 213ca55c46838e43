// SPDX-License-Identifier: Apache-2.0
#include "Support/JsonReader.h"

#include <gmock/gmock.h>

namespace vellory::json {
namespace {

using testing::ElementsAre;

constexpr std::size_t plenty = 1'000'000;

/// Whether the reader takes `text` for one JSON document.
bool isDocument(std::string_view text) {
    Reader reader(text, plenty);
    reader.skip();
    return reader.finish();
}

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JsonReader, TakesForJsonWhatTheTreeParserTakes) {
    using namespace std::string_literals;
    const std::vector<std::string> texts{
        "",
        " ",
        "null",
        "nul",
        "nullx",
        "true false",
        "[]",
        "[",
        "]",
        "[1",
        "[1,",
        "[1,]",
        "[,1]",
        "[1 2]",
        "[[],[1,[2]]]",
        "{}",
        "{",
        R"({"a")",
        R"({"a":)",
        R"({"a":1)",
        R"({"a":1,})",
        R"({"a":1,"b":{"c":[]}} )",
        R"({a:1})",
        R"({"a" 1})",
        R"({"a":1]})",
        R"([1})",
        R"({1:2})",
        "0",
        "-0",
        "-",
        "01",
        "+1",
        ".5",
        "1.",
        "1.5e",
        "1e+",
        "1.5e-3",
        "1E5",
        "0x10",
        "inf",
        "NaN",
        "1e999",
        "-1e999",
        "123456789012345678901234567890",
        R"("a)",
        R"("\)",
        R"("\")",
        R"("\\")",
        R"("\q")",
        R"("\"\\\/\b\f\n\r\t")",
        R"("\u00e4\u20ac\ud83d\ude00")",
        R"("\u12")",
        R"("\u12g4")",
        R"("\u+123")",
        R"("\ud83d")",
        R"("\ud83dx")",
        R"("\ud83d\n")",
        R"("\ud83d\u0041")",
        R"("\ude00")",
        "\"\n\"",
        "\"a\0b\""s,
        "\0"s,
        "\"ä€😀\"",
        "\"\xC3\"",
        "\"\xC3\\u00e4\"",
        "\"\xED\xA0\x80\"",
        "\"\xC0\x80\"",
        "\"\xF5\x80\x80\x80\"",
        "\xEF\xBB\xBF[]",
        "\xEF\xBB[]",
        "\t\r\n [ 1 , 2 ] \n",
        "\v[]",
        "// no\n[]",
        nested(128),
        nested(129),
        nested(100'000),
        std::string(100'000, '['),
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(isDocument(text), parse(text).has_value()) << text.substr(0, 80);
    }
    EXPECT_FALSE(isDocument("[]\0[]"s));
}

TEST(JsonReader, StringsAreDecodedAsTheTreeParserDoes) {
    for (const std::string text :
         {R"("plain")", R"("a\"\\\/\b\f\n\r\t\u0000z")", R"("\u007f\u0080\u07ff\u0800\uffff")",
          R"("ä\ud800\udc00\udbff\udfff€")"}) {
        Reader reader(text, plenty);
        std::string out;
        EXPECT_TRUE(reader.read(out) && reader.finish());
        EXPECT_EQ(out, decode<std::string>(text)) << text;
    }
}

TEST(JsonReader, NumbersAreReadStrictly) {
    const std::vector<std::pair<std::string, std::optional<int>>> cases{
        {"7", 7},
        {"-0", 0},
        {"3.0", 3},
        {"2e3", 2000},
        {"-2147483648", -2147483648},
        {"2147483647", 2147483647},
        {"2147483648", std::nullopt},
        {"1.5", std::nullopt},
        {"1e400", std::nullopt},
        {"null", std::nullopt},
        {"true", std::nullopt},
        {"\"7\"", std::nullopt},
    };
    for (const auto& [text, value] : cases) {
        Reader reader(text, plenty);
        int out = 0;
        const bool read = reader.read(out) && reader.finish();
        EXPECT_EQ(read ? std::optional(out) : std::nullopt, value) << text;
    }
    Reader reader("-1.25e2", plenty);
    double out = 0;
    EXPECT_TRUE(reader.read(out) && reader.finish());
    EXPECT_EQ(out, -125);
}

TEST(JsonReader, RecordsAreReadKeyByKey) {
    Reader reader(R"({"n":["a","b"],"other":{"x":[null,{}]},"\u006e2":null,"end":"z"})", plenty);
    std::vector<std::string> keys;
    std::vector<std::string> names;
    std::optional<std::string> none = "before";
    std::optional<std::string> end;
    reader.beginObject();
    while (const auto key = reader.nextKey()) {
        keys.emplace_back(*key);
        if (*key == "n") {
            for (reader.beginArray(); reader.nextElement();) {
                reader.read(names.emplace_back());
            }
        } else if (*key == "n2") {
            reader.read(none);
        } else if (*key == "end") {
            reader.read(end);
        } else {
            reader.skip();
        }
    }
    EXPECT_TRUE(reader.finish());
    EXPECT_THAT(keys, ElementsAre("n", "other", "n2", "end"));
    EXPECT_THAT(names, ElementsAre("a", "b"));
    EXPECT_EQ(none, std::nullopt);
    EXPECT_EQ(end, "z");
}

TEST(JsonReader, FirstFaultEndsEveryLoop) {
    Reader reader(R"([["a",1],["b"]])", plenty);
    std::vector<std::string> names;
    for (reader.beginArray(); reader.nextElement();) {
        for (reader.beginArray(); reader.nextElement();) {
            reader.read(names.emplace_back());
        }
    }
    EXPECT_THAT(names, ElementsAre("a", ""));
    EXPECT_FALSE(reader.finish());
    EXPECT_FALSE(reader.nextElement());
    EXPECT_FALSE(reader.nextKey());
    EXPECT_FALSE(reader.skip());
}

TEST(JsonReader, NumberOfValuesIsBounded) {
    for (const std::string_view text : {"[1,2,3]", R"({"a":1,"b":[null]})", R"([["",{}]])"}) {
        Reader enough(text, 4);
        EXPECT_TRUE(enough.skip() && enough.finish());
        EXPECT_EQ(enough.valuesRead(), 4U);
        Reader tooFew(text, 3);
        EXPECT_FALSE(tooFew.skip() && tooFew.finish());
    }
}

} // namespace
} // namespace vellory::json
