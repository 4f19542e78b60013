#include "cd/cddbclient.h"

#include "platform/httpfetch.h"
#include "support/loopbackserver.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

const CddbClient::Disc kDisc{QStringLiteral("2a03f403"), {150, 375, 675}, 1012};

const char kFound[] = "200 rock 2a03f403 The Band / First Album\r\n";

// A client on the real HTTP stack, talking to a server of the test's own.
struct Exchange
{
    explicit Exchange(LoopbackServer::Handler handler, int timeoutMs = 20000)
        : server(std::move(handler)), cmd(server.url("/~cddb/cddb.cgi/?cmd=")),
          client(http, {cmd, email}, timeoutMs)
    {
        QObject::connect(&client, &CddbClient::statusText,
                         [this](const QString &text) { statuses << text; });
        QObject::connect(&client, &CddbClient::message,
                         [this](const QString &text) { messages << text; });
        QObject::connect(&client, &CddbClient::entryRead,
                         [this](const QString &, const CddbDiscEntry &e) { entry = e; });
    }

    // Runs the lookup to its last word.
    bool run()
    {
        client.CDDBQuery(kDisc);
        return QTest::qWaitFor([this] { return client.step() == CddbClient::Step::Done; }, 20000);
    }

    LoopbackServer server;
    QtHttpFetch http;
    QString email = QStringLiteral("tester@example.org");
    QString cmd;
    CddbClient client;
    QStringList statuses, messages;
    CddbDiscEntry entry;
};

LoopbackServer::Response reply(const std::string &body, int status = 200)
{
    return {status, body, false};
}

// The query's answer, then the read's.
LoopbackServer::Handler twoSteps(std::string query, std::string read)
{
    return [query, read](const std::string &target) {
        return reply(target.find("cddb+read") != std::string::npos ? read : query);
    };
}

} // namespace

// After "Looking for Album on CDDB server...", the statuses of each outcome; a
// server that keeps silent ends the lookup with an error.
TEST(CddbClient, EveryOutcomeSaysWhatHappened)
{
    const auto readFails = [](const std::string &target) {
        return target.find("cddb+read") != std::string::npos ? reply("gone", 404) : reply(kFound);
    };
    const struct
    {
        LoopbackServer::Handler handler;
        QStringList statuses, messages = {};
        int timeoutMs = 20000;
    } cases[] = {
        {twoSteps("202 No match for disc ID 2a03f403.\r\n", ""),
         {"The CD was not found in CDDB database!"}},
        {twoSteps("201 several matches\r\nrock 2a03f403 A\r\n.\r\n", ""),
         {},
         {"CDDB returned multiple matches..."}},
        {readFails, {"Retrieving album from CDDB...", "CDDB error: 404"}},
        // 4: timed out.
        {[](const std::string &) {
             return LoopbackServer::Response{200, "", true};
         },
         {"CDDB error: 4"},
         {},
         400},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        Exchange x(c.handler, c.timeoutMs);
        ASSERT_TRUE(x.run());
        EXPECT_EQ(x.statuses, QStringList{"Looking for Album on CDDB server..."} + c.statuses);
        EXPECT_EQ(x.messages, c.messages);
        EXPECT_TRUE(x.entry.titles.isEmpty());
    }
}

TEST(CddbClient, AnAddressWithoutUserOrHostAsksNothing)
{
    const std::pair<const char *, bool> cases[] = {
        {"a@b", true}, {"@host", false}, {"user@", false}, {"nobody", false}};
    for (const auto &[email, accepted] : cases)
        EXPECT_EQ(CddbClient::helloSuffix(QString::fromLatin1(email)).has_value(), accepted)
            << email;
    EXPECT_EQ(CddbClient::helloSuffix(QStringLiteral("a@b@c")),
              QStringLiteral("&hello=a+b@c+NON+0.1&proto=4"))
        << "the host is all after the first @";
    Exchange x(twoSteps("202 none\r\n", ""));
    x.email = QStringLiteral("user@");
    ASSERT_TRUE(x.run());
    EXPECT_EQ(x.messages, QStringList{"User ID is incorrect!"});
    EXPECT_TRUE(x.server.requests().empty());
}

TEST(CddbClient, ANewQueryDropsTheOneRunning)
{
    Exchange x([](const std::string &target) {
        if (target.find("ffffff") != std::string::npos)
            return LoopbackServer::Response{200, "", true};
        return reply("202 none\r\n");
    });
    CddbClient::Disc slow = kDisc;
    slow.id = QStringLiteral("ffffff03");
    x.client.CDDBQuery(slow);
    ASSERT_TRUE(QTest::qWaitFor([&] { return x.server.requests().size() == 1; }));
    ASSERT_TRUE(x.run());
    EXPECT_EQ(x.statuses.last(), QStringLiteral("The CD was not found in CDDB database!"));
}
