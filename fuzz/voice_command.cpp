// SPDX-License-Identifier: Apache-2.0
// Whatever is said, a command's name is not empty, has no blanks at its ends and no punctuation.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <variant>

#include "Input/VoiceCommand.h"
#include "Support/Text.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void check(std::string_view name) {
    require(!name.empty());
    require(Text::trimmed(name) == name);
    require(name.find_first_of(".,!?;:\"") == std::string_view::npos);
    require(name.find("  ") == std::string_view::npos);
}

struct Check {
    void operator()(const VoiceCommand::Open& open) const { check(open.name); }
    void operator()(const VoiceCommand::Workspace& workspace) const { check(workspace.name); }
    void operator()(const VoiceCommand::Search& search) const { check(search.query); }
    void operator()(const VoiceCommand::ShowGrid&) const {}
    void operator()(const VoiceCommand::CloseWorkspace&) const {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view transcript(reinterpret_cast<const char*>(data), size);
    if (const auto command = VoiceCommand::parse(transcript)) {
        std::visit(Check{}, command->content);
        // The wake word adds nothing.
        const std::string woken = "vellory " + std::string(transcript);
        require(VoiceCommand::parse(woken).has_value());
    }
    return 0;
}
