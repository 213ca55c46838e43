// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/LinkServer.h"

#include <array>
#include <csignal>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "MainLoop.h"
#include "Support/Link.h"
#include "support/Child.h"
#include "support/HostileTexts.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Answer = InstanceSocket::Answer;

fs::perms modeOf(const fs::path& file) {
    return fs::symlink_status(file).permissions();
}

class LinkServerTest : public testing::Test {
  protected:
    /// As a program that obeys at once, or does as it is told with what waits for an answer.
    void listen(std::function<void(const LinkAnswer&)> obey = [](const auto& done) {
        done(true);
    }) {
        auto place = InstanceSocket::take(socket);
        ASSERT_TRUE(place);
        server.emplace(std::move(*place), loop, loop,
                       [this, obey = std::move(obey)](LinkRequest request, const LinkAnswer& done) {
                           requests.push_back(std::move(request));
                           obey(done);
                       });
    }

    /// A connection whose other end nobody has to be polite to.
    Descriptor connect() const {
        Descriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, socket.c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(::connect(connection.get(), reinterpret_cast<const sockaddr*>(&address),
                            sizeof address),
                  0);
        return connection;
    }

    /// So many of them, each of which has said `bytes`.
    std::vector<Descriptor> clients(std::size_t count, const std::string& bytes) const {
        std::vector<Descriptor> all;
        for (std::size_t i = 0; i < count; ++i) {
            all.push_back(connect());
            EXPECT_GE(::send(all.back().get(), bytes.data(), bytes.size(), MSG_NOSIGNAL), 0);
        }
        return all;
    }

    /// What the server answers to `bytes`; "" when it hangs up without a word.
    std::string answerTo(const std::string& bytes) {
        const Descriptor connection = connect();
        const auto watch = loop.watchReadable(connection.get(), [] {});
        std::string answer;
        bool ended = false;
        std::size_t sent = 0;
        loop.runUntil([&] {
            while (sent < bytes.size()) {
                const ssize_t now = ::send(connection.get(), bytes.data() + sent,
                                           bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
                if (now <= 0) {
                    break;
                }
                sent += static_cast<std::size_t>(now);
            }
            if (sent == bytes.size()) {
                ::shutdown(connection.get(), SHUT_WR);
            }
            std::array<char, 64> buffer{};
            const ssize_t got =
                ::recv(connection.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
            if (got > 0) {
                answer.append(buffer.data(), static_cast<std::size_t>(got));
            }
            ended = got == 0 || (got < 0 && errno != EAGAIN);
            return ended;
        });
        EXPECT_TRUE(ended) << bytes.substr(0, 100);
        return answer;
    }

    Answer send(const LinkRequest& request) {
        std::optional<Answer> answer;
        std::jthread client([&] {
            const Answer got = InstanceSocket::send(socket, request);
            loop.inBackground([&, got] { return [&, got] { answer = got; }; });
        });
        EXPECT_TRUE(loop.runUntil([&] { return answer.has_value(); }));
        return answer.value_or(Answer::silence);
    }

    TemporaryFolder folder;
    fs::path socket = InstanceSocket::in(folder.path() / "runtime");
    MainLoop loop;
    std::vector<LinkRequest> requests;
    std::optional<LinkServer> server;
};

TEST_F(LinkServerTest, ALinkIsHandedOverWithItsTokenAndAnsweredWhenObeyed) {
    EXPECT_EQ(InstanceSocket::send(socket, {}), Answer::nobody);
    listen();
    EXPECT_EQ(send({"vellory://toggle", "token_TIME5"}), Answer::obeyed);
    EXPECT_EQ(send({.link = ""}), Answer::obeyed);
    EXPECT_EQ(send({.link = "vellory://search?q=" + std::string(64'000, 'x')}), Answer::obeyed);
    EXPECT_EQ(requests.size(), 3U);
    EXPECT_EQ(requests[0], (LinkRequest{"vellory://toggle", "token_TIME5"}));
    for (const std::string& bad : {"two\nlines" + std::string(), std::string("a\0b", 3),
                                   std::string("\xff"), std::string(1'000'000, 'x')}) {
        EXPECT_EQ(InstanceSocket::send(socket, {.link = bad}), Answer::refused);
    }
}

TEST_F(LinkServerTest, OnlyTheUserCanReachTheSocket) {
    fs::create_directories(socket.parent_path());
    fs::permissions(socket.parent_path(), fs::perms::all);
    listen();
    EXPECT_EQ(modeOf(socket.parent_path()), fs::perms::owner_all);
    EXPECT_EQ(modeOf(socket), fs::perms::owner_read | fs::perms::owner_write);
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can try as somebody else";
    }
    const auto tryAsNobody = [this] {
        return inChild([this] {
            return becomeNobody() ? static_cast<int>(InstanceSocket::send(socket, {})) : -1;
        });
    };
    EXPECT_EQ(tryAsNobody(), static_cast<int>(Answer::nobody));
    // Not even where the folder and the socket let them in: the peer is looked at.
    for (fs::path path = socket; path != folder.path().parent_path(); path = path.parent_path()) {
        fs::permissions(path, fs::perms::all);
    }
    EXPECT_EQ(tryAsNobody(), static_cast<int>(Answer::nobody));
    const int heard = inChild([this] {
        const Descriptor connection = becomeNobody() ? connect() : Descriptor();
        return ::send(connection.get(), "vellory://open\n", 15, MSG_NOSIGNAL) == 15 ? 1 : 0;
    });
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(answerTo("vellory://settings\n"), "ok\n");
    EXPECT_THAT(requests, ElementsAre(LinkRequest{"vellory://settings"}));
}

TEST_F(LinkServerTest, AFolderThatIsNotTheUsersOwnIsNotUsed) {
    fs::create_directories(folder.path() / "elsewhere");
    fs::create_directories(socket.parent_path().parent_path());
    fs::create_directory_symlink(folder.path() / "elsewhere", socket.parent_path());
    const auto meeting = InstanceSocket::meet(socket, {});
    EXPECT_EQ(meeting.answer, Answer::nobody);
    EXPECT_FALSE(meeting.place);
    EXPECT_THAT(namesIn(folder.path() / "elsewhere"), IsEmpty());
    EXPECT_FALSE(InstanceSocket::take(folder.path() / std::string(200, 'x') / "socket"));
}

TEST_F(LinkServerTest, HostileTextsAreRefusedOrHandedOnAsTheyAre) {
    listen();
    std::vector<LinkRequest> expected;
    for (const std::string& link : hostileLinks()) {
        const std::string answer = answerTo(link + "\n");
        if (link.find('\n') == std::string::npos) {
            EXPECT_EQ(answer, isBearableLink(link)            ? "ok\n"
                              : link.size() > Link::maxLength ? answer
                                                              : "refused\n")
                << link.substr(0, 100);
        }
        // What follows the first line is nobody's.
        const std::string first = link.substr(0, link.find('\n'));
        if (isBearableLink(first)) {
            expected.push_back({.link = first});
        }
    }
    EXPECT_EQ(requests, expected);
    EXPECT_GE(requests.size(), 300U);
    requests.clear();

    for (const std::string bytes : {"", "vellory://open", "token a", "token a\n", "\xff\n"}) {
        EXPECT_THAT(answerTo(bytes), testing::AnyOf("", "refused\n")) << bytes;
    }
    EXPECT_THAT(requests, IsEmpty());
    EXPECT_EQ(answerTo("token a\ntoken b\nvellory://open\n"), "ok\n");
    EXPECT_THAT(requests, ElementsAre(LinkRequest{"vellory://open", "b"}));
}

TEST_F(LinkServerTest, ConnectionsThatSayNothingKeepNobodyOut) {
    listen();
    const auto idle = clients(LinkServer::mostConnections * 12, "vellory://");
    EXPECT_EQ(answerTo("vellory://open\n"), "ok\n");
    EXPECT_EQ(requests.size(), 1U);
    // Those that were let go have heard so; the rest goes with time.
    char byte = 0;
    EXPECT_EQ(::recv(idle.front().get(), &byte, 1, 0), 0);
}

// Answers may take long: who waits for one is not let go, and the others wait outside.
TEST_F(LinkServerTest, MoreThanThereIsRoomForAreAllObeyedInTurn) {
    std::vector<LinkAnswer> answers;
    listen([&](const LinkAnswer& done) { answers.push_back(done); });
    constexpr std::size_t count = LinkServer::mostConnections * 3;
    const auto waiting = clients(count, "vellory://open\n");
    ASSERT_TRUE(loop.runUntil([&] { return requests.size() == LinkServer::mostConnections; }));
    std::size_t answered = 0;
    ASSERT_TRUE(loop.runUntil([&] {
        while (answered < answers.size()) {
            answers[answered++](true);
        }
        return answered == count;
    }));
    for (const Descriptor& client : waiting) {
        std::array<char, 8> word{};
        EXPECT_EQ(::recv(client.get(), word.data(), word.size(), 0), 3);
    }
    const LinkAnswer late = answers.back();
    server.reset();
    late(true);
}

TEST_F(LinkServerTest, OneHasThePlaceAndAKilledOneLosesIt) {
    const int killed = inChild([this] {
        const auto place = InstanceSocket::take(socket);
        return place ? ::raise(SIGKILL) : 1;
    });
    ASSERT_EQ(killed, -1);
    ASSERT_TRUE(fs::is_socket(socket));
    const auto place = InstanceSocket::take(socket);
    ASSERT_TRUE(place);
    const int second = inChild([this] {
        const auto other = InstanceSocket::take(socket);
        return !other && other.error() == InstanceSocket::Obstacle::taken ? 1 : 0;
    });
    EXPECT_EQ(second, 1);
}

} // namespace
} // namespace vellory::test
