// SPDX-License-Identifier: Apache-2.0
#include "shell/images/Symbols.h"

#include <algorithm>
#include <unordered_map>

#include <QFile>
#include <QStringList>

namespace vellory::Symbols {

namespace {

const std::vector<Group> groupTable = {
    {"General",
     {
         {"sparkles", "sparkles", "magic idea new"},
         {"star", "star", "favourite best"},
         {"heart", "heart", "love health"},
         {"flag", "flag", "goal country"},
         {"bookmark", "bookmark", "later keep"},
         {"bell", "bell", "alarm notice"},
         {"bolt", "zap", "power quick energy"},
         {"flame", "flame", "hot streak"},
         {"target", "target", "goal focus aim"},
         {"lightbulb", "lightbulb", "idea think"},
         {"tag", "tag", "label"},
         {"pin", "pin", "keep"},
         {"rectangle.3.group", "layout-panel-left", "workspace windows layout"},
         {"camera.viewfinder", "focus", "snapshot capture"},
         {"square.grid.2x2", "layout-grid", "apps grid"},
         {"macwindow", "app-window", "window app"},
         {"gearshape", "", "settings tools"},
     }},
    {"Work",
     {
         {"briefcase", "briefcase", "job office business"},
         {"calendar", "calendar", "date plan meeting"},
         {"checklist", "list-checks", "tasks todo plan"},
         {"checkmark.circle.fill", "circle-check-big", "done finished"},
         {"tray", "inbox", "inbox mail"},
         {"doc.text", "file-text", "document writing report"},
         {"folder", "", "files documents"},
         {"chart.bar", "", "numbers statistics report"},
         {"chart.pie", "chart-pie", "numbers share statistics"},
         {"chart.line.uptrend.xyaxis", "trending-up", "growth stocks sales"},
         {"creditcard", "credit-card", "money bank pay finance"},
         {"building.2", "building-2", "company office"},
         {"person", "user", "me people"},
         {"person.2", "users", "team people meeting"},
         {"list.clipboard", "clipboard-list", "notes survey"},
         {"printer", "printer", "paper"},
         {"cart", "shopping-cart", "shop buy orders"},
         {"lock", "lock", "private secret"},
         {"key", "key-round", "password secret"},
         {"scale.3d", "scale", "law balance justice"},
     }},
    {"Making",
     {
         {"hammer", "hammer", "build craft"},
         {"wrench.and.screwdriver", "wrench", "repair tools fix"},
         {"terminal", "square-terminal", "command shell console code"},
         {"chevron.left.forwardslash.chevron.right", "code-xml", "code program develop"},
         {"cpu", "cpu", "chip hardware"},
         {"server.rack", "server", "host data"},
         {"ladybug", "bug", "debug test error"},
         {"paintbrush", "paintbrush", "design art draw"},
         {"paintbrush.pointed", "brush", "design art draw"},
         {"paintpalette", "", "colour art design"},
         {"pencil", "", "edit draw"},
         {"pencil.line", "pencil-line", "writing draft"},
         {"ruler", "ruler", "measure plan"},
         {"scissors", "scissors", "cut craft"},
         {"cube", "box", "3d model package"},
         {"wand.and.stars", "wand-sparkles", "magic effects"},
     }},
    {"Learning",
     {
         {"book", "book-open", "read study"},
         {"books.vertical", "library", "research read study"},
         {"graduationcap", "graduation-cap", "school study university"},
         {"newspaper", "newspaper", "news press"},
         {"highlighter", "highlighter", "mark study"},
         {"character.book.closed", "languages", "language translate"},
         {"atom", "atom", "science physics"},
         {"flask", "flask-conical", "science chemistry lab"},
         {"sum", "sigma", "maths numbers"},
         {"globe", "globe", "web world browser"},
         {"magnifyingglass", "", "search research"},
         {"brain", "brain", "think mind"},
     }},
    {"Talking",
     {
         {"envelope", "mail", "email post"},
         {"bubble.left", "message-circle", "chat message"},
         {"bubble.left.and.bubble.right", "messages-square", "chat talk"},
         {"phone", "phone", "call"},
         {"video", "video", "call meeting film"},
         {"mic", "mic", "record podcast voice"},
         {"megaphone", "megaphone", "marketing announce"},
         {"paperplane", "send", "send message"},
         {"at", "at-sign", "email address"},
         {"antenna.radiowaves.left.and.right", "radio", "broadcast stream live"},
     }},
    {"Media",
     {
         {"music.note", "music", "song listen"},
         {"headphones", "headphones", "listen podcast"},
         {"film", "film", "movie video cut"},
         {"photo", "", "picture image"},
         {"camera", "camera", "picture shoot"},
         {"tv", "tv", "watch series"},
         {"play.circle", "circle-play", "watch start"},
         {"gamecontroller", "gamepad-2", "game play"},
         {"theatermasks", "drama", "theatre stage"},
         {"speaker.wave.2", "volume-2", "sound"},
     }},
    {"Life",
     {
         {"house", "house", "home"},
         {"cup.and.saucer", "coffee", "break tea"},
         {"fork.knife", "utensils", "food cook eat"},
         {"bed.double", "bed-double", "sleep rest"},
         {"airplane", "plane", "travel flight"},
         {"car", "car", "drive"},
         {"bicycle", "bike", "ride sport"},
         {"map", "map", "travel places"},
         {"dumbbell", "dumbbell", "sport fitness"},
         {"leaf", "leaf", "nature plant"},
         {"tree", "tree-pine", "nature wood"},
         {"sun.max", "sun", "day morning"},
         {"moon", "moon", "night evening focus"},
         {"cloud", "cloud", "weather online"},
         {"pawprint", "paw-print", "animal pet"},
         {"stethoscope", "stethoscope", "health doctor"},
         {"gift", "gift", "present birthday"},
     }},
    {"Devices",
     {
         {"display", "monitor", "screen desk"},
         {"laptopcomputer", "laptop", "notebook"},
         {"keyboard", "keyboard", "type"},
         {"timer", "timer", "focus session time"},
         {"clock", "clock", "time hours"},
         {"hourglass", "hourglass", "time wait"},
     }},
};

/// Worn by buttons, menus and notices only.
const std::vector<Symbol> controlTable = {
    {"questionmark.circle", "circle-question-mark"},
    {"plus", "plus"},
    {"minus", "minus"},
    {"xmark", "x"},
    {"trash", "trash-2"},
    {"square.on.square", "copy"},
    {"play", "play"},
    {"stop", "square"},
    {"link", "link"},
    {"doc", "file"},
    {"doc.badge.plus", "file-plus"},
    {"chevron.left", "chevron-left"},
    {"chevron.up", "chevron-up"},
    {"chevron.down", "chevron-down"},
    {"line.3.horizontal", "grip-vertical"},
    {"ellipsis", "ellipsis"},
    {"arrow.uturn.backward", "undo-2"},
    {"calendar.badge.clock", "calendar-clock"},
    {"arrow.left", "arrow-left"},
    {"arrow.right", "arrow-right"},
    {"square.dashed", "square-dashed"},
};

constexpr auto folder = ":/qt/qml/Vellory/symbols/";
constexpr auto fallback = ":/qt/qml/Vellory/symbols/lucide/square-dashed.svg";

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

/// The resource with the drawing of exactly that name; empty for none.
QString exactFile(const QString& name) {
    static const auto drawings = [] {
        std::unordered_map<QString, QString> table;
        const auto add = [&](const Symbol& symbol) {
            if (!symbol.drawing.empty()) {
                table.emplace(text(symbol.name),
                              folder + ("lucide/" + text(symbol.drawing) + ".svg"));
            }
        };
        for (const Group& group : groupTable) {
            std::ranges::for_each(group.symbols, add);
        }
        std::ranges::for_each(controlTable, add);
        return table;
    }();
    if (const auto drawing = drawings.find(name); drawing != drawings.end()) {
        return drawing->second;
    }
    if (name.isEmpty() || name.contains('/')) {
        return {};
    }
    const QString own = folder + name + ".svg";
    return QFile::exists(own) ? own : QString();
}

} // namespace

std::span<const Group> groups() {
    return groupTable;
}

bool isKnown(std::string_view name) {
    return !exactFile(text(name)).isEmpty();
}

QString file(const QString& name) {
    constexpr qsizetype longest = 100; // no symbol's name comes near
    for (QString shorter = name.left(longest); !shorter.isEmpty();
         shorter.truncate(std::max<qsizetype>(shorter.lastIndexOf('.'), 0))) {
        if (const QString found = exactFile(shorter); !found.isEmpty()) {
            return found;
        }
    }
    return fallback;
}

bool matches(const Symbol& symbol, const QString& typed) {
    const QStringList wanted = typed.toLower().simplified().split(' ', Qt::SkipEmptyParts);
    const QStringList words =
        (text(symbol.name).replace('.', ' ') + ' ' + text(symbol.words)).split(' ');
    return std::ranges::all_of(wanted, [&](const QString& word) {
        return std::ranges::any_of(
            words, [&](const QString& candidate) { return candidate.startsWith(word); });
    });
}

} // namespace vellory::Symbols
