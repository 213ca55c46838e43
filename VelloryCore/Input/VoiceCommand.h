// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vellory {

/// What a spoken sentence asks for.
struct VoiceCommand {
    /// Open the app with this name.
    struct Open {
        std::string name;
        friend bool operator==(const Open&, const Open&) = default;
    };
    /// Open the saved workspace with this name.
    struct Workspace {
        std::string name;
        friend bool operator==(const Workspace&, const Workspace&) = default;
    };
    /// Show the grid searching for this text.
    struct Search {
        std::string query;
        friend bool operator==(const Search&, const Search&) = default;
    };
    struct ShowGrid {
        friend bool operator==(const ShowGrid&, const ShowGrid&) = default;
    };
    struct CloseWorkspace {
        friend bool operator==(const CloseWorkspace&, const CloseWorkspace&) = default;
    };

    std::variant<Open, Workspace, Search, ShowGrid, CloseWorkspace> content;

    /// The command that a recogniser's transcript spells, in any letter case and punctuation;
    /// nothing when it holds no more than the wake word. Names come back in lower case.
    ///
    /// A phrase at the start matches whole words only: "finder" opens Finder, and does not search
    /// for "er". What fits no phrase is taken as the name of an app.
    static std::optional<VoiceCommand> parse(std::string_view transcript);

    /// Everything the grammar knows, in lower case and in the order in which it is tried; a speech
    /// recogniser that wants to know what to listen for builds its grammar from this.
    struct Phrases {
        std::span<const std::string_view> wakeWords; ///< dropped from the start, also after "hey"
        std::span<const std::string_view> showGrid;  ///< the whole text
        std::span<const std::string_view> closeWorkspace; ///< the whole text
        std::span<const std::string_view> search;         ///< before a query
        std::span<const std::string_view> open;     ///< before the name of an app or workspace
        std::span<const std::string_view> articles; ///< dropped after `open`
    };
    static const Phrases& phrases();

    friend bool operator==(const VoiceCommand&, const VoiceCommand&) = default;
};

} // namespace vellory
