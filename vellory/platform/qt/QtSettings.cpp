// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtSettings.h"

#include <QStringList>
#include <QVariant>

namespace vellory {

namespace {

QAnyStringView view(std::string_view key) {
    return QUtf8StringView(key.data(), static_cast<qsizetype>(key.size()));
}

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};

} // namespace

QtSettings::QtSettings(const std::filesystem::path& file)
    : settings_(QString::fromStdString(file.string()), QSettings::IniFormat) {}

std::optional<UserDefaults::Value> QtSettings::value(std::string_view key) const {
    const QVariant stored = settings_.value(view(key).toString());
    switch (stored.typeId()) {
    case QMetaType::UnknownType:
        return std::nullopt;
    case QMetaType::Bool:
        return stored.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return std::int64_t{stored.toLongLong()};
    case QMetaType::Double:
        return stored.toDouble();
    case QMetaType::QStringList: {
        std::vector<std::string> list;
        for (const QString& element : stored.toStringList()) {
            list.push_back(element.toStdString());
        }
        return list;
    }
    default:
        return stored.toString().toStdString();
    }
}

void QtSettings::set(std::string_view key, const Value& value) {
    const QVariant stored = std::visit(
        Overloaded{[](bool flag) { return QVariant(flag); },
                   [](std::int64_t number) { return QVariant(static_cast<qlonglong>(number)); },
                   [](double number) { return QVariant(number); },
                   [](const std::string& text) { return QVariant(QString::fromStdString(text)); },
                   [](const std::vector<std::string>& list) {
                       QStringList strings;
                       for (const auto& element : list) {
                           strings.append(QString::fromStdString(element));
                       }
                       return QVariant(strings);
                   }},
        value);
    settings_.setValue(view(key).toString(), stored);
}

void QtSettings::remove(std::string_view key) {
    settings_.remove(view(key).toString());
}

} // namespace vellory
