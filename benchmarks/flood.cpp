// SPDX-License-Identifier: Apache-2.0
// flood COUNT WINDOW LINK...: sends the links in turn, COUNT in all, to the program that runs on
// this session as fast as it takes them in, each by a connection of its own, "#" in them replaced
// by a number. Meanwhile it asks the program's WINDOW again and again whether it is alive
// (_NET_WM_PING), as window managers do, and prints how long the answers took, and how long it was
// until every link was obeyed.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Whether the program said that it has obeyed.
bool ask(const std::string& link) {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string path = std::string(runtime == nullptr ? "" : runtime) + "/vellory/socket";
    const int connection = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    const std::string line = link + "\n";
    char answer[16] = {};
    const bool obeyed =
        ::connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
        ::write(connection, line.data(), line.size()) > 0 &&
        ::read(connection, answer, sizeof answer) > 0 && answer[0] == 'o';
    ::close(connection);
    return obeyed;
}

/// A display with the program's window on it.
class Pinger {
  public:
    Pinger() : connection_(xcb_connect(nullptr, nullptr)) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        protocols_ = atom("WM_PROTOCOLS");
        ping_ = atom("_NET_WM_PING");
        // The answers are sent to the root window.
        const std::uint32_t mask =
            XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);
    }

    void setWindow(xcb_window_t window) { window_ = window; }

    /// Milliseconds until the window's program answers; negative when it does not.
    double ping() {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window_;
        message.type = protocols_;
        message.data.data32[0] = ping_;
        message.data.data32[1] = ++number_;
        message.data.data32[2] = window_;
        const auto start = Clock::now();
        xcb_send_event(connection_, 0, window_, 0, reinterpret_cast<const char*>(&message));
        xcb_flush(connection_);
        while (millisecondsSince(start) < 3000) {
            pollfd waiting{xcb_get_file_descriptor(connection_), POLLIN, 0};
            ::poll(&waiting, 1, 100);
            while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
                const auto* answer = reinterpret_cast<xcb_client_message_event_t*>(event);
                const bool isOurs = (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
                                    answer->type == protocols_ && answer->data.data32[0] == ping_ &&
                                    answer->data.data32[1] == number_;
                std::free(event);
                if (isOurs) {
                    return millisecondsSince(start);
                }
            }
        }
        return -1;
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

    xcb_connection_t* connection_;
    xcb_window_t root_ = 0;
    xcb_window_t window_ = 0;
    xcb_atom_t protocols_ = 0;
    xcb_atom_t ping_ = 0;
    std::uint32_t number_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: flood COUNT WINDOW LINK...\n");
        return 2;
    }
    const int count = std::atoi(argv[1]);
    Pinger pinger;
    pinger.setWindow(static_cast<xcb_window_t>(std::strtoul(argv[2], nullptr, 0)));
    const std::vector<std::string> links(argv + 3, argv + argc);

    std::vector<double> calm;
    for (int i = 0; i < 20; ++i) {
        calm.push_back(pinger.ping());
        if (calm.back() < 0) {
            std::fprintf(stderr, "flood: the window does not answer\n");
            return 1;
        }
    }
    std::atomic<int> next = 0;
    std::atomic<int> obeyed = 0;
    std::atomic<int> running = 64;
    const auto start = Clock::now();
    std::vector<std::jthread> senders;
    for (int i = 0; i < 64; ++i) {
        senders.emplace_back([&] {
            for (int number = next++; number < count; number = next++) {
                std::string link = links[static_cast<std::size_t>(number) % links.size()];
                if (const auto mark = link.find('#'); mark != std::string::npos) {
                    link.replace(mark, 1, std::to_string(number));
                }
                obeyed += ask(link) ? 1 : 0;
            }
            --running;
        });
    }
    std::vector<double> busy;
    while (running > 0) {
        busy.push_back(pinger.ping());
    }
    const double all = millisecondsSince(start);
    for (auto* times : {&calm, &busy}) {
        std::ranges::sort(*times);
        std::printf("%s: %zu pings, median %.1f ms, 95th percentile %.1f ms, longest %.1f ms\n",
                    times == &calm ? "before" : "during", times->size(),
                    (*times)[times->size() / 2], (*times)[times->size() * 95 / 100], times->back());
    }
    std::printf("%d of %d links obeyed in %.0f ms\n", obeyed.load(), count, all);
    return obeyed == count ? 0 : 1;
}
