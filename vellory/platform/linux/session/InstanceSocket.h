// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>

#include <sys/types.h>

#include "platform/LinkReceiver.h"
#include "platform/linux/session/Descriptor.h"

namespace vellory {

/// One running program for each user: where a second start meets the first, hands its link over and
/// ends. A local socket in a folder that only the user may enter; who is at the other end is
/// checked to be the same user all the same.
///
/// What is said there: a line "token <activation token>", which may be absent, and the line of the
/// link; the answer is "ok" once it was obeyed, or "refused".
class InstanceSocket {
  public:
    /// What became of a link.
    enum class Answer {
        obeyed,
        refused, ///< not UTF-8, with a NUL or a line break, or past the length that links may have
        silence, ///< a program listens but does not answer
        nobody   ///< no program listens
    };

    /// The socket in the session's folder for such.
    static std::filesystem::path in(const std::filesystem::path& runtimeFolder) {
        return runtimeFolder / "vellory" / "socket";
    }

    /// Hands a link to the program that listens and waits until it has obeyed.
    static Answer send(const std::filesystem::path& socket, const LinkRequest& request);

    /// Takes the place of the program that listens: from here on other starts find this one and
    /// wait for a `LinkServer` to hear them. What a killed program left behind is taken over.
    enum class Obstacle {
        taken,   ///< another program has the place
        noFolder ///< the folder cannot be made the user's own, or the path is too long
    };
    static std::expected<InstanceSocket, Obstacle> take(const std::filesystem::path& socket);

    /// `send`, or `take` where nobody listens: of any number of starts at the same time one gets
    /// the place, and the others hand over to it.
    struct Meeting;
    static Meeting meet(const std::filesystem::path& socket, const LinkRequest& request);

    /// Whether the process at the other end of a connection is the same user's.
    static bool isSameUser(int connection);

    /// Accepts without waiting.
    int listener() const { return listener_.get(); }

  private:
    InstanceSocket(Descriptor lock, Descriptor listener)
        : lock_(std::move(lock)), listener_(std::move(listener)) {}

    Descriptor lock_; ///< the place is whose this is; the system frees it when the program ends
    Descriptor listener_;
};

struct InstanceSocket::Meeting {
    Answer answer = Answer::nobody;
    std::optional<InstanceSocket> place; ///< absent with `nobody`: there is no place to be had
};

/// Whether a text may be handed over as a link.
bool isBearableLink(std::string_view text);

} // namespace vellory
