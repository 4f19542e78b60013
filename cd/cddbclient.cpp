#include "cddbclient.h"

namespace {

// An entry is a few kilobytes: a megabyte is plenty, and what comes past it
// is cut off rather than waited for.
constexpr qint64 kMaxReplyBytes = 1024 * 1024;

} // namespace

CddbClient::CddbClient(HttpFetch &http, Options options, int timeoutMs, QObject *parent)
    : QObject(parent), m_http(http), m_options(options), m_timeoutMs(timeoutMs)
{
}

std::optional<QString> CddbClient::helloSuffix(const QString &email)
{
    const qsizetype at = email.indexOf(QLatin1Char('@'));
    if (at < 1 || at == email.size() - 1)
        return std::nullopt;
    // "NON" and "0.1" are the client's name and version the servers log.
    return QStringLiteral("&hello=") + email.left(at) + QLatin1Char('+') + email.mid(at + 1) +
           QStringLiteral("+NON+0.1&proto=4");
}

QString CddbClient::queryUrl(const QString &cmd, const Disc &disc, const QString &hello)
{
    QString url = cmd + QStringLiteral("cddb+query+") + disc.id + QLatin1Char('+') +
                  QString::number(disc.frames.size());
    for (qint32 frames : disc.frames)
        url += QLatin1Char('+') + QString::number(frames);
    return url + QLatin1Char('+') + QString::number(disc.seconds) + hello;
}

QString CddbClient::readUrl(const QString &cmd, const QString &category, const QString &id,
                            const QString &hello)
{
    return cmd + QStringLiteral("cddb+read+") + category + QLatin1Char('+') + id + hello;
}

void CddbClient::CDDBQuery(const Disc &disc)
{
    cancel();
    const std::optional<QString> hello = helloSuffix(m_options.EmailID);
    if (!hello) {
        emit message(QStringLiteral("User ID is incorrect!"));
        return;
    }
    m_hello = *hello;
    m_disc = disc;
    m_step = Step::QuerySent;
    emit statusText(QStringLiteral("Looking for Album on CDDB server..."));
    send(queryUrl(m_options.CDDBcmd, disc, m_hello));
}

void CddbClient::send(const QString &url)
{
    // Tolerant: "+" and "@" in the query stay as written.
    m_http.get(QUrl::fromEncoded(url.toUtf8(), QUrl::TolerantMode), kMaxReplyBytes, m_timeoutMs,
               [this](const HttpFetch::Reply &reply) { Inet1_StateChanged(reply); });
}

void CddbClient::cancel()
{
    m_http.cancel();
    m_step = Step::Done;
}

void CddbClient::Inet1_StateChanged(const HttpFetch::Reply &reply)
{
    // A transfer that failed, or a server that answered with an error page;
    // a reply cut at the size limit is read as far as it came.
    if (reply.transferError != 0 || reply.status != 200) {
        m_step = Step::Done;
        // The number keeps the blank a number turned into text has.
        emit statusText(QStringLiteral("CDDB error: %1")
                            .arg(reply.status > 0 ? reply.status : reply.transferError));
        return;
    }
    const QString text = decodeCddbReply(reply.body);
    switch (m_step) {
    case Step::QuerySent: {
        const CddbMatch match = readQueryReply(text);
        switch (match.kind) {
        case CddbMatch::Kind::Found:
            m_step = Step::ReadSent;
            emit statusText(QStringLiteral("Retrieving album from CDDB..."));
            send(readUrl(m_options.CDDBcmd, match.category, m_disc.id, m_hello));
            return;
        case CddbMatch::Kind::Multiple:
            // No choice is offered: the user keeps the default titles.
            m_step = Step::Done;
            emit message(QStringLiteral("CDDB returned multiple matches..."));
            return;
        case CddbMatch::Kind::NotFound:
            m_step = Step::Done;
            emit statusText(QStringLiteral("The CD was not found in CDDB database!"));
            return;
        }
        return;
    }
    case Step::ReadSent:
        m_step = Step::Done;
        emit entryRead(m_disc.id, readDiscReply(text, int(m_disc.frames.size())));
        emit statusText(QStringLiteral("Album data loaded."));
        return;
    case Step::Done:
        return;
    }
}
