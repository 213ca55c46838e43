// SPDX-License-Identifier: Apache-2.0
#include "Desk/DeskHistory.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "Support/AtomicFile.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr double secondsPerDay = 86'400;
constexpr double repeatInterval = 3'600;
constexpr double reachForward = 1'800;

using Snapshots = std::vector<DeskSnapshot>;

void sortByDate(Snapshots& list) {
    std::ranges::stable_sort(list, {}, &DeskSnapshot::date);
}

/// How much more may be read.
struct Allowance {
    std::size_t bytes = DeskHistory::folderLimit;
    std::size_t values = DeskHistory::maxValues;
};

/// The snapshots in a day file, taken off `left`.
std::optional<Snapshots> readDay(const fs::path& file, Allowance& left) {
    const auto text = AtomicFile::read(file, std::min(left.bytes, DeskHistory::fileLimit));
    if (!text) {
        return std::nullopt;
    }
    left.bytes -= text->size();
    json::Reader reader(*text, left.values);
    Snapshots out;
    for (reader.beginArray(); reader.nextElement();) {
        read(reader, out.emplace_back());
    }
    left.values -= std::min(left.values, reader.valuesRead());
    return reader.finish() ? std::optional(std::move(out)) : std::nullopt;
}

std::expected<void, std::error_code> write(const fs::path& file, const Snapshots& list) {
    const std::string text = json::encode(list, json::Style::compact);
    if (text.size() > DeskHistory::fileLimit) {
        return std::unexpected(std::make_error_code(std::errc::file_too_large));
    }
    return AtomicFile::write(file, text);
}

/// The files in `folder` with that extension, by name, at most `DeskHistory::maxFiles` of them: the
/// last ones.
std::vector<fs::path> filesWithExtension(const fs::path& folder, std::string_view extension) {
    std::set<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() == extension) {
            files.insert(entry->path());
            if (files.size() > DeskHistory::maxFiles) {
                files.erase(files.begin());
            }
        }
    }
    return {files.begin(), files.end()};
}

/// "2026-03-07" of a day.
std::string nameOf(const Calendar::Components& day) {
    std::array<char, 48> name{};
    std::snprintf(name.data(), name.size(), "%04d-%02d-%02d", day.year, day.month, day.day);
    return name.data();
}

} // namespace

DeskHistory::DeskHistory(fs::path folder, int keepDays, Calendar calendar)
    : folder_(std::move(folder)), keepDays_(keepDays), calendar_(std::move(calendar)) {}

std::optional<fs::path> DeskHistory::fileFor(Date date) const {
    const auto day = calendar_.components(date);
    return day ? std::optional(folder_ / (nameOf(*day) + ".json")) : std::nullopt;
}

std::expected<bool, std::error_code> DeskHistory::append(const DeskSnapshot& snapshot) const {
    const auto file = fileFor(snapshot.date);
    if (!file) {
        return std::unexpected(std::make_error_code(std::errc::argument_out_of_domain));
    }
    Allowance left;
    const auto stored = readDay(*file, left);
    Snapshots day = stored.value_or(Snapshots{});
    sortByDate(day);
    if (snapshot.reason == DeskSnapshot::Reason::periodic && !day.empty() &&
        snapshot.date.since(day.back().date) < repeatInterval &&
        snapshot.sameDesk(day.back(), tolerance)) {
        return false;
    }
    day.push_back(snapshot);
    sortByDate(day);
    if (auto created = AtomicFile::createFolder(folder_); !created) {
        return std::unexpected(created.error());
    }
    if (!stored) {
        AtomicFile::keepUnreadable(*file);
    }
    if (auto written = write(*file, day); !written) {
        return std::unexpected(written.error());
    }
    return true;
}

Snapshots DeskHistory::all() const {
    const auto files = filesWithExtension(folder_, ".json");
    std::vector<Snapshots> days;
    Allowance left;
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        if (auto day = readDay(*file, left)) {
            days.push_back(std::move(*day));
        }
    }
    Snapshots out;
    for (auto day = days.rbegin(); day != days.rend(); ++day) {
        std::ranges::move(*day, std::back_inserter(out));
    }
    sortByDate(out);
    return out;
}

void DeskHistory::prune(Date now) const {
    const Date cutoff = now - keepDays_ * secondsPerDay;
    if (!cutoff.isFinite()) {
        return;
    }
    // The oldest days come first, so that a folder too large for one round gets smaller.
    Allowance left;
    for (const fs::path& file : filesWithExtension(folder_, ".json")) {
        left.values = maxValues;
        auto day = readDay(file, left);
        if (!day) {
            continue;
        }
        const auto dropped =
            std::erase_if(*day, [&](const auto& snapshot) { return snapshot.date < cutoff; });
        // Neither failure can be mended here; the next round tries again.
        if (day->empty()) {
            std::error_code ignored;
            fs::remove(file, ignored);
        } else if (dropped > 0) {
            [[maybe_unused]] const auto ignored = write(file, *day);
        }
    }
    if (const auto day = calendar_.components(cutoff)) {
        const std::string oldest = nameOf(*day);
        for (const fs::path& copy : filesWithExtension(folder_, ".unreadable")) {
            if (copy.filename().string().substr(0, oldest.size()) < oldest) {
                std::error_code ignored;
                fs::remove(copy, ignored);
            }
        }
    }
}

std::expected<void, std::error_code> DeskHistory::forget() const {
    // A folder that was put elsewhere and linked here is what the user means to be rid of.
    std::error_code error;
    const fs::path target = fs::weakly_canonical(folder_, error);
    if (!error) {
        fs::remove_all(target, error);
    }
    if (!error) {
        fs::remove(folder_, error);
    }
    return error ? std::expected<void, std::error_code>(std::unexpected(error))
                 : std::expected<void, std::error_code>();
}

std::optional<DeskSnapshot> DeskHistory::pick(const Snapshots& list, Date date) {
    const auto after = std::ranges::upper_bound(list, date, {}, &DeskSnapshot::date);
    if (after != list.begin()) {
        return *std::prev(after);
    }
    if (after != list.end() && after->date.since(date) <= reachForward) {
        return *after;
    }
    return std::nullopt;
}

std::vector<DeskHistory::Day> DeskHistory::days(const Snapshots& list, const Calendar& calendar) {
    std::map<Date, std::set<int>, std::greater<>> found;
    for (const DeskSnapshot& snapshot : list) {
        const auto day = calendar.startOfDay(snapshot.date);
        const auto clock = calendar.components(snapshot.date);
        if (day && clock) {
            found[*day].insert(clock->hour);
        }
    }
    std::vector<Day> out;
    for (const auto& [day, hours] : found) {
        out.push_back({day, {hours.begin(), hours.end()}});
    }
    return out;
}

} // namespace vellory
