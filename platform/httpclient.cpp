#include "httpclient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

QtHttpClient::QtHttpClient(int timeoutMs, qint64 maxBytes)
    : m_timeoutMs(timeoutMs), m_maxBytes(maxBytes)
{
    m_silence.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, [this] { finish(QNetworkReply::TimeoutError); });
}

QtHttpClient::~QtHttpClient()
{
    cancel();
}

void QtHttpClient::get(const QByteArray &url, std::function<void(const HttpReply &)> done)
{
    cancel();
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    m_done = std::move(done);
    m_body.clear();
    // Tolerant: "+" and "@" in a query stay as written.
    QNetworkRequest request(QUrl::fromEncoded(url, QUrl::TolerantMode));
    QNetworkReply *reply = m_network->get(request);
    m_reply = reply;
    // The timeout counts silence, so a slow but living server is not cut off.
    m_silence.start(m_timeoutMs);
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        if (reply != m_reply)
            return;
        m_silence.start(m_timeoutMs);
        m_body += reply->read(m_maxBytes - m_body.size());
        if (m_body.size() >= m_maxBytes)
            finish(QNetworkReply::NoError); // enough: what came is the answer
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        if (reply != m_reply)
            return;
        m_body += reply->read(m_maxBytes - m_body.size());
        finish(reply->error());
    });
}

void QtHttpClient::finish(int error)
{
    QNetworkReply *reply = m_reply;
    if (!reply)
        return;
    HttpReply answer;
    answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // An error status is the server's answer, not a failed transfer.
    answer.error = error >= QNetworkReply::ContentAccessDenied &&
                           error <= QNetworkReply::UnknownServerError && answer.status > 0
                       ? 0
                       : error;
    answer.body = m_body;
    std::function<void(const HttpReply &)> done = std::move(m_done);
    cancel();
    if (done)
        done(answer);
}

void QtHttpClient::cancel()
{
    m_silence.stop();
    m_done = nullptr;
    m_body.clear();
    if (QNetworkReply *reply = m_reply) {
        m_reply.clear();
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}
