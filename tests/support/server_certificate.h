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

        m_certificate = QSslCertificate::fromPath(path("certificate")).value(0);
        QFile keyFile(path("key"));
        EXPECT_TRUE(keyFile.open(QIODevice::ReadOnly));
        const QSslKey key(&keyFile, QSsl::Ec);
        EXPECT_FALSE(m_certificate.isNull());
        EXPECT_FALSE(key.isNull());
        m_server.setLocalCertificate(m_certificate);
        m_server.setPrivateKey(key);
    }

    // What a server shows.
    [[nodiscard]] const QSslConfiguration& server() const { return m_server; }
    [[nodiscard]] const QSslCertificate& certificate() const { return m_certificate; }

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
    QSslCertificate m_certificate;
};

// As long as it lives, the certificate is one that this machine takes for an authority's.
class Trust {
public:
    explicit Trust(const ServerCertificate& in) {
        auto trusting = m_before;
        trusting.addCaCertificate(in.certificate());
        QSslConfiguration::setDefaultConfiguration(trusting);
    }
    Trust(const Trust&) = delete;
    Trust& operator=(const Trust&) = delete;
    ~Trust() { QSslConfiguration::setDefaultConfiguration(m_before); }

private:
    QSslConfiguration m_before = QSslConfiguration::defaultConfiguration();
};

} // namespace vantor::testing
