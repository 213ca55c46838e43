// SPDX-License-Identifier: Apache-2.0
#include "Desk/DeskSnapshot.h"

#include <algorithm>
#include <cmath>

#include "Apps/WellKnownApps.h"

namespace vellory {

namespace {

using Reason = DeskSnapshot::Reason;

std::set<std::string_view> setOf(const std::vector<BundleID>& list) {
    return {list.begin(), list.end()};
}

bool sameWindow(const Workspace::WindowSlot& a, const Workspace::WindowSlot& b, double tolerance) {
    const auto near = [&](double x, double y) { return std::fabs(x - y) <= tolerance; };
    return a.bundleID == b.bundleID && a.index == b.index && near(a.frame.x, b.frame.x) &&
           near(a.frame.y, b.frame.y) && near(a.frame.width, b.frame.width) &&
           near(a.frame.height, b.frame.height);
}

} // namespace

bool DeskSnapshot::sameDesk(const DeskSnapshot& other, double tolerance) const {
    return setOf(apps) == setOf(other.apps) && setOf(hidden) == setOf(other.hidden) &&
           std::ranges::equal(windows, other.windows, [&](const auto& a, const auto& b) {
               return sameWindow(a, b, tolerance);
           });
}

DeskSnapshot::RestorePlan DeskSnapshot::restorePlan(const std::vector<BundleID>& running,
                                                    const std::set<BundleID>& protectedApps) const {
    const auto nowOpen = setOf(running);
    const auto openThen = setOf(apps);
    RestorePlan plan;
    std::ranges::copy_if(apps, std::back_inserter(plan.open),
                         [&](const BundleID& app) { return !nowOpen.contains(app); });
    std::ranges::copy_if(running, std::back_inserter(plan.hide), [&](const BundleID& app) {
        return !openThen.contains(app) && !protectedApps.contains(app) &&
               app != WellKnownApps::finder && app != WellKnownApps::vellory;
    });
    return plan;
}

Workspace DeskSnapshot::workspaceNamed(std::string name, bool hideOthers, const Uuid& id) const {
    Workspace out;
    out.id = id;
    out.name = std::move(name);
    out.symbol = "clock.arrow.circlepath";
    std::ranges::transform(apps, std::back_inserter(out.items), Workspace::Item::app);
    out.windows = windows;
    out.others = hideOthers ? Workspace::Others::hide : Workspace::Others::keep;
    return out;
}

std::string_view title(Reason reason) {
    switch (reason) {
    case Reason::periodic:
        return "Every 15 minutes";
    case Reason::beforeWorkspace:
        return "Before a workspace opened";
    case Reason::manual:
        return "Before a restore";
    }
    return {};
}

void toJson(json::Value& object, const DeskSnapshot& snapshot) {
    json::write(object, "date", snapshot.date.secondsSince1970());
    json::write(object, "apps", snapshot.apps);
    json::write(object, "hidden", snapshot.hidden);
    // JSON cannot spell a frame that is not finite; written as null it would cost the whole day.
    auto windows = snapshot.windows;
    std::erase_if(windows, [](const auto& slot) { return !slot.frame.isFinite(); });
    json::write(object, "windows", windows);
    json::write(object, "workspace", snapshot.workspace);
    json::write(object, "reason", snapshot.reason);
}

void toJson(json::Value& value, Reason reason) {
    switch (reason) {
    case Reason::periodic:
        value = "periodic";
        break;
    case Reason::beforeWorkspace:
        value = "beforeWorkspace";
        break;
    case Reason::manual:
        value = "manual";
        break;
    }
}

namespace {

/// A set of fields by their bits: what an object must hold and has held so far.
using Fields = unsigned;

bool readRecord(json::Reader& reader, Workspace::Rect& rect) {
    Fields seen = 0;
    reader.beginObject();
    while (const auto key = reader.nextKey()) {
        if (*key == "x") {
            seen |= 1U;
            reader.read(rect.x);
        } else if (*key == "y") {
            seen |= 2U;
            reader.read(rect.y);
        } else if (*key == "width") {
            seen |= 4U;
            reader.read(rect.width);
        } else if (*key == "height") {
            seen |= 8U;
            reader.read(rect.height);
        } else {
            reader.skip();
        }
    }
    return seen == 15U || reader.fail();
}

bool readRecord(json::Reader& reader, Workspace::WindowSlot& slot) {
    Fields seen = 0;
    reader.beginObject();
    while (const auto key = reader.nextKey()) {
        if (*key == "bundleID") {
            seen |= 1U;
            reader.read(slot.bundleID);
        } else if (*key == "index") {
            seen |= 2U;
            reader.read(slot.index);
        } else if (*key == "frame") {
            seen |= 4U;
            readRecord(reader, slot.frame);
        } else if (*key == "screenName") {
            reader.read(slot.screenName);
        } else {
            reader.skip();
        }
    }
    return seen == 7U || reader.fail();
}

bool readRecord(json::Reader& reader, BundleID& app) {
    return reader.read(app);
}

template <class Element>
void readList(json::Reader& reader, std::vector<Element>& list) {
    list.clear();
    for (reader.beginArray(); reader.nextElement();) {
        readRecord(reader, list.emplace_back());
    }
}

void readRecord(json::Reader& reader, Reason& reason) {
    std::string name;
    if (!reader.read(name)) {
        return;
    }
    if (name == "periodic") {
        reason = Reason::periodic;
    } else if (name == "beforeWorkspace") {
        reason = Reason::beforeWorkspace;
    } else if (name == "manual") {
        reason = Reason::manual;
    } else {
        reader.fail();
    }
}

} // namespace

bool read(json::Reader& reader, DeskSnapshot& snapshot) {
    Fields seen = 0;
    reader.beginObject();
    while (const auto key = reader.nextKey()) {
        if (*key == "date") {
            seen |= 1U;
            double seconds = 0;
            reader.read(seconds);
            snapshot.date = Date::since1970(seconds);
        } else if (*key == "apps") {
            seen |= 2U;
            readList(reader, snapshot.apps);
        } else if (*key == "hidden") {
            seen |= 4U;
            readList(reader, snapshot.hidden);
        } else if (*key == "windows") {
            seen |= 8U;
            readList(reader, snapshot.windows);
        } else if (*key == "reason") {
            seen |= 16U;
            readRecord(reader, snapshot.reason);
        } else if (*key == "workspace") {
            reader.read(snapshot.workspace);
        } else {
            reader.skip();
        }
    }
    return seen == 31U || reader.fail();
}

} // namespace vellory
