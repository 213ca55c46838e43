// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/AppWindows.h"

#include <algorithm>
#include <array>
#include <iterator>

#include <unistd.h>
#include <xcb/res.h>
#include <xcb/xcb_icccm.h>

namespace vellory {

namespace {

constexpr std::size_t maxWindows = 4096;

std::string hostName() {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

/// The process behind a client as the server sees it at the other end of the socket: right also for
/// apps in sandboxes, which know their number inside only.
std::int64_t processOf(xcb_connection_t* connection, xcb_res_query_client_ids_cookie_t request) {
    const x11::Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection, request, nullptr));
    if (reply == nullptr) {
        return 0;
    }
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if ((id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(id.data) > 0) {
            return *xcb_res_client_id_value_value(id.data);
        }
    }
    return 0;
}

} // namespace

AppWindows::AppWindows(X11Connection& connection, std::shared_ptr<DesktopEntries> entries,
                       std::function<BundleID(const std::string&)> startedApp)
    : connection_(connection), entries_(std::move(entries)), startedApp_(std::move(startedApp)) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &events);
    // Asking a server for an extension that it lacks would end the connection.
    const auto* extension = xcb_get_extension_data(connection_.get(), &xcb_res_id);
    if (extension != nullptr && extension->present != 0) {
        const x11::Reply<xcb_res_query_version_reply_t> version(xcb_res_query_version_reply(
            connection_.get(), xcb_res_query_version(connection_.get(), 1, 2), nullptr));
        tellsProcesses_ =
            version != nullptr && (version->server_major > 1 || version->server_minor >= 2);
    }
    for (const char* name : {"_GTK_APPLICATION_ID", "_BAMF_DESKTOP_FILE_HINT", "WM_CLASS",
                             "_NET_STARTUP_ID", "_NET_WM_PID", "WM_CLIENT_MACHINE"}) {
        identityAtoms_.push_back(connection_.atom(name));
    }
    const auto& ewmh = *connection_.ewmh();
    shownTypes_ = {ewmh._NET_WM_WINDOW_TYPE_NORMAL, ewmh._NET_WM_WINDOW_TYPE_DIALOG};
    desktopTypes_ = {ewmh._NET_WM_WINDOW_TYPE_DESKTOP, ewmh._NET_WM_WINDOW_TYPE_DOCK};
}

bool AppWindows::isIdentity(xcb_atom_t property) const {
    return std::ranges::find(identityAtoms_, property) != identityAtoms_.end();
}

bool AppWindows::noteEvent(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY) {
        return false;
    }
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    const auto& ewmh = *connection_.ewmh();
    if (change.window == connection_.root()) {
        return change.atom == ewmh._NET_CLIENT_LIST || change.atom == ewmh._NET_SUPPORTING_WM_CHECK;
    }
    if (isIdentity(change.atom)) {
        known_.erase(change.window);
        return true;
    }
    // A window that enters or leaves the task bar changes which apps run.
    return change.atom == ewmh._NET_WM_STATE || change.atom == ewmh._NET_WM_WINDOW_TYPE;
}

void AppWindows::matchAnew() {
    // What has not been read yet is not read for this: the first scan is on its way, and windows
    // are matched anew after it.
    const auto& entries = entries_->lastRead();
    if (matcher_ && matchedRevision_ == entries_->revision()) {
        return;
    }
    matcher_.emplace(entries);
    matchedRevision_ = entries_->revision();
    for (auto& [window, known] : known_) {
        identify(known);
    }
}

void AppWindows::identify(Known& known) const {
    known.app = matcher_->match(known.evidence);
}

void AppWindows::learn(const std::vector<xcb_window_t>& windows) {
    struct Asked {
        xcb_window_t window;
        xcb_get_property_cookie_t gtkId, hint, windowClass, startupId, pid, machine;
        std::optional<xcb_res_query_client_ids_cookie_t> process;
    };
    std::vector<Asked> asked;
    for (const xcb_window_t window : windows) {
        if (known_.contains(window)) {
            continue;
        }
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &events);
        const auto request = [&](std::size_t identity) {
            return connection_.requestProperty(window, identityAtoms_[identity]);
        };
        asked.push_back({window, request(0), request(1), request(2), request(3), request(4),
                         request(5), std::nullopt});
        if (tellsProcesses_) {
            const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
            asked.back().process = xcb_res_query_client_ids(connection_.get(), 1, &spec);
        }
    }
    for (const Asked& answer : asked) {
        Known known;
        known.evidence.gtkApplicationId = connection_.text(answer.gtkId);
        known.evidence.desktopFileHint = connection_.text(answer.hint);
        const auto names = connection_.texts(answer.windowClass);
        known.evidence.windowInstance = names.empty() ? "" : names[0];
        known.evidence.windowClass = names.size() < 2 ? "" : names[1];
        known.startupId = connection_.text(answer.startupId);
        known.evidence.startedAs = startedApp_(known.startupId);
        const auto stated = connection_.values(answer.pid);
        const std::string machine = connection_.text(answer.machine);
        known.pid = answer.process ? processOf(connection_.get(), *answer.process) : 0;
        if (known.pid == 0 && !stated.empty() && (machine.empty() || machine == hostName())) {
            known.pid = stated.front();
        }
        known.evidence.process = readProcess(known.pid);
        identify(known);
        known_.emplace(answer.window, std::move(known));
    }
}

std::optional<std::vector<AppWindow>> AppWindows::read() {
    if (!connection_.isAlive() || !connection_.windowManager()) {
        return std::nullopt;
    }
    const auto& ewmh = *connection_.ewmh();
    auto windows =
        connection_.values(connection_.requestProperty(connection_.root(), ewmh._NET_CLIENT_LIST));
    windows.resize(std::min(windows.size(), maxWindows));
    matchAnew();
    const std::set<xcb_window_t> listed(windows.begin(), windows.end());
    std::erase_if(known_, [&](const auto& entry) {
        // Who is still unknown is asked again: a process may have been moved to its scope by now.
        return !entry.second.app || !listed.contains(entry.first);
    });
    learn(windows);

    struct Asked {
        xcb_get_property_cookie_t states, types, icccmState;
    };
    std::vector<Asked> asked;
    const xcb_atom_t icccmState = connection_.atom("WM_STATE");
    for (const xcb_window_t window : windows) {
        asked.push_back({connection_.requestProperty(window, ewmh._NET_WM_STATE),
                         connection_.requestProperty(window, ewmh._NET_WM_WINDOW_TYPE),
                         connection_.requestProperty(window, icccmState)});
    }
    const auto isAmong = [](const std::set<xcb_atom_t>& types) {
        return [&](xcb_atom_t type) { return types.contains(type); };
    };
    std::vector<AppWindow> out;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto states = connection_.values(asked[i].states);
        const auto types = connection_.valuesOfLiving(asked[i].types);
        const auto iccm = connection_.values(asked[i].icccmState);
        const auto has = [&](xcb_atom_t state) {
            return std::ranges::find(states, state) != states.end();
        };
        // The list still names windows that were destroyed a moment ago. They must not count:
        // without its type a splash window would pass for a regular one.
        const bool isShown =
            types && (types->empty() || (std::ranges::any_of(*types, isAmong(shownTypes_)) &&
                                         std::ranges::none_of(*types, isAmong(desktopTypes_))));
        const Known& known = known_.at(windows[i]);
        if (!isShown || has(ewmh._NET_WM_STATE_SKIP_TASKBAR) || !known.app) {
            continue;
        }
        const bool isIconic = !iccm.empty() && iccm.front() == XCB_ICCCM_WM_STATE_ICONIC;
        out.push_back({windows[i], *known.app, known.pid,
                       has(ewmh._NET_WM_STATE_HIDDEN) || isIconic, known.startupId});
    }
    return out;
}

bool AppWindows::isListed(xcb_window_t window) {
    const auto listed = connection_.values(
        connection_.requestProperty(connection_.root(), connection_.ewmh()->_NET_CLIENT_LIST));
    return std::ranges::find(listed, window) != listed.end();
}

std::vector<AppWindow> AppWindows::stacked(std::vector<AppWindow> windows) {
    const auto order = connection_.values(connection_.requestProperty(
        connection_.root(), connection_.ewmh()->_NET_CLIENT_LIST_STACKING));
    std::map<xcb_window_t, std::size_t> height;
    for (const xcb_window_t window : order) {
        height.emplace(window, height.size());
    }
    std::ranges::stable_sort(windows, {}, [&](const AppWindow& window) {
        const auto found = height.find(window.window);
        return found == height.end() ? order.size() : found->second;
    });
    return windows;
}

} // namespace vellory
