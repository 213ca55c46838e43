// SPDX-License-Identifier: Apache-2.0
#include "Usage/UsageStore.h"

#include <algorithm>
#include <compare>
#include <limits>

#include "Support/JsonFile.h"

namespace vellory {

namespace {

using Known = UsageStore::Entry;

/// The first `n` identifiers of the entries that are in `among`, in the order that `before` says of
/// two entries; entries it does not tell apart keep the order of their identifiers.
template <class Before>
std::vector<BundleID> first(std::size_t n, const UsageStore& store, const std::set<BundleID>& among,
                            Before before) {
    std::vector<const std::pair<const BundleID, Known>*> found;
    for (const auto& entry : store.entries) {
        if (among.contains(entry.first)) {
            found.push_back(&entry);
        }
    }
    const auto end = found.begin() + static_cast<std::ptrdiff_t>(std::min(n, found.size()));
    std::partial_sort(found.begin(), end, found.end(), [&](const auto* a, const auto* b) {
        if (before(a->second, b->second)) {
            return true;
        }
        return !before(b->second, a->second) && a->first < b->first;
    });
    std::vector<BundleID> out;
    for (auto entry = found.begin(); entry != end; ++entry) {
        out.push_back((*entry)->first);
    }
    return out;
}

} // namespace

void UsageStore::record(std::string_view app, Date at) {
    // A date that JSON cannot spell would make the whole file unreadable.
    if (!at.isFinite()) {
        return;
    }
    const auto known = entries.find(app);
    if (known == entries.end()) {
        entries.emplace(app, Entry{1, at});
        return;
    }
    auto& [count, last] = known->second;
    if (count < std::numeric_limits<std::int64_t>::max()) {
        ++count;
    }
    last = at;
}

std::int64_t UsageStore::count(std::string_view app) const {
    const auto known = entries.find(app);
    return known == entries.end() ? 0 : known->second.count;
}

std::vector<BundleID> UsageStore::recent(std::size_t n, const std::set<BundleID>& among) const {
    return first(n, *this, among, [](const Known& a, const Known& b) {
        return std::is_gt(std::strong_order(a.last.secondsSince2001, b.last.secondsSince2001));
    });
}

std::vector<BundleID> UsageStore::mostUsed(std::size_t n, const std::set<BundleID>& among) const {
    return first(n, *this, among, [](const Known& a, const Known& b) { return a.count > b.count; });
}

UsageStore UsageStore::load(const std::filesystem::path& file) {
    return JsonFile::load<UsageStore>(file).value_or(UsageStore{});
}

std::expected<void, std::error_code> UsageStore::save(const std::filesystem::path& file) const {
    return JsonFile::save(*this, file);
}

void toJson(json::Value& object, const UsageStore::Entry& entry) {
    json::write(object, "count", entry.count);
    json::write(object, "last", entry.last);
}

void fromJson(const json::Value& object, UsageStore::Entry& entry) {
    json::require(object, "count", entry.count);
    json::require(object, "last", entry.last);
    if (entry.count < 1) {
        throw json::DecodingError("an entry counts at least one launch");
    }
}

void toJson(json::Value& object, const UsageStore& store) {
    json::Value& entries = object["entries"] = json::Value::object();
    for (const auto& [app, entry] : store.entries) {
        toJson(entries[app], entry);
    }
}

void fromJson(const json::Value& object, UsageStore& store) {
    store.entries.clear();
    const auto& members = json::object(object);
    const auto entries = members.find("entries");
    if (entries == members.end()) {
        throw json::DecodingError("missing key entries");
    }
    for (const auto& [app, entry] : json::object(entries->second)) {
        fromJson(entry, store.entries[app]);
    }
}

} // namespace vellory
