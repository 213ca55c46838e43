// SPDX-License-Identifier: Apache-2.0
#include "model/CommandLinks.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "Workspaces/TriggerEngine.h"
#include "model/AppModel.h"
#include "model/LauncherState.h"

namespace vellory {

namespace {

/// A whole number and nothing else; one that is too large counts as the largest.
std::optional<int> wholeNumber(const std::string& text) {
    const char* begin = text.data() + (text.starts_with('+') ? 1 : 0);
    const char* end = text.data() + text.size();
    int number = 0;
    const auto [last, error] = std::from_chars(begin, end, number);
    if (last != end || begin == end || error == std::errc::invalid_argument) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        return text.starts_with('-') ? WorkspaceCenter::leastMinutes : WorkspaceCenter::mostMinutes;
    }
    return number;
}

} // namespace

CommandLinks::CommandLinks(AppModel& model, LauncherState& state, QObject* parent)
    : QObject(parent), model_(model), state_(state) {}

void CommandLinks::handle(std::string_view url) {
    const auto link = Link::parse(url);
    if (!link || link->scheme() != "vellory" || handleMore(*link)) {
        return;
    }
    const std::string host = link->host().value_or("");
    if (host == "toggle" && state_.presented()) {
        Q_EMIT hideRequested();
    } else if (host == "settings") {
        Q_EMIT hideRequested();
        Q_EMIT settingsRequested();
    } else if (host == "workspace") {
        openWorkspace(*link);
    } else if (host == "focus") {
        model_.triggers().focusChanged(link->pathName().value_or(""));
    } else {
        Q_EMIT showRequested();
    }
}

bool CommandLinks::handleMore(const Link& link) {
    const std::string host = link.host().value_or("");
    if (host == "close") {
        model_.closeWorkspace(false);
    } else if (host == "focus-session") {
        openFocusSession(link);
    } else if (host == "search") {
        Q_EMIT searchRequested(link.queryValue("q").value_or(""));
    } else if (host == "layout") {
        model_.loadSavedLayout(link.pathName().value_or(""));
    } else if (host == "ask") {
        Q_EMIT askRequested(link.queryValue("q").value_or(""));
    } else if (host == "time-machine") {
        Q_EMIT timeMachineRequested();
    } else {
        return false;
    }
    return true;
}

void CommandLinks::openWorkspace(const Link& link) {
    if (const auto workspace = TriggerEngine::workspaceFor(link, model_.workspaces().all())) {
        model_.open(*workspace, std::nullopt);
    } else {
        sayUnknown(link.lastPathComponent());
    }
}

void CommandLinks::openFocusSession(const Link& link) {
    const int minutes = std::clamp(wholeNumber(link.queryValue("minutes").value_or(""))
                                       .value_or(WorkspaceCenter::usualMinutes),
                                   WorkspaceCenter::leastMinutes, WorkspaceCenter::mostMinutes);
    const std::string name = link.pathName().value_or("");
    if (const auto workspace = TriggerEngine::workspaceNamed(name, model_.workspaces().all())) {
        model_.open(*workspace, minutes);
    } else {
        sayUnknown(link.lastPathComponent());
    }
}

void CommandLinks::sayUnknown(const std::string& workspace) {
    model_.notices().post({"No workspace named “" + workspace + "”", "questionmark.circle", 3.0});
}

} // namespace vellory
