// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <future>
#include <memory>

#include <QObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "model/SuggestionsState.h"
#include "platform/Desktop.h"
#include "platform/Scheduler.h"
#include "shell/KeyCatcher.h"
#include "shell/LauncherViewModel.h"
#include "shell/grid/SuggestionsViewModel.h"
#include "shell/images/Backdrop.h"
#include "shell/images/IconProvider.h"
#include "shell/notices/NoticeWindow.h"
#include "shell/settings/SettingsViewModel.h"
#include "shell/workspaces/WorkspacesViewModel.h"

class QScreen;

namespace vellory {

/// The launcher's window: makes it once, shows it on the display with the pointer and hides it
/// again. The window and its scene are kept while hidden, so that a later summons only has to show
/// them.
class LauncherController : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        AppModel& model;
        LauncherState& state;
        const AppIcons& icons;
        Desktop& desktop;
        Scheduler& scheduler;
    };

    explicit LauncherController(Parts parts, QObject* parent = nullptr);
    ~LauncherController() override;

    /// Takes the keyboard for a `show` that is to follow, and begins on other threads what it will
    /// need.
    void expectShow();
    /// Shows the grid over everything on the display with the pointer.
    void show();
    void hide();
    void toggle() { isShown() ? hide() : show(); }
    bool isShown() const { return parts_.state.presented(); }
    /// Opens the settings in a window of their own, in place of the grid.
    void showSettings();

    /// Sets up the scene at a size of its own for pictures; `image` then renders it.
    void prepare(QSize size);

    /// Made when it is first needed, shown or not.
    const QQuickView* settingsWindow() const { return settingsView_.get(); }
    const NoticeWindow* noticeWindow() const { return noticeWindow_.get(); }
    QQuickView& window() {
        createWindow();
        return *view_;
    }
    LauncherViewModel& viewModel() { return viewModel_; }
    SuggestionsState& suggestions() { return suggestions_; }
    SettingsViewModel& settings() { return settings_; }
    WorkspacesViewModel& workspaces() { return workspaces_; }

  Q_SIGNALS:
    /// The first frame after `show` is on the screen.
    void shown();
    void hidden();

  private:
    void createEngine();
    void createWindow();
    /// The quiet backdrop for a display of `size` pixels, unless that of one stands already.
    void provideGradient(QSize size);
    /// The wallpaper's in place of a new gradient, when it is ready.
    void loadWallpaper(const QScreen& screen);
    void applyBackdrop(std::shared_future<QImage> image);
    bool eventFilter(QObject* watched, QEvent* event) override;

    Parts parts_;
    std::shared_ptr<IconSources> iconSources_ = std::make_shared<IconSources>();
    std::shared_ptr<BackdropStore> backdrop_ = std::make_shared<BackdropStore>();
    LauncherViewModel viewModel_;
    KeyCatcher keyCatcher_;
    SuggestionsState suggestions_;
    SuggestionsViewModel suggestionsModel_;
    SettingsViewModel settings_;
    WorkspacesViewModel workspaces_;
    std::future<void> fonts_; ///< are being read
    std::unique_ptr<QQmlEngine> engine_;
    std::unique_ptr<QQmlComponent> mainView_; ///< what `view_` shows, compiled ahead
    std::unique_ptr<QQuickView> view_;
    std::unique_ptr<QQuickView> settingsView_;
    std::unique_ptr<NoticeWindow> noticeWindow_;
    QSize backdropSize_; ///< of the display that the backdrop is for, in pixels
    bool isWallpaperDue_ = false;
    int backdropGeneration_ = 0;
    bool awaitingFrame_ = false;
    bool wasActive_ = false;
};

} // namespace vellory
