#pragma once

#include "cddbreply.h"

#include "platform/httpfetch.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

// Looks a disc up on a CDDB server over HTTP: a query for the disc's
// identity, then, when the server knows it, a read of its entry. One
// exchange at a time, on the event loop; what it finds and what the user
// should see come out as signals.
class CddbClient : public QObject
{
    Q_OBJECT
public:
    // The settings it reads at each query; they outlive the client.
    struct Options
    {
        const QString &CDDBcmd; // the address up to and with "?cmd="
        const QString &EmailID; // user@host, sent as the hello
    };
    struct Disc
    {
        QString id;           // CDDBId
        QList<qint32> frames; // each track's start, lead-in included
        qint32 seconds = 0;
    };
    // The step an exchange is at.
    enum class Step { Done, QuerySent, ReadSent };

    // A server silent for timeoutMs ends the lookup with an error.
    CddbClient(HttpFetch &http, Options options, int timeoutMs = 20000, QObject *parent = nullptr);

    // "&hello=user+host+NON+0.1&proto=4"; nothing when the address has no
    // user or no host around its first "@".
    static std::optional<QString> helloSuffix(const QString &email);
    static QString queryUrl(const QString &cmd, const Disc &disc, const QString &hello);
    static QString readUrl(const QString &cmd, const QString &category, const QString &id,
                           const QString &hello);

    // Starts the lookup; an exchange already running is dropped.
    void CDDBQuery(const Disc &disc);
    void cancel();
    Step step() const { return m_step; }

signals:
    // For the status line: "Looking for Album on CDDB server..." and the rest.
    void statusText(const QString &text);
    // For a message box.
    void message(const QString &text);
    // The disc's entry, read for the disc of the last query.
    void entryRead(const QString &discId, const CddbDiscEntry &entry);

private:
    void Inet1_StateChanged(const HttpFetch::Reply &reply);
    void send(const QString &url);

    HttpFetch &m_http;
    Options m_options;
    int m_timeoutMs;
    Step m_step = Step::Done;
    Disc m_disc;
    QString m_hello;
};
