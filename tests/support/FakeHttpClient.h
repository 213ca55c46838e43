// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <vector>

#include "platform/HttpClient.h"

namespace vellory::test {

/// Answers from a table, and notes what it was asked.
class FakeHttpClient final : public HttpClient {
  public:
    std::optional<std::string> get(const HttpRequest& request) const override {
        asked.push_back(request);
        const auto found = answers.find(request.url);
        return found == answers.end() ? std::nullopt : std::optional(found->second);
    }

    std::map<std::string, std::string> answers;
    mutable std::vector<HttpRequest> asked;
};

} // namespace vellory::test
