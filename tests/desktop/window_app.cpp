// SPDX-License-Identifier: Apache-2.0
// An app of the desktop tests: shows plain windows and says how it was started.
//
//   --class C      WM_CLASS; without it the window says nothing about its app
//   --windows N    how many windows (1)
//   --gate FIFO    shows them only once somebody has opened this pipe for writing
//   --stubborn     stays when asked to close
//   --splash       shows a splash window until the gate opens
//   --undecorated  asks for windows without decorations
//   --shadow N     draws its own decorations with a shadow of N pixels around, as GTK apps do
//   --increments   sizes in steps, as terminals have them
//   --dialog       the second window is a dialog of the first
//   --startup-id   names its start to the window manager, as toolkits do
//   --reparented   puts its window into another one and takes it out again
//   --report FILE  writes its environment and situation there first

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>

namespace {

/// What stands on the command line.
class Options {
  public:
    explicit Options(const std::vector<std::string>& words) : words_(words) {}

    bool has(const std::string& name) const { return std::ranges::count(words_, name) > 0; }
    /// The word after `name`.
    std::string text(const std::string& name, const std::string& otherwise = "") const {
        const auto found = std::ranges::find(words_, name);
        return words_.end() - found < 2 ? otherwise : *std::next(found);
    }
    int number(const std::string& name, const std::string& otherwise = "0") const {
        return std::atoi(text(name, otherwise).c_str());
    }

  private:
    const std::vector<std::string>& words_;
};

void writeReport(const std::string& file, const std::vector<std::string>& arguments) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream report(file + ".part", std::ios::binary);
    const auto say = [&](const std::string& line) { report << line << '\0'; };
    for (char** variable = environ; *variable != nullptr; ++variable) {
        say(*variable);
    }
    std::string joined;
    for (const std::string& argument : arguments) {
        joined += argument + '|';
    }
    say("argv=" + joined);
    say("cwd=" + std::filesystem::current_path().string());
    say("pid=" + std::to_string(getpid()));
    say("sid=" + std::to_string(getsid(0)));
    sigset_t blocked;
    sigprocmask(SIG_SETMASK, nullptr, &blocked);
    say("blocked=" + std::to_string(sigismember(&blocked, SIGUSR1)));
    struct sigaction pipe{};
    sigaction(SIGPIPE, nullptr, &pipe);
    say("ignored=" + std::to_string(pipe.sa_handler == SIG_IGN));
    say("descriptors=" + std::to_string(fcntl(200, F_GETFD) >= 0));
    say("output=" + std::filesystem::read_symlink("/proc/self/fd/1").string());
    report.close();
    std::filesystem::rename(file + ".part", file);
}

class App {
  public:
    explicit App(const Options& options)
        : options_(options), connection_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection_) != 0) {
            std::exit(2);
        }
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        protocols_ = atom("WM_PROTOCOLS");
        deleteWindow_ = atom("WM_DELETE_WINDOW");
    }

    xcb_window_t show(const char* type, xcb_window_t parent = XCB_NONE) {
        const xcb_window_t window = xcb_generate_id(connection_);
        const std::uint32_t colour = screen_->white_pixel;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, 200, 150,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                          &colour);
        const std::string name = options_.text("--class");
        const std::string names = name + '\0' + name + '\0';
        if (!name.empty()) {
            set(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, names.size(), names.data());
        }
        const std::string title = "Test window " + std::to_string(++shown_);
        set(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, title.size(), title.data());
        set(window, protocols_, XCB_ATOM_ATOM, 32, 1, &deleteWindow_);
        const xcb_atom_t typeAtom = atom(type);
        set(window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &typeAtom);
        const std::uint32_t pid = static_cast<std::uint32_t>(getpid());
        set(window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &pid);
        const char* startupId = std::getenv("DESKTOP_STARTUP_ID");
        if (options_.has("--startup-id") && startupId != nullptr) {
            set(window, atom("_NET_STARTUP_ID"), atom("UTF8_STRING"), 8, std::strlen(startupId),
                startupId);
        }
        if (parent != XCB_NONE) {
            set(window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1, &parent);
        }
        stateShape(window);
        xcb_map_window(connection_, window);
        xcb_flush(connection_);
        return window;
    }

    /// What the window manager is to know of the window's frame and size.
    void stateShape(xcb_window_t window) {
        const auto shadow = static_cast<std::uint32_t>(options_.number("--shadow"));
        if (options_.has("--undecorated") || shadow > 0) {
            const std::vector<std::uint32_t> motifHints{2, 0, 0, 0, 0}; // "Decorations: none."
            set(window, atom("_MOTIF_WM_HINTS"), atom("_MOTIF_WM_HINTS"), 32, motifHints.size(),
                motifHints.data());
        }
        if (shadow > 0) {
            const std::vector<std::uint32_t> edges(4, shadow);
            set(window, atom("_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, edges.size(),
                edges.data());
        }
        if (options_.has("--increments")) {
            xcb_size_hints_t hints{};
            xcb_icccm_size_hints_set_resize_inc(&hints, 7, 13);
            xcb_icccm_size_hints_set_base_size(&hints, 4, 4);
            xcb_icccm_size_hints_set_min_size(&hints, 11, 17);
            xcb_icccm_set_wm_normal_hints(connection_, window, &hints);
        }
    }

    void hide(xcb_window_t window) {
        xcb_destroy_window(connection_, window);
        xcb_flush(connection_);
    }

    /// Out of the window manager's hands and back into them.
    void reparent(xcb_window_t window) {
        const xcb_window_t holder = xcb_generate_id(connection_);
        const std::uint32_t unmanaged = 1;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, holder, screen_->root, 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
        xcb_unmap_window(connection_, window);
        xcb_reparent_window(connection_, window, holder, 0, 0);
        sync();
        xcb_reparent_window(connection_, window, screen_->root, 0, 0);
        xcb_map_window(connection_, window);
        sync();
    }

    /// Until the server has done all that was asked.
    void sync() {
        std::free(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    }

    /// Until the last window is closed or the server is gone.
    void run(std::set<xcb_window_t> windows) {
        while (!windows.empty()) {
            xcb_generic_event_t* event = xcb_wait_for_event(connection_);
            if (event == nullptr) {
                return;
            }
            const auto* message = reinterpret_cast<xcb_client_message_event_t*>(event);
            if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
                message->type == protocols_ && message->data.data32[0] == deleteWindow_ &&
                !options_.has("--stubborn")) {
                hide(message->window);
                windows.erase(message->window);
            }
            std::free(event);
        }
    }

  private:
    xcb_atom_t atom(const char* name) {
        auto* reply = xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
            nullptr);
        const xcb_atom_t atom = reply->atom;
        std::free(reply);
        return atom;
    }
    void set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::uint8_t format,
             std::size_t count, const void* data) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type, format,
                            static_cast<std::uint32_t>(count), data);
    }

    const Options& options_;
    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    xcb_atom_t protocols_ = XCB_ATOM_NONE;
    xcb_atom_t deleteWindow_ = XCB_ATOM_NONE;
    int shown_ = 0;
};

} // namespace

int main(int count, char** values) {
    const std::vector<std::string> arguments(values, values + count);
    const Options options(arguments);
    if (options.has("--report")) {
        writeReport(options.text("--report"), arguments);
    }
    App app(options);
    const xcb_window_t splash =
        options.has("--splash") ? app.show("_NET_WM_WINDOW_TYPE_SPLASH") : xcb_window_t{XCB_NONE};
    if (options.has("--gate")) {
        close(open(options.text("--gate").c_str(), O_RDONLY)); // Waits for the other end.
    }
    if (splash != XCB_NONE) {
        app.hide(splash);
    }
    std::set<xcb_window_t> windows;
    for (int i = 0; i < options.number("--windows", "1"); ++i) {
        windows.insert(i == 1 && options.has("--dialog")
                           ? app.show("_NET_WM_WINDOW_TYPE_DIALOG", *windows.begin())
                           : app.show("_NET_WM_WINDOW_TYPE_NORMAL"));
    }
    if (options.has("--reparented")) {
        app.reparent(*windows.begin());
    }
    app.run(std::move(windows));
}
