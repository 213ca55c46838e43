// SPDX-License-Identifier: Apache-2.0
#include "shell/SingleInstance.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QLocalSocket>
#include <QTimer>

namespace vellory {

namespace {

constexpr int longestMessage = 4096;
constexpr int patienceMilliseconds = 2000;

bool isSameUser(const QLocalSocket& socket) {
#ifdef SO_PEERCRED
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer,
                        &size) == 0 &&
           peer.uid == ::geteuid();
#else
    uid_t user = 0;
    gid_t group = 0;
    return ::getpeereid(static_cast<int>(socket.socketDescriptor()), &user, &group) == 0 &&
           user == ::geteuid();
#endif
}

QString nameOf(const std::filesystem::path& socket) {
    return QString::fromStdString(socket.string());
}

/// Makes the folder that holds the socket, for this user alone.
bool preparePrivateFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder.parent_path(), error);
    if (::mkdir(folder.c_str(), S_IRWXU) == 0) {
        return true;
    }
    struct stat info{};
    return ::lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::geteuid() && ::chmod(folder.c_str(), S_IRWXU) == 0;
}

} // namespace

std::filesystem::path SingleInstance::socketIn(const std::filesystem::path& runtimeFolder) {
    return runtimeFolder / "vellory" / "socket";
}

SingleInstance::SingleInstance(std::filesystem::path socket, QObject* parent)
    : QObject(parent), socket_(std::move(socket)) {
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::accept);
}

bool SingleInstance::handOver(const std::filesystem::path& socket, const std::string& message) {
    QLocalSocket connection;
    connection.connectToServer(nameOf(socket));
    if (!connection.waitForConnected(patienceMilliseconds) || !isSameUser(connection)) {
        return false;
    }
    connection.write(QByteArray::fromStdString(message) + '\n');
    // The answer says that the message was understood: only then may this program end.
    return connection.waitForBytesWritten(patienceMilliseconds) &&
           connection.waitForReadyRead(patienceMilliseconds);
}

bool SingleInstance::listen() {
    if (!preparePrivateFolder(socket_.parent_path())) {
        return false;
    }
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    if (server_.listen(nameOf(socket_))) {
        return true;
    }
    // Nobody answered before this is called, so what is there was left behind.
    QLocalServer::removeServer(nameOf(socket_));
    return server_.listen(nameOf(socket_));
}

void SingleInstance::accept() {
    while (QLocalSocket* connection = server_.nextPendingConnection()) {
        connect(connection, &QLocalSocket::disconnected, connection, &QObject::deleteLater);
        if (!isSameUser(*connection)) {
            connection->abort();
            continue;
        }
        QTimer::singleShot(patienceMilliseconds, connection, [connection] { connection->abort(); });
        const auto read = [this, connection] {
            if (connection->canReadLine()) {
                const QByteArray line = connection->readLine(longestMessage).trimmed();
                // Answered when it was done: a key pressed from then on is the launcher's.
                Q_EMIT received(QString::fromUtf8(line));
                connection->write("ok\n");
                connection->flush();
                connection->disconnectFromServer();
            } else if (connection->bytesAvailable() > longestMessage) {
                connection->abort();
            }
        };
        connect(connection, &QLocalSocket::readyRead, this, read);
        read();
    }
}

} // namespace vellory
