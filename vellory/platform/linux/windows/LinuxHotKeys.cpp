// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/LinuxHotKeys.h"

#include <algorithm>
#include <map>
#include <optional>

#include "platform/linux/windows/KeyMap.h"

namespace vellory {

class LinuxHotKeys::Grabs {
  public:
    Grabs(const SessionEnvironment& environment, EventLoop& loop)
        : connection_(environment.value("WAYLAND_DISPLAY")
                          ? nullptr
                          : X11Connection::open(environment.value("DISPLAY"))) {
        if (connection_ != nullptr) {
            watch_ = loop.watchReadable(connection_->fileDescriptor(), [this] { processEvents(); });
        }
    }

    std::set<std::string> set(const Shortcuts& shortcuts) {
        shortcuts_ = shortcuts;
        std::set<std::string> refused = grabAll();
        noteEvents(); // Those that came with answers are not seen by who watches the descriptor.
        return refused;
    }

    void observe(std::function<void(const std::string& name)> pressed) {
        pressed_ = std::move(pressed);
    }

  private:
    using Chord = KeyMap::Chord;

    bool isConnected() const { return connection_ != nullptr && connection_->isAlive(); }

    /// Lets go of all keys and takes those of `shortcuts_`; returns which cannot be had.
    std::set<std::string> grabAll() {
        std::set<std::string> refused;
        if (isConnected()) {
            xcb_ungrab_key(connection_->get(), XCB_GRAB_ANY, connection_->root(), XCB_MOD_MASK_ANY);
            map_.emplace(*connection_);
        }
        names_.clear();
        for (const auto& [name, text] : shortcuts_) {
            const auto keys = KeyText::parse(text);
            if (!keys || !isConnected() || !grab(name, map_->chordsFor(*keys))) {
                refused.insert(name);
            }
        }
        return refused;
    }

    /// All of the chords or none.
    bool grab(const std::string& name, const std::vector<Chord>& chords) {
        const bool isTaken =
            std::ranges::any_of(chords, [&](const Chord& chord) { return names_.contains(chord); });
        if (chords.empty() || isTaken) {
            return false;
        }
        const auto locks = map_->lockCombinations();
        std::vector<xcb_void_cookie_t> requests;
        for (const Chord& chord : chords) {
            for (const std::uint16_t lock : locks) {
                requests.push_back(
                    xcb_grab_key_checked(connection_->get(), 0, connection_->root(),
                                         static_cast<std::uint16_t>(chord.modifiers | lock),
                                         chord.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
            }
        }
        bool isGranted = true;
        for (const xcb_void_cookie_t request : requests) {
            const x11::Reply<xcb_generic_error_t> error(
                xcb_request_check(connection_->get(), request));
            isGranted = isGranted && error == nullptr;
        }
        for (const Chord& chord : chords) {
            if (isGranted) {
                names_[chord] = name;
                continue;
            }
            for (const std::uint16_t lock : locks) {
                xcb_ungrab_key(connection_->get(), chord.key, connection_->root(),
                               static_cast<std::uint16_t>(chord.modifiers | lock));
            }
        }
        connection_->flush();
        return isGranted && isConnected();
    }

    void processEvents() {
        if (!isConnected()) {
            watch_.reset(); // Else the closed descriptor would be reported without end.
            return;
        }
        const auto names = noteEvents();
        // A copy: it may be replaced by what it does.
        const auto pressed = pressed_;
        for (const std::string& name : names) {
            if (pressed) {
                pressed(name);
            }
        }
    }

    /// Takes in what has arrived; returns which shortcuts were pressed.
    std::vector<std::string> noteEvents() {
        std::vector<std::string> names;
        bool isLaidOutAnew = false;
        for (const x11::Event& event :
             isConnected() ? connection_->takeEvents() : std::vector<x11::Event>()) {
            switch (event->response_type & 0x7F) {
            case XCB_KEY_PRESS:
                notePress(reinterpret_cast<const xcb_key_press_event_t&>(*event), names);
                break;
            case XCB_KEY_RELEASE: {
                const auto& release = reinterpret_cast<const xcb_key_release_event_t&>(*event);
                released_[release.detail] = release.time;
                break;
            }
            case XCB_MAPPING_NOTIFY:
                isLaidOutAnew =
                    isLaidOutAnew ||
                    reinterpret_cast<const xcb_mapping_notify_event_t&>(*event).request !=
                        XCB_MAPPING_POINTER;
                break;
            default:
                break;
            }
        }
        if (isLaidOutAnew) {
            grabAll();
        }
        return names;
    }

    void notePress(const xcb_key_press_event_t& press, std::vector<std::string>& names) {
        // A key that repeats is released and pressed again in one moment.
        const auto released = released_.find(press.detail);
        if (released != released_.end() && released->second == press.time) {
            return;
        }
        const auto name = names_.find({map_->relevant(press.state), press.detail});
        if (name != names_.end()) {
            names.push_back(name->second);
        }
    }

    std::unique_ptr<X11Connection> connection_;
    Shortcuts shortcuts_;
    std::optional<KeyMap> map_;
    std::map<Chord, std::string> names_; ///< of the keys that are held
    std::map<xcb_keycode_t, xcb_timestamp_t> released_;
    std::function<void(const std::string& name)> pressed_;
    EventLoop::Handle watch_;
};

LinuxHotKeys::LinuxHotKeys(const SessionEnvironment& environment, EventLoop& loop)
    : grabs_(std::make_unique<Grabs>(environment, loop)) {}

LinuxHotKeys::~LinuxHotKeys() = default;

std::set<std::string> LinuxHotKeys::set(const Shortcuts& shortcuts) {
    return grabs_->set(shortcuts);
}

void LinuxHotKeys::observe(std::function<void(const std::string& name)> pressed) {
    grabs_->observe(std::move(pressed));
}

} // namespace vellory
