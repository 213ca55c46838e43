// SPDX-License-Identifier: Apache-2.0
#include "Support/Json.h"

#include <cmath>

#include <gtest/gtest.h>

#include "support/Lists.h"
#include "support/Records.h"

namespace vellory::support_tests {
namespace {

using json::Error;
using test::repeated;

struct Record {
    int count = 0;
    std::optional<std::string> note;
    std::vector<double> values;
    std::map<std::string, bool> flags;
    friend bool operator==(const Record&, const Record&) = default;
};

void toJson(json::Value& object, const Record& record) {
    json::write(object, "count", record.count);
    json::write(object, "note", record.note);
    json::write(object, "values", record.values);
    json::write(object, "flags", record.flags);
}

void fromJson(const json::Value& object, Record& record) {
    json::require(object, "count", record.count);
    json::readIfPresent(object, "note", record.note);
    json::require(object, "values", record.values);
    json::readIfPresent(object, "flags", record.flags);
}

TEST(Json, IsWrittenWithSortedKeysAndWithoutAbsentFields) {
    Record record{2, std::nullopt, {0.5, 1}, {{"b", true}, {"a", false}}};
    EXPECT_EQ(json::encode(record, json::Style::compact),
              R"({"count":2,"flags":{"a":false,"b":true},"values":[0.5,1.0]})");
    EXPECT_EQ(json::encode(Record{1, "n", {}, {}}),
              "{\n  \"count\": 1,\n  \"flags\": {},\n  \"note\": \"n\",\n  \"values\": []\n}");
    record.note = "bad \xff";
    EXPECT_EQ(json::decode<Record>(json::encode(record))->note, "bad \uFFFD");
}

TEST(Json, RecordsAreReadStrictly) {
    using namespace std::string_view_literals;
    test::expectStrictReading<Record>(R"({"count":1,"values":[0.5],"note":"n","flags":{"a":true}})",
                                      {"note", "flags"}, {"flags"});
    const std::pair<std::string_view, std::expected<Record, Error>> cases[] = {
        {R"({"count":1,"values":[],"note":null,"flags":null,"x":[{}]})", Record{1, {}, {}, {}}},
        {R"({"count":3.0,"values":[1,2.5]})", Record{3, {}, {1, 2.5}, {}}},
        {R"({"count":2147483648,"values":[]})", std::unexpected(Error::mismatch)},
        {"null", std::unexpected(Error::mismatch)},
        {"", std::unexpected(Error::syntax)},
        {R"({"count":1,"values":[]} x)", std::unexpected(Error::syntax)},
        {"{\"count\":1,\"values\":[]}\0"sv, std::unexpected(Error::syntax)},
        {R"({"count":NaN,"values":[]})", std::unexpected(Error::syntax)},
        {R"({"count":1,"values":[1e999]})", std::unexpected(Error::syntax)},
        {"{\"count\":1,\"values\":[],\"note\":\"\xff\"}", std::unexpected(Error::syntax)},
        {R"({"count":1,"values":[],"note":"\ud800"})", std::unexpected(Error::syntax)},
    };
    for (const auto& [text, result] : cases) {
        EXPECT_EQ(json::decode<Record>(text), result) << text;
    }
}

TEST(Json, IntegersKeepEveryBitOrAreRefused) {
    const std::pair<const char*, std::expected<std::int64_t, Error>> cases[] = {
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
        {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
        {"9223372036854775808", std::unexpected(Error::mismatch)},
        {"18446744073709551615", std::unexpected(Error::mismatch)},
        {"9007199254740992.0", 9007199254740992},
        {"1e300", std::unexpected(Error::mismatch)},
        {"-0.0", 0},
    };
    for (const auto& [text, result] : cases) {
        EXPECT_EQ(json::decode<std::int64_t>(text), result) << text;
    }
}

TEST(Json, DatesAreSecondsSince2001AndKeepEveryBit) {
    const Date date = Date::since1970(1'700'000'000.1234567);
    EXPECT_EQ(json::decode<Date>(json::encode(date)), date);
    EXPECT_EQ(json::decode<Date>("0"), Date::since1970(978'307'200));
    EXPECT_EQ(json::encode(Date{NAN}), "null");
}

TEST(Json, UuidsAreCanonicalTextInEitherCase) {
    const char* canonical = "\"01234567-89AB-CDEF-0123-456789ABCDEF\"";
    const auto uuid = json::decode<Uuid>("\"01234567-89ab-CDEF-0123-456789abcdef\"");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(json::encode(*uuid), canonical);
    for (const char* text :
         {"\"\"", "\"0123456789abcdef0123456789abcdef\"", "7",
          "\"01234567-89ab-cdef-0123-456789abcdeg\"", "\"01234567-89ab-cdef-0123-456789abcdef \"",
          "\"01234567-89ab-cdef-0123-4567\\u00009abcdef\""}) {
        EXPECT_FALSE(json::decode<Uuid>(text)) << text;
    }
}

TEST(Json, NestingIsBoundedBeforeAnythingIsBuilt) {
    const auto nested = [](std::size_t depth, std::string_view open, std::string_view close) {
        return repeated(open, depth) + "1" + repeated(close, depth);
    };
    EXPECT_TRUE(json::parse(nested(json::maxDepth, "[", "]")));
    EXPECT_FALSE(json::parse(nested(json::maxDepth + 1, "[", "]")));
    EXPECT_TRUE(json::parse(nested(json::maxDepth, "{\"a\":", "}")));
    EXPECT_FALSE(json::parse(nested(json::maxDepth + 1, "{\"a\":", "}")));
    EXPECT_FALSE(json::parse(nested(1'000'000, "[", "]")));
    EXPECT_FALSE(json::parse(std::string(1'000'000, '[')));
    // Brackets in texts are no nesting, also behind escaped quotation marks.
    EXPECT_TRUE(json::parse("\"\\\"" + std::string(1'000, '[') + "\""));
    // Closing brackets before do not buy depth.
    EXPECT_FALSE(json::parse(std::string(1'000, ']') + std::string(1'000'000, '[')));
}

TEST(Json, AChoiceHasExactlyOneKey) {
    EXPECT_EQ(json::onlyCase(*json::parse(R"({"app":{"_0":1}})")).name, "app");
    for (const char* text : {"{}", R"({"a":1,"b":2})", "[]", "\"app\""}) {
        EXPECT_THROW(json::onlyCase(*json::parse(text)), json::DecodingError) << text;
    }
}

} // namespace
} // namespace vellory::support_tests
