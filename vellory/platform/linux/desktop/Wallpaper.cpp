// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/Wallpaper.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <string>

#include "Support/AtomicFile.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/windows/X11Connection.h"

namespace vellory::Wallpaper {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t maxDescriptionBytes = 1024 * 1024;

struct Setting {
    const char* desktop;
    const char* schema;
    const char* key;
};
constexpr auto settings =
    std::to_array<Setting>({{"X-Cinnamon", "org.cinnamon.desktop.background", "picture-uri"},
                            {"MATE", "org.mate.background", "picture-filename"},
                            {"GNOME", "org.gnome.desktop.background", "picture-uri"},
                            {"Unity", "org.gnome.desktop.background", "picture-uri"},
                            {"Budgie", "org.gnome.desktop.background", "picture-uri"},
                            {"Pantheon", "org.gnome.desktop.background", "picture-uri"}});

/// The settings of a schema that is installed and has the key; null otherwise (GLib would end the
/// program).
glib::Object<GSettings> settingsWith(const char* schemaName, const char* key) {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    GSettingsSchema* schema =
        source == nullptr ? nullptr : g_settings_schema_source_lookup(source, schemaName, TRUE);
    const bool hasKey = schema != nullptr && g_settings_schema_has_key(schema, key) != FALSE;
    if (schema != nullptr) {
        g_settings_schema_unref(schema);
    }
    return glib::Object<GSettings>(hasKey ? g_settings_new(schemaName) : nullptr);
}

bool prefersDark() {
    const auto interface = settingsWith("org.gnome.desktop.interface", "color-scheme");
    return interface != nullptr &&
           glib::text(glib::Chars(g_settings_get_string(interface.get(), "color-scheme")).get()) ==
               "prefer-dark";
}

std::optional<fs::path> localFile(const std::string& text) {
    if (text.starts_with('/')) {
        return text;
    }
    const glib::Chars path(g_filename_from_uri(text.c_str(), nullptr, nullptr));
    return path == nullptr ? std::nullopt : std::optional<fs::path>(path.get());
}

/// Copies `area` as far as it lies in a drawable of the screen's own format.
std::optional<Image> pixelsOf(X11Connection& connection, xcb_drawable_t drawable,
                              const Desktop::Area& area) {
    const x11::Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), drawable), nullptr));
    if (geometry == nullptr) {
        return std::nullopt;
    }
    const int left = std::max(area.x, 0);
    const int top = std::max(area.y, 0);
    const int right = std::min<int>(area.x + area.width, geometry->width);
    const int bottom = std::min<int>(area.y + area.height, geometry->height);
    if (left >= right || top >= bottom) {
        return std::nullopt;
    }
    Image image{right - left, bottom - top, {}};
    const x11::Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        connection.get(),
        xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable,
                      static_cast<std::int16_t>(left), static_cast<std::int16_t>(top),
                      static_cast<std::uint16_t>(image.width),
                      static_cast<std::uint16_t>(image.height), ~0U),
        nullptr));
    const auto count =
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    // Screens of other depths than 24 bits in 32, or of the other byte order, are not worth code.
    const bool isNative = xcb_get_setup(connection.get())->image_byte_order ==
                          (std::endian::native == std::endian::little ? XCB_IMAGE_ORDER_LSB_FIRST
                                                                      : XCB_IMAGE_ORDER_MSB_FIRST);
    if (reply == nullptr || !isNative || reply->depth < 24 ||
        static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) != count * 4) {
        return std::nullopt;
    }
    image.pixels.resize(count);
    std::memcpy(image.pixels.data(), xcb_get_image_data(reply.get()), count * 4);
    for (std::uint32_t& pixel : image.pixels) {
        pixel |= 0xFF000000U;
    }
    return image;
}

} // namespace

std::optional<fs::path> file(const SessionEnvironment& environment) {
    const auto names = environment.desktopNames();
    for (const Setting& setting : settings) {
        if (std::ranges::find(names, setting.desktop) == names.end()) {
            continue;
        }
        const char* key = setting.key;
        if (std::string_view(setting.schema) == "org.gnome.desktop.background" && prefersDark() &&
            settingsWith(setting.schema, "picture-uri-dark") != nullptr) {
            key = "picture-uri-dark";
        }
        const auto background = settingsWith(setting.schema, key);
        if (background == nullptr) {
            continue;
        }
        const auto picture =
            localFile(glib::text(glib::Chars(g_settings_get_string(background.get(), key)).get()));
        return picture && picture->extension() == ".xml" ? firstOfSlideShow(*picture) : picture;
    }
    return std::nullopt;
}

std::optional<fs::path> firstOfSlideShow(const fs::path& description) {
    const auto content = AtomicFile::read(description, maxDescriptionBytes);
    if (!content) {
        return std::nullopt;
    }
    // Pictures stand in <file>, either right there or in <size> elements within.
    std::string found;
    const GMarkupParser parser{
        nullptr, nullptr,
        [](GMarkupParseContext* context, const char* text, gsize length, gpointer out, GError**) {
            auto& result = *static_cast<std::string*>(out);
            const std::string_view element = g_markup_parse_context_get_element(context);
            if (result.empty() && (element == "file" || element == "size") && length > 0) {
                const glib::Chars copy(g_strstrip(g_strndup(text, length)));
                result = copy.get();
            }
        },
        nullptr, nullptr};
    GMarkupParseContext* context =
        g_markup_parse_context_new(&parser, G_MARKUP_PREFIX_ERROR_POSITION, &found, nullptr);
    g_markup_parse_context_parse(context, content->data(), static_cast<gssize>(content->size()),
                                 nullptr);
    g_markup_parse_context_free(context);
    return found.starts_with('/') ? std::optional<fs::path>(found) : std::nullopt;
}

std::optional<Image> ofRootWindow(const SessionEnvironment& environment,
                                  const Desktop::Area& area) {
    const auto connection = X11Connection::open(environment.value("DISPLAY"));
    if (connection == nullptr) {
        return std::nullopt;
    }
    const auto pixmaps = connection->values(
        connection->requestProperty(connection->root(), connection->atom("_XROOTPMAP_ID")));
    // Pictures of one colour and tiles are left to the still of the screen.
    auto image = pixmaps.empty() ? std::nullopt : pixelsOf(*connection, pixmaps.front(), area);
    const bool isWhole = image && image->width == area.width && image->height == area.height;
    return isWhole ? std::move(image) : std::nullopt;
}

std::optional<Image> ofScreen(const SessionEnvironment& environment, const Desktop::Area& area) {
    const auto connection = X11Connection::open(environment.value("DISPLAY"));
    return connection == nullptr ? std::nullopt : pixelsOf(*connection, connection->root(), area);
}

} // namespace vellory::Wallpaper
