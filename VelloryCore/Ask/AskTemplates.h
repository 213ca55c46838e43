// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "Workspaces/WindowTiling.h"

/// The tasks that the keyword planner knows.
namespace vellory::AskTemplates {

struct Template {
    std::string_view name; ///< in English; shown as the translation of "AskTemplate.<name>"
    std::string_view symbol;
    /// Words that select it.
    std::span<const std::string_view> triggers;
    /// What its apps are for, most important first.
    std::span<const std::string_view> needs;
    Arrangement arrangement;
    bool hideOthers;
};

namespace words {
using Words = std::string_view[];
inline constexpr Words call{"call",    "meeting",   "meet",       "client", "zoom",
                            "standup", "interview", "conference", "sync"};
inline constexpr Words callNeeds{"meeting", "calendar", "notes"};
inline constexpr Words writing{"write", "writing", "essay", "blog",
                               "draft", "article", "novel", "journal"};
inline constexpr Words writingNeeds{"writing", "notes", "dictionary"};
inline constexpr Words coding{"code",    "coding",    "program", "programming",
                              "develop", "developer", "debug",   "dev"};
inline constexpr Words codingNeeds{"code", "terminal", "browser"};
inline constexpr Words design{"design", "designing",  "draw",  "drawing",
                              "sketch", "illustrate", "mockup"};
inline constexpr Words designNeeds{"design", "photo", "browser"};
inline constexpr Words inbox{"email", "mail", "inbox", "correspondence"};
inline constexpr Words inboxNeeds{"email", "calendar"};
inline constexpr Words research{"research", "study", "studying", "learn",
                                "reading",  "read",  "homework"};
inline constexpr Words researchNeeds{"browser", "notes", "pdf"};
inline constexpr Words photos{"photo", "photos", "editing", "retouch"};
inline constexpr Words photosNeeds{"photo", "image"};
inline constexpr Words video{"video", "film", "movie", "youtube"};
inline constexpr Words videoNeeds{"video", "music"};
inline constexpr Words music{"music", "relax", "chill", "listen", "podcast"};
inline constexpr Words musicNeeds{"music"};
inline constexpr Words planning{"plan",     "planning", "todo", "tasks",
                                "organise", "organize", "week"};
inline constexpr Words planningNeeds{"calendar", "todo", "notes"};
} // namespace words

/// In the order in which they are tried.
inline constexpr std::array<Template, 10> all{{
    {"Call", "video", words::call, words::callNeeds, Arrangement::split, true},
    {"Writing", "pencil.line", words::writing, words::writingNeeds, Arrangement::focus, true},
    {"Coding", "chevron.left.forwardslash.chevron.right", words::coding, words::codingNeeds,
     Arrangement::columns, false},
    {"Design", "paintbrush.pointed", words::design, words::designNeeds, Arrangement::split, true},
    {"Inbox", "tray", words::inbox, words::inboxNeeds, Arrangement::split, false},
    {"Research", "books.vertical", words::research, words::researchNeeds, Arrangement::split,
     false},
    {"Photos", "photo", words::photos, words::photosNeeds, Arrangement::focus, true},
    {"Video", "film", words::video, words::videoNeeds, Arrangement::focus, true},
    {"Music", "music.note", words::music, words::musicNeeds, Arrangement::keep, false},
    {"Planning", "checklist", words::planning, words::planningNeeds, Arrangement::columns, false},
}};

} // namespace vellory::AskTemplates
