// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "Desk/DeskSnapshot.h"
#include "Support/Calendar.h"
#include "Support/Date.h"

namespace vellory {

/// The desks of the last days, in a folder that holds one file for each calendar day.
///
/// An unchanged desk is stored at most once an hour, any change with the next snapshot.
class DeskHistory {
  public:
    /// What is read at most: bytes of a file and of the folder, files, and JSON values of the
    /// folder. An honest day takes under a megabyte and 40,000 values. Past these limits a file
    /// counts as unreadable, and `all` leaves out the days that come first by name.
    static constexpr std::size_t fileLimit = 8U * 1024U * 1024U;
    static constexpr std::size_t folderLimit = 32U * 1024U * 1024U;
    static constexpr std::size_t maxFiles = 1000;
    static constexpr std::size_t maxValues = 1'500'000;

    /// Windows that moved or grew by no more points stand where they stood.
    static constexpr double tolerance = 8.0;

    DeskHistory(std::filesystem::path folder, int keepDays, Calendar calendar);

    /// The file of the day that holds `date`; nothing for a date no calendar reaches.
    std::optional<std::filesystem::path> fileFor(Date date) const;

    /// Stores `snapshot`: true when stored, false when it repeats the day's latest one (only
    /// periodic ones do, within the hour). A day file that cannot be read counts as an empty day
    /// and is kept beside first (see `AtomicFile::keepUnreadable`).
    std::expected<bool, std::error_code> append(const DeskSnapshot& snapshot) const;

    /// Every snapshot, by date ascending. Files that cannot be read are passed over.
    std::vector<DeskSnapshot> all() const;

    /// Drops what is older than `keepDays` days, and files that are left with nothing. Files that
    /// cannot be read stay, but copies that `append` kept of such files go with their day.
    void prune(Date now) const;

    /// Deletes the folder with all it holds.
    std::expected<void, std::error_code> forget() const;

    /// The desk to show for a moment: of `list`, by date ascending, the newest one not after
    /// `date`, else the first one if it was taken within half an hour after it.
    static std::optional<DeskSnapshot> pick(const std::vector<DeskSnapshot>& list, Date date);

    struct Day {
        Date day;               ///< its first moment
        std::vector<int> hours; ///< hours (0 to 23) with snapshots, ascending

        friend bool operator==(const Day&, const Day&) = default;
    };
    /// The days with snapshots, newest first.
    static std::vector<Day> days(const std::vector<DeskSnapshot>& list, const Calendar& calendar);

  private:
    std::filesystem::path folder_;
    int keepDays_;
    Calendar calendar_;
};

} // namespace vellory
