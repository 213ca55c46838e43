// SPDX-License-Identifier: Apache-2.0
#include "Usage/RecentlyUsed.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>
#include <span>
#include <utility>

#include "Usage/Bookmark.h"

namespace vellory::RecentlyUsed {

namespace {

constexpr Xml::Limits limits{.bytes = largestFile};
/// Far above any honest one of either.
constexpr std::size_t longestName = 256;
constexpr std::size_t mostAppsOfFile = 64;

std::optional<int> number(std::string_view text, std::size_t from, std::size_t size) {
    int out = 0;
    const char* begin = text.data() + from;
    const auto [end, error] = std::from_chars(begin, begin + size, out);
    return error == std::errc{} && end == begin + size && out >= 0 ? std::optional(out)
                                                                   : std::nullopt;
}

/// "2024-03-01T09:30:00Z", also with a fraction of the second, which is not read.
std::optional<Date> moment(std::string_view text) {
    constexpr std::string_view shape = "0000-00-00T00:00:00";
    if (text.size() <= shape.size() || !text.ends_with('Z') ||
        (text[shape.size()] != 'Z' && text[shape.size()] != '.')) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < shape.size(); ++i) {
        if (shape[i] != '0' && text[i] != shape[i]) {
            return std::nullopt;
        }
    }
    const auto year = number(text, 0, 4);
    const auto month = number(text, 5, 2);
    const auto day = number(text, 8, 2);
    const auto hour = number(text, 11, 2);
    const auto minute = number(text, 14, 2);
    const auto second = number(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    if (!date.ok() || *hour > 23 || *minute > 59 || *second > 60) {
        return std::nullopt;
    }
    const std::chrono::sys_seconds at = std::chrono::sys_days(date) + std::chrono::hours(*hour) +
                                        std::chrono::minutes(*minute) +
                                        std::chrono::seconds(*second);
    return Date::since1970(static_cast<double>(at.time_since_epoch().count()));
}

/// Old writers gave seconds since 1970.
std::optional<Date> timestamp(std::string_view text) {
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    const bool isNumber = error == std::errc{} && end == text.data() + text.size() && seconds > 0;
    return isNumber ? std::optional(Date::since1970(static_cast<double>(seconds))) : std::nullopt;
}

/// The program of a command such as "'editor %u'": quoted as a whole, with its arguments.
std::string_view programOf(std::string_view command) {
    while (command.starts_with('\'') || command.starts_with('"') || command.starts_with(' ')) {
        command.remove_prefix(1);
    }
    command = command.substr(0, command.find_first_of(" '\""));
    return command.substr(command.rfind('/') + 1);
}

std::string_view value(std::span<const Xml::Attribute> attributes, std::string_view name) {
    const auto found = std::ranges::find(attributes, name, &Xml::Attribute::name);
    return found == attributes.end() ? std::string_view() : found->value;
}

bool climbs(const std::filesystem::path& file) {
    return std::ranges::find(file, "..") != file.end();
}

class ListReader final : public Xml::Handler {
  public:
    explicit ListReader(std::size_t mostDocuments) : mostDocuments_(mostDocuments) {}

    void startElement(std::string_view name, std::span<const Xml::Attribute> attributes) override {
        if (name == "bookmark") {
            link_ = value(attributes, "href");
            isPrivate_ = false;
            uses_.clear();
        } else if (name == "bookmark:application") {
            note(attributes);
        } else if (name == "bookmark:private") {
            isPrivate_ = true;
        }
    }
    void endElement(std::string_view name) override {
        if (name != "bookmark") {
            return;
        }
        std::optional<std::optional<std::filesystem::path>> file; // worked out once, if need be
        for (const auto& [app, at] : uses_) {
            Uses* uses = usesOf(app, at);
            if (uses == nullptr || isPrivate_ || !isAmongLatest(*uses, at)) {
                continue;
            }
            if (!file) {
                file = Bookmark::fileOfLink(link_);
                if (*file && climbs(**file)) {
                    file->reset();
                }
            }
            if (*file) {
                add(*uses, {**file, at});
            }
        }
        uses_.clear();
    }
    void text(std::string_view) override {}

    Summary take() { return std::move(summary_); }

  private:
    void note(std::span<const Xml::Attribute> attributes) {
        const std::string_view name = value(attributes, "name");
        const std::string_view program = programOf(value(attributes, "exec"));
        auto at = moment(value(attributes, "modified"));
        if (!at) {
            at = timestamp(value(attributes, "timestamp"));
        }
        if (at && uses_.size() < mostAppsOfFile && name.size() <= longestName &&
            program.size() <= longestName && !(name.empty() && program.empty())) {
            uses_.push_back({{std::string(name), std::string(program)}, *at});
        }
    }

    /// The app's entry with `at` counted in; null for one app too many.
    Uses* usesOf(const App& app, Date at) {
        const auto known = summary_.find(app);
        if (known != summary_.end()) {
            known->second.last = std::max(known->second.last, at);
            return &known->second;
        }
        return summary_.size() < mostApps ? &summary_.emplace(app, Uses{at, {}}).first->second
                                          : nullptr;
    }

    bool isAmongLatest(const Uses& uses, Date at) const {
        return mostDocuments_ > 0 &&
               (uses.documents.size() < mostDocuments_ || uses.documents.back().at <= at);
    }

    void add(Uses& uses, Document document) const {
        auto& documents = uses.documents;
        std::erase_if(documents, [&](const Document& d) {
            return d.file == document.file && d.at <= document.at;
        });
        if (std::ranges::find(documents, document.file, &Document::file) != documents.end()) {
            return; // listed twice, and this is the older time
        }
        const auto place =
            std::ranges::find_if(documents, [&](const Document& d) { return d.at <= document.at; });
        documents.insert(place, std::move(document));
        if (documents.size() > mostDocuments_) {
            documents.pop_back();
        }
    }

    std::size_t mostDocuments_;
    Summary summary_;
    // The bookmark that is being read.
    std::string link_;
    bool isPrivate_ = false;
    std::vector<std::pair<App, Date>> uses_;
};

} // namespace

std::expected<Summary, Xml::Error> read(const std::filesystem::path& file,
                                        std::size_t mostDocuments) {
    ListReader reader(mostDocuments);
    if (const auto done = Xml::parseFile(file, reader, limits); !done) {
        return std::unexpected(done.error());
    }
    return reader.take();
}

std::expected<Summary, Xml::Error> parse(std::string_view text, std::size_t mostDocuments) {
    ListReader reader(mostDocuments);
    if (const auto done = Xml::parse(text, reader, limits); !done) {
        return std::unexpected(done.error());
    }
    return reader.take();
}

} // namespace vellory::RecentlyUsed
