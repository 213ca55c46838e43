// SPDX-License-Identifier: Apache-2.0
#include "Import/ImportTexts.h"

namespace vellory::ImportTexts {

std::string notice(const Layout& layout, std::string_view from) {
    return "Imported " + std::to_string(layout.appCount()) + " apps and " +
           std::to_string(layout.folderCount()) + " folders from " + std::string(from);
}

std::string reason(std::string_view from) {
    return "Imported from " + std::string(from);
}

Alert launchpadFailed(const LaunchpadImporter::ImportError& error) {
    using Kind = LaunchpadImporter::ImportError::Kind;
    constexpr const char* unreadable = "Couldn't read the Launchpad layout";
    switch (error.kind) {
    case Kind::notFound:
        return {"No Launchpad layout on this Mac",
                "macOS 26 removed Launchpad, and this Mac has no saved Launchpad layout left to "
                "import. vellory sorted your apps into folders by category instead; you can "
                "rearrange everything."};
    case Kind::unreadable:
        return {unreadable, "The database cannot be read: " + error.detail +
                                "\n\nYour grid was left as it is."};
    case Kind::noRoot:
        break;
    }
    return {unreadable, "The database holds no pages.\n\nYour grid was left as it is."};
}

Alert sourceFailed(RivalImport::Source source) {
    const std::string name(RivalImport::displayName(source));
    return {"Couldn't import from " + name,
            "vellory found " + name + "'s folder but no layout it could read. If " + name +
                " can export or back up its layout, choose that file with “Import a backup "
                "file…”."};
}

Alert chosenFileFailed() {
    return {"No layout found in that file",
            "vellory reads JSON and property list backups that list apps by path or bundle ID, "
            "and LaunchNext's Data.store."};
}

} // namespace vellory::ImportTexts
