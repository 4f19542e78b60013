#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class HttpFetch;

// Turns a station's address into the stream addresses to try, best first. A
// stream address is its own answer; a ".pls" or ".m3u" address is fetched
// and read, and the playlists it names in turn, so long as each is new and
// no more than kMaxDepth deep: a playlist that names itself ends at once.
class StreamResolver
{
public:
    static constexpr int kMaxDepth = 3;
    static constexpr int kMaxFetches = 8;
    static constexpr qint64 kMaxPlaylistBytes = 64 * 1024;
    static constexpr int kTimeoutMs = 10000;

    // streams is empty when none was found; problem then says why.
    using Done = std::function<void(const QStringList &streams, const QString &problem)>;

    explicit StreamResolver(HttpFetch &http) : m_http(http) {}
    ~StreamResolver();

    // Starts over; done runs once, possibly before resolve() returns.
    void resolve(const QString &address, Done done);
    void cancel();
    bool busy() const { return bool(m_done); }

private:
    struct Pending
    {
        QString address;
        int depth;
    };
    void next();

    HttpFetch &m_http;
    Done m_done;
    QList<Pending> m_queue;
    QStringList m_seen;
    QStringList m_streams;
    QString m_problem;
    int m_fetches = 0;
};
