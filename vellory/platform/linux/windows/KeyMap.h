// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb_keysyms.h>

#include "platform/linux/windows/KeyText.h"
#include "platform/linux/windows/X11Connection.h"

namespace vellory {

/// Where the keys of shortcuts lie on the keyboard as it is laid out now.
class KeyMap {
  public:
    /// A key and the modifiers held with it, in the server's numbers.
    struct Chord {
        std::uint16_t modifiers = 0;
        xcb_keycode_t key = 0;

        friend auto operator<=>(const Chord&, const Chord&) = default;
    };

    /// Asks the server; costs a few round trips.
    explicit KeyMap(X11Connection& connection);

    /// Every way in which the shortcut is typed: a keyboard may have a key twice. None when it
    /// lacks the key or a modifier.
    std::vector<Chord> chordsFor(const KeyText& shortcut) const;

    /// All combinations of the locks (Caps, Num, Scroll) that may be on while a chord is typed, the
    /// empty one first.
    std::vector<std::uint16_t> lockCombinations() const;

    /// The modifiers in an event's state that count: neither locks nor pointer buttons.
    std::uint16_t relevant(std::uint16_t state) const;

  private:
    struct Free {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };

    void learnModifiers(X11Connection& connection);
    std::vector<xcb_keycode_t> keysWith(std::uint32_t keysym, bool isShifted) const;

    xcb_keycode_t first_;
    xcb_keycode_t last_;
    std::unique_ptr<xcb_key_symbols_t, Free> symbols_;
    std::uint16_t alt_ = 0; ///< 0 for a modifier that the keyboard lacks
    std::uint16_t meta_ = 0;
    std::uint16_t numLock_ = 0;
    std::uint16_t scrollLock_ = 0;
};

} // namespace vellory
