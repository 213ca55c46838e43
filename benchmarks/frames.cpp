// SPDX-License-Identifier: Apache-2.0
// frames [RUNS]: turns pages, opens and closes a folder and drags a tile about on the launcher's
// real window at 1440x900 with 35 tiles a page, on the software rasteriser, and prints how long the
// frames of each took to make: input and animations, layout and drawing. Then how far apart frames
// were, which includes waiting for the next tick. QT_QPA_PLATFORM=xcb measures on the display.

#include <cstdlib>
#include <functional>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QThread>

#include "LauncherOnFakes.h"
#include "shell/grid/TileGrid.h"

using namespace vellory;
using namespace vellory::benchmarks;

namespace {

constexpr int tilesOnPage = 35;
constexpr int pages = 3;

/// Runs the window's events and takes the time of every frame.
class Filming {
  public:
    explicit Filming(QQuickWindow& window) : window_(window) {
        QObject::connect(&window_, &QQuickWindow::frameSwapped, &window_, [this] { ++frames_; });
    }

    /// Films for a while; `input` is called before each turn of the event loop.
    void film(int milliseconds, const std::function<void()>& input = {}) {
        const QDeadlineTimer until(milliseconds);
        auto last = Stopwatch::now();
        bool isFirst = true;
        while (!until.hasExpired()) {
            const int before = frames_;
            const auto start = Stopwatch::now();
            if (input) {
                input();
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            if (frames_ != before) {
                work.push_back(millisecondsSince(start));
                if (!isFirst) {
                    apart.push_back(millisecondsSince(last));
                }
                isFirst = false;
                last = Stopwatch::now();
            } else {
                QThread::usleep(300);
            }
        }
    }

    std::vector<double> work;
    std::vector<double> apart;

  private:
    QQuickWindow& window_;
    int frames_ = 0;
};

void send(QQuickWindow& window, QEvent::Type type, QPointF at) {
    const bool isDown = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, window.mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

void report(const char* what, Filming& filming) {
    print(what, filming.work);
    print((std::string(what) + ", from frame to frame").c_str(), filming.apart);
}

void turnPages(LauncherOnFakes& launcher, int runs) {
    Filming filming(launcher.controller->window());
    for (int run = 0; run < runs; ++run) {
        launcher.state->goToPage((run + 1) % 2);
        filming.film(700);
    }
    report("page flip", filming);
}

void openFolders(LauncherOnFakes& launcher, int runs) {
    const Folder* folder = nullptr;
    for (const Tile& tile : launcher.model->visibleTiles()) {
        folder = folder == nullptr ? tile.folder() : folder;
    }
    Filming filming(launcher.controller->window());
    for (int run = 0; run < runs; ++run) {
        launcher.state->setOpenFolder(folder->id);
        filming.film(500);
        launcher.state->setOpenFolder(std::nullopt);
        filming.film(500);
    }
    report("folder opening and closing", filming);
}

void dragAbout(LauncherOnFakes& launcher, int runs) {
    QQuickWindow& window = launcher.controller->window();
    const auto* grid = window.contentItem()->findChild<TileGrid*>("grid");
    const auto middleOf = [&](int index) {
        return grid->mapToScene(grid->tileRect(grid->tileIdAt(index)).center());
    };
    Filming filming(window);
    for (int run = 0; run < runs; ++run) {
        const QPointF from = middleOf(8);
        const QPointF to = middleOf(33);
        send(window, QEvent::MouseButtonPress, from);
        // As a pointer that reports every 8 ms: there and back over the whole page.
        constexpr int steps = 200;
        int step = 0;
        auto next = Stopwatch::now();
        filming.film(steps * 8, [&] {
            if (Stopwatch::now() >= next && step < steps) {
                next += std::chrono::milliseconds(8);
                const double share = 1.0 - std::abs(1.0 - 2.0 * ++step / steps);
                send(window, QEvent::MouseMove, from + (to - from) * share);
            }
        });
        launcher.state->drag().cancel();
        send(window, QEvent::MouseButtonRelease, from);
        pause(400);
    }
    report("drag", filming);
}

} // namespace

int main(int argc, char** argv) {
    const int runs = argc > 1 ? std::atoi(argv[1]) : 20;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QQuickWindow::setSceneGraphBackend("software");
    const QGuiApplication application(argc, argv);

    LauncherOnFakes launcher;
    std::vector<BundleID> inFolder;
    for (int i = 0; i < tilesOnPage * pages + 12; ++i) {
        const std::string id = "org.example.app" + std::to_string(i);
        launcher.catalogue.install(id, "Application " + std::to_string(i));
        if (i < 12) {
            inFolder.push_back(id);
        }
    }
    launcher.start();
    launcher.model->layOutAlphabetically();
    launcher.model->makeFolder(inFolder, "Folder");
    launcher.show({1440, 900});
    std::printf("%d tiles a page, %d pages\n", launcher.state->columns() * launcher.state->rows(),
                launcher.state->pageCount());
    turnPages(launcher, runs);
    openFolders(launcher, runs);
    dragAbout(launcher, std::max(1, runs / 4));
    return 0;
}
