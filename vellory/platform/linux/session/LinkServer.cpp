// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/LinkServer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <sys/socket.h>

#include "Support/Link.h"

namespace vellory {

namespace {

constexpr std::string_view tokenLine = "token ";

} // namespace

LinkServer::LinkServer(InstanceSocket place, EventLoop& loop, Scheduler& scheduler,
                       LinkReceiver receiver)
    : place_(std::move(place)), loop_(loop), scheduler_(scheduler), receiver_(std::move(receiver)) {
    watch();
}

void LinkServer::watch() {
    watch_ = loop_.watchReadable(place_.listener(), [this] { accept(); });
}

/// One at a time: the loop calls again while there are more, and turns to its other work between.
void LinkServer::accept() {
    if (!makeRoom()) {
        watch_.reset();
        return;
    }
    Descriptor descriptor(
        ::accept4(place_.listener(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!descriptor.isOpen()) {
        if (errno == EMFILE || errno == ENFILE) {
            // No descriptors are left in the whole program: it would be asked again at once.
            watch_.reset();
            connections_[++lastNumber_].patience =
                scheduler_.after(patienceSeconds, [this, number = lastNumber_] { drop(number); });
        }
        return;
    }
    if (!InstanceSocket::isSameUser(descriptor.get())) {
        return;
    }
    const Number number = ++lastNumber_;
    Connection& connection = connections_[number];
    connection.descriptor = std::move(descriptor);
    connection.patience = scheduler_.after(patienceSeconds, [this, number] { drop(number); });
    connection.watch =
        loop_.watchReadable(connection.descriptor.get(), [this, number] { read(number); });
    read(number);
}

/// Whether there is room for one more, after letting the oldest go that has nothing to say.
bool LinkServer::makeRoom() {
    if (connections_.size() < mostConnections) {
        return true;
    }
    const auto idle =
        std::ranges::find_if(connections_, [](const auto& entry) { return !entry.second.isWhole; });
    if (idle == connections_.end()) {
        return false;
    }
    connections_.erase(idle);
    return true;
}

void LinkServer::read(Number number) {
    const auto found = connections_.find(number);
    if (found == connections_.end()) {
        return;
    }
    Connection& connection = found->second;
    std::array<char, 16'384> bytes{};
    const ssize_t got = ::recv(connection.descriptor.get(), bytes.data(), bytes.size(), 0);
    if (got < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (got <= 0) {
        drop(number);
        return;
    }
    connection.text.append(bytes.data(), static_cast<std::size_t>(got));
    takeLines(number);
}

void LinkServer::takeLines(Number number) {
    for (auto found = connections_.find(number);
         found != connections_.end() && !found->second.isWhole; found = connections_.find(number)) {
        std::string& text = found->second.text;
        const auto end = text.find('\n');
        if (end != std::string::npos) {
            const std::string line = text.substr(0, end);
            text.erase(0, end + 1);
            take(number, line);
        } else {
            if (text.size() > Link::maxLength) {
                answer(number, "refused\n");
            }
            return;
        }
    }
}

/// Takes a whole line of what a connection says.
void LinkServer::take(Number number, const std::string& line) {
    Connection& connection = connections_.at(number);
    if (!isBearableLink(line)) {
        answer(number, "refused\n");
        return;
    }
    if (line.starts_with(tokenLine)) {
        connection.request.activationToken = line.substr(tokenLine.size());
        return;
    }
    connection.request.link = line;
    connection.isWhole = true;
    // From here on it is the program that may take its time.
    connection.patience.reset();
    connection.watch.reset();
    receiver_(std::move(connection.request),
              [this, number, alive = std::weak_ptr(alive_)](bool obeyed) {
                  if (!alive.expired()) {
                      answer(number, obeyed ? "ok\n" : "refused\n");
                  }
              });
}

/// Who has gone meanwhile gets no answer; a short one fits into any buffer, so none is waited for.
void LinkServer::answer(Number number, std::string_view word) {
    if (const auto found = connections_.find(number); found != connections_.end()) {
        ::send(found->second.descriptor.get(), word.data(), word.size(),
               MSG_NOSIGNAL | MSG_DONTWAIT);
        drop(number);
    }
}

void LinkServer::drop(Number number) {
    connections_.erase(number);
    if (watch_ == nullptr) {
        watch();
    }
}

} // namespace vellory
