// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/Launcher.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <fstream>
#include <string_view>

#include <gio/gdesktopappinfo.h>
#include <unistd.h>

#include "platform/linux/apps/DesktopEntryFile.h"
#include "platform/linux/session/SessionBus.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// How long an app may take to answer the session bus that it was activated.
constexpr int activationMilliseconds = 30'000;
constexpr int systemdMilliseconds = 2'000;

/// Terminals and how each is told which command to run. Debian's alternative and the freedesktop
/// wrapper follow the user's choice, so they come first.
struct Terminal {
    const char* program;
    const char* option;
};
constexpr auto terminals = std::to_array<Terminal>({{"xdg-terminal-exec", ""},
                                                    {"x-terminal-emulator", "-e"},
                                                    {"gnome-terminal", "--"},
                                                    {"kgx", "-e"},
                                                    {"konsole", "-e"},
                                                    {"xfce4-terminal", "-x"},
                                                    {"mate-terminal", "-x"},
                                                    {"kitty", ""},
                                                    {"alacritty", "-e"},
                                                    {"foot", ""},
                                                    {"xterm", "-e"}});

std::string inQuotes(std::string_view text) {
    return std::string("“").append(text).append("”");
}

bool isFound(const std::string& program) {
    return glib::Chars(g_find_program_in_path(program.c_str())) != nullptr;
}

/// Whether the program is a script whose interpreter is gone; the process would start and end at
/// once without anybody hearing why.
std::optional<std::string> missingInterpreter(const std::string& program) {
    const glib::Chars path(g_find_program_in_path(program.c_str()));
    if (path == nullptr) {
        return std::nullopt;
    }
    std::array<char, 256> head{};
    std::ifstream(path.get(), std::ios::binary).read(head.data(), head.size() - 1);
    std::string_view line(head.data());
    if (!line.starts_with("#!")) {
        return std::nullopt;
    }
    line = line.substr(2, line.find('\n') - 2);
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    const std::string interpreter(line.substr(0, line.find_first_of(" \t\r")));
    const bool runs = interpreter.empty() || access(interpreter.c_str(), X_OK) == 0;
    return runs ? std::nullopt : std::optional(interpreter);
}

/// Why the entry's command cannot be run; nothing when it seems that it can.
std::optional<std::string> obstacle(GKeyFile* entry) {
    const std::string exec =
        DesktopEntryFile::text(entry, DesktopEntryFile::mainGroup, G_KEY_FILE_DESKTOP_KEY_EXEC);
    int count = 0;
    char** split = nullptr;
    if (exec.empty() || !g_shell_parse_argv(exec.c_str(), &count, &split, nullptr)) {
        return "Its desktop entry holds no command that can be run.";
    }
    const glib::Strings arguments(split);
    const std::string program = split[0];
    if (!isFound(program)) {
        return "The program " + inQuotes(program) + " was not found.";
    }
    if (const auto interpreter = missingInterpreter(program)) {
        return "The program " + inQuotes(program) + " needs " + inQuotes(*interpreter) +
               ", which was not found.";
    }
    return std::nullopt;
}

/// Puts the user's terminal before the command of an entry that wants one.
void wrapInTerminal(GKeyFile* entry) {
    const auto terminal = std::ranges::find_if(
        terminals, [](const Terminal& candidate) { return isFound(candidate.program); });
    if (terminal == terminals.end()) {
        return; // GIO then says so.
    }
    const std::string exec =
        DesktopEntryFile::text(entry, DesktopEntryFile::mainGroup, G_KEY_FILE_DESKTOP_KEY_EXEC);
    const glib::Chars path(g_find_program_in_path(terminal->program));
    const glib::Chars program(g_shell_quote(path.get()));
    const std::string command = glib::text(program.get()) + ' ' + terminal->option + ' ' + exec;
    g_key_file_set_string(entry, DesktopEntryFile::mainGroup, G_KEY_FILE_DESKTOP_KEY_EXEC,
                          command.c_str());
    g_key_file_set_boolean(entry, DesktopEntryFile::mainGroup, G_KEY_FILE_DESKTOP_KEY_TERMINAL,
                           FALSE);
}

/// Runs in the new process between fork and exec: only what is safe there.
void standAlone(gpointer folder) {
    setsid();
    for (int number = 1; number < NSIG; ++number) {
        std::signal(number, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    if (folder != nullptr && chdir(static_cast<const char*>(folder)) != 0) {
        // A home folder that is gone is no reason not to start.
    }
}

/// Whether a variable says something about this program rather than about the session.
bool isOurs(std::string_view name) {
    return name.starts_with("VELLORY_") || name == "DESKTOP_STARTUP_ID" ||
           name == "XDG_ACTIVATION_TOKEN";
}

std::string objectPath(const BundleID& id) {
    std::string path = "/" + id;
    std::ranges::replace(path, '.', '/');
    std::ranges::replace(path, '-', '_');
    return path;
}

/// Asks the session bus to activate the app or its action. Nothing when the bus cannot be asked,
/// so that the entry's command is the way that remains.
std::optional<Launcher::Outcome> activateOnBus(const Launcher::Request& request,
                                               const SessionEnvironment& environment) {
    const auto bus = sessionBus(environment);
    if (bus == nullptr || !g_dbus_is_name(request.id.c_str()) ||
        !g_variant_is_object_path(objectPath(request.id).c_str())) {
        return std::nullopt;
    }
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    if (!request.startupId.empty()) {
        for (const char* key : {"desktop-startup-id", "activation-token"}) {
            g_variant_builder_add(&data, "{sv}", key,
                                  g_variant_new_string(request.startupId.c_str()));
        }
    }
    const char* method = "Activate";
    GVariant* arguments = nullptr;
    if (!request.action.empty()) {
        method = "ActivateAction";
        arguments = g_variant_new("(sava{sv})", request.action.c_str(), nullptr, &data);
    } else if (!request.links.empty()) {
        method = "Open";
        GVariantBuilder links;
        g_variant_builder_init(&links, G_VARIANT_TYPE_STRING_ARRAY);
        for (const std::string& link : request.links) {
            g_variant_builder_add(&links, "s", link.c_str());
        }
        arguments = g_variant_new("(asa{sv})", &links, &data);
    } else {
        arguments = g_variant_new("(a{sv})", &data);
    }
    glib::Error error;
    const glib::Variant reply = glib::own(g_dbus_connection_call_sync(
        bus.get(), request.id.c_str(), objectPath(request.id).c_str(),
        "org.freedesktop.Application", method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
        activationMilliseconds, nullptr, error.out()));
    if (!error) {
        return Launcher::Outcome{};
    }
    g_dbus_error_strip_remote_error(const_cast<GError*>(error.get()));
    return Launcher::Outcome{error.message(), std::nullopt};
}

} // namespace

Launcher::Outcome Launcher::launch(const Request& request) const {
    const glib::KeyFile entry = DesktopEntryFile::load(request.file);
    if (entry == nullptr) {
        return {"Its desktop entry is missing or damaged.", std::nullopt};
    }
    const std::string group = request.action.empty()
                                  ? DesktopEntryFile::mainGroup
                                  : DesktopEntryFile::actionGroup(request.action);
    if (!g_key_file_has_group(entry.get(), group.c_str())) {
        return {"It has no action " + inQuotes(request.action) + ".", std::nullopt};
    }
    const std::string exec =
        DesktopEntryFile::text(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_EXEC);
    if (DesktopEntryFile::flag(entry.get(), G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE)) {
        const auto activated = activateOnBus(request, environment_);
        if (activated && (!activated->failure || exec.empty())) {
            return *activated;
        }
    }
    // What is left of the entry is a command, be it the app's or the action's.
    g_key_file_set_boolean(entry.get(), DesktopEntryFile::mainGroup,
                           G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, FALSE);
    g_key_file_set_string(entry.get(), DesktopEntryFile::mainGroup, G_KEY_FILE_DESKTOP_KEY_EXEC,
                          exec.c_str());
    return spawn(request, entry.get());
}

Launcher::Outcome Launcher::spawn(const Request& request, GKeyFile* entry) const {
    if (auto why = obstacle(entry)) {
        return {std::move(why), std::nullopt};
    }
    if (DesktopEntryFile::flag(entry, G_KEY_FILE_DESKTOP_KEY_TERMINAL)) {
        wrapInTerminal(entry);
    }
    const glib::Object<GDesktopAppInfo> info(g_desktop_app_info_new_from_keyfile(entry));
    if (info == nullptr) {
        return {"Its desktop entry is not one that can be started.", std::nullopt};
    }
    const bool hasFolder = g_key_file_has_key(entry, DesktopEntryFile::mainGroup,
                                              G_KEY_FILE_DESKTOP_KEY_PATH, nullptr) != FALSE;
    std::string home = environment_.home().string();
    Outcome outcome;
    glib::Error error;
    const auto bus = tamedSharedBus(environment_);
    const auto environment = context(request);
    std::vector<std::string> links = request.links;
    GList* uris = nullptr;
    for (std::string& link : links) {
        uris = g_list_append(uris, link.data());
    }
    const std::unique_ptr<GList, glib::Release<g_list_free>> ownedUris(uris);
    // Without DO_NOT_REAP_CHILD the process is a grandchild and init waits for it.
    const bool started = g_desktop_app_info_launch_uris_as_manager(
        info.get(), uris, environment.get(),
        static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                 G_SPAWN_STDERR_TO_DEV_NULL),
        standAlone, hasFolder ? nullptr : home.data(),
        [](GDesktopAppInfo*, GPid pid, gpointer out) { static_cast<Outcome*>(out)->pid = pid; },
        &outcome, error.out());
    if (!started) {
        outcome = {error ? error.message() : "It could not be started.", std::nullopt};
    }
    return outcome;
}

glib::Object<GAppLaunchContext> Launcher::context(const Request& request) const {
    glib::Object<GAppLaunchContext> context(g_app_launch_context_new());
    const glib::Strings now(g_get_environ());
    for (char** variable = now.get(); *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        g_app_launch_context_unsetenv(context.get(),
                                      std::string(text.substr(0, text.find('='))).c_str());
    }
    for (const std::string& variable : environment_.variables) {
        const std::size_t sign = variable.find('=');
        if (sign == std::string::npos || sign == 0 || isOurs(variable.substr(0, sign))) {
            continue;
        }
        g_app_launch_context_setenv(context.get(), variable.substr(0, sign).c_str(),
                                    variable.c_str() + sign + 1);
    }
    g_app_launch_context_setenv(context.get(), "GIO_LAUNCHED_DESKTOP_FILE", request.file.c_str());
    if (!request.startupId.empty()) {
        for (const char* name : {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"}) {
            g_app_launch_context_setenv(context.get(), name, request.startupId.c_str());
        }
    }
    return context;
}

std::string Launcher::scopeName(const BundleID& id, std::int64_t pid) {
    constexpr std::string_view digits = "0123456789abcdef";
    // Unit names end at 255 bytes; the id is only for people and task managers.
    constexpr std::size_t maxBytes = 225;
    std::string name = "app-vellory-";
    for (const char c : id) {
        if (name.size() > maxBytes) {
            break;
        }
        if (g_ascii_isalnum(c) || c == ':' || c == '_' || c == '.') {
            name += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            name.append("\\x") += digits[byte / 16];
            name += digits[byte % 16];
        }
    }
    return name + '-' + std::to_string(pid) + ".scope";
}

void Launcher::moveToScope(const BundleID& id, std::int64_t pid) const {
    const auto bus = sessionBus(environment_);
    if (bus == nullptr || !g_utf8_validate(id.c_str(), -1, nullptr)) {
        return;
    }
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a(sv)"));
    const auto process = static_cast<guint32>(pid);
    g_variant_builder_add(
        &properties, "(sv)", "PIDs",
        g_variant_new_fixed_array(G_VARIANT_TYPE_UINT32, &process, 1, sizeof process));
    g_variant_builder_add(&properties, "(sv)", "Description", g_variant_new_string(id.c_str()));
    g_variant_builder_add(&properties, "(sv)", "CollectMode",
                          g_variant_new_string("inactive-or-failed"));
    g_variant_builder_add(&properties, "(sv)", "Slice", g_variant_new_string("app.slice"));
    // The answer is of no use: without a scope the app runs on where it is.
    const glib::Variant answer = glib::own(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.systemd1", "/org/freedesktop/systemd1",
        "org.freedesktop.systemd1.Manager", "StartTransientUnit",
        g_variant_new("(ssa(sv)a(sa(sv)))", scopeName(id, pid).c_str(), "fail", &properties,
                      nullptr),
        nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, systemdMilliseconds, nullptr, nullptr));
}

} // namespace vellory
