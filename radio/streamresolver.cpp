#include "streamresolver.h"

#include "streamplaylist.h"

#include "platform/httpfetch.h"
#include "platform/streamtext.h"

StreamResolver::~StreamResolver()
{
    cancel();
}

void StreamResolver::cancel()
{
    if (m_done)
        m_http.cancel();
    m_done = nullptr;
    m_queue.clear();
}

void StreamResolver::resolve(const QString &address, Done done)
{
    cancel();
    m_done = std::move(done);
    m_queue = {{address, 0}};
    m_seen.clear();
    m_streams.clear();
    m_problem.clear();
    m_fetches = 0;
    next();
}

void StreamResolver::next()
{
    while (!m_queue.isEmpty()) {
        const Pending item = m_queue.takeFirst();
        if (!isStreamPlaylistAddress(item.address)) {
            if (!m_streams.contains(item.address))
                m_streams << item.address;
            continue;
        }
        if (m_seen.contains(item.address) || item.depth >= kMaxDepth || m_fetches >= kMaxFetches)
            continue;
        m_seen << item.address;
        ++m_fetches;
        m_http.get(QUrl(item.address), kMaxPlaylistBytes, kTimeoutMs,
                   [this, item](const HttpFetch::Reply &reply) {
                       if (!reply.error.isEmpty()) {
                           m_problem = reply.error;
                       } else {
                           QList<Pending> found;
                           const QUrl base = reply.url.isValid() ? reply.url : QUrl(item.address);
                           for (const QString &entry : streamPlaylistEntries(reply.body, base)) {
                               if (isNetworkAddress(entry))
                                   found << Pending{entry, item.depth + 1};
                           }
                           if (found.isEmpty() && m_problem.isEmpty())
                               m_problem = QStringLiteral("its playlist names no stream");
                           // Entries of this playlist before those of the next one.
                           m_queue = found + m_queue;
                       }
                       next();
                   });
        return;
    }
    Done done = std::move(m_done);
    m_done = nullptr;
    const QString problem =
        m_streams.isEmpty()
            ? (m_problem.isEmpty() ? QStringLiteral("it names no stream") : m_problem)
            : QString();
    if (done)
        done(m_streams, problem);
}
