// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace vellory {

/// One question to a server.
struct HttpRequest {
    std::string url; ///< http or https
    /// For the whole answer, however slowly it drips in.
    std::chrono::milliseconds patience{10'000};
    /// A longer answer is none.
    std::size_t maxBytes = 1024UZ * 1024;
    /// Never through a proxy, whatever the user's settings say: what is asked is this machine.
    bool direct = false;
};

/// Asks servers. Any thread but the main one: it waits for the answer.
class HttpClient {
  public:
    virtual ~HttpClient() = default;

    /// The body of an answer with the status 200, whole; nothing when there is none. Redirections
    /// are not followed, and no cookies are kept.
    virtual std::optional<std::string> get(const HttpRequest& request) const = 0;
};

} // namespace vellory
