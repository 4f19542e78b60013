#include "platform/httpfetch.h"

#include "support/loopbackserver.h"
#include "support/printers.h"

#include <QTest>
#include <gtest/gtest.h>

#include <optional>

namespace {

std::optional<HttpFetch::Reply> fetch(HttpFetch &http, const QString &url, qint64 maxBytes = 4096)
{
    std::optional<HttpFetch::Reply> reply;
    http.get(QUrl(url), maxBytes, 10000, [&](const HttpFetch::Reply &r) { reply = r; });
    if (!QTest::qWaitFor([&] { return reply.has_value(); }, 20000))
        return std::nullopt;
    return reply;
}

} // namespace

TEST(HttpFetch, GetsDocumentsAndRefusesWhatIsNotOne)
{
    LoopbackServer::Stream options;
    options.mp3 = QByteArray(4000, '\xff'); // any bytes: only their size matters here
    LoopbackServer server(options);
    ASSERT_TRUE(server.listening());
    server.page("/list.pls", "[playlist]\nFile1=http://x/\n", "audio/x-scpls");
    QtHttpFetch http;

    // A document fetched whole is the CDDB client's and the station list's test.
    const auto missing = fetch(http, server.url(QStringLiteral("/none")));
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->status, 404);
    EXPECT_EQ(missing->error, QStringLiteral("HTTP error 404 Not Found"));

    const auto endless = fetch(http, server.url(), 8192);
    ASSERT_TRUE(endless) << "an endless stream ends at the size limit";
    EXPECT_EQ(endless->error, QStringLiteral("the answer is larger than 8192 bytes"));
    EXPECT_TRUE(endless->tooBig);

    int calls = 0;
    http.get(QUrl(server.url(QStringLiteral("/list.pls"))), 4096, 10000,
             [&](const HttpFetch::Reply &) { ++calls; });
    http.cancel();
    ASSERT_TRUE(fetch(http, server.url(QStringLiteral("/list.pls"))));
    EXPECT_EQ(calls, 0) << "a cancelled fetch never answers";
}
