// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/HttpClient.h"

namespace vellory {

/// Over Qt's network access; needs the application object. Each question has a connection of its
/// own.
class QtHttpClient final : public HttpClient {
  public:
    std::optional<std::string> get(const HttpRequest& request) const override;
};

} // namespace vellory
