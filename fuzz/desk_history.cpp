// SPDX-License-Identifier: Apache-2.0
// Any text as a day of desk history. The reader without a tree must read what the tree of the same
// text holds, and must agree with the tree parser on what is JSON at all.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Desk/DeskHistory.h"
#include "Support/JsonReader.h"

namespace {

using namespace vellory;
using Snapshots = std::vector<DeskSnapshot>;

constexpr std::size_t plenty = 10'000'000;

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::optional<Snapshots> readWithoutTree(std::string_view text) {
    json::Reader reader(text, plenty);
    Snapshots out;
    for (reader.beginArray(); reader.nextElement();) {
        read(reader, out.emplace_back());
    }
    return reader.finish() ? std::optional(out) : std::nullopt;
}

DeskSnapshot fromTree(const json::Value& object) {
    DeskSnapshot out;
    double seconds = 0;
    std::string reason;
    json::require(object, "date", seconds);
    out.date = Date::since1970(seconds);
    json::require(object, "apps", out.apps);
    json::require(object, "hidden", out.hidden);
    json::require(object, "windows", out.windows);
    json::readIfPresent(object, "workspace", out.workspace);
    json::require(object, "reason", reason);
    for (const auto each : {DeskSnapshot::Reason::periodic, DeskSnapshot::Reason::beforeWorkspace,
                            DeskSnapshot::Reason::manual}) {
        if (json::encoded(each) == reason) {
            out.reason = each;
            return out;
        }
    }
    throw json::DecodingError("reason");
}

std::optional<Snapshots> readByTree(std::string_view text) {
    const auto document = json::parse(text);
    if (!document) {
        return std::nullopt;
    }
    try {
        Snapshots out;
        for (const json::Value& element : json::array(*document)) {
            out.push_back(fromTree(element));
        }
        return out;
    } catch (const json::DecodingError&) {
        return std::nullopt;
    }
}

/// Whether the text is the same JSON to both: the tree parser takes numbers too small for a double
/// as 0.
bool isComparable(std::string_view text) {
    return text.find("e-") == text.npos && text.find("E-") == text.npos &&
           text.find("0000000000") == text.npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    json::Reader anything(text, plenty);
    const bool isJson = anything.skip() && anything.finish();
    const auto direct = readWithoutTree(text);
    check(isJson || !direct);
    if (isComparable(text)) {
        check(isJson == json::parse(text).has_value());
    }
    const auto byTree = readByTree(text);
    if (direct) {
        check(byTree == direct);
        DeskHistory::days(*direct, Calendar("Europe/Stockholm"));
        DeskHistory::pick(*direct, Date{0});
        for (const DeskSnapshot& snapshot : *direct) {
            check(snapshot.sameDesk(snapshot, 0));
        }
    }
    if (byTree) {
        // Duplicate keys apart, both read the same; written again there are none.
        const std::string again = json::encode(*byTree, json::Style::compact);
        const auto reread = readWithoutTree(again);
        check(reread && reread->size() == byTree->size());
        for (std::size_t i = 0; i < reread->size(); ++i) {
            DeskSnapshot snapshot = (*reread)[i];
            snapshot.date = (*byTree)[i].date; // rounds when it lies far from our time
            check(snapshot == (*byTree)[i]);
        }
    }
    return 0;
}
