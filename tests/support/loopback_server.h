// LoopbackServer: a web server on this machine's loopback address that answers as the test says, byte by byte.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QHostAddress>
#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vantor::testing {

class LoopbackServer {
public:
    // Is given the connection of a request that is complete; it may keep it until the server goes away.
    using Respond = std::function<void(QTcpSocket& socket)>;

    explicit LoopbackServer(Respond respond)
        : LoopbackServer(std::make_unique<QTcpServer>(), "http", std::move(respond)) {}

    // Speaks https.
    LoopbackServer(const QSslConfiguration& tls, Respond respond)
        : LoopbackServer(serverFor(tls), "https", std::move(respond)) {}

    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    ~LoopbackServer() = default;

    [[nodiscard]] std::string address(const std::string& path = "/") const {
        return std::string(m_scheme) + "://127.0.0.1:" + std::to_string(m_server->serverPort()) + path;
    }

    // What was asked so far: request lines with their headers.
    std::vector<std::string> requests;
    int connections = 0;

private:
    LoopbackServer(std::unique_ptr<QTcpServer> server, const char* scheme, Respond respond)
        : m_server(std::move(server)),
          m_scheme(scheme),
          m_respond(std::move(respond)) {
        QObject::connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, m_server.get(),
                         [this] { accept(); });
        EXPECT_TRUE(m_server->listen(QHostAddress::LocalHost)) << m_server->errorString().toStdString();
    }

    static std::unique_ptr<QTcpServer> serverFor(const QSslConfiguration& tls) {
        auto server = std::make_unique<QSslServer>();
        server->setSslConfiguration(tls);
        return server;
    }

    void accept() {
        while (auto* const socket = m_server->nextPendingConnection()) {
            ++connections;
            auto request = std::make_shared<QByteArray>();
            const auto read = [this, socket, request] {
                *request += socket->readAll();
                if (!request->contains("\r\n\r\n"))
                    return;
                requests.push_back(request->toStdString());
                request->clear();
                m_respond(*socket);
            };
            QObject::connect(socket, &QTcpSocket::readyRead, m_server.get(), read);
            read();
        }
    }

    std::unique_ptr<QTcpServer> m_server;
    const char* m_scheme;
    Respond m_respond;
};

// A whole response with the given status, headers ("Name: value\r\n") and body.
inline QByteArray response(const std::string& body, const std::string& status = "200 OK",
                           const std::string& headers = "") {
    return QByteArray::fromStdString("HTTP/1.1 " + status + "\r\nContent-Length: " +
                                     std::to_string(body.size()) + "\r\n" + headers + "\r\n" + body);
}

inline LoopbackServer::Respond answering(const std::string& body, const std::string& status = "200 OK",
                                         const std::string& headers = "") {
    return [=](QTcpSocket& socket) { socket.write(response(body, status, headers)); };
}

inline LoopbackServer::Respond redirecting(const std::string& to, const std::string& status = "302 Found") {
    return answering("elders", status, "Location: " + to + "\r\n");
}

} // namespace vantor::testing
