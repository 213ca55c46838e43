// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include <QImage>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>

#include "Apps/InstalledApp.h"
#include "platform/AppIcons.h"

namespace vellory {

/// What an app's icon is made from. Set on the main thread, read by the loading threads.
class IconSources {
  public:
    struct Source {
        InstalledApp app;
        /// A picture the user chose instead, empty for none.
        std::string customIcon;
    };
    using Table = std::map<BundleID, Source, std::less<>>;

    void replace(Table table);
    std::optional<Source> find(const BundleID& id) const;

  private:
    mutable std::mutex mutex_;
    std::shared_ptr<const Table> table_ = std::make_shared<const Table>();
};

/// Serves `image://icons/app/<identifier>` and `image://icons/file/<path>` (both percent-encoded)
/// to the views, off the main thread. What cannot be read becomes a drawn stand-in: a rounded
/// square in a colour of its own with the first letter of the name.
class IconProvider : public QQuickAsyncImageProvider {
  public:
    IconProvider(const AppIcons& icons, std::shared_ptr<const IconSources> sources);
    ~IconProvider() override;

    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& size) override;

    static QString appSource(const BundleID& id, const std::string& customIcon);
    static QString fileSource(const std::string& path);

    /// The picture in a file, fitted into a square of `pixels`; null for one that is missing, is no
    /// picture or is far too large.
    static QImage readPicture(const QString& path, int pixels);
    static QImage standIn(const QString& name, const BundleID& id, int pixels);

  private:
    const AppIcons& icons_;
    std::shared_ptr<const IconSources> sources_;
    QThreadPool pool_;
};

} // namespace vellory
