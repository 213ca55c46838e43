// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include <QObject>

#include "Support/Link.h"

namespace vellory {

class AppModel;
class LauncherState;

/// Does what a "vellory://" link asks: the one road by which scripts, shortcuts and other programs
/// drive this one. Hosts are compared letter by letter. Main thread only.
class CommandLinks : public QObject {
    Q_OBJECT

  public:
    CommandLinks(AppModel& model, LauncherState& state, QObject* parent = nullptr);

    /// Any text: what is no link, or another program's, is ignored; a host that is not known shows
    /// the grid.
    void handle(std::string_view url);

  Q_SIGNALS:
    void showRequested();
    void hideRequested();
    void settingsRequested();
    /// The grid is to be shown with this text in its search field.
    void searchRequested(const std::string& text);
    void askRequested(const std::string& text);
    void timeMachineRequested();

  private:
    /// The second group of hosts; true when the link was one of them.
    bool handleMore(const Link& link);
    void openWorkspace(const Link& link);
    void openFocusSession(const Link& link);
    void sayUnknown(const std::string& workspace);

    AppModel& model_;
    LauncherState& state_;
};

} // namespace vellory
