#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

// Fetches small documents over HTTP (a station's playlist, a CDDB reply), one
// at a time, without ever blocking: the answer comes from the event loop.
class HttpFetch
{
public:
    struct Reply
    {
        int status = 0; // the HTTP status; 0 when no answer came
        QByteArray body;
        QUrl url; // where the document came from, after redirects
        // Empty on success (a 2xx status with a whole body); "HTTP error 404
        // Not Found" for an error status, else what went wrong.
        QString error;
        // 0 when the transfer went through, whatever the status; else
        // QNetworkReply's error number (TimeoutError for a silent server).
        int transferError = 0;
        // The body went past maxBytes: a stream, maybe. body holds its first
        // maxBytes bytes.
        bool tooBig = false;
    };
    using Done = std::function<void(const Reply &reply)>;

    virtual ~HttpFetch() = default;
    // GETs url, following redirects. A body longer than maxBytes, or a server
    // silent for timeoutMs, fails. done runs once; a new get() or cancel()
    // drops the one before without calling it.
    virtual void get(const QUrl &url, qint64 maxBytes, int timeoutMs, Done done) = 0;
    virtual void cancel() = 0;
};

class QtHttpFetch : public HttpFetch
{
public:
    QtHttpFetch();
    ~QtHttpFetch() override;

    void get(const QUrl &url, qint64 maxBytes, int timeoutMs, Done done) override;
    void cancel() override;

private:
    void finish(const QString &error, int transferError = 0, bool tooBig = false);

    std::unique_ptr<QNetworkAccessManager> m_network; // made on first use
    QNetworkReply *m_reply = nullptr;
    QByteArray m_body;
    qint64 m_maxBytes = 0;
    Done m_done;
};
