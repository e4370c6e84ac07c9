// ServerCertificate: a self-signed certificate, made by the openssl program, for a server of the test's own.
#pragma once

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QStringList>
#include <fstream>
#include <string>

namespace vantor::testing {

class ServerCertificate {
public:
    // `name` as the extension for alternative names writes it; a negative number of days has run out already.
    explicit ServerCertificate(const std::string& name = "IP:127.0.0.1", int days = 2) {
        std::ofstream(m_folder / "extensions")
            << "basicConstraints=critical,CA:TRUE\nsubjectAltName=" << name << '\n';
        run({"req", "-new", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-subj",
             "/CN=vantor.example", "-keyout", path("key"), "-out", path("request")});
        run({"x509", "-req", "-in", path("request"), "-signkey", path("key"), "-days", QString::number(days),
             "-extfile", path("extensions"), "-out", path("certificate")});

        const auto certificate = QSslCertificate::fromPath(path("certificate")).value(0);
        QFile keyFile(path("key"));
        EXPECT_TRUE(keyFile.open(QIODevice::ReadOnly));
        const QSslKey key(&keyFile, QSsl::Ec);
        EXPECT_FALSE(certificate.isNull());
        EXPECT_FALSE(key.isNull());
        m_server.setLocalCertificate(certificate);
        m_server.setPrivateKey(key);
    }

    // What a server shows.
    [[nodiscard]] const QSslConfiguration& server() const { return m_server; }
    // For a client that is to trust it.
    [[nodiscard]] std::string file() const { return (m_folder / "certificate").string(); }

private:
    [[nodiscard]] QString path(const char* name) const {
        return QString::fromStdString((m_folder / name).string());
    }

    static void run(const QStringList& arguments) {
        QProcess openssl;
        openssl.start(QStringLiteral("openssl"), arguments);
        EXPECT_TRUE(openssl.waitForFinished());
        EXPECT_EQ(openssl.exitCode(), 0) << openssl.readAllStandardError().toStdString();
    }

    TemporaryFolder m_folder;
    QSslConfiguration m_server = QSslConfiguration::defaultConfiguration();
};

} // namespace vantor::testing
