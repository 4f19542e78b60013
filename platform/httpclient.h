#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class QNetworkAccessManager;
class QNetworkReply;

struct HttpReply
{
    int status = 0; // the server's HTTP status; 0 when none came
    // 0 when the transfer went through (whatever the status), else why not:
    // QNetworkReply's error numbers, TimeoutError when the server kept silent.
    int error = 0;
    QByteArray body; // at most the client's limit
};

// One HTTP GET at a time, answered on the event loop.
class HttpClient
{
public:
    virtual ~HttpClient() = default;
    // Starts the request and returns at once; `done` runs once, later, from
    // the event loop. A new get() or cancel() drops the request before it:
    // its `done` never runs.
    virtual void get(const QByteArray &url, std::function<void(const HttpReply &)> done) = 0;
    virtual void cancel() = 0;
};

// Over Qt's network access, made on first use: a program that never asks
// anything opens no connection and loads no network code.
class QtHttpClient : public QObject, public HttpClient
{
public:
    // A server silent for timeoutMs ends the request with TimeoutError; a body
    // longer than maxBytes is cut there and the transfer stopped.
    explicit QtHttpClient(int timeoutMs = 20000, qint64 maxBytes = 1024 * 1024);
    ~QtHttpClient() override;

    void get(const QByteArray &url, std::function<void(const HttpReply &)> done) override;
    void cancel() override;

private:
    void finish(int error);

    int m_timeoutMs;
    qint64 m_maxBytes;
    QNetworkAccessManager *m_network = nullptr;
    QPointer<QNetworkReply> m_reply;
    QByteArray m_body;
    QTimer m_silence;
    std::function<void(const HttpReply &)> m_done;
};
