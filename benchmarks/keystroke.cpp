// SPDX-License-Identifier: Apache-2.0
// keystroke [APPS] [RUNS]: types words into the launcher's real window over a fake machine with so
// many apps (2000), on the software rasteriser, and prints how long it took from each key press
// until the frame with its results was drawn, from clearing a query until the grid was back, and
// how long the search alone took: median, 99th percentile, longest, and how the times spread.
// QT_QPA_PLATFORM=xcb measures on the display instead of in memory.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>

#include "LauncherOnFakes.h"

using namespace vellory;
using namespace vellory::benchmarks;

namespace {

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

/// Works on the launcher's window and knows when its next frame is done.
class Typist {
  public:
    explicit Typist(LauncherController& controller) : window_(controller.window()) {
        QObject::connect(&window_, &QQuickWindow::frameSwapped, &window_, [this] { ++frames_; });
    }

    /// Milliseconds from the key press until the next frame is done.
    double press(Qt::Key key, const QString& text = {},
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const int before = frames_;
        const auto start = Stopwatch::now();
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(&window_, &press);
        while (frames_ == before) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return millisecondsSince(start);
    }

  private:
    QQuickWindow& window_;
    int frames_ = 0;
};

/// Texts that nobody types, from the clipboard.
void measurePastes(Typist& typist) {
    for (const auto& [what, text] : {std::pair{"100,000 letters", QString(100'000, 'a')},
                                     {"999 letters", QString(999, 'a')},
                                     {"999 parentheses", QString(999, '(')},
                                     {"a sum of 999 characters", QString("1+").repeated(499) + "1"},
                                     {"a sum of 1 MB", QString("1+").repeated(500'000) + "1"},
                                     {"100,000 accents", QString(100'000, QChar(0x301))}}) {
        QGuiApplication::clipboard()->setText(text);
        const double shown = typist.press(Qt::Key_V, {}, Qt::ControlModifier);
        pause(60);
        const double cleared = typist.press(Qt::Key_Escape);
        pause(60);
        std::printf("%s pasted: %.1f ms until the frame; cleared: %.1f ms\n", what, shown, cleared);
    }
}

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
            pause(30);
        }
        state.setQuery("e"); // almost everything
        pause(60);
        clears.push_back(typist.press(Qt::Key_Escape));
        pause(60);
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

    LauncherOnFakes launcher;
    fill(launcher.catalogue, count);
    launcher.start();
    AppModel& model = *launcher.model;
    const auto building = Stopwatch::now();
    model.buildKeywords();
    std::printf("%d apps; words of all, after each scan: %.1f ms\n", count,
                millisecondsSince(building));
    model.layOutAlphabetically();
    launcher.show({1440, 900});
    Typist typist(*launcher.controller);
    measure(model, *launcher.state, typist, runs);
    measurePastes(typist);
    return 0;
}
