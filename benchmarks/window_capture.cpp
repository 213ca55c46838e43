// SPDX-License-Identifier: Apache-2.0
// window_capture: how long reading the frames of all windows takes on a private X server with a
// window manager, at several numbers of windows: the first time (`first_ms`, with connecting and
// finding out whose they are), every other time (`capture_ms`), and for comparison the frames alone
// when each window is asked by itself (`one_by_one_ms`).

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include "desktop/DesktopSession.h"
#include "desktop/MainLoop.h"
#include "platform/linux/apps/LinuxAppCatalogue.h"
#include "platform/linux/apps/LinuxRunningApps.h"
#include "platform/linux/windows/LinuxWindowPlacer.h"
#include "platform/linux/windows/WindowReader.h"

using namespace vellory;

namespace {

constexpr int windowsOfAnApp = 5;

std::string appId(int number) {
    return "org.bench.App" + std::to_string(number);
}

/// A desktop with windows of several apps, all of them managed.
class Desk {
  public:
    explicit Desk(int windows)
        : connection_(X11Connection::open(session_.environment().value("DISPLAY"))) {
        const int apps = (windows + windowsOfAnApp - 1) / windowsOfAnApp;
        for (int number = 0; number < apps; ++number) {
            session_.folder().write("home/.local/share/applications/" + appId(number) + ".desktop",
                                    "[Desktop Entry]\nType=Application\nName=App\nExec=true\n"
                                    "StartupWMClass=class" +
                                        std::to_string(number) + "\n");
            running.push_back({.bundleID = appId(number)});
        }
        for (int i = 0; i < windows; ++i) {
            show(i);
        }
        connection_->flush();
        loop_.runUntil([&] { return listed().size() == static_cast<std::size_t>(windows); });
        entries_ = std::make_shared<DesktopEntries>(
            DesktopEntries::Options{session_.environment(), std::nullopt});
        entries_->read(entries_->roots());
    }

    std::unique_ptr<LinuxRunningApps> apps() {
        return std::make_unique<LinuxRunningApps>(LinuxRunningApps::Options{session_.environment()},
                                                  entries_, loop_, loop_);
    }
    const SessionEnvironment& environment() const { return session_.environment(); }
    X11Connection& connection() { return *connection_; }
    std::vector<xcb_window_t> listed() {
        return connection_->values(connection_->requestProperty(
            connection_->root(), connection_->ewmh()->_NET_CLIENT_LIST));
    }

    std::vector<RunningApp> running;

  private:
    void show(int number) {
        const xcb_window_t window = xcb_generate_id(connection_->get());
        xcb_create_window(connection_->get(), XCB_COPY_FROM_PARENT, window, connection_->root(), 0,
                          0, 200, 150, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                          nullptr);
        const std::string name = "class" + std::to_string(number / windowsOfAnApp);
        const std::string names = name + '\0' + name + '\0';
        const std::string title = "A document of ordinary length - An ordinary app";
        for (const auto& [property, text] :
             {std::pair{XCB_ATOM_WM_CLASS, names}, std::pair{XCB_ATOM_WM_NAME, title}}) {
            xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window, property,
                                XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()),
                                text.data());
        }
        xcb_map_window(connection_->get(), window);
    }

    test::DesktopSession session_;
    test::MainLoop loop_;
    std::unique_ptr<X11Connection> connection_;
    std::shared_ptr<DesktopEntries> entries_;
};

template <class Work>
double millisecondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

void capturingWindows(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    Desk desk(static_cast<int>(count));
    std::vector<double> first;
    std::vector<double> capture;
    std::vector<double> oneByOne;
    for (auto _ : state) {
        std::unique_ptr<LinuxRunningApps> apps;
        std::unique_ptr<LinuxWindowPlacer> placer;
        std::size_t frames = 0;
        const auto read = [&] {
            frames = 0;
            for (const auto& windows : placer->windows(desk.running)) {
                frames += windows.size();
            }
        };
        first.push_back(millisecondsOf([&] {
            apps = desk.apps();
            placer = std::make_unique<LinuxWindowPlacer>(desk.environment(), *apps);
            read();
        }));
        capture.push_back(millisecondsOf(read));
        if (frames != count) {
            state.SkipWithError("another number of windows was found");
            return;
        }
        WindowReader reader(desk.connection());
        oneByOne.push_back(millisecondsOf([&] {
            for (const xcb_window_t window : desk.listed()) {
                benchmark::DoNotOptimize(reader.read({window}));
            }
        }));
        state.SetIterationTime(capture.back() / 1e3);
    }
    state.counters["first_ms"] = median(first);
    state.counters["capture_ms"] = median(capture);
    state.counters["one_by_one_ms"] = median(oneByOne);
    state.counters["ratio"] = median(capture) / median(oneByOne);
}
BENCHMARK(capturingWindows)
    ->Arg(10)
    ->Arg(100)
    ->Arg(300)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
