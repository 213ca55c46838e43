// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskApps.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "Ask/AskFallback.h"
#include "Search/AppKeywords.h"

namespace vellory {

namespace {

/// What an app whose name says what it is for is worth more than one that only knows the word.
constexpr int namedAfterIt = 2;

/// Words that match far too many apps to say what one is for.
constexpr std::array<std::string_view, 12> emptyWords{"document", "documents", "doc",    "file",
                                                      "files",    "image",     "images", "tool",
                                                      "tools",    "app",       "apps",   "utility"};

/// A purpose as it is compared with the apps.
struct Purpose {
    explicit Purpose(std::string_view text) {
        std::string joined;
        for (const std::string& token : AppKeywords::tokens(text)) {
            if (std::ranges::find(emptyWords, token) == emptyWords.end()) {
                joined.append(joined.empty() ? "" : " ").append(token);
                words.insert(AppKeywords::stem(token));
            }
        }
        for (std::string& stem : AppKeywords::queryStems(joined)) {
            ++wanted[std::move(stem)];
            ++count;
        }
    }

    /// How well an app with these keywords does: the same as `AppKeywords::score`. Whichever list
    /// is shorter is looked up in the other, since a request may be a page long.
    int score(const std::set<std::string>& keywords) const {
        const int hits =
            wanted.size() < keywords.size() ? hitsByWord(keywords) : hitsByKeyword(keywords);
        return hits == 0 ? 0 : AppKeywords::scoreOf(hits, count);
    }

    int hitsByWord(const std::set<std::string>& keywords) const {
        int hits = 0;
        for (const auto& [stem, times] : wanted) {
            // A stem is the beginning of its words, which in a sorted set stand together.
            for (auto word = keywords.lower_bound(stem);
                 word != keywords.end() && word->starts_with(stem); ++word) {
                if (AppKeywords::stem(*word) == stem) {
                    hits += times;
                    break;
                }
            }
        }
        return hits;
    }

    int hitsByKeyword(const std::set<std::string>& keywords) const {
        int hits = 0;
        std::set<std::string_view> counted; // "photo" and "photos" are one stem
        for (const std::string& keyword : keywords) {
            const auto found = wanted.find(AppKeywords::stem(keyword));
            if (found != wanted.end() && counted.insert(found->first).second) {
                hits += found->second;
            }
        }
        return hits;
    }

    /// The stems of all its words.
    std::set<std::string> words;
    /// How often each stem is asked for, without the words that say nothing in a query.
    std::map<std::string, int> wanted;
    std::size_t count = 0;
};

bool hasAny(const std::vector<std::string>& stems, const std::set<std::string>& of) {
    return std::ranges::any_of(stems, [&](const std::string& stem) { return of.contains(stem); });
}

} // namespace

AskApps::AskApps(std::vector<AskApp> apps, Text::Collator collator)
    : apps_(std::move(apps)), collator_(std::move(collator)) {
    prepared_.reserve(apps_.size());
    for (const AskApp& app : apps_) {
        Prepared& prepared = prepared_.emplace_back();
        prepared.nameStems = AskFallback::words(app.name);
        prepared.isUninstaller = Text::lowercased(app.name).starts_with("uninstall");
    }
}

std::vector<AskApps::Candidate> AskApps::candidates(std::string_view need,
                                                    const std::set<BundleID>& except) const {
    const Purpose purpose(need);
    std::vector<Candidate> found;
    for (std::size_t i = 0; purpose.count > 0 && i < apps_.size(); ++i) {
        const Prepared& prepared = prepared_[i];
        int score = prepared.isUninstaller ? 0 : purpose.score(apps_[i].keywords);
        if (score > 0 && !except.contains(apps_[i].id)) {
            score += hasAny(prepared.nameStems, purpose.words) ? namedAfterIt : 0;
            found.push_back({i, score});
        }
    }
    return found;
}

bool AskApps::isBetter(const Candidate& a, const Candidate& b) const {
    if (a.score != b.score) {
        return a.score > b.score;
    }
    const AskApp& first = apps_[a.index];
    const AskApp& second = apps_[b.index];
    if (first.uses != second.uses) {
        return first.uses > second.uses;
    }
    return collator_.compare(first.name, second.name) < 0;
}

std::vector<const AskApp*> AskApps::rank(std::string_view need,
                                         const std::set<BundleID>& except) const& {
    auto found = candidates(need, except);
    std::ranges::stable_sort(found, [&](const auto& a, const auto& b) { return isBetter(a, b); });
    std::vector<const AskApp*> ranked;
    ranked.reserve(found.size());
    for (const Candidate& candidate : found) {
        ranked.push_back(&apps_[candidate.index]);
    }
    return ranked;
}

const AskApp* AskApps::best(std::string_view need, const std::set<BundleID>& except) const& {
    const auto found = candidates(need, except);
    const auto best = std::ranges::min_element(
        found, [&](const auto& a, const auto& b) { return isBetter(a, b); });
    return best != found.end() ? &apps_[best->index] : nullptr;
}

std::vector<const AskApp*> AskApps::named(const std::set<std::string>& stems) const& {
    std::vector<const AskApp*> found;
    for (std::size_t i = 0; !stems.empty() && i < apps_.size(); ++i) {
        if (!prepared_[i].isUninstaller && hasAny(prepared_[i].nameStems, stems)) {
            found.push_back(&apps_[i]);
        }
    }
    return found;
}

} // namespace vellory
