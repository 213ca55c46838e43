// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/LauncherState.h"
#include "model/World.h"

namespace vellory::test {

/// What one launcher window is about, on a machine of fakes, and the keys that it gets.
struct Launcher : World {
    std::unique_ptr<LauncherState> state;
    int hides = 0;                   ///< how often it asked to be hidden
    std::vector<std::string> copied; ///< what it asked to be put on the clipboard

    /// Over a grid of apps named "a00", "a01" and so on.
    explicit Launcher(int count) : Launcher(numbered(count), boardOf(numbered(count))) {}
    Launcher(const std::vector<BundleID>& installed, const Board& grid) {
        startWith(installed, grid);
        show();
    }

    LauncherState* operator->() { return state.get(); }

    bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return state->handleKey({key, modifiers, {}});
    }
    bool type(const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return state->handleKey({Qt::Key_unknown, modifiers, text});
    }
    std::string items() const { return drawn(board(state->currentItems())); }
    /// What the running apps were asked, in order.
    const std::vector<std::string>& asked() const { return runningApps.asked; }

  protected:
    Launcher() = default;
    void show() {
        state = std::make_unique<LauncherState>(*model);
        QObject::connect(state.get(), &LauncherState::hideRequested, [this] { ++hides; });
        QObject::connect(state.get(), &LauncherState::copyRequested,
                         [this](const std::string& text) { copied.push_back(text); });
    }
};

} // namespace vellory::test
