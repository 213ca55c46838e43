// SPDX-License-Identifier: Apache-2.0
#include "Input/VoiceCommand.h"

#include <algorithm>
#include <array>

#include "Support/Text.h"

namespace vellory {

namespace {

using namespace std::string_view_literals;

/// The product's name, the name in two words and hyphenated, and what recognisers make of it.
constexpr std::array wakeWords{"vellory"sv, "vel lory"sv, "vel-lory"sv, "velory"sv,
                               "vellori"sv, "valory"sv,   "vellary"sv};
constexpr std::array showGrid{
    "show the grid"sv, "show grid"sv,     "open the grid"sv, "show apps"sv,
    "show my apps"sv,  "show all apps"sv, "open vellory"sv,  "show vellory"sv,
};
constexpr std::array closeWorkspace{
    "close the workspace"sv, "close workspace"sv,      "close my workspace"sv,
    "end workspace"sv,       "close this workspace"sv,
};
constexpr std::array search{"search for"sv, "search"sv, "find"sv, "look for"sv};
constexpr std::array open{"switch to"sv, "go to"sv, "open"sv, "launch"sv, "start"sv, "run"sv};
constexpr std::array articles{"my"sv, "the"sv};

constexpr std::string_view workspaceWord = "workspace";

/// `transcript` in lower case, without punctuation, its words separated by single spaces.
std::string words(std::string_view transcript) {
    constexpr std::string_view punctuation = ".,!?;:\"";
    std::string spoken = Text::lowercased(transcript);
    std::erase_if(spoken, [&](char c) { return punctuation.find(c) != std::string_view::npos; });
    std::string out;
    for (const char c : Text::trimmed(spoken)) {
        const bool space = c == ' ' || (c >= '\t' && c <= '\r');
        if (!space) {
            out.push_back(c);
        } else if (!out.empty() && out.back() != ' ') {
            out.push_back(' ');
        }
    }
    return out;
}

bool contains(std::span<const std::string_view> phrases, std::string_view text) {
    return std::ranges::find(phrases, text) != phrases.end();
}

/// What follows `phrase` at the start of `text`; nothing when `text` begins otherwise, also with a
/// longer word. What follows may be empty.
std::optional<std::string_view> after(std::string_view phrase, std::string_view text) {
    if (!text.starts_with(phrase)) {
        return std::nullopt;
    }
    text.remove_prefix(phrase.size());
    if (!text.empty() && text.front() != ' ') {
        return std::nullopt;
    }
    return Text::trimmed(text);
}

/// The same for the first of `phrases` that fits.
std::optional<std::string_view> afterAny(std::span<const std::string_view> phrases,
                                         std::string_view text) {
    for (const std::string_view phrase : phrases) {
        if (const auto rest = after(phrase, text)) {
            return rest;
        }
    }
    return std::nullopt;
}

std::string_view withoutWakeWord(std::string_view text) {
    return afterAny(wakeWords, after("hey", text).value_or(text)).value_or(text);
}

/// `text` without a phrase at its start, unless nothing else is left.
std::string_view dropping(std::span<const std::string_view> phrases, std::string_view text) {
    const auto rest = afterAny(phrases, text);
    return rest && !rest->empty() ? *rest : text;
}

/// The name in "writing workspace": the other words of a text that holds that word; empty when it
/// does not, or is nothing else.
std::string workspaceName(std::string_view text) {
    std::string name;
    bool mentioned = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::string_view word = text.substr(0, end);
        if (word == workspaceWord) {
            mentioned = true;
        } else {
            name.append(name.empty() ? "" : " ").append(word);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return mentioned ? name : std::string();
}

VoiceCommand openCommand(std::string_view name) {
    if (std::string workspace = workspaceName(name); !workspace.empty()) {
        return {VoiceCommand::Workspace{std::move(workspace)}};
    }
    constexpr std::string_view app = " app";
    if (name.ends_with(app)) {
        name = Text::trimmed(name.substr(0, name.size() - app.size()));
    }
    return {VoiceCommand::Open{std::string(name)}};
}

} // namespace

std::optional<VoiceCommand> VoiceCommand::parse(std::string_view transcript) {
    const std::string spoken = words(transcript);
    std::string_view text = withoutWakeWord(spoken);
    constexpr std::array please{"please"sv};
    text = dropping(please, text);
    if (text.empty()) {
        return std::nullopt;
    }
    if (contains(showGrid, text)) {
        return VoiceCommand{ShowGrid{}};
    }
    if (contains(closeWorkspace, text)) {
        return VoiceCommand{CloseWorkspace{}};
    }
    // Only the first prefix that fits is asked: "search for" alone is no search for "for".
    if (const auto query = afterAny(search, text); query && !query->empty()) {
        return VoiceCommand{Search{std::string(*query)}};
    }
    if (const auto name = afterAny(open, text); name && !name->empty()) {
        return openCommand(dropping(articles, *name));
    }
    return VoiceCommand{Open{std::string(text)}};
}

const VoiceCommand::Phrases& VoiceCommand::phrases() {
    static constexpr Phrases all{wakeWords, showGrid, closeWorkspace, search, open, articles};
    return all;
}

} // namespace vellory
