// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/KeyText.h"

#include <map>
#include <string>

#include <glib.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace vellory {

namespace {

std::string lower(std::string_view text) {
    std::string out;
    for (const char c : text) {
        out += g_ascii_tolower(c);
    }
    return out;
}

/// The names in portable texts (in lower case) where they are not those of X11.
xkb_keysym_t named(const std::string& name) {
    static const std::map<std::string, xkb_keysym_t, std::less<>> keys{
        {"esc", XKB_KEY_Escape},
        {"ins", XKB_KEY_Insert},
        {"del", XKB_KEY_Delete},
        {"backtab", XKB_KEY_Tab},
        {"enter", XKB_KEY_KP_Enter},
        {"pgup", XKB_KEY_Prior},
        {"pgdown", XKB_KEY_Next},
        {"capslock", XKB_KEY_Caps_Lock},
        {"numlock", XKB_KEY_Num_Lock},
        {"scrolllock", XKB_KEY_Scroll_Lock},
        {"sysreq", XKB_KEY_Sys_Req},
        {"volume down", XKB_KEY_XF86AudioLowerVolume},
        {"volume mute", XKB_KEY_XF86AudioMute},
        {"volume up", XKB_KEY_XF86AudioRaiseVolume},
        {"microphone mute", XKB_KEY_XF86AudioMicMute},
        {"media play", XKB_KEY_XF86AudioPlay},
        {"media pause", XKB_KEY_XF86AudioPause},
        {"toggle media play/pause", XKB_KEY_XF86AudioPlay},
        {"media stop", XKB_KEY_XF86AudioStop},
        {"media previous", XKB_KEY_XF86AudioPrev},
        {"media next", XKB_KEY_XF86AudioNext},
        {"media record", XKB_KEY_XF86AudioRecord},
        {"home page", XKB_KEY_XF86HomePage},
        {"launch mail", XKB_KEY_XF86Mail},
        {"search", XKB_KEY_XF86Search},
        {"favorites", XKB_KEY_XF86Favorites},
        {"calculator", XKB_KEY_XF86Calculator},
        {"monitor brightness up", XKB_KEY_XF86MonBrightnessUp},
        {"monitor brightness down", XKB_KEY_XF86MonBrightnessDown},
    };
    const auto key = keys.find(name);
    return key == keys.end() ? XKB_KEY_NoSymbol : key->second;
}

xkb_keysym_t keysymOf(std::string_view key) {
    const std::string text(key);
    if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE &&
        g_utf8_strlen(text.data(), static_cast<gssize>(text.size())) == 1) {
        const gunichar character = g_unichar_tolower(g_utf8_get_char(text.c_str()));
        return g_unichar_isgraph(character) != FALSE ? xkb_utf32_to_keysym(character)
                                                     : xkb_keysym_t{XKB_KEY_NoSymbol};
    }
    if (const xkb_keysym_t known = named(lower(text)); known != XKB_KEY_NoSymbol) {
        return known;
    }
    // "Space", "Return", "F4", "Print", "Left": as X11 has them, whatever the letters' case.
    return text.size() < 2 ? xkb_keysym_t{XKB_KEY_NoSymbol}
                           : xkb_keysym_from_name(text.c_str(), XKB_KEYSYM_CASE_INSENSITIVE);
}

bool isModifier(xkb_keysym_t keysym) {
    return (keysym >= XKB_KEY_Shift_L && keysym <= XKB_KEY_Hyper_R) ||
           (keysym >= XKB_KEY_ISO_Lock && keysym <= XKB_KEY_ISO_Last_Group_Lock);
}

/// Whether a key writes nothing and moves nothing: it is free to be a shortcut by itself.
bool standsAlone(xkb_keysym_t keysym) {
    constexpr xkb_keysym_t firstOfVendor = 0x10080000; // XF86: media and other special keys
    constexpr xkb_keysym_t lastOfVendor = 0x1008FFFF;
    return (keysym >= XKB_KEY_F1 && keysym <= XKB_KEY_F35) ||
           (keysym >= firstOfVendor && keysym <= lastOfVendor) || keysym == XKB_KEY_Print ||
           keysym == XKB_KEY_Pause || keysym == XKB_KEY_Scroll_Lock;
}

} // namespace

std::optional<KeyText> KeyText::parse(std::string_view text) {
    KeyText out;
    // What follows the last "+" is the key, unless the key is "+" itself.
    while (true) {
        const std::size_t end = text.find('+');
        if (end == std::string_view::npos || end == 0 || end + 1 == text.size()) {
            break;
        }
        const std::string modifier = lower(text.substr(0, end));
        if (modifier == "ctrl" || modifier == "control") {
            out.hasControl = true;
        } else if (modifier == "alt") {
            out.hasAlt = true;
        } else if (modifier == "shift") {
            out.hasShift = true;
        } else if (modifier == "meta" || modifier == "super") {
            out.hasMeta = true;
        } else {
            return std::nullopt;
        }
        text.remove_prefix(end + 1);
    }
    out.keysym = keysymOf(text);
    const bool isHeld = out.hasControl || out.hasAlt || out.hasMeta;
    if (out.keysym == XKB_KEY_NoSymbol || isModifier(out.keysym) ||
        (!isHeld && !standsAlone(out.keysym))) {
        return std::nullopt;
    }
    return out;
}

} // namespace vellory
