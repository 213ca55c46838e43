// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/BrowserTabs.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/TemporaryFolder.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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
    return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

class BrowserTabsTest : public testing::Test {
  protected:
    void setPort(const std::string& profile, const std::string& content) const {
        folder.write("config/" + profile + "/DevToolsActivePort", content);
    }
    std::vector<std::string> tabs() const {
        return BrowserTabs::open({{"HOME=" + folder.path().string(),
                                   "XDG_CONFIG_HOME=" + (folder.path() / "config").string(),
                                   "http_proxy=http://127.0.0.1:1/"}});
    }

    TemporaryFolder folder;
};

TEST_F(BrowserTabsTest, PagesOfEachBrowserInTurn) {
    Server chromium(answerOf(R"([{"type":"page","url":"https://b.example/"},
        {"type":"service_worker","url":"https://worker.example/"},{"type":"iframe","url":"x"},
        {"type":"page","url":"chrome://settings/"},{"type":"page","url":7},{"type":"page"},
        "page",{"url":"https://no.type/"},{"type":"page","url":"https://a.example/"}])"));
    Server brave(answerOf(R"([{"type":"page","url":"https://b.example/"}])"));
    setPort("chromium", chromium.port + "\n/devtools/browser/0-0");
    setPort("BraveSoftware/Brave-Browser", brave.port);
    EXPECT_THAT(tabs(), ElementsAre("https://b.example/", "chrome://settings/",
                                    "https://a.example/", "https://b.example/"));
    EXPECT_THAT(chromium.request, HasSubstr("GET /json/list HTTP/1.1\r\nHost: 127.0.0.1:"));
}

TEST_F(BrowserTabsTest, PortFileThatStayedBehindOrIsNoneGivesNothing) {
    EXPECT_THAT(tabs(), IsEmpty());
    std::string port;
    {
        const Server gone([](int, const auto&) {});
        port = gone.port;
    }
    setPort("chromium", port + "\n");
    Server other(answerOf(R"([{"type":"page","url":"https://a.example/"}])"));
    for (const std::string& content :
         {std::string(), std::string("0\n"), std::string("-1"), "9" + other.port + other.port,
          other.port + "@evil.example", " " + other.port, std::string(100'000, '1')}) {
        setPort("vivaldi", content);
        EXPECT_THAT(tabs(), IsEmpty()) << content.substr(0, 50);
    }
    EXPECT_EQ(other.connections, 0);
    // A pipe instead of a file would block whoever opens it.
    std::filesystem::remove(folder.path() / "config/vivaldi/DevToolsActivePort");
    ASSERT_EQ(mkfifo((folder.path() / "config/vivaldi/DevToolsActivePort").c_str(), 0600), 0);
    EXPECT_THAT(tabs(), IsEmpty());
}

TEST_F(BrowserTabsTest, HostileServersGiveNothingAndEnd) {
    Server elsewhere(answerOf(R"([{"type":"page","url":"https://elsewhere.example/"}])"));
    const auto untilGone = [](int connection, const std::atomic<bool>& isEnding) {
        pollfd end{connection, POLLRDHUP, 0};
        while (!isEnding && poll(&end, 1, 10) == 0) {
        }
    };
    Server hangs(untilGone);
    Server endless([](int connection, const std::atomic<bool>& isEnding) {
        std::string head = "HTTP/1.1 200 OK\r\n\r\n[\"";
        const std::string more(64 * 1024, 'x');
        send(connection, head.data(), head.size(), MSG_NOSIGNAL);
        while (!isEnding && send(connection, more.data(), more.size(), MSG_NOSIGNAL) > 0) {
        }
    });
    Server redirects("HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:" + elsewhere.port +
                     "/json/list\r\nContent-Length: 0\r\n\r\n");
    Server forbids("HTTP/1.1 403 No\r\nContent-Length: 40\r\n\r\n"
                   R"([{"type":"page","url":"https://x.example"}])");
    Server babbles("no HTTP at all\r\n\r\n");
    Server malformed(answerOf(R"([{"type":"page","url":"https://a.example/"})"));
    Server deep(answerOf(std::string(100'000, '[')));
    Server object(answerOf(R"({"type":"page","url":"https://a.example/"})"));
    for (const Server* server :
         {&hangs, &endless, &redirects, &forbids, &babbles, &malformed, &deep, &object}) {
        setPort("microsoft-edge", server->port);
        EXPECT_THAT(tabs(), IsEmpty());
        EXPECT_EQ(server->connections, 1);
    }
    EXPECT_EQ(elsewhere.connections, 0);
}

} // namespace
} // namespace vellory::test
