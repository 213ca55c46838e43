// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "Support/Calendar.h"
#include "Support/Uuid.h"
#include "Workspaces/TriggerEngine.h"
#include "model/Prefs.h"
#include "model/WorkspaceList.h"
#include "platform/Displays.h"
#include "platform/FocusSource.h"
#include "platform/Scheduler.h"

namespace vellory {

/// Opens workspaces by themselves: on their minute, when their display is connected, when their
/// Focus turns on. Main thread only.
class TriggerCenter : public QObject {
    Q_OBJECT

  public:
    static constexpr double focusInterval = 20.0;

    struct Parts {
        WorkspaceList& workspaces;
        Prefs& prefs;
        Displays& displays;
        FocusSource& focusSource;
        Clock& clock;
        Scheduler& scheduler;
        Calendar calendar;
        std::string locale;
        std::function<void(const Workspace&)> open;
    };

    explicit TriggerCenter(Parts parts, QObject* parent = nullptr);
    ~TriggerCenter() override;

    /// Begins to watch displays and the desktop's Focus.
    void start();

    /// Opens what is scheduled for this minute: to be called once in each. A minute that was missed
    /// is not made up for, and one that the clock shows again (it was set back, or summer time
    /// ended) opens nothing twice.
    void minute();

    /// A Focus of that name is on, as the desktop or a link says.
    void focusChanged(const std::string& name);

    /// The names of the Focus modes there are, to be offered.
    std::vector<std::string> focusModes() const { return parts_.focusSource.modes(); }
    bool canReadFocus() const { return parts_.focusSource.canRead(); }
    /// The names of the displays that are connected.
    std::vector<std::string> displayNames() const;

  private:
    void displaysChanged();
    void pollFocus();
    void openAll(const std::vector<Workspace>& workspaces);

    Parts parts_;
    TriggerState state_;
    /// The wall-clock minute at which each workspace was last opened by its schedule.
    std::map<Uuid, Calendar::Components> lastOpened_;
    Scheduler::Handle focusTimer_;
};

} // namespace vellory
