// SPDX-License-Identifier: Apache-2.0
#include "shell/settings/SettingsViewModel.h"

#include <array>
#include <utility>

#include <QDateTime>
#include <QLocale>
#include <QVariantMap>

#include "Workspaces/WorkspaceTexts.h"
#include "shell/images/IconProvider.h"
#include "shell/search/ShownText.h"

namespace vellory {

namespace {

using Mode = Prefs::SmartListMode;
constexpr std::array modes{Mode::suggested, Mode::recent, Mode::mostUsed, Mode::newest, Mode::off};

QString lastUsedText(const std::optional<Date>& date) {
    if (!date) {
        return QObject::tr("Never opened, as far as is known");
    }
    const auto seconds = static_cast<qint64>(date->secondsSince1970());
    return QObject::tr("Last opened %1")
        .arg(
            QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds).date(), QLocale::LongFormat));
}

} // namespace

SettingsViewModel::SettingsViewModel(AppModel& model, const std::filesystem::path& home,
                                     QObject* parent)
    : QObject(parent), model_(model), protectedApps_(model), command_(home) {
    connect(&model_.prefs(), &Prefs::changed, this, &SettingsViewModel::prefsChanged);
    connect(&model_.prefs(), &Prefs::changed, this, [this](const std::string& key) {
        if (key == "smartListMode") {
            Q_EMIT smartListModeChanged();
        }
    });
    connect(&model_, &AppModel::appLaunched, this, &SettingsViewModel::habitsChanged);
    connect(&model_, &AppModel::appLaunched, this, &SettingsViewModel::unusedAppsChanged);
    connect(&model_, &AppModel::appsChanged, this, &SettingsViewModel::unusedAppsChanged);
    connect(&model_.learned(), &UsageCenter::recordsChanged, this,
            &SettingsViewModel::unusedAppsChanged);
}

void SettingsViewModel::setPage(int page) {
    if (page != page_) {
        page_ = page;
        Q_EMIT pageChanged();
    }
}

QStringList SettingsViewModel::closeAppsTitles() {
    return {tr("Quit the apps it opened"), tr("Hide the apps it opened"),
            tr("Leave the apps it opened")};
}

void SettingsViewModel::setCloseApps(int index) {
    using CloseApps = WorkspaceSession::CloseApps;
    constexpr std::array choices{CloseApps::quit, CloseApps::hide, CloseApps::keep};
    if (index >= 0 && std::cmp_less(index, choices.size())) {
        model_.prefs().setCloseApps(choices[static_cast<std::size_t>(index)]);
    }
}

void SettingsViewModel::installCommand() {
    model_.notices().post(command_.install());
    Q_EMIT hasCommandChanged();
}

QString SettingsViewModel::closingText() const {
    return toQString(WorkspaceTexts::closing);
}

QString SettingsViewModel::readFocusText() const {
    return toQString(WorkspaceTexts::readFocusDirectly);
}

QString SettingsViewModel::cannotReadFocusText() const {
    return toQString(WorkspaceTexts::cannotReadFocus);
}

QString SettingsViewModel::automationText() const {
    return toQString(WorkspaceTexts::focusByAutomation);
}

QStringList SettingsViewModel::smartListModes() const {
    QStringList texts;
    for (const Mode mode : modes) {
        const std::string_view heading = SmartList::heading(mode);
        texts.append(heading.empty() ? tr("Off")
                                     : QString::fromUtf8(heading.data(),
                                                         static_cast<qsizetype>(heading.size())));
    }
    return texts;
}

void SettingsViewModel::setSmartListMode(int mode) {
    if (mode >= 0 && mode < static_cast<int>(modes.size())) {
        model_.prefs().setSmartListMode(modes[static_cast<std::size_t>(mode)]);
    }
}

QString SettingsViewModel::habitPromise() const {
    return tr("When the same three or more apps open within about 10 minutes on three different "
              "days at a similar time, vellory suggests saving them as a workspace (in the grid, "
              "the menu bar menu and the menu bar launcher; ⌘⇧S in the grid). It can also open the "
              "workspace for you at that time, only if you choose that.");
}

QString SettingsViewModel::habitRecord() const {
    return QString::number(model_.learned().habits().log().events.size()) +
           tr(" app openings (app IDs and 5-minute time slots only, last 6 weeks)");
}

QVariantList SettingsViewModel::unusedApps() const {
    QVariantList out;
    const auto& icons = model_.board().icons;
    for (const UsageCenter::UnusedApp& unused : model_.learned().unusedApps()) {
        const auto icon = icons.find(unused.app);
        out.append(QVariantMap{
            {"id", QString::fromStdString(unused.app)},
            {"name", QString::fromStdString(model_.name(unused.app))},
            {"icon", IconProvider::appSource(unused.app,
                                             icon == icons.end() ? std::string() : icon->second)},
            {"lastUsed", lastUsedText(unused.lastUsed)}});
    }
    return out;
}

} // namespace vellory
