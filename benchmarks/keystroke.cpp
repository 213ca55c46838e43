// SPDX-License-Identifier: Apache-2.0
// keystroke [APPS] [RUNS]: types words into the launcher's real window over a fake machine with so
// many apps (2000), on the software rasteriser, and prints how long it took from each key press
// until the frame with its results was drawn, from clearing a query until the grid was back, and
// how long the search alone took: median, 99th percentile, longest, and how the times spread.
// QT_QPA_PLATFORM=xcb measures on the display instead of in memory.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "platform/AppIcons.h"
#include "shell/LauncherController.h"
#include "support/FakePorts.h"

using namespace vellory;

namespace {

using Stopwatch = std::chrono::steady_clock;

double millisecondsSince(Stopwatch::time_point start) {
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

constexpr std::array words{"Photo",   "Visual", "Disk",    "Text",  "Mail",    "Fire",   "Open",
                           "Quick",   "Cloud",  "Video",   "Sound", "Color",   "Git",    "Code",
                           "Smart",   "Pixel",  "Star",    "Note",  "Task",    "Time",   "Screen",
                           "Remote",  "Web",    "Chat",    "Voice", "Music",   "Book",   "Studio",
                           "Editor",  "Viewer", "Player",  "Pro",   "Browser", "Writer", "Reader",
                           "Monitor", "Center", "Library", "Lab",   "Desk"};

class Words {
  public:
    explicit Words(unsigned seed) : random_(seed) {}
    std::string next() { return words[random_() % words.size()]; }

  private:
    std::mt19937 random_;
};

void fill(test::FakeAppCatalogue& catalogue, int count) {
    constexpr std::array categories{"photography",  "developer-tools", "music",
                                    "productivity", "utilities",       "puzzle-games"};
    Words some(1);
    for (int i = 0; i < count; ++i) {
        const std::string id = "org.example.app" + std::to_string(i);
        const std::string category =
            std::string("public.app-category.") + categories[static_cast<std::size_t>(i) % 6];
        catalogue.install(id, some.next() + " " + some.next() +
                                  (i % 3 == 0 ? " " + std::to_string(i) : ""));
        catalogue.infos[id] = {.dictionary = {{"LSApplicationCategoryType", {category}}},
                               .texts = {some.next() + " and " + some.next() + " for everyone",
                                         some.next() + ";" + some.next() + ";"}};
    }
    std::ranges::sort(catalogue.installed, {}, &InstalledApp::name);
}

void print(const char* what, std::vector<double> times) {
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

/// Works on the launcher's window and knows when its next frame is done.
class Typist {
  public:
    explicit Typist(LauncherController& controller) : window_(controller.window()) {
        QObject::connect(&window_, &QQuickWindow::frameSwapped, &window_, [this] { ++frames_; });
    }

    /// Milliseconds from the key press until the next frame is done.
    double press(Qt::Key key, const QString& text = {}) {
        const int before = frames_;
        const auto start = Stopwatch::now();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&window_, &press);
        while (frames_ == before) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return millisecondsSince(start);
    }
    /// A moment between two keys, in which icons arrive and delegates are made ahead.
    static void pause(int milliseconds) {
        const QDeadlineTimer until(milliseconds);
        while (!until.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
    }

  private:
    QQuickWindow& window_;
    int frames_ = 0;
};

void measure(AppModel& model, LauncherState& state, Typist& typist, int runs) {
    std::vector<double> frames;
    std::vector<double> clears;
    std::vector<double> searches;
    Words some(2);
    for (int run = 0; run < runs; ++run) {
        std::string typed;
        for (const char c : some.next() + " " + some.next()) {
            typed += c;
            frames.push_back(typist.press(Qt::Key_A, QString(QLatin1Char(c))));
            const auto start = Stopwatch::now();
            const SearchResults found = SearchResults::find(model, typed);
            searches.push_back(millisecondsSince(start));
            Typist::pause(30);
        }
        state.setQuery("e"); // almost everything
        Typist::pause(60);
        clears.push_back(typist.press(Qt::Key_Escape));
        Typist::pause(60);
    }
    print("from a key to the frame with its results", frames);
    print("of that, the search", searches);
    print("from clearing a query to the frame with the grid", clears);
}

} // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 2000;
    const int runs = argc > 2 ? std::atoi(argv[2]) : 60;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QQuickWindow::setSceneGraphBackend("software");
    const QGuiApplication application(argc, argv);

    test::FakeAppCatalogue catalogue;
    fill(catalogue, count);
    test::FakeRunningApps runningApps;
    test::FakeDesktop desktop;
    test::FakeMetadata metadata;
    test::FakeFolderWatcher folderWatcher;
    test::FakeImageChooser imageChooser;
    test::FakeClock clock;
    test::FakeScheduler scheduler(clock);
    MemoryDefaults defaults;
    defaults.set("hasSeenWelcome", true);
    const auto folder = std::filesystem::temp_directory_path() /
                        ("vellory-keystroke-" + std::to_string(QCoreApplication::applicationPid()));
    AppModel model({.catalogue = catalogue,
                    .runningApps = runningApps,
                    .desktop = desktop,
                    .metadata = metadata,
                    .folderWatcher = folderWatcher,
                    .imageChooser = imageChooser,
                    .clock = clock,
                    .scheduler = scheduler,
                    .defaults = defaults},
                   {.paths = VelloryPaths(folder)});
    model.start();
    const auto building = Stopwatch::now();
    model.buildKeywords();
    std::printf("%d apps; words of all, after each scan: %.1f ms\n", count,
                millisecondsSince(building));
    model.layOutAlphabetically();
    const DrawnIcons icons;
    LauncherState state(model);
    LauncherController controller({model, state, icons, desktop, scheduler});
    controller.prepare({1440, 900});
    Typist typist(controller);
    Typist::pause(1500);
    measure(model, state, typist, runs);
    std::filesystem::remove_all(folder);
    return 0;
}
