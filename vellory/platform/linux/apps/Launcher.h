// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// Starts apps from their desktop entries so that they stand on their own: a session and (where
/// systemd runs) a scope of their own, no descriptor, signal setting or variable of this program,
/// and nobody here who must wait for their end. Any thread; blocks while it works.
class Launcher {
  public:
    struct Request {
        BundleID id;
        std::filesystem::path file; ///< the desktop entry
        std::string action;         ///< one of the entry's actions, or "" for the app itself
        /// The startup notification's id, also passed as the activation token; may be "".
        std::string startupId;
        /// Links, those to files included, that the app opens; only without an action.
        std::vector<std::string> links = {};
    };

    struct Outcome {
        /// A sentence that says why the app did not start.
        std::optional<std::string> failure;
        /// The process that was started; nothing when the session bus activated the app.
        std::optional<std::int64_t> pid;
    };

    /// `environment` is what started apps inherit, without what belongs to this program alone.
    explicit Launcher(SessionEnvironment environment) : environment_(std::move(environment)) {}

    Outcome launch(const Request& request) const;

    /// Moves a started process into a systemd scope "app-vellory-<id>-<pid>.scope" of its own.
    /// Silent where no systemd answers on the session bus.
    void moveToScope(const BundleID& id, std::int64_t pid) const;

    /// The name of that scope, with the id escaped as systemd wants it.
    static std::string scopeName(const BundleID& id, std::int64_t pid);

  private:
    Outcome spawn(const Request& request, GKeyFile* entry) const;
    glib::Object<GAppLaunchContext> context(const Request& request) const;

    SessionEnvironment environment_;
};

} // namespace vellory
