// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Json.h"

namespace vellory {

/// What a language model is asked to generate for a request. Its texts are as loose as models are:
/// names of apps that are none, purposes, stray punctuation. `AskResolve::complete` makes a plan.
struct ProposedWorkspace {
    // Each with its default written out, so that designated initialisers may leave it out.
    std::string name{};
    std::string symbol{};
    std::vector<std::string> needs{};
    std::vector<std::string> apps{};
    std::vector<std::string> links{};
    std::string arrangement{};
    bool hideOtherApps = false;
    std::string existingWorkspace{};
    std::string gridLayout{};
    std::string reason{};

    /// Far above any honest proposal.
    static constexpr std::size_t textLimit = 16U * 1024U;

    /// The proposal in a model's answer: one JSON object with all the fields. An answer past
    /// `textLimit` is a syntax error.
    static std::expected<ProposedWorkspace, json::Error> parse(std::string_view answer);

    enum class Kind { text, texts, boolean, arrangement };

    /// One field as the model is told about it.
    struct Field {
        std::string_view name;
        Kind kind;
        std::string_view description;
    };

    static constexpr std::string_view description =
        "A workspace for what the user is about to do: apps to open, optional links, and how to "
        "arrange the windows";
    static constexpr std::array<Field, 10> fields{{
        {"name", Kind::text,
         "A short name for the workspace, one to three words, in the user's language, for example "
         "Client call"},
        {"symbol", Kind::text,
         "An SF Symbols name that fits the task, for example video, pencil.line, "
         "chevron.left.forwardslash.chevron.right, paintbrush, tray, books.vertical"},
        {"needs", Kind::texts,
         "What the task needs, as short English app purposes, most important first, for example "
         "video calls, notes, calendar, code editor, terminal, web browser, email, music"},
        {"apps", Kind::texts,
         "Specific app names the user mentioned or findApps returned; may be empty"},
        {"links", Kind::texts,
         "Web links to open, only when the user named a site or link; otherwise empty"},
        {"arrangement", Kind::arrangement,
         "How to place the windows: keep (leave them), focus (first app large in the middle), "
         "split (first two side by side), columns, or grid"},
        {"hideOtherApps", Kind::boolean,
         "True when the task needs focus, so other apps are hidden"},
        {"existingWorkspace", Kind::text,
         "The exact name of one of the user's saved workspaces if it clearly fits the request; "
         "otherwise an empty string"},
        {"gridLayout", Kind::text,
         "The exact name of a saved grid layout if the user asked for one; otherwise an empty "
         "string"},
        {"reason", Kind::text, "One short sentence, in the user's language, on why these apps"},
    }};

    /// The record as a JSON schema, for models that generate by one.
    static json::Value schema();

    friend bool operator==(const ProposedWorkspace&, const ProposedWorkspace&) = default;
};

void fromJson(const json::Value& object, ProposedWorkspace& proposal);

} // namespace vellory
