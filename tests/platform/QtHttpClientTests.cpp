// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtHttpClient.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vellory::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::Optional;

/// A server on the loopback address that treats each connection as it is told.
class Server {
  public:
    using Treat = std::function<void(int connection, const std::atomic<bool>& isEnding)>;

    explicit Server(Treat treat) : listening_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(listening_, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(listening_, 8), 0);
        EXPECT_EQ(getsockname(listening_, reinterpret_cast<sockaddr*>(&address), &size), 0);
        port = std::to_string(ntohs(address.sin_port));
        thread_ = std::jthread([this, treat = std::move(treat)] {
            for (int connection = accept(listening_, nullptr, nullptr); connection >= 0;
                 connection = accept(listening_, nullptr, nullptr)) {
                ++connections;
                treat(connection, isEnding_);
                close(connection);
            }
        });
    }
    /// Answers every request with `answer`, head and all.
    explicit Server(std::string answer)
        : Server([this, answer = std::move(answer)](int connection, const auto&) {
              char buffer[4096];
              const ssize_t count = recv(connection, buffer, sizeof buffer, 0);
              request.assign(buffer, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
              send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
          }) {}
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() {
        isEnding_ = true;
        shutdown(listening_, SHUT_RDWR);
        thread_.join();
        close(listening_);
    }

    std::string port;
    std::string request;
    std::atomic<int> connections = 0;

  private:
    int listening_;
    std::atomic<bool> isEnding_ = false;
    std::jthread thread_;
};

std::string answerOf(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

constexpr std::size_t most = 100'000;

/// Asks as it is used: from another thread than the main one.
std::optional<std::string> ask(const std::string& url,
                               std::chrono::milliseconds patience = std::chrono::seconds(30)) {
    std::optional<std::string> answer;
    std::jthread([&] {
        answer = QtHttpClient().get(
            {.url = url, .patience = patience, .maxBytes = most, .direct = true});
    }).join();
    return answer;
}

std::string at(const Server& server) {
    return "http://127.0.0.1:" + server.port + "/list?a=b";
}

TEST(QtHttpClient, GivesTheBodyOfAGoodAnswer) {
    const std::string longest(most, 'x');
    for (const std::string& body : {std::string("[1, 2]"), std::string(), longest}) {
        Server server(answerOf(body));
        EXPECT_THAT(ask(at(server)), Optional(body)) << body.size();
        EXPECT_THAT(server.request, HasSubstr("GET /list?a=b HTTP/1.1\r\nHost: 127.0.0.1:"));
        EXPECT_THAT(server.request, Not(HasSubstr("Cookie")));
    }
    Server unsized("HTTP/1.0 200 OK\r\n\r\nuntil the end");
    EXPECT_THAT(ask(at(unsized)), Optional(std::string("until the end")));
}

TEST(QtHttpClient, EveryOtherAnswerIsNone) {
    std::string gone;
    {
        const Server server([](int, const auto&) {});
        gone = at(server);
    }
    for (const std::string& url : {gone, std::string("file:///etc/passwd"), std::string("http://"),
                                   std::string("127.0.0.1"), std::string("http://[bad/")}) {
        EXPECT_EQ(ask(url), std::nullopt) << url;
    }
    Server elsewhere(answerOf("elsewhere"));
    Server endless([](int connection, const std::atomic<bool>& isEnding) {
        const std::string head = "HTTP/1.1 200 OK\r\n\r\n";
        const std::string more(64 * 1024, 'x');
        send(connection, head.data(), head.size(), MSG_NOSIGNAL);
        while (!isEnding && send(connection, more.data(), more.size(), MSG_NOSIGNAL) > 0) {
        }
    });
    Server redirects("HTTP/1.1 302 Found\r\nLocation: " + at(elsewhere) +
                     "\r\nContent-Length: 0\r\n\r\n");
    Server forbids("HTTP/1.1 403 No\r\nContent-Length: 2\r\n\r\nno");
    Server empty("HTTP/1.1 204 No Content\r\n\r\n");
    Server babbles("no HTTP at all\r\n\r\n");
    Server breaksOff("HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\nhalf");
    Server tooLong(answerOf(std::string(most + 1, 'x')));
    for (const Server* server :
         {&endless, &redirects, &forbids, &empty, &babbles, &breaksOff, &tooLong}) {
        EXPECT_EQ(ask(at(*server)), std::nullopt);
        EXPECT_GE(server->connections, 1);
    }
    EXPECT_EQ(elsewhere.connections, 0);
    Server hangs([](int connection, const std::atomic<bool>& isEnding) {
        pollfd end{connection, POLLRDHUP, 0};
        while (!isEnding && poll(&end, 1, 10) == 0) {
        }
    });
    EXPECT_EQ(ask(at(hangs), std::chrono::milliseconds(50)), std::nullopt);
}

} // namespace
} // namespace vellory::test
