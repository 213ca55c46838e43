// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <cstdio>
#include <expected>
#include <optional>
#include <utility>

#include <QGuiApplication>
#include <QIcon>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimeZone>
#include <QTimer>

#include "model/AppModel.h"
#include "model/CommandLinks.h"
#include "model/LauncherState.h"
#include "model/LinkQueue.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/desktop/LinuxFolderWatcher.h"
#include "platform/linux/session/ApplicationBus.h"
#include "platform/linux/session/BackgroundStart.h"
#include "platform/linux/session/EndSignals.h"
#include "platform/linux/session/InstanceSocket.h"
#include "platform/linux/session/LinkServer.h"
#include "platform/linux/windows/WindowActivation.h"
#include "platform/qt/QtDisplays.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtHttpClient.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/QtSettings.h"
#include "shell/CommandLine.h"
#include "shell/LauncherController.h"
#include "shell/ScratchCopy.h"
#include "shell/Screenshot.h"
#include "shell/images/ImageFileChooser.h"

// This file alone knows the platform's implementations: it makes them, hands them to the model as
// ports, and ties model and window together.

using namespace vellory;

namespace {

constexpr const char* platformID = "com.quorvel.vellory";

int fail(const std::string& sentence) {
    std::fprintf(stderr, "vellory: %s\n", sentence.c_str());
    return 1;
}

/// The arguments Qt is started with: its own options rather than environment variables, which
/// started apps would inherit.
class QtArguments {
  public:
    QtArguments(const char* program, const CommandLine& options) : program_(program) {
        if (options.screenshot) {
            platform_ = "offscreen";
        }
        if (!platform_.empty()) {
            pointers_ = {program_.data(), flag_.data(), platform_.data(), nullptr};
            count_ = 3;
        } else {
            pointers_ = {program_.data(), nullptr};
            count_ = 1;
        }
    }
    int& count() { return count_; }
    char** values() { return pointers_.data(); }

  private:
    std::string program_;
    std::string flag_ = "-platform";
    std::string platform_;
    std::vector<char*> pointers_;
    int count_ = 0;
};

void say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

/// Says what happens, a line each, for scripts that drive or measure the program: "N apps" with the
/// first frame of the grid, "settled" once nothing on it changes any more, "hidden", notices, and
/// starts of apps.
void reportTo(QTimer& settling, LauncherController& controller, const AppModel& model) {
    constexpr int pollMilliseconds = 50;
    QObject::connect(&controller, &LauncherController::shown, &settling, [&] {
        say(std::to_string(model.apps().size()) + " apps");
        settling.start(pollMilliseconds);
    });
    QObject::connect(&controller, &LauncherController::hidden, &settling, [&] {
        settling.stop();
        say("hidden");
    });
    QObject::connect(&model.notices(), &Notices::posted, &settling,
                     [](const Notice& notice) { say("notice " + notice.text); });
    QObject::connect(&model, &AppModel::appLaunched, &settling,
                     [](const std::string& id) { say("launched " + id); });
    QObject::connect(&settling, &QTimer::timeout, &controller, [&] {
        if (isSettled(*controller.window().rootObject())) {
            settling.stop();
            say("settled");
        }
    });
}

/// What links ask of the window.
void connectLinks(const CommandLinks& links, LauncherController& controller, LauncherState& state) {
    const auto showWith = [&](const std::string& query) {
        controller.show();
        state.setQuery(query);
    };
    QObject::connect(&links, &CommandLinks::showRequested, &controller, &LauncherController::show);
    QObject::connect(&links, &CommandLinks::hideRequested, &controller, &LauncherController::hide);
    QObject::connect(&links, &CommandLinks::settingsRequested, &controller,
                     &LauncherController::showSettings);
    QObject::connect(&links, &CommandLinks::searchRequested, &controller, showWith);
    // A question is asked by a search that begins with this mark.
    QObject::connect(
        &links, &CommandLinks::askRequested, &controller,
        [showWith](const std::string& text) { showWith(std::string("?").append(text)); });
    QObject::connect(&links, &CommandLinks::timeMachineRequested, &controller,
                     &LauncherController::show);
}

/// Obeys links, and lets the grid take the focus when it comes because of one.
class LinkHandling {
  public:
    LinkHandling(CommandLinks& links, LauncherController& controller,
                 const SessionEnvironment& environment)
        : links_(links), controller_(controller), activation_(environment) {
        QObject::connect(&controller, &LauncherController::shown, &links, [this] {
            if (token_) {
                bringForward(*std::exchange(token_, std::nullopt));
            }
        });
        QObject::connect(&controller, &LauncherController::hidden, &links,
                         [this] { token_.reset(); });
    }

    void obey(const LinkRequest& request) {
        const bool wasShown = controller_.isShown();
        links_.handle(request.link);
        if (!controller_.isShown()) {
            activation_.end(request.activationToken);
        } else if (wasShown) {
            bringForward(request.activationToken);
        } else {
            token_ = request.activationToken;
        }
    }

  private:
    void bringForward(const std::string& token) {
        activation_.bringForward(static_cast<std::uint32_t>(controller_.window().winId()), token);
    }

    CommandLinks& links_;
    LauncherController& controller_;
    WindowActivation activation_;
    /// What came with the link that the grid appears for, until it has.
    std::optional<std::string> token_;
};

/// How a start ends that found another program running.
int endAfter(InstanceSocket::Answer answer) {
    switch (answer) {
    case InstanceSocket::Answer::obeyed:
        return 0;
    case InstanceSocket::Answer::refused:
        return fail("that link is too long, or no text");
    default:
        return fail("the one that is running does not answer");
    }
}

/// What the program has that is the only one of its user.
struct FirstStart {
    std::optional<InstanceSocket> place; ///< absent where there is none to be had
    std::optional<BackgroundStart> background;
};

/// Hands over what is wished to the program that runs; the error is how this start then ends.
std::expected<FirstStart, int> meetOthers(const CommandLine& options,
                                          const LinuxPlatform::Start& start) {
    const bool isHidden = options.show == CommandLine::Show::hidden;
    const LinkRequest wish{options.link.value_or(isHidden ? "" : "vellory://open"),
                           WindowActivation::tokenIn(start.environment())};
    const auto socket = InstanceSocket::in(start.runtimeFolder());
    FirstStart first;
    auto answer = InstanceSocket::send(socket, wish);
    // A program that a link starts does not belong to the terminal or browser the link came from:
    // where the session can start it, it shall.
    if (answer == InstanceSocket::Answer::nobody && options.link && !options.report) {
        first.background.emplace();
        if (ApplicationBus::open(start.environment(), wish)) {
            return std::unexpected(0);
        }
    }
    if (answer == InstanceSocket::Answer::nobody) {
        auto meeting = InstanceSocket::meet(socket, wish);
        answer = meeting.answer;
        first.place = std::move(meeting.place);
    }
    if (answer != InstanceSocket::Answer::nobody) {
        return std::unexpected(endAfter(answer));
    }
    return first;
}

/// This machine's implementations of the ports, in the order in which they need each other.
struct Machine {
    Machine(const LinuxPlatform::Start& start, const LinuxPlatform::Folders& folders)
        : settings(folders.settings), platform(start, folders, loop, scheduler, http) {}
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    /// Work that is under way asks the platform, whoever began it and has gone by then.
    ~Machine() { scheduler.endBackground(); }

    Ports ports() {
        return {.catalogue = platform.catalogue(),
                .runningApps = platform.runningApps(),
                .windowPlacer = platform.windowPlacer(),
                .desktop = platform.desktop(),
                .displays = displays,
                .focusSource = platform.focusSource(),
                .hotKeys = platform.hotKeys(),
                .metadata = platform.metadata(),
                .folderWatcher = folderWatcher,
                .imageChooser = imageChooser,
                .clock = clock,
                .scheduler = scheduler,
                .defaults = settings};
    }

    QtScheduler scheduler;
    SystemClock clock;
    QtEventLoop loop;
    QtHttpClient http;
    LinuxFolderWatcher folderWatcher{loop};
    QtDisplays displays;
    QtSettings settings;
    ImageFileChooser imageChooser;
    LinuxPlatform platform;
};

/// The launcher on a machine: its model and its window.
struct Program {
    Program(Machine& on, Environment environment)
        : machine(on), model(machine.ports(), std::move(environment)), state(model),
          controller({.model = model,
                      .state = state,
                      .icons = machine.platform.icons(),
                      .desktop = machine.platform.desktop(),
                      .scheduler = machine.scheduler}) {}

    Machine& machine;
    AppModel model;
    LauncherState state;
    LauncherController controller;
};

/// Stays until it is told to end, and obeys the links that come. `first` is its place among the
/// user's other starts, for one that has such a place.
int stay(Program& program, const CommandLine& options, const LinuxPlatform::Start& start,
         std::optional<FirstStart> first) {
    Machine& machine = program.machine;
    LauncherController& controller = program.controller;
    CommandLinks links(program.model, program.state);
    connectLinks(links, controller, program.state);
    LinkHandling handling(links, controller, start.environment());
    LinkQueue queue(machine.scheduler, [&](const LinkRequest& request) { handling.obey(request); });
    const LinkReceiver receiver = [&](LinkRequest request, LinkAnswer answer) {
        queue.add(std::move(request), std::move(answer));
    };
    std::optional<LinkServer> server;
    std::optional<ApplicationBus> bus;
    if (first && first->place) {
        server.emplace(std::move(*first->place), machine.loop, machine.scheduler, receiver);
        bus.emplace(start.environment(), machine.loop, receiver);
    }
    // Not quit: that asks the windows first, and the launcher's only hides when it is closed.
    const EndSignals endSignals(machine.loop, [] { QCoreApplication::exit(0); });
    QTimer settling;
    if (options.report) {
        reportTo(settling, controller, program.model);
    }
    const bool isShown = options.show != CommandLine::Show::hidden && !options.link;
    if (isShown) {
        controller.expectShow();
    }
    program.model.start();
    if (options.link) {
        links.handle(*options.link);
        if (first && first->background) {
            first->background->succeeded();
        }
    } else if (isShown) {
        controller.show();
    }
    machine.imageChooser.attach(controller.window().engine(), &controller.window());
    return QGuiApplication::exec();
}

/// What Qt must know before its application object is made.
void prepareQt(const CommandLine& options, const LinuxPlatform::Start& start) {
    if (!start.hasGraphics() || options.screenshot) {
        QQuickWindow::setSceneGraphBackend("software");
    }
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    if (options.screenshot && options.scale != 1) {
        qputenv("QT_SCALE_FACTOR", QByteArray::number(options.scale));
    }
    QGuiApplication::setApplicationName("vellory");
    QGuiApplication::setDesktopFileName(platformID);
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

int run(CommandLine options, const char* name) {
    const LinuxPlatform::Start start = LinuxPlatform::begin(options.apps);
    std::optional<ScratchCopy> scratch;
    if (options.leavesFilesAlone()) {
        const LinuxPlatform::Folders own = start.folders(std::nullopt);
        auto copy = ScratchCopy::make(VelloryPaths(own.data).support(), own.settings);
        if (!copy) {
            return fail("couldn't copy your files for this run: " + copy.error().message());
        }
        options.support = scratch.emplace(*std::move(copy)).folder();
    }
    std::optional<FirstStart> first;
    if (!options.screenshot && !options.support) {
        auto met = meetOthers(options, start);
        if (!met) {
            return met.error();
        }
        first = std::move(*met);
    }
    if (!options.screenshot && !start.hasDisplay()) {
        return fail("there is no display to open on (is DISPLAY set?); --screenshot FILE renders a "
                    "view without one");
    }
    prepareQt(options, start);
    QtArguments arguments(name, options);
    const QGuiApplication application(arguments.count(), arguments.values());

    // Not before: Qt changes the environment, which other threads must not be reading then.
    start.readAppsAhead();
    const LinuxPlatform::Folders folders = start.folders(options.support);
    Machine machine(start, folders);
    Program program(machine, {.paths = VelloryPaths(folders.data, options.support),
                              .locale = start.sortLocale(),
                              .newID = Uuid::random,
                              .ownID = platformID,
                              .desktopApps = machine.platform.desktopApps(),
                              .calendar = Calendar(QTimeZone::systemTimeZoneId().toStdString())});
    program.controller.viewModel().setDark(options.dark.value_or(machine.platform.prefersDark()));
    if (!options.screenshot) {
        return stay(program, options, start, std::move(first));
    }
    program.model.start();
    const auto taken = takeScreenshot(
        *options.view, {program.controller, program.model, program.state, options.size},
        *options.screenshot);
    return taken ? 0 : fail(taken.error());
}

} // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    const auto options = CommandLine::parse(arguments);
    if (!options) {
        return fail(options.error());
    }
    if (options->help) {
        std::fputs(CommandLine::helpText().c_str(), stdout);
        return 0;
    }
    if (options->version) {
        std::printf("vellory %s\n", VELLORY_VERSION);
        return 0;
    }
    return run(*options, argv[0]);
}
