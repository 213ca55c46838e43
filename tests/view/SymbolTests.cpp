// SPDX-License-Identifier: Apache-2.0
#include "shell/images/Symbols.h"

#include <gtest/gtest.h>

#include <QSet>

#include "Ask/AskResolve.h"
#include "Ask/AskTemplates.h"
#include "Workspaces/WorkspaceTexts.h"
#include "shell/images/SymbolProvider.h"

namespace vellory::test {
namespace {

QImage drawn(std::string_view name) {
    SymbolProvider provider;
    const QString id = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    return provider.requestImage(id + "/ffffffff", nullptr, {36, 36});
}

TEST(Symbols, EveryOfferedOneIsDrawnAndLooksLikeNoOther) {
    QSet<QByteArray> seen;
    for (const Symbols::Group& group : Symbols::groups()) {
        for (const Symbols::Symbol& symbol : group.symbols) {
            EXPECT_TRUE(Symbols::isKnown(symbol.name)) << symbol.name;
            const QImage image = drawn(symbol.name);
            const QByteArray pixels(reinterpret_cast<const char*>(image.constBits()),
                                    image.sizeInBytes());
            EXPECT_TRUE(pixels.count('\0') < pixels.size()) << symbol.name << " is empty";
            EXPECT_FALSE(seen.contains(pixels)) << symbol.name << " is drawn twice";
            seen.insert(pixels);
        }
    }
    EXPECT_GE(seen.size(), 60);
}

// What the library writes into workspaces and notices has a drawing.
TEST(Symbols, TheLibrarysNamesAreKnown) {
    std::vector<std::string_view> names{WorkspaceTexts::closedSymbol,
                                        WorkspaceTexts::sessionBeganSymbol,
                                        WorkspaceTexts::sessionFinishedSymbol,
                                        WorkspaceTexts::windowsNeedPermissionSymbol,
                                        WorkspaceTexts::savedSymbol,
                                        AskResolve::plainSymbol,
                                        "camera.viewfinder",
                                        "clock.arrow.circlepath",
                                        "questionmark.circle"};
    for (const auto& task : AskTemplates::all) {
        names.push_back(task.symbol);
    }
    for (const std::string_view name : names) {
        EXPECT_TRUE(Symbols::isKnown(name)) << name;
    }
}

TEST(Symbols, AnUnknownNameShowsItsNearestOrTheFallback) {
    EXPECT_EQ(Symbols::file("envelope.badge.fill"), Symbols::file("envelope"));
    const QString fallback = Symbols::file("no.such.symbol");
    EXPECT_TRUE(fallback.endsWith("square-dashed.svg"));
    for (const QString& name : {QString(), QString("../../qml/Theme"), QString("lucide/timer"),
                                QString("."), QString(100'000, 'x')}) {
        EXPECT_EQ(Symbols::file(name), fallback) << name.left(40).toStdString();
    }
}

TEST(Symbols, OneIsFoundByTheBeginningsOfItsWords) {
    const auto found = [](const QString& typed) {
        QStringList names;
        for (const Symbols::Group& group : Symbols::groups()) {
            for (const Symbols::Symbol& symbol : group.symbols) {
                if (Symbols::matches(symbol, typed)) {
                    names.append(QString::fromUtf8(symbol.name.data()).section('"', 0, 0));
                }
            }
        }
        return names;
    };
    EXPECT_EQ(found("song"), QStringList{"music.note"});
    EXPECT_EQ(found("TRAV fl"), QStringList{"airplane"});
    EXPECT_TRUE(found("xyzzy").isEmpty());
    EXPECT_GE(found(" ").size(), 60);
}

} // namespace
} // namespace vellory::test
