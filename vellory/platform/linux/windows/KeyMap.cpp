// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/KeyMap.h"

#include <algorithm>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace vellory {

namespace {

constexpr std::uint16_t allModifiers = 0xFF; // Those above are pointer buttons and key groups.
constexpr int modifierCount = 8;
/// Columns of a key's symbols: of two layouts, plain and with Shift.
constexpr int columns = 4;

} // namespace

KeyMap::KeyMap(X11Connection& connection)
    : first_(xcb_get_setup(connection.get())->min_keycode),
      last_(xcb_get_setup(connection.get())->max_keycode),
      symbols_(xcb_key_symbols_alloc(connection.get())) {
    learnModifiers(connection);
}

void KeyMap::learnModifiers(X11Connection& connection) {
    const x11::Reply<xcb_get_modifier_mapping_reply_t> map(xcb_get_modifier_mapping_reply(
        connection.get(), xcb_get_modifier_mapping(connection.get()), nullptr));
    if (map == nullptr) {
        return;
    }
    const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(map.get());
    std::uint16_t metaKey = 0; // Named "Meta", which is mostly Alt with Shift.
    for (int modifier = 0; modifier < modifierCount; ++modifier) {
        const auto mask = static_cast<std::uint16_t>(1U << modifier);
        for (int i = 0; i < map->keycodes_per_modifier; ++i) {
            const xcb_keycode_t key = keys[modifier * map->keycodes_per_modifier + i];
            for (int column = 0; key != 0 && column < columns; ++column) {
                switch (xcb_key_symbols_get_keysym(symbols_.get(), key, column)) {
                case XKB_KEY_Alt_L:
                case XKB_KEY_Alt_R:
                    alt_ = alt_ == 0 ? mask : alt_;
                    break;
                case XKB_KEY_Super_L:
                case XKB_KEY_Super_R:
                    meta_ = meta_ == 0 ? mask : meta_;
                    break;
                case XKB_KEY_Meta_L:
                case XKB_KEY_Meta_R:
                    metaKey = metaKey == 0 ? mask : metaKey;
                    break;
                case XKB_KEY_Num_Lock:
                    numLock_ = mask;
                    break;
                case XKB_KEY_Scroll_Lock:
                    scrollLock_ = mask;
                    break;
                default:
                    break;
                }
            }
        }
    }
    if (meta_ == 0 && metaKey != alt_) {
        meta_ = metaKey;
    }
}

std::vector<xcb_keycode_t> KeyMap::keysWith(std::uint32_t keysym, bool isShifted) const {
    std::vector<xcb_keycode_t> keys;
    for (int key = first_; key <= last_; ++key) {
        for (int column = isShifted ? 1 : 0; column < columns; column += 2) {
            const auto code = static_cast<xcb_keycode_t>(key);
            if (xcb_key_symbols_get_keysym(symbols_.get(), code, column) == keysym) {
                keys.push_back(code);
                break;
            }
        }
    }
    return keys;
}

std::vector<KeyMap::Chord> KeyMap::chordsFor(const KeyText& shortcut) const {
    if ((shortcut.hasAlt && alt_ == 0) || (shortcut.hasMeta && meta_ == 0)) {
        return {};
    }
    unsigned modifiers = (shortcut.hasAlt ? alt_ : 0U) | (shortcut.hasMeta ? meta_ : 0U);
    if (shortcut.hasControl) {
        modifiers |= XCB_MOD_MASK_CONTROL;
    }
    if (shortcut.hasShift) {
        modifiers |= XCB_MOD_MASK_SHIFT;
    }
    auto keys = keysWith(shortcut.keysym, false);
    if (keys.empty()) {
        // "Ctrl+!" means the key that writes "!" when Shift is held.
        keys = keysWith(shortcut.keysym, true);
        modifiers |= XCB_MOD_MASK_SHIFT;
    }
    std::vector<Chord> chords;
    for (const xcb_keycode_t key : keys) {
        chords.push_back({static_cast<std::uint16_t>(modifiers), key});
    }
    return chords;
}

std::vector<std::uint16_t> KeyMap::lockCombinations() const {
    std::vector<std::uint16_t> all{0};
    for (const std::uint16_t lock : {std::uint16_t{XCB_MOD_MASK_LOCK}, numLock_, scrollLock_}) {
        const std::size_t before = all.size();
        for (std::size_t i = 0; lock != 0 && i < before; ++i) {
            const auto with = static_cast<std::uint16_t>(all[i] | lock);
            if (std::ranges::find(all, with) == all.end()) {
                all.push_back(with);
            }
        }
    }
    return all;
}

std::uint16_t KeyMap::relevant(std::uint16_t state) const {
    return static_cast<std::uint16_t>(state & allModifiers &
                                      ~(XCB_MOD_MASK_LOCK | numLock_ | scrollLock_));
}

} // namespace vellory
