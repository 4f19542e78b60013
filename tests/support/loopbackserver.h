#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// An HTTP server of the test's own on 127.0.0.1, on a port the system picks.
// Each connection is answered on a thread of its own, so it works beside any
// event loop (or none), and a test may wait on anything while it serves. It
// answers, in this order: the pages the test put, the handler's answer, a
// radio station's endless MP3 at "/stream", else 404. Nothing leaves the
// machine; it stops when destroyed.
class LoopbackServer
{
public:
    struct Response
    {
        int status = 200;
        std::string body;
        bool silent = false; // reads the request and never answers
    };
    using Handler = std::function<Response(const std::string &target)>;

    // The station: whole MP3 frames looped for ever, with ICY metadata when
    // the listener asks for it, paced like a real server.
    struct Stream
    {
        QByteArray mp3;
        QByteArray name = "Loopback FM";
        int metaInt = 16000;        // audio bytes between two metadata blocks
        int bytesPerSecond = 16000; // 128 kbit/s
        int burstBytes = 32000;     // sent at once to a new listener
        // The titles in turn, one every titleSeconds of audio (0: the first only).
        QByteArrayList titles = {"Loopback Song 1"};
        double titleSeconds = 0;
        // After this much audio the server goes quiet for stallSeconds, once
        // a connection; below 0 it never does.
        double stallAfterSeconds = -1;
        double stallSeconds = 2;
        // The connection is closed after this much audio; below 0 never.
        qint64 closeAfterBytes = -1;
    };

    LoopbackServer() { listen(); }
    explicit LoopbackServer(Handler handler) : m_handler(std::move(handler)) { listen(); }
    explicit LoopbackServer(Stream stream) : m_stream(std::move(stream)) { listen(); }
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    bool listening() const { return m_listener >= 0; }
    // http://127.0.0.1:port + path
    QString url(const QString &path = QStringLiteral("/stream")) const;
    // Served at path, or at path with any query after it.
    void page(const QByteArray &path, const QByteArray &body,
              const QByteArray &type = "text/html; charset=utf-8");
    // The targets asked for ("/x?y=z"), in the order they came.
    std::vector<std::string> requests() const;
    int asked(const std::string &target) const;
    // Stream connections served so far.
    int streamConnections() const { return m_streams; }

    // An MP3 made by ffmpeg for the stream: a tone at 128 kbit/s without tags,
    // so it can be looped frame by frame. Empty when ffmpeg is missing.
    static QByteArray toneMp3(double seconds = 5);

private:
    void listen();
    void acceptLoop();
    void serve(int client);
    void stream(int client, bool icy);
    bool sendAll(int client, const QByteArray &bytes);

    Handler m_handler;
    Stream m_stream;
    int m_listener = -1;
    int m_port = 0;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_streams{0};
    mutable std::mutex m_mutex;
    std::map<QByteArray, std::pair<QByteArray, QByteArray>> m_pages; // path: type, body
    std::vector<std::string> m_requests;
    std::vector<std::thread> m_threads;
    std::thread m_acceptor;
};
