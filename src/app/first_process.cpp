#include "app/first_process.h"

#include "platform/own_peer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <thread>
#include <utility>

namespace vantor {
namespace {

using namespace std::chrono_literals;

// What the owner says.
constexpr char kReady = 'r';
constexpr char kAlive = '.';
constexpr char kDone = 'd';
// What the later start says, behind its message.
constexpr char kGo = 'g';

constexpr auto kBetweenTries = 50ms;
constexpr auto kBetweenSignsOfLife = 500ms;
// Longer than anybody waits who means it.
constexpr auto kLongestSilence = 30s;

int milliseconds(std::chrono::milliseconds time) {
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(time.count(), 0));
}

bool isConnected(const QLocalSocket& socket) {
    return socket.state() == QLocalSocket::ConnectedState;
}

// One later start, from the owner's side. Lives as long as its socket.
class Guest : public QObject {
public:
    Guest(QLocalSocket* socket, FirstProcess::OnFiles onFiles)
        : QObject(socket),
          m_socket(*socket),
          m_onFiles(std::move(onFiles)) {
        m_timer.setSingleShot(true);
        m_timer.callOnTimeout(this, [this] { m_socket.abort(); });
        m_timer.start(kLongestSilence);
        QObject::connect(socket, &QLocalSocket::readyRead, this, [this] { takeBytes(); });
        takeBytes();
    }

private:
    enum class State { Receiving, Ready, Opening };

    void takeBytes() {
        m_received.append(m_socket.readAll());
        if (m_received.isEmpty())
            return;
        if (m_state == State::Receiving)
            takeMessage();
        else if (m_state == State::Ready && m_received == QByteArray(1, kGo))
            open();
        else
            m_socket.abort();
    }

    void takeMessage() {
        auto reading = readHandOver({m_received.constData(), static_cast<std::size_t>(m_received.size())});
        if (reading.state == HandOverReading::State::Malformed)
            return m_socket.abort();
        if (reading.state == HandOverReading::State::Incomplete)
            return;
        m_message = std::move(reading.message);
        m_received.clear();
        m_state = State::Ready;
        say(kReady);
    }

    void open() {
        m_received.clear();
        m_state = State::Opening;
        m_timer.stop();
        m_timer.setSingleShot(false);
        m_timer.disconnect();
        m_timer.callOnTimeout(this, [this] { say(kAlive); });
        m_timer.start(kBetweenSignsOfLife);
        if (!isWaiting())
            return;
        m_onFiles({std::move(m_message.files), m_message.handedBeforeAt,
                   [self = QPointer<Guest>(this)] { return self && self->isWaiting(); },
                   [self = QPointer<Guest>(this)](bool opened) {
                       if (self)
                           self->finish(opened);
                   }});
    }

    // Whether the start is still there, by what has happened to its end until now.
    bool isWaiting() {
        if (isConnected(m_socket))
            m_socket.waitForReadyRead(0);
        return isConnected(m_socket);
    }

    void finish(bool opened) {
        m_timer.stop();
        if (!opened)
            return m_socket.abort();
        say(kDone);
        m_socket.disconnectFromServer();
    }

    void say(char what) {
        m_socket.write(&what, 1);
        m_socket.flush();
    }

    QLocalSocket& m_socket;
    FirstProcess::OnFiles m_onFiles;
    State m_state = State::Receiving;
    QByteArray m_received;
    HandOverMessage m_message;
    QTimer m_timer;
};

} // namespace

// How long an owner may still stay silent.
class FirstProcess::Patience {
public:
    explicit Patience(std::chrono::milliseconds all) : m_all(all) { renew(); }

    void renew() { m_since.start(); }
    [[nodiscard]] std::chrono::milliseconds left() const {
        return m_all - std::chrono::milliseconds(m_since.elapsed());
    }

private:
    std::chrono::milliseconds m_all;
    QElapsedTimer m_since;
};

FirstProcess::FirstProcess(ProcessLock& lock, QStringList places, std::chrono::milliseconds patience)
    : m_lock(lock),
      m_places(std::move(places)),
      m_patience(patience) {}

FirstProcess::Role FirstProcess::begin(const std::vector<std::filesystem::path>& files) {
    Patience patience(m_patience);
    while (true) {
        const auto attempt = m_lock.tryTake();
        // Also who holds the lock asks first, as an owner may be there that got none.
        const auto talk = handOver(files, patience);
        if (talk == Talk::Lost && attempt != ProcessLock::Attempt::HeldByOther) {
            listen();
            return Role::Owner;
        }
        m_lock.release();
        if (talk == Talk::Done)
            return Role::HandedOver;
        if (talk == Talk::Quiet || patience.left() <= 0ms)
            return Role::Unanswered;
        std::this_thread::sleep_for(kBetweenTries);
    }
}

// The files were handed to the first owner that let itself be reached.
FirstProcess::Talk FirstProcess::handOver(const std::vector<std::filesystem::path>& files,
                                          Patience& patience) {
    for (const auto& place : placesToTry()) {
        if (!isOwnSocketName(QFile::encodeName(place).toStdString()))
            continue;
        QLocalSocket socket;
        socket.connectToServer(place);
        if (socket.waitForConnected(milliseconds(patience.left())) && isOwnPeer(socket.socketDescriptor()))
            return talk(socket, files, patience);
    }
    return Talk::Lost;
}

QStringList FirstProcess::placesToTry() const {
    auto places = m_places;
    if (const auto told = m_lock.told(); !told.empty()) {
        const auto place = QFile::decodeName(QByteArray::fromStdString(told));
        places.removeAll(place);
        places.prepend(place);
    }
    return places;
}

FirstProcess::Talk FirstProcess::talk(QLocalSocket& socket, const std::vector<std::filesystem::path>& files,
                                      Patience& patience) {
    const auto message = writeHandOver({files, m_handedBeforeAt});
    if (!message)
        return Talk::Quiet;
    socket.write(message->data(), static_cast<qint64>(message->size()));
    while (patience.left() > 0ms) {
        char said = 0;
        if (!socket.getChar(&said)) {
            if (!socket.waitForReadyRead(milliseconds(patience.left())) && !isConnected(socket))
                return Talk::Lost;
            continue;
        }
        if (said == kDone)
            return Talk::Done;
        if (said != kReady && said != kAlive)
            return Talk::Lost;
        patience.renew();
        if (said == kReady) {
            if (!m_handedBeforeAt)
                m_handedBeforeAt = Timestamp::now();
            socket.putChar(kGo);
            socket.flush();
        }
    }
    return Talk::Quiet;
}

void FirstProcess::listen() {
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    for (const auto& place : std::as_const(m_places)) {
        // A process that was killed leaves its socket's name behind.
        QLocalServer::removeServer(place);
        if (m_server.listen(place)) {
            QFile::setPermissions(m_server.fullServerName(), QFile::ReadOwner | QFile::WriteOwner);
            m_lock.tell(QFile::encodeName(m_server.fullServerName()).toStdString());
            return;
        }
    }
}

void FirstProcess::serve(OnFiles onFiles) {
    m_onFiles = std::move(onFiles);
    const auto welcomeAll = [this] {
        while (auto* const socket = m_server.nextPendingConnection())
            welcome(socket);
    };
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, welcomeAll);
    welcomeAll();
}

void FirstProcess::welcome(QLocalSocket* socket) {
    QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    new Guest(socket, m_onFiles);
}

} // namespace vantor
