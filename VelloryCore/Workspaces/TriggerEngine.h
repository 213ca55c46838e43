// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Calendar.h"
#include "Support/Date.h"
#include "Support/Link.h"
#include "Workspaces/Workspace.h"

namespace vellory {

/// Which workspaces open by themselves, and which one a link means. Results keep the list's order.
namespace TriggerEngine {

/// The workspaces with a schedule on the very minute of `now`; a minute that was missed is gone.
std::vector<Workspace> scheduled(const std::vector<Workspace>& workspaces, Date now,
                                 const Calendar& calendar);

/// The workspaces whose display text occurs in a name of `added`, letter case aside as in `locale`.
/// An empty text matches no display.
std::vector<Workspace> displays(const std::vector<Workspace>& workspaces,
                                const std::vector<std::string>& added,
                                std::string_view locale = {});

/// The workspaces that the Focus mode `name` opens, letter case aside. No mode has an empty name.
std::vector<Workspace> focus(const std::vector<Workspace>& workspaces, std::string_view name);

/// The workspace that "vellory://workspace/<key>" names: the first one whose identifier or name is
/// the key, letter case aside. Any other scheme or host names none.
std::optional<Workspace> workspaceFor(const Link& link, const std::vector<Workspace>& list);

/// The first workspace whose identifier or name is `key`, letter case aside.
std::optional<Workspace> workspaceNamed(std::string_view key, const std::vector<Workspace>& list);

} // namespace TriggerEngine

/// What the triggers saw last, so that a change fires once and not as long as it lasts.
class TriggerState {
  public:
    TriggerState() = default;
    /// With the displays that are connected at the start: they fire nothing.
    explicit TriggerState(std::vector<std::string> displays) : displays_(std::move(displays)) {}

    /// Remembers the displays that are connected now and returns those that were not before.
    std::vector<std::string> displaysChanged(std::vector<std::string> now);

    /// Remembers the Focus mode that is on; false when that is nothing new or the name is empty. A
    /// mode that ends is not reported, so only another one in between makes it new again.
    bool focusChanged(std::string_view name);

  private:
    std::vector<std::string> displays_;
    std::string focus_;
};

} // namespace vellory
