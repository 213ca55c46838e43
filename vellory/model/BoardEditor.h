// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "Board/Board.h"
#include "Board/BoardStore.h"
#include "Board/SavedLayouts.h"
#include "Usage/UsageStore.h"
#include "model/AppLibrary.h"
#include "model/BoardDocument.h"
#include "model/IconLibrary.h"
#include "model/Notices.h"
#include "model/Ports.h"
#include "model/ShownGrid.h"

namespace vellory {

/// What users do to their board. Each edit is one operation on it and one save, whose reason names
/// the step in the history and is what the notice says. An edit that changes nothing leaves no
/// step; so do identifiers that are not on the board.
///
/// Places are indexes into what the grid shows as it is before the edit; a place past the end means
/// the end.
class BoardEditor : public QObject {
    Q_OBJECT

  public:
    /// What it works on, and whom it asks.
    struct Parts {
        BoardDocument& document;
        const AppLibrary& library;
        const ShownGrid& grid;
        const UsageStore& usage;
        Notices& notices;
        Ports ports;
        Environment environment;
    };

    explicit BoardEditor(Parts parts, QObject* parent = nullptr);

    /// All installed apps in folders by category.
    Board autoFolderBoard() const;

    void moveTile(const std::string& tileID, int place);
    void moveApp(const BundleID& id, int place);
    void moveOutOfFolder(const BundleID& id);
    void moveInFolder(const Uuid& folder, const BundleID& id, int place);
    void moveToEnd(const std::string& tileID);
    std::optional<Uuid> drop(const BundleID& id, const std::string& targetTileID,
                             const std::string& newFolderTitle);
    std::optional<Uuid> makeFolder(const std::vector<BundleID>& ids, const std::string& title);
    void renameFolder(const Uuid& folder, const std::string& title);
    void setFolderColor(const Uuid& folder, const std::optional<std::string>& color);
    void setFolderEmoji(const Uuid& folder, const std::optional<std::string>& emoji);
    void dissolveFolder(const Uuid& folder);

    void hide(const std::vector<BundleID>& ids);
    void unhide(const BundleID& id);
    void rename(const BundleID& id, const std::string& name);
    void chooseIcon(const BundleID& id);
    void resetIcon(const BundleID& id);
    void chooseCover(const Uuid& folder);
    void resetCover(const Uuid& folder);

    void autoFolders();
    void sortAlphabetically();
    void layOutAlphabetically();
    void sortByUse();
    void restore(const BoardStore::Snapshot& snapshot);

    /// Keeps a copy of the board under a name, in place of one that had it.
    void saveLayout(const std::string& name);
    /// Puts a kept board in the place of this one, brought in step with the apps there are now.
    void loadSavedLayout(const std::string& name);
    std::vector<std::string> savedLayouts() const;

  Q_SIGNALS:
    /// A picture on the board is another one now, under the same name.
    void pictureReplaced();

  private:
    using Added = std::expected<std::filesystem::path, std::error_code>;

    /// Applies `change` to a copy of the board and commits it with the reason as the notice.
    void edit(const std::string& reason, const char* symbol,
              const std::function<void(Board&)>& change);
    void editFolder(const Uuid& folder, const std::string& reason, const char* symbol,
                    const std::function<void(Folder&)>& change);
    void commit(Board next, const std::string& reason, const Notice& notice);
    /// Commits a change to a picture that was added just now.
    void usePicture(const std::string& reason, const std::function<void(Board&)>& change);
    /// Deletes the pictures that neither this board nor one that can be gone back to shows.
    void forgetUnusedPictures() const;
    /// The text of the path of a picture that was added, or nothing after a notice.
    std::optional<std::string> pathOf(const Added& added);

    Parts parts_;
    IconLibrary icons_;
    SavedLayouts layouts_;
};

} // namespace vellory
