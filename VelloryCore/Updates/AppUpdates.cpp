// SPDX-License-Identifier: Apache-2.0
#include "Updates/AppUpdates.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Support/Json.h"
#include "Support/Link.h"
#include "Support/Text.h"
#include "Support/Xml.h"
#include "Updates/Versions.h"

namespace vellory::AppUpdates {

namespace {

/// Feeds carry release notes: the largest in use are a few megabytes.
constexpr Xml::Limits feedLimits{.bytes = 4U * 1024U * 1024U};

/// Parsed JSON takes up to about forty times its text; honest answers are kilobytes.
constexpr std::size_t jsonLimit = 2U * 1024U * 1024U;

/// Gathers the newest version of a feed's items.
class AppcastReader final : public Xml::Handler {
  public:
    void startElement(std::string_view name, std::span<const Xml::Attribute> attributes) override {
        open_ = nullptr;
        text_.clear();
        if (name == "item") {
            item_.emplace();
        } else if (!item_) {
            return; // versions outside of an item announce nothing
        } else if (name == "enclosure") {
            const auto version =
                std::ranges::find(attributes, "sparkle:shortVersionString", &Xml::Attribute::name);
            if (version != attributes.end()) {
                set(item_->shortVersion, version->value);
            }
        } else if (name == "sparkle:shortVersionString") {
            open_ = &item_->shortVersion;
        } else if (name == "sparkle:version") {
            open_ = &item_->version;
        }
    }

    void endElement(std::string_view name) override {
        if (open_ != nullptr) {
            set(*open_, text_);
            open_ = nullptr;
        }
        if (name == "item" && item_) {
            take(item_->shortVersion.empty() ? item_->version : item_->shortVersion);
            item_.reset();
        }
    }

    void text(std::string_view piece) override {
        if (open_ != nullptr) {
            text_.append(piece);
        }
    }

    std::optional<std::string> newest() && { return std::move(newest_); }

  private:
    struct Item {
        std::string shortVersion;
        std::string version;
    };

    /// An element or attribute that is there but empty states no version.
    static void set(std::string& version, std::string_view stated) {
        if (stated = Text::trimmed(stated); !stated.empty()) {
            version = stated;
        }
    }

    void take(std::string& version) {
        if (!version.empty() && (!newest_ || Versions::isNewer(version, *newest_))) {
            newest_ = std::move(version);
        }
    }

    std::optional<Item> item_;
    /// Where the text of the element that is open belongs; null when nobody wants it.
    std::string* open_ = nullptr;
    std::string text_;
    std::optional<std::string> newest_;
};

std::optional<json::Value> parseJson(std::string_view text) {
    if (text.size() > jsonLimit) {
        return std::nullopt;
    }
    auto document = json::parse(text);
    if (!document) {
        return std::nullopt;
    }
    return std::move(*document);
}

/// The objects in the array that `key` holds; none for a document of another shape.
std::vector<const json::Value*> objectsIn(const json::Value& document, const char* key) {
    std::vector<const json::Value*> objects;
    if (document.is_object()) {
        const auto list = document.find(key);
        if (list != document.end() && list->is_array()) {
            for (const json::Value& entry : *list) {
                if (entry.is_object()) {
                    objects.push_back(&entry);
                }
            }
        }
    }
    return objects;
}

/// The text that `key` holds; empty when it is missing or no text.
std::string textIn(const json::Value& object, const char* key) {
    const auto member = object.find(key);
    return member != object.end() && member->is_string() ? member->get<std::string>()
                                                         : std::string();
}

/// One text, or a list of texts side by side.
std::string textsIn(const json::Value& object, const char* key) {
    const auto member = object.find(key);
    if (member == object.end() || !member->is_array()) {
        return textIn(object, key);
    }
    std::string joined;
    for (const json::Value& text : *member) {
        if (text.is_string()) {
            joined.append(joined.empty() ? "" : ", ").append(text.get_ref<const std::string&>());
        }
    }
    return joined;
}

constexpr bool isAsciiLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isHttps(std::string_view url) {
    const auto link = Link::parse(url);
    return link && Text::lowercased(link->scheme()) == "https" &&
           !link->host().value_or("").empty();
}

} // namespace

std::optional<std::string> appcastLatest(std::string_view feed) {
    AppcastReader reader;
    if (!Xml::parse(feed, reader, feedLimits)) {
        return std::nullopt;
    }
    return std::move(reader).newest();
}

std::vector<Outdated> brewOutdated(std::string_view output) {
    std::vector<Outdated> outdated;
    if (const auto document = parseJson(output)) {
        for (const json::Value* cask : objectsIn(*document, "casks")) {
            Outdated entry{textIn(*cask, "name"), textsIn(*cask, "installed_versions"),
                           textIn(*cask, "current_version")};
            if (!entry.name.empty() && !entry.installed.empty() && !entry.current.empty()) {
                outdated.push_back(std::move(entry));
            }
        }
    }
    return outdated;
}

std::optional<std::string> appStoreVersion(std::string_view reply, const BundleID& bundleID) {
    std::string version;
    if (const auto document = parseJson(reply)) {
        for (const json::Value* entry : objectsIn(*document, "results")) {
            const bool ofThisApp =
                !entry->contains("bundleId") || textIn(*entry, "bundleId") == bundleID;
            const bool forTheMac = textIn(*entry, "kind") == "mac-software";
            std::string found = textIn(*entry, "version");
            if (ofThisApp && !found.empty() && (version.empty() || forTheMac)) {
                version = std::move(found);
                if (forTheMac) {
                    break;
                }
            }
        }
    }
    return version.empty() ? std::nullopt : std::optional(std::move(version));
}

AppInfo appInfo(const InstalledApp& app, const PropertyList::Value& information,
                bool holdsAppStoreReceipt) {
    const auto text = [&](std::string_view key) {
        const PropertyList::Value* value = information.find(key);
        const std::string* found = value != nullptr ? value->string() : nullptr;
        return found != nullptr ? std::string(Text::trimmed(*found)) : std::string();
    };
    return {app, text("CFBundleShortVersionString"), holdsAppStoreReceipt, text("SUFeedURL")};
}

std::optional<Request> requestFor(const AppInfo& app, bool askAppStore) {
    if (app.app.url.native().starts_with("/System/") || app.version.empty()) {
        return std::nullopt;
    }
    if (app.fromAppStore) {
        if (!askAppStore) {
            return std::nullopt;
        }
        return Request{Source::appStore, "https://itunes.apple.com/lookup?bundleId=" +
                                             Link::encoded(app.app.bundleID)};
    }
    if (!isHttps(app.feedUrl)) {
        return std::nullopt;
    }
    return Request{Source::feed, app.feedUrl};
}

std::optional<std::string> brewUpgradeCommand(std::string_view cask) {
    constexpr std::string_view punctuation = "-_.@+/";
    const bool isName = !cask.empty() && isAsciiLetterOrDigit(cask.front()) &&
                        std::ranges::all_of(cask, [&](char c) {
                            return isAsciiLetterOrDigit(c) || punctuation.contains(c);
                        });
    return isName ? std::optional("brew upgrade --cask " + std::string(cask)) : std::nullopt;
}

std::optional<Update> updateFor(const AppInfo& app, Source source, std::string_view answer) {
    const auto newest = source == Source::appStore ? appStoreVersion(answer, app.app.bundleID)
                                                   : appcastLatest(answer);
    if (!newest || !Versions::isNewer(*newest, app.version)) {
        return std::nullopt;
    }
    return Update{app.app.name, app.app.bundleID, app.version, *newest, source};
}

std::vector<Update> brewUpdates(std::string_view output) {
    std::vector<Update> updates;
    for (Outdated& cask : brewOutdated(output)) {
        updates.push_back({std::move(cask.name), BundleID(), std::move(cask.installed),
                           std::move(cask.current), Source::homebrew});
    }
    return updates;
}

std::optional<Update> check(const AppInfo& app, bool askAppStore, const Fetch& fetch) {
    const auto request = requestFor(app, askAppStore);
    if (!request) {
        return std::nullopt;
    }
    const auto answer = fetch(request->url);
    return answer ? updateFor(app, request->source, *answer) : std::nullopt;
}

std::string_view label(Source source) {
    switch (source) {
    case Source::feed:
        return "Update feed";
    case Source::appStore:
        return "App Store";
    case Source::homebrew:
        return "Homebrew";
    }
    return {};
}

} // namespace vellory::AppUpdates
