#include "platform/qt/qt_http_client.h"

#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>
#include <utility>

namespace vantor {
namespace {

constexpr int kMostRedirects = 20;

using OnAnswer = std::function<void(std::optional<std::string> body)>;

bool isLoopback(const QString& host) {
    return host.compare(u"localhost", Qt::CaseInsensitive) == 0 || QHostAddress(host).isLoopback();
}

bool mayBeAsked(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == u"https" || (url.scheme() == u"http" && isLoopback(url.host())));
}

QNetworkRequest requestFor(const QUrl& url) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    return request;
}

// An error status is an answer all the same; anything else that went wrong is none.
bool isWhole(const QNetworkReply& reply) {
    switch (reply.error()) {
    case QNetworkReply::NoError:
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return true;
    default:
        return (reply.error() >= QNetworkReply::ContentAccessDenied &&
                reply.error() <= QNetworkReply::UnknownContentError) ||
               (reply.error() >= QNetworkReply::InternalServerError &&
                reply.error() <= QNetworkReply::UnknownServerError);
    }
}

// One request with its redirects; destroys itself when it calls back.
class Question final : public QObject {
public:
    Question(QUrl url, const HttpLimits& limits, OnAnswer onAnswer, QObject* parent)
        : QObject(parent),
          m_url(std::move(url)),
          m_mostBytes(static_cast<qint64>(limits.mostBytes)),
          m_onAnswer(std::move(onAnswer)) {
        // The toolkit's own time-out is put off by every byte, so that a trickle would never end.
        startTimer(m_whole, limits.whole);
        startTimer(m_silence, limits.silence);
        if (mayBeAsked(m_url))
            send();
        else
            settle(std::nullopt);
    }

private:
    void startTimer(QTimer& timer, std::chrono::milliseconds time) {
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, this, [this] { settle(std::nullopt); });
        timer.start(time);
    }

    void send() {
        m_reply = m_network.get(requestFor(m_url));
        connect(m_reply, &QNetworkReply::metaDataChanged, this, [this] { m_silence.start(); });
        connect(m_reply, &QNetworkReply::readyRead, this, &Question::read);
        connect(m_reply, &QNetworkReply::finished, this, &Question::finish);
    }

    void read() {
        m_silence.start();
        m_body += m_reply->read(m_mostBytes + 1 - m_body.size());
        if (m_body.size() > m_mostBytes)
            settle(std::nullopt);
    }

    void finish() {
        read();
        if (m_isSettled)
            return;
        const auto target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (!isWhole(*m_reply))
            settle(std::nullopt);
        else if (!target.isEmpty())
            follow(m_url.resolved(target));
        else
            settle(m_body.toStdString());
    }

    void follow(const QUrl& to) {
        if (!mayBeAsked(to) || to.scheme() != m_url.scheme() || ++m_redirects > kMostRedirects) {
            settle(std::nullopt);
            return;
        }
        m_url = to;
        m_body.clear();
        m_reply->deleteLater();
        send();
    }

    void settle(std::optional<std::string> body) {
        m_isSettled = true;
        m_whole.stop();
        m_silence.stop();
        if (m_reply != nullptr) {
            m_reply->disconnect(this);
            m_reply->abort();
        }
        m_answer = std::move(body);
        // Not from within what the toolkit announces: whoever is called may destroy the client.
        QMetaObject::invokeMethod(this, &Question::callBack, Qt::QueuedConnection);
    }

    void callBack() {
        deleteLater();
        const auto onAnswer = std::move(m_onAnswer);
        onAnswer(std::move(m_answer));
    }

    QUrl m_url;
    qint64 m_mostBytes;
    OnAnswer m_onAnswer;
    QNetworkAccessManager m_network;
    QNetworkReply* m_reply = nullptr;
    QByteArray m_body;
    int m_redirects = 0;
    bool m_isSettled = false;
    std::optional<std::string> m_answer;
    QTimer m_whole;
    QTimer m_silence;
};

} // namespace

void QtHttpClient::get(std::string_view address, const HttpLimits& limits, OnAnswer onAnswer) {
    const QUrl url(QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())),
                   QUrl::StrictMode);
    // Owned by m_questions.
    new Question(url, limits, std::move(onAnswer), &m_questions);
}

} // namespace vantor
