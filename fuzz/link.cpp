// SPDX-License-Identifier: Apache-2.0
// Any text as a link, and what a link names.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Link.h"
#include "Support/Text.h"
#include "Workspaces/TriggerEngine.h"

namespace {

using vellory::Link;

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void use(const Link& link) {
    std::string built = link.scheme() + ":";
    if (link.host()) {
        built += "//";
        check(link.path().empty() || link.path().front() == '/');
    }
    built += link.path();
    check(built.size() <= link.text().size());
    check(link.text().starts_with(link.scheme()) &&
          link.text().find(link.path()) != std::string::npos);
    for (const auto& item : link.queryItems()) {
        check(vellory::Text::isValidUtf8(item.name));
        check(link.queryValues(item.name).size() <= link.queryItems().size());
    }
    check(link.pathName().has_value() || link.path().find('%') != std::string::npos);
    link.lastPathComponent();

    vellory::Workspace named;
    named.name = link.pathName().value_or("");
    check(vellory::TriggerEngine::workspaceFor(link, {named}).has_value() ==
          (link.scheme() == "vellory" && link.host() == "workspace"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto link = Link::parse(text);
    if (link) {
        check(link->text() == text);
        use(*link);
        const auto typed = Link::parseTyped(text);
        check(typed && *typed == *link); // what is a link already needs no repair
    } else if (const auto typed = Link::parseTyped(text)) {
        use(*typed);
    }
    if (size <= 1000 && vellory::Text::isValidUtf8(text) && text.find('\0') == text.npos) {
        check(Link::decoded(Link::encoded(text)) == text);
        const auto command = Link::parse(Link::command("workspace", text));
        check(command && command->host() == "workspace");
    }
    return 0;
}
