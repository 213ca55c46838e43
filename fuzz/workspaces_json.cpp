// SPDX-License-Identifier: Apache-2.0
// Any text as a workspaces file: what is read can be used, and is written so that it reads the
// same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "Support/Json.h"
#include "Workspaces/TriggerEngine.h"
#include "Workspaces/WindowTiling.h"
#include "Workspaces/WorkspaceSession.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vellory;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto list = json::decode<std::vector<Workspace>>(text);
    if (!list) {
        return 0;
    }
    if (json::decode<std::vector<Workspace>>(json::encode(*list)) != *list) {
        std::abort();
    }
    TriggerEngine::scheduled(*list, Date{0}, Calendar("UTC"));
    TriggerEngine::displays(*list, {"Office Monitor 27"}, "tr");
    TriggerEngine::focus(*list, "Wörk");
    for (const Workspace& workspace : *list) {
        for (const auto& trigger : workspace.triggers) {
            if (trigger.title().empty()) {
                std::abort();
            }
        }
        const auto session = WorkspaceSession::begin(workspace, {"a", "b"}, {"a"}, {}, Date{0}, 25);
        if (session.hidden.size() + session.quit.size() > 2) {
            std::abort();
        }
        WindowTiling::placeRound(workspace.windows, [](const auto& slot) {
            const auto x = static_cast<std::int32_t>(slot.frame.x + slot.frame.width);
            return x % 2 == 0;
        });
    }
    return 0;
}
