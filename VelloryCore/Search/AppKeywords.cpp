// SPDX-License-Identifier: Apache-2.0
#include "Search/AppKeywords.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <unordered_set>

#include "Support/Text.h"

namespace vellory::AppKeywords {

namespace {

struct Category {
    std::string_view name;
    std::array<std::string_view, 12> words; // unused places are empty
};

constexpr std::array categories{
    Category{"developer-tools",
             {"code", "coding", "program", "programming", "developer", "dev", "ide", "git",
              "terminal", "debug", "build", "script"}},
    Category{"graphics-design",
             {"design", "draw", "drawing", "graphics", "illustrate", "image", "images", "photo",
              "photos", "picture", "vector", "ui"}},
    Category{
        "photography",
        {"photo", "photos", "picture", "pictures", "image", "images", "camera", "raw", "edit"}},
    Category{"video", {"video", "videos", "movie", "movies", "film", "edit", "record", "clip"}},
    Category{"productivity",
             {"notes", "note", "todo", "tasks", "write", "writing", "docs", "documents", "plan",
              "calendar", "office"}},
    Category{"business",
             {"work", "office", "meeting", "meetings", "call", "team", "chat", "spreadsheet",
              "presentation"}},
    Category{"social-networking",
             {"chat", "message", "messages", "messaging", "call", "video call", "meeting", "talk",
              "friends", "social"}},
    Category{"music", {"music", "audio", "song", "songs", "listen", "sound", "podcast"}},
    Category{"entertainment", {"watch", "tv", "movies", "stream", "fun"}},
    Category{"utilities",
             {"utility", "utilities", "tool", "tools", "system", "disk", "clean", "monitor"}},
    Category{"finance", {"money", "bank", "budget", "finance", "invoice", "stocks"}},
    Category{"education", {"learn", "study", "school", "course"}},
    Category{"reference", {"dictionary", "lookup", "reference", "docs"}},
    Category{"weather", {"weather", "forecast"}},
    Category{"travel", {"travel", "trip", "flight"}},
    Category{"navigation", {"map", "maps", "directions"}},
    Category{"healthcare-fitness", {"health", "fitness", "workout"}},
    Category{"news", {"news", "read", "articles"}},
    Category{"books", {"books", "read", "reading", "ebook"}},
    Category{"games", {"game", "games", "play"}},
};

void addCategory(std::string_view category, Keywords& out) {
    constexpr std::string_view prefix = "public.app-category.";
    if (category.starts_with(prefix)) {
        category.remove_prefix(prefix.size());
    }
    if (category.ends_with("-games")) {
        category = "games";
    }
    const auto* row = std::ranges::find(categories, category, &Category::name);
    if (row == categories.end()) {
        return;
    }
    for (const std::string_view word : row->words) {
        if (!word.empty()) {
            out.emplace(word);
        }
    }
}

void addTokens(std::string_view text, Keywords& out) {
    for (std::string& token : tokens(text)) {
        out.insert(std::move(token));
    }
}

const std::string* stringAt(const PropertyList::Value& from, std::string_view key) {
    const auto* value = from.find(key);
    return value != nullptr ? value->string() : nullptr;
}

std::span<const PropertyList::Value> elements(const PropertyList::Value* value) {
    const auto* array = value != nullptr ? value->array() : nullptr;
    return array != nullptr ? std::span(*array) : std::span<const PropertyList::Value>();
}

void addDocumentType(const PropertyList::Value& type, Keywords& out) {
    for (const auto& extension : elements(type.find("CFBundleTypeExtensions"))) {
        const auto* text = extension.string();
        if (text != nullptr && *text != "*") {
            out.insert(Text::lowercased(*text));
        }
    }
    if (const auto* name = stringAt(type, "CFBundleTypeName")) {
        addTokens(*name, out);
    }
}

constexpr bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

constexpr bool isAsciiLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isStopWord(std::string_view word) {
    return std::ranges::find(stopWords, word) != stopWords.end();
}

} // namespace

std::vector<std::string> tokens(std::string_view text) {
    const std::string lower = Text::lowercased(text);
    std::vector<std::string> out;
    std::string piece;
    std::size_t characters = 0;
    const auto finish = [&] {
        if (characters >= 2) {
            out.push_back(piece);
        }
        piece.clear();
        characters = 0;
    };
    const auto take = [&](std::string_view character, bool belongs) {
        if (belongs) {
            piece.append(character);
            ++characters;
        } else {
            finish();
        }
    };
    if (std::ranges::all_of(lower, isAscii)) {
        for (const char& c : lower) {
            take({&c, 1}, isAsciiLetterOrDigit(c));
        }
    } else {
        for (const std::string_view character : Text::graphemes(lower)) {
            take(character, Text::isLetter(character) || Text::isNumber(character));
        }
    }
    finish();
    return out;
}

std::string stem(std::string_view word) {
    constexpr std::array<std::string_view, 6> endings{"ing", "ers", "es", "er", "s", "ed"};
    for (const std::string_view ending : endings) {
        if (word.ends_with(ending) && Text::length(word) > ending.size() + 2) {
            return std::string(word.substr(0, word.size() - ending.size()));
        }
    }
    return std::string(word);
}

Keywords keywords(std::string_view name, const PropertyList::Dictionary& info,
                  const std::vector<std::string>& extraTexts) {
    Keywords out;
    addTokens(name, out);
    const auto category = info.find("LSApplicationCategoryType");
    if (category != info.end() && category->second.string() != nullptr) {
        addCategory(*category->second.string(), out);
    }
    const auto types = info.find("CFBundleDocumentTypes");
    for (const auto& type : elements(types != info.end() ? &types->second : nullptr)) {
        addDocumentType(type, out);
    }
    for (const std::string& text : extraTexts) {
        addTokens(text, out);
    }
    return out;
}

std::vector<std::string> queryStems(std::string_view query) {
    std::vector<std::string> stems;
    for (const std::string& word : tokens(query)) {
        if (!isStopWord(word)) {
            stems.push_back(stem(word));
        }
    }
    return stems;
}

int scoreOf(int hits, std::size_t words) {
    const std::size_t needed = words < 3 ? words : (words + 1) / 2;
    return static_cast<std::size_t>(hits) >= needed ? hits : 0;
}

int score(std::string_view query, const Keywords& keywords) {
    const std::vector<std::string> wanted = queryStems(query);
    if (wanted.empty()) {
        return 0;
    }
    std::unordered_set<std::string> known;
    for (const std::string& keyword : keywords) {
        known.insert(stem(keyword));
    }
    const auto hits =
        std::ranges::count_if(wanted, [&](const auto& word) { return known.contains(word); });
    return scoreOf(static_cast<int>(hits), wanted.size());
}

} // namespace vellory::AppKeywords
