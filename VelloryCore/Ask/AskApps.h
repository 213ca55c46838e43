// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Ask/AskPlan.h"
#include "Support/Text.h"

namespace vellory {

/// The installed apps made ready for planning: their names are reduced to stems once, and not for
/// every need of every request.
class AskApps {
  public:
    /// `collator` orders apps that fit equally well and are used equally often.
    AskApps(std::vector<AskApp> apps, Text::Collator collator);

    /// In the order given.
    const std::vector<AskApp>& all() const { return apps_; }

    /// The apps that fit one purpose, such as "notes" or "video calls", best first: by how many of
    /// its words they know, an app that is named so before one that merely knows it; then the most
    /// used; then by name. Uninstallers never fit anything, nor does any app fit a purpose of words
    /// that say nothing ("tools").
    /// Pointers into `all()`.
    std::vector<const AskApp*> rank(std::string_view need,
                                    const std::set<BundleID>& except = {}) const&;
    std::vector<const AskApp*> rank(std::string_view need,
                                    const std::set<BundleID>& except = {}) const&& = delete;

    /// The first of `rank`; null when no app fits.
    const AskApp* best(std::string_view need, const std::set<BundleID>& except) const&;
    const AskApp* best(std::string_view need, const std::set<BundleID>& except) const&& = delete;

    /// The apps, in the order given, whose name has a word with one of these stems; no uninstaller.
    std::vector<const AskApp*> named(const std::set<std::string>& stems) const&;
    std::vector<const AskApp*> named(const std::set<std::string>& stems) const&& = delete;

  private:
    struct Prepared {
        std::vector<std::string> nameStems;
        bool isUninstaller = false;
    };
    struct Candidate {
        std::size_t index = 0;
        int score = 0;
    };

    std::vector<Candidate> candidates(std::string_view need,
                                      const std::set<BundleID>& except) const;
    bool isBetter(const Candidate& a, const Candidate& b) const;

    std::vector<AskApp> apps_;
    std::vector<Prepared> prepared_;
    Text::Collator collator_;
};

} // namespace vellory
