// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/SoundPlayer.h"

#include <map>

#include <canberra.h>

namespace vellory {

void SoundPlayer::Destroy::operator()(ca_context* context) const {
    ca_context_destroy(context);
}

void SoundPlayer::play(const std::string& name) {
    const std::lock_guard lock(mutex_);
    if (context_ == nullptr) {
        ca_context* context = nullptr;
        if (ca_context_create(&context) != CA_SUCCESS) {
            return;
        }
        context_.reset(context);
        ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Vellory",
                                CA_PROP_APPLICATION_ID, "com.quorvel.vellory", nullptr);
    }
    // A failure is silence, which is what there is to hear of it.
    ca_context_play(context_.get(), 0, CA_PROP_EVENT_ID, eventFor(name).c_str(), CA_PROP_MEDIA_ROLE,
                    "event", nullptr);
}

std::string SoundPlayer::eventFor(const std::string& name) {
    static const std::map<std::string, std::string, std::less<>> events{
        {"Glass", "complete"},      {"Hero", "complete"},       {"Basso", "dialog-error"},
        {"Sosumi", "dialog-error"}, {"Funk", "dialog-warning"}, {"Ping", "message"},
        {"Tink", "message"},        {"Pop", "message"}};
    const auto event = events.find(name);
    return event == events.end() ? "bell" : event->second;
}

} // namespace vellory
