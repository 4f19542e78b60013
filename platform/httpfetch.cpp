#include "httpfetch.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

QtHttpFetch::QtHttpFetch() = default;

QtHttpFetch::~QtHttpFetch()
{
    cancel();
}

void QtHttpFetch::get(const QUrl &url, qint64 maxBytes, int timeoutMs, Done done)
{
    cancel();
    if (!m_network)
        m_network = std::make_unique<QNetworkAccessManager>();
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(5);
    request.setTransferTimeout(timeoutMs);
    request.setHeader(QNetworkRequest::UserAgentHeader, QByteArrayLiteral("Velto"));
    m_body.clear();
    m_maxBytes = maxBytes;
    m_done = std::move(done);
    m_reply = m_network->get(request);
    QNetworkReply *reply = m_reply;
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [this, reply] {
        if (reply != m_reply)
            return;
        m_body += reply->read(m_maxBytes + 1 - m_body.size());
        // A stream where a document was expected never ends: stop reading.
        if (m_body.size() > m_maxBytes)
            finish(QStringLiteral("the answer is larger than %1 bytes").arg(m_maxBytes), 0, true);
    });
    QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply] {
        if (reply != m_reply)
            return;
        m_body += reply->read(m_maxBytes + 1 - m_body.size());
        QString error;
        int transferError = 0;
        bool tooBig = false;
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (status != 0 && (status < 200 || status > 299)) {
            error =
                QStringLiteral("HTTP error %1 %2")
                    .arg(status)
                    .arg(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString())
                    .trimmed();
        } else if (reply->error() != QNetworkReply::NoError) {
            error = reply->errorString();
            // Only the transfer timeout aborts a reply still connected to us.
            transferError = reply->error() == QNetworkReply::OperationCanceledError
                                ? QNetworkReply::TimeoutError
                                : reply->error();
        } else if ((tooBig = m_body.size() > m_maxBytes)) {
            error = QStringLiteral("the answer is larger than %1 bytes").arg(m_maxBytes);
        }
        finish(error, transferError, tooBig);
    });
}

void QtHttpFetch::finish(const QString &error, int transferError, bool tooBig)
{
    QNetworkReply *reply = m_reply;
    Reply result;
    result.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    result.url = reply->url();
    result.error = error;
    result.transferError = transferError;
    result.tooBig = tooBig;
    if (error.isEmpty() || tooBig)
        result.body = m_body.left(m_maxBytes);
    Done done = std::move(m_done);
    m_done = nullptr;
    m_reply = nullptr;
    reply->disconnect();
    reply->abort();
    reply->deleteLater();
    m_body.clear();
    if (done)
        done(result);
}

void QtHttpFetch::cancel()
{
    if (!m_reply)
        return;
    QNetworkReply *reply = m_reply;
    m_reply = nullptr;
    m_done = nullptr;
    reply->disconnect();
    reply->abort();
    reply->deleteLater();
}
