// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Support/PropertyList.h"

/// What an app is for, as words: from its name, its declared category and the documents it opens. A
/// typed phrase such as "edit photos" is matched against those words. `PurposeIndex` does it for
/// many apps on every keystroke.
namespace vellory::AppKeywords {

using Keywords = std::set<std::string>;

/// Words of a query that say nothing about an app.
inline constexpr std::array<std::string_view, 27> stopWords{
    "a",    "an",          "the",  "to",     "my",    "for",  "and",       "or",    "app",
    "apps", "application", "open", "launch", "start", "run",  "with",      "in",    "on",
    "of",   "some",        "that", "can",    "i",     "want", "something", "files", "file"};

/// The runs of letters and digits in `text`, in lower case, that have two characters or more.
std::vector<std::string> tokens(std::string_view text);

/// `word` without its English ending, if enough is left of it: "edit" for "editing".
std::string stem(std::string_view word);

/// The words of the app called `name`. `info` is the information dictionary of its bundle, of which
/// the category (LSApplicationCategoryType) and the document types (CFBundleDocumentTypes) count;
/// what is missing or of another type adds nothing. `extraTexts` add their tokens.
Keywords keywords(std::string_view name, const PropertyList::Dictionary& info,
                  const std::vector<std::string>& extraTexts = {});

/// The stems of what `query` asks for, in order, without stop words.
std::vector<std::string> queryStems(std::string_view query);

/// How many words of `query` the app's keywords know; 0 unless all of one or two, and at least half
/// of three or more, are known.
int score(std::string_view query, const Keywords& keywords);

/// `hits` when they are enough for a query of `words` words, else 0.
int scoreOf(int hits, std::size_t words);

} // namespace vellory::AppKeywords
