#include "app/first_process.h"

#include <QDataStream>
#include <QLocalSocket>
#include <utility>

namespace vantor {
namespace {

// Milliseconds.
constexpr int kPatience = 5000;

} // namespace

FirstProcess::FirstProcess(const QString& name) : m_name(name) {}

bool FirstProcess::handOver(const Files& files) const {
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(kPatience))
        return false;
    QStringList names;
    for (const auto& file : files)
        names.append(QString::fromStdString(file.string()));
    QDataStream out(&socket);
    out << names;
    while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(kPatience)) {
    }
    return socket.waitForReadyRead(kPatience);
}

void FirstProcess::listen(std::function<void(const Files&)> onFiles) {
    QObject::connect(
        &m_server, &QLocalServer::newConnection, &m_server, [this, onFiles = std::move(onFiles)] {
            while (QLocalSocket* const socket = m_server.nextPendingConnection()) {
                QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
                QObject::connect(socket, &QLocalSocket::readyRead, socket, [socket, onFiles] {
                    QDataStream in(socket);
                    in.startTransaction();
                    QStringList names;
                    in >> names;
                    if (!in.commitTransaction())
                        return;
                    socket->write("+");
                    socket->flush();
                    Files files;
                    for (const auto& name : names)
                        files.emplace_back(name.toStdString());
                    onFiles(files);
                });
            }
        });
    // A process that was killed leaves its socket's name behind.
    QLocalServer::removeServer(m_name);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    m_server.listen(m_name);
}

} // namespace vantor
