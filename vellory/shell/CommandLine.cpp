// SPDX-License-Identifier: Apache-2.0
#include "shell/CommandLine.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

namespace vellory {

namespace {

/// A path the user gave, independent of the folder the program runs in later.
std::filesystem::path pathOf(const QString& text) {
    return std::filesystem::absolute(text.toStdString());
}

struct Options {
    QCommandLineOption hidden{"hidden", "Start in the background and wait to be summoned."};
    QCommandLineOption screenshot{"screenshot", "Render a view to a PNG file without a display.",
                                  "file"};
    QCommandLineOption view{
        "view", "The view to render: " + ScreenshotView::names().join(", ") + ".", "name", "grid"};
    QCommandLineOption size{"size", "Size of the picture, such as 1440x900.", "size", "1440x900"};
    QCommandLineOption scale{"scale", "Scale factor of the picture, 0.5 to 4.", "factor", "1"};
    QCommandLineOption dark{"dark", "Dark appearance."};
    QCommandLineOption light{"light", "Light appearance."};
    QCommandLineOption apps{"apps",
                            "Read desktop entries from this folder only. What is changed is "
                            "forgotten at the end, unless --support is given.",
                            "folder"};
    QCommandLineOption support{"support", "Keep everything in this folder.", "folder"};
    QCommandLineOption report{"report", "Say on standard output when the grid is on the screen."};
    QCommandLineOption help{{"h", "help"}, "Show this help."};
    QCommandLineOption version{{"v", "version"}, "Show the version."};

    void addTo(QCommandLineParser& parser) const {
        parser.setApplicationDescription("Every installed app on a grid that you arrange.");
        parser.addOptions({hidden, screenshot, view, size, scale, dark, light, apps, support,
                           report, help, version});
        parser.addPositionalArgument("link", "What to do: a vellory:// link.", "[link]");
    }
};

} // namespace

std::expected<CommandLine, std::string> CommandLine::parse(const QStringList& arguments) {
    const Options options;
    QCommandLineParser parser;
    options.addTo(parser);
    if (!parser.parse(arguments)) {
        return std::unexpected(parser.errorText().toStdString());
    }
    CommandLine out;
    for (const QString& argument : parser.positionalArguments()) {
        if (out.link || !argument.startsWith("vellory:")) {
            return std::unexpected("Unexpected argument: " + argument.toStdString());
        }
        out.link = argument.toStdString();
    }
    out.help = parser.isSet(options.help);
    out.version = parser.isSet(options.version);
    out.report = parser.isSet(options.report);
    if (parser.isSet(options.hidden)) {
        out.show = Show::hidden;
    }
    if (parser.isSet(options.screenshot)) {
        out.screenshot = pathOf(parser.value(options.screenshot));
    }
    const QString view = parser.value(options.view);
    out.view = ScreenshotView::named(view);
    if (out.view == nullptr) {
        return std::unexpected("There is no view named " + view.toStdString() + "; known are " +
                               ScreenshotView::names().join(", ").toStdString() + ".");
    }
    const QStringList sides = parser.value(options.size).split('x');
    constexpr int smallest = 320;
    constexpr int largest = 8192;
    out.size = sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
    if (out.size.width() < smallest || out.size.height() < smallest || out.size.width() > largest ||
        out.size.height() > largest) {
        return std::unexpected("A size is written as 1440x900, each side from 320 to 8192.");
    }
    out.scale = parser.value(options.scale).toDouble();
    if (!(out.scale >= 0.5 && out.scale <= 4)) {
        return std::unexpected("A scale factor lies between 0.5 and 4.");
    }
    if (parser.isSet(options.dark) || parser.isSet(options.light)) {
        out.dark = parser.isSet(options.dark);
    }
    if (out.view->dark) {
        out.dark = out.view->dark;
    }
    if (parser.isSet(options.apps)) {
        out.apps = pathOf(parser.value(options.apps));
    }
    if (parser.isSet(options.support)) {
        out.support = pathOf(parser.value(options.support));
    }
    return out;
}

std::string CommandLine::helpText() {
    const Options options;
    QCommandLineParser parser;
    options.addTo(parser);
    return parser.helpText().toStdString();
}

} // namespace vellory
