// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QObject>

#include "Apps/InstalledApp.h"
#include "Board/Board.h"
#include "Support/Text.h"
#include "model/AppRescanner.h"
#include "model/BoardDocument.h"
#include "model/Ports.h"
#include "model/Prefs.h"
#include "model/PurposeSearch.h"
#include "platform/AppCatalogue.h"

namespace vellory {

/// The installed apps as the last scan found them, with the names they go by and the words they are
/// found by. It watches the folders it looked into, and says when a new scan is due.
class AppLibrary : public QObject {
    Q_OBJECT

  public:
    /// `prefs` is asked for the user's own folders of apps, `document` for the names the user gave.
    AppLibrary(const Ports& ports, const Prefs& prefs, const BoardDocument& document,
               const std::string& locale, QObject* parent = nullptr);

    /// Looks for apps, and watches where it looked from then on. Whether there are others than
    /// before, or the same with other names or places.
    bool scan();
    /// Makes the words by which each app is found. Part of every scan.
    void buildKeywords();

    const std::map<BundleID, InstalledApp>& apps() const { return apps_; }
    /// Nothing when no such app is installed.
    const InstalledApp* app(const BundleID& id) const;
    /// In the order in which they were found: by their own names.
    const std::vector<BundleID>& installedOrder() const { return order_; }
    /// The apps themselves, in that order.
    std::vector<InstalledApp> installedApps() const;
    /// Any app, be it among those scanned or not; nothing when the platform knows none.
    std::optional<InstalledApp> locate(const BundleID& id) const;
    /// What else an app offers beside being opened.
    std::vector<AppAction> actions(const BundleID& id) const;

    /// The name the user gave the app, else its own, else the identifier.
    std::string name(const BundleID& id) const;
    /// As `name`, but also right for apps that were not scanned.
    std::string displayName(const BundleID& id) const;
    /// The order of names in the user's language.
    const Text::Collator& collator() const { return collator_; }

    /// The words by which each app is found.
    const PurposeSearch::Table& keywords() const { return keywords_; }
    /// The apps that do what `query` says, best first and then by name, without those in `except`;
    /// none for fewer than three characters.
    std::vector<BundleID> purposeSearch(const std::string& query,
                                        const std::set<BundleID>& except) const;

    /// Drops from a board what is gone and appends what is new, which is returned. A scan that
    /// found nothing at all says that nothing could be read, not that every app is gone: then the
    /// board stays as it is.
    std::vector<BundleID> bringInStep(Board& board) const;

  Q_SIGNALS:
    /// A scan found other apps, or another order.
    void changed();
    /// Something changed where apps live, and has come to rest.
    void scanDue();

  private:
    /// Brings `purposes_` into the order of the names that the user sees.
    void orderByName();

    AppCatalogue& catalogue_;
    const Prefs& prefs_;
    const BoardDocument& document_;
    Text::Collator collator_;
    AppRescanner rescanner_;
    std::map<BundleID, InstalledApp> apps_;
    std::vector<BundleID> order_;
    PurposeSearch::Table keywords_;
    PurposeSearch purposes_;
    /// The given names by which `purposes_` is in order.
    std::map<BundleID, std::string> orderedRenames_;
};

} // namespace vellory
