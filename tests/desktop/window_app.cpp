// SPDX-License-Identifier: Apache-2.0
// An app of the desktop tests: shows plain windows and says how it was started.
//
//   --class C      WM_CLASS; without it the window says nothing about its app
//   --windows N    how many windows (1)
//   --gate FIFO    shows them only once somebody has opened this pipe for writing
//   --stubborn     stays when asked to close
//   --splash       shows a splash window until the gate opens
//   --flash        shows a plain window until the gate opens, and is without any until
//   "<gate>.again"
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

struct Options {
    std::string windowClass;
    std::string gate;
    std::string report;
    int windows = 1;
    std::uint32_t shadow = 0;
    bool isUndecorated = false;
    bool hasIncrements = false;
    bool hasDialog = false;
    bool namesStart = false;
    bool isStubborn = false;
    bool hasSplash = false;
    bool hasFlash = false;
    bool isReparented = false;
};

Options optionsOf(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const auto next = [&] { return ++i < arguments.size() ? arguments[i] : std::string(); };
        if (arguments[i] == "--class") {
            options.windowClass = next();
        } else if (arguments[i] == "--windows") {
            options.windows = std::atoi(next().c_str());
        } else if (arguments[i] == "--gate") {
            options.gate = next();
        } else if (arguments[i] == "--report") {
            options.report = next();
        } else if (arguments[i] == "--shadow") {
            options.shadow = static_cast<std::uint32_t>(std::atoi(next().c_str()));
        } else if (arguments[i] == "--undecorated") {
            options.isUndecorated = true;
        } else if (arguments[i] == "--increments") {
            options.hasIncrements = true;
        } else if (arguments[i] == "--startup-id") {
            options.namesStart = true;
        } else if (arguments[i] == "--dialog") {
            options.hasDialog = true;
        } else if (arguments[i] == "--stubborn") {
            options.isStubborn = true;
        } else if (arguments[i] == "--splash") {
            options.hasSplash = true;
        } else if (arguments[i] == "--flash") {
            options.hasFlash = true;
        } else if (arguments[i] == "--reparented") {
            options.isReparented = true;
        }
    }
    return options;
}

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
        const std::string names = options_.windowClass + '\0' + options_.windowClass + '\0';
        if (!options_.windowClass.empty()) {
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
        if (options_.namesStart && startupId != nullptr) {
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
        if (options_.isUndecorated || options_.shadow > 0) {
            const std::vector<std::uint32_t> motifHints{2, 0, 0, 0, 0}; // "Decorations: none."
            set(window, atom("_MOTIF_WM_HINTS"), atom("_MOTIF_WM_HINTS"), 32, motifHints.size(),
                motifHints.data());
        }
        if (options_.shadow > 0) {
            const std::vector<std::uint32_t> edges(4, options_.shadow);
            set(window, atom("_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, edges.size(),
                edges.data());
        }
        if (options_.hasIncrements) {
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
                !options_.isStubborn) {
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
    const Options options = optionsOf(arguments);
    if (!options.report.empty()) {
        writeReport(options.report, arguments);
    }
    App app(options);
    const xcb_window_t splash =
        options.hasSplash ? app.show("_NET_WM_WINDOW_TYPE_SPLASH") : xcb_window_t{XCB_NONE};
    const xcb_window_t flash =
        options.hasFlash ? app.show("_NET_WM_WINDOW_TYPE_NORMAL") : xcb_window_t{XCB_NONE};
    if (!options.gate.empty()) {
        close(open(options.gate.c_str(), O_RDONLY)); // Waits for the other end.
    }
    if (options.hasSplash) {
        app.hide(splash);
    }
    if (options.hasFlash) {
        app.hide(flash);
        // A gate of its own: somebody has seen that no window is left.
        close(open((options.gate + ".again").c_str(), O_RDONLY));
    }
    std::set<xcb_window_t> windows;
    xcb_window_t first = XCB_NONE;
    for (int i = 0; i < options.windows; ++i) {
        const bool isDialog = options.hasDialog && i == 1;
        const xcb_window_t window = isDialog ? app.show("_NET_WM_WINDOW_TYPE_DIALOG", first)
                                             : app.show("_NET_WM_WINDOW_TYPE_NORMAL");
        first = i == 0 ? window : first;
        windows.insert(window);
    }
    if (options.isReparented) {
        app.reparent(*windows.begin());
    }
    app.run(std::move(windows));
}
