// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

#include <QLocalServer>
#include <QObject>

namespace vellory {

/// One running program for each user: a second start hands its wish to the first and ends.
///
/// They meet at a local socket in a folder that only the user may enter; who connects is checked to
/// be the same user all the same.
class SingleInstance : public QObject {
    Q_OBJECT

  public:
    /// The socket in the user's runtime folder, or below `fallback` where the session has none.
    static std::filesystem::path socketIn(const std::filesystem::path& runtimeFolder);

    explicit SingleInstance(std::filesystem::path socket, QObject* parent = nullptr);

    /// Hands `message` (one line) to the program that listens; false when there is none.
    static bool handOver(const std::filesystem::path& socket, const std::string& message);

    /// Starts to listen, in place of a socket left behind by a program that was killed. False when
    /// that is not possible; the program then works but cannot be summoned by another start.
    bool listen();

  Q_SIGNALS:
    void received(const QString& message);

  private:
    void accept();

    std::filesystem::path socket_;
    QLocalServer server_;
};

} // namespace vellory
