// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "platform/HttpClient.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory::BrowserTabs {

/// The addresses of the pages in the windows of those running browsers of the Chromium family that
/// offer their developer tools on a port of this machine, browser by browser. A browser says which
/// port in the file DevToolsActivePort of its profile; one that stayed behind is no error. Any
/// thread; may wait for three seconds.
std::vector<std::string> open(const SessionEnvironment& environment, const HttpClient& http);

} // namespace vellory::BrowserTabs
