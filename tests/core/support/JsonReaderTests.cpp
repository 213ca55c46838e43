// SPDX-License-Identifier: Apache-2.0
#include "Support/JsonReader.h"

#include <gmock/gmock.h>

namespace vellory::json {
namespace {

using testing::ElementsAre;

constexpr std::size_t plenty = 1'000'000;

template <class T>
void expectSameValue(const std::string& text) {
    Reader reader(text, plenty);
    T out{};
    const bool isRead = reader.read(out) && reader.finish();
    const auto expected = decode<T>(text);
    ASSERT_EQ(isRead, expected.has_value()) << testing::PrintToString(text.substr(0, 80));
    EXPECT_TRUE(!isRead || out == *expected) << text;
}

/// The reader takes for a document, a text or a number what the tree parser takes, and reads it
/// alike.
void expectAgreement(const std::string& text) {
    Reader reader(text, plenty);
    reader.skip();
    ASSERT_EQ(reader.finish(), parse(text).has_value())
        << testing::PrintToString(text.substr(0, 80));
    expectSameValue<std::string>(text);
    expectSameValue<double>(text);
    expectSameValue<int>(text);
}

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JsonReader, TakesForJsonWhatTheTreeParserTakes) {
    using namespace std::string_literals;
    const std::string documents[] = {
        "null",
        "true",
        "\t[ 1 , 2.5 ]\n",
        R"({"a":1,"b":{"c":[]}})",
        "-0",
        "-1.25e2",
        "2E+3",
        R"("a\"\\\/\b\f\n\r\t\u0000z")",
        R"("\u007f\u0080\u07ff\u0800\uFfFf")",
        R"("\ud83d\ude00")",
        "\"ä€😀\xED\x80\x80\"",
    };
    const std::string strange = "[]{}:,\"\\/u0d1-+.eEN \n\v\x1f\x80\xA0\xC0\xED\xF5\xFF\0"s;
    for (const std::string& whole : documents) {
        for (std::size_t at = 0; at <= whole.size(); ++at) {
            expectAgreement(whole.substr(0, at));
            for (const char c : strange) {
                expectAgreement(whole.substr(0, at) + c + whole.substr(at));
                expectAgreement(whole.substr(0, at) + c +
                                whole.substr(std::min(at + 1, whole.size())));
            }
        }
    }
    for (const std::string& text :
         {"inf"s, "1e999"s, "2147483647"s, "2147483648"s, "-2147483648"s, "-2147483649"s,
          "123456789012345678901234567890"s, R"("\ud83d\u0041")"s, "\xEF\xBB\xBF[]"s, "\xEF\xBB[]"s,
          "// no\n[]"s, nested(128), nested(129), nested(100'000), std::string(100'000, '[')}) {
        expectAgreement(text);
    }
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
    EXPECT_FALSE(reader.finish() || reader.nextElement() || reader.nextKey() || reader.skip());
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
