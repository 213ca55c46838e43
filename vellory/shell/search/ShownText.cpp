// SPDX-License-Identifier: Apache-2.0
#include "shell/search/ShownText.h"

#include <QDir>

#include "Workspaces/WorkspaceTexts.h"

namespace vellory {

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString oneLine(const std::string& name) {
    constexpr qsizetype longest = 500; // far more than any view shows
    constexpr QChar isolate(0x2068);
    constexpr QChar endIsolate(0x2069);
    QString line = QString::fromStdString(name).left(longest);
    bool isDirected = false;
    for (QChar& each : line) {
        const auto category = each.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph) {
            each = ' ';
        }
        isDirected = isDirected || category == QChar::Other_Format;
    }
    line = line.simplified();
    if (line.isEmpty()) {
        return toQString(WorkspaceTexts::unnamed);
    }
    return isDirected ? isolate + line + endIsolate : line;
}

QString shortPath(const QString& path) {
    const QString home = QDir::homePath();
    const bool isBelow = path == home || path.startsWith(home + '/');
    return isBelow ? "~" + path.mid(home.size()) : path;
}

} // namespace vellory
