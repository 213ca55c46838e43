// SPDX-License-Identifier: Apache-2.0
#include "model/AppOpener.h"

#include <optional>
#include <system_error>

#include <QPointer>

namespace vellory {

AppOpener::AppOpener(const AppLibrary& library, RunningApps& runningApps, Notices& notices)
    : library_(library), runningApps_(runningApps), notices_(notices) {}

void AppOpener::launch(const BundleID& id) {
    open(id, RunningApps::Open::bringForward);
}

void AppOpener::launchNew(const BundleID& id) {
    open(id, RunningApps::Open::newInstance);
}

void AppOpener::open(const BundleID& id, RunningApps::Open mode) {
    if (const InstalledApp* installed = library_.app(id)) {
        runningApps_.open(*installed, mode, noticeOnFailure(id));
    }
}

void AppOpener::perform(const BundleID& id, const std::string& action) {
    if (const InstalledApp* installed = library_.app(id)) {
        runningApps_.perform(*installed, action, noticeOnFailure(id));
    }
}

bool AppOpener::openFile(const BundleID& id, const std::filesystem::path& file) {
    const InstalledApp* installed = library_.app(id);
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        notices_.post(Notice::error("Couldn't open " + file.filename().string()));
        return false;
    }
    if (installed != nullptr) {
        runningApps_.openFile(*installed, file, noticeOnFailure(id));
    }
    return installed != nullptr;
}

RunningApps::Completion AppOpener::noticeOnFailure(const BundleID& id) {
    return [notices = QPointer(&notices_), text = "Couldn't open " + library_.name(id)](
               const std::optional<std::string>& failure) {
        if (notices && failure) {
            notices->post(Notice::error(text));
        }
    };
}

} // namespace vellory
