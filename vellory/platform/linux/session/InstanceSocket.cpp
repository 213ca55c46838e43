// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/InstanceSocket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>

#include "Support/Link.h"
#include "Support/Text.h"

namespace vellory {

namespace {

/// How long a program that listens may take to answer: it may still be starting.
constexpr int answerSeconds = 15;
/// Between taking the place and listening there are a few system calls.
constexpr std::chrono::seconds takeOverPatience{2};
constexpr std::chrono::milliseconds takeOverInterval{5};

/// The address of a socket; nothing when its path is longer than addresses can be.
std::optional<sockaddr_un> addressOf(const std::filesystem::path& socket) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket.native().size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(address.sun_path, socket.c_str(), socket.native().size());
    return address;
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

bool sendAll(int connection, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
    }
    return true;
}

/// Makes the folder that holds the socket, for this user alone.
bool preparePrivateFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder.parent_path(), error);
    if (::mkdir(folder.c_str(), S_IRWXU) == 0) {
        return true;
    }
    struct stat info{};
    return ::lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::geteuid() && ::chmod(folder.c_str(), S_IRWXU) == 0;
}

} // namespace

bool isBearableLink(std::string_view text) {
    return text.size() <= Link::maxLength &&
           text.find_first_of(std::string_view("\0\n", 2)) == std::string_view::npos &&
           Text::isValidUtf8(text);
}

bool InstanceSocket::isSameUser(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::geteuid();
}

InstanceSocket::Answer InstanceSocket::send(const std::filesystem::path& socket,
                                            const LinkRequest& request) {
    if (!isBearableLink(request.link)) {
        return Answer::refused;
    }
    const auto address = addressOf(socket);
    const Descriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const timeval patience{.tv_sec = answerSeconds, .tv_usec = 0};
    for (const int option : {SO_SNDTIMEO, SO_RCVTIMEO}) {
        ::setsockopt(connection.get(), SOL_SOCKET, option, &patience, sizeof patience);
    }
    if (!address || ::connect(connection.get(), generic(*address), sizeof *address) != 0) {
        return address && errno == EAGAIN ? Answer::silence : Answer::nobody;
    }
    if (!isSameUser(connection.get())) {
        return Answer::nobody;
    }
    const bool hasToken =
        !request.activationToken.empty() && isBearableLink(request.activationToken);
    if (!sendAll(connection.get(), (hasToken ? "token " + request.activationToken + "\n" : "") +
                                       request.link + "\n")) {
        return Answer::silence;
    }
    std::array<char, 16> answer{};
    const ssize_t got = ::recv(connection.get(), answer.data(), answer.size(), 0);
    if (got <= 0) {
        return Answer::silence;
    }
    return answer[0] == 'o' ? Answer::obeyed : Answer::refused;
}

std::expected<InstanceSocket, InstanceSocket::Obstacle>
InstanceSocket::take(const std::filesystem::path& socket) {
    const auto address = addressOf(socket);
    if (!address || !preparePrivateFolder(socket.parent_path())) {
        return std::unexpected(Obstacle::noFolder);
    }
    Descriptor lock(::open((socket.parent_path() / "lock").c_str(),
                           O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!lock.isOpen()) {
        return std::unexpected(Obstacle::noFolder);
    }
    if (::flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        return std::unexpected(Obstacle::taken);
    }
    // Whose lock it is may do so: what is there was left behind.
    ::unlink(socket.c_str());
    Descriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // The folder keeps others out until the mode is set.
    if (::bind(listener.get(), generic(*address), sizeof *address) != 0 ||
        ::chmod(socket.c_str(), S_IRUSR | S_IWUSR) != 0 ||
        ::listen(listener.get(), SOMAXCONN) != 0) {
        return std::unexpected(Obstacle::noFolder);
    }
    return InstanceSocket(std::move(lock), std::move(listener));
}

InstanceSocket::Meeting InstanceSocket::meet(const std::filesystem::path& socket,
                                             const LinkRequest& request) {
    const auto deadline = std::chrono::steady_clock::now() + takeOverPatience;
    while (true) {
        const Answer answer = send(socket, request);
        if (answer != Answer::nobody) {
            return {answer, std::nullopt};
        }
        auto place = take(socket);
        if (place) {
            return {answer, std::move(*place)};
        }
        if (place.error() == Obstacle::noFolder || std::chrono::steady_clock::now() > deadline) {
            return {answer, std::nullopt};
        }
        std::this_thread::sleep_for(takeOverInterval);
    }
}

} // namespace vellory
