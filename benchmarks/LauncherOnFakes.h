// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "platform/AppIcons.h"
#include "shell/LauncherController.h"
#include "support/FakePorts.h"

namespace vellory::benchmarks {

using Stopwatch = std::chrono::steady_clock;

inline double millisecondsSince(Stopwatch::time_point start) {
    return std::chrono::duration<double, std::milli>(Stopwatch::now() - start).count();
}

/// A disc in a colour of the app's own.
class DrawnIcons final : public AppIcons {
  public:
    std::optional<Image> icon(const InstalledApp& app, int pixels) const override {
        const auto color =
            0xFF000000U | static_cast<std::uint32_t>(std::hash<std::string>{}(app.bundleID));
        Image image{.width = pixels, .height = pixels, .pixels = {}};
        for (int y = 0; y < pixels; ++y) {
            for (int x = 0; x < pixels; ++x) {
                const int dx = 2 * x - pixels;
                const int dy = 2 * y - pixels;
                image.pixels.push_back(dx * dx + dy * dy < pixels * pixels ? color : 0);
            }
        }
        return image;
    }
};

/// Median, 99th percentile, longest, and how the times (milliseconds) spread.
inline void print(const char* what, std::vector<double> times) {
    std::ranges::sort(times);
    const auto at = [&](double share) {
        return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
    };
    std::printf("%s, %zu times: median %.2f ms, 99th percentile %.2f ms, longest %.2f ms\n ", what,
                times.size(), at(0.5), at(0.99), times.back());
    for (const double limit : {0.25, 0.5, 1.0, 4.0, 8.0, 12.0, 16.7, 33.0}) {
        const auto below = std::ranges::upper_bound(times, limit) - times.begin();
        std::printf(" <%g: %.1f %%", limit,
                    100.0 * static_cast<double>(below) / static_cast<double>(times.size()));
    }
    std::printf("\n");
}

/// Lets events run for a while: icons arrive and delegates are made ahead.
inline void pause(int milliseconds) {
    const QDeadlineTimer until(milliseconds);
    while (!until.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
}

/// The launcher on a machine of fakes, with a support folder of its own. Fill `catalogue`, then
/// `start`.
class LauncherOnFakes : public test::FakePorts {
  public:
    LauncherOnFakes() { defaults.set("hasSeenWelcome", true); }
    ~LauncherOnFakes() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    LauncherOnFakes(const LauncherOnFakes&) = delete;
    LauncherOnFakes& operator=(const LauncherOnFakes&) = delete;

    /// Opens the window at this size and waits until it has come to rest.
    void show(QSize size) {
        controller = std::make_unique<LauncherController>(
            LauncherController::Parts{*model, *state, icons, desktop, scheduler});
        controller->prepare(size);
        pause(1500);
    }
    void start() {
        model = std::make_unique<AppModel>(ports(), Environment{.paths = VelloryPaths(folder_)});
        model->start();
        state = std::make_unique<LauncherState>(*model);
    }

    DrawnIcons icons;
    std::unique_ptr<AppModel> model;
    std::unique_ptr<LauncherState> state;
    std::unique_ptr<LauncherController> controller;

  private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() /
        ("vellory-benchmark-" + std::to_string(QCoreApplication::applicationPid()));
};

} // namespace vellory::benchmarks
