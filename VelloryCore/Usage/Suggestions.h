// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Calendar.h"
#include "Support/Date.h"
#include "Support/Uuid.h"
#include "Usage/LaunchLog.h"

/// Which apps the user probably wants now, learned from the launches so far.
namespace vellory::Suggestions {

struct Context {
    Date now;
    std::optional<Uuid> workspace; ///< open now
    std::set<BundleID> running;    ///< running now; they are ranked lower, not left out
};

/// At most `limit` of the apps in `among` that were launched within the last 120 days, the
/// likeliest first (then by identifier).
///
/// A launch weighs more the closer its time of day is to now, the more alike its day is (the same
/// day of the week, then the same half of working days and weekend), the more recent it is, and
/// when the same workspace was open. One pass over the log.
std::vector<BundleID> rank(const LaunchLog& log, const Context& context,
                           const std::set<BundleID>& among, std::size_t limit,
                           const Calendar& calendar);

} // namespace vellory::Suggestions
