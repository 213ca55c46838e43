// SPDX-License-Identifier: Apache-2.0
// until_mapped COMMAND [ARGUMENT...]: starts a command and prints the milliseconds until a window
// of its is mapped on the display, counted from just before the fork; then ends it. Whatever window
// appears counts, with a frame or without, unless it is tiny: run it on a display of its own.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <set>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

int main(int argc, char** argv) {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (argc < 2 || xcb_connection_has_error(connection) != 0) {
        std::fprintf(stderr, "until_mapped: needs a command and a display\n");
        return 2;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));

    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        ::setpgid(0, 0);
        const int nothing = ::open("/dev/null", O_RDWR);
        ::dup2(nothing, STDOUT_FILENO);
        ::dup2(nothing, STDERR_FILENO);
        ::execvp(argv[1], argv + 1);
        ::_exit(127);
    }
    double milliseconds = -1;
    constexpr double patience = 20'000;
    while (milliseconds < 0) {
        const auto now = std::chrono::steady_clock::now();
        const double elapsed = std::chrono::duration<double, std::milli>(now - start).count();
        if (elapsed > patience) {
            break;
        }
        pollfd waiting{xcb_get_file_descriptor(connection), POLLIN, 0};
        ::poll(&waiting, 1, 100);
        while (xcb_generic_event_t* event = xcb_poll_for_event(connection)) {
            if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY) {
                const auto* mapped = reinterpret_cast<xcb_map_notify_event_t*>(event);
                const auto seen = std::chrono::steady_clock::now();
                auto* size = xcb_get_geometry_reply(
                    connection, xcb_get_geometry(connection, mapped->window), nullptr);
                if (size != nullptr && size->width >= 100 && size->height >= 30) {
                    milliseconds = std::chrono::duration<double, std::milli>(seen - start).count();
                }
                std::free(size);
            }
            std::free(event);
        }
    }
    ::kill(-child, SIGTERM);
    ::waitpid(child, nullptr, 0);
    xcb_disconnect(connection);
    std::printf("%.1f\n", milliseconds);
    return milliseconds < 0 ? 1 : 0;
}
