#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

// A radio station on 127.0.0.1 for tests: an endless MP3 stream with ICY
// metadata, paced like a real server, plus any documents a test adds (station
// playlists). It runs on threads of its own, so a test may wait on anything
// while it serves, and stops when destroyed. Nothing leaves the machine.
class LoopbackRadio
{
public:
    struct Options
    {
        QByteArray mp3; // whole frames, looped for ever
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

    explicit LoopbackRadio(Options options);
    ~LoopbackRadio();
    LoopbackRadio(const LoopbackRadio &) = delete;
    LoopbackRadio &operator=(const LoopbackRadio &) = delete;

    bool listening() const { return m_listener >= 0; }
    quint16 port() const { return m_port; }
    // http://127.0.0.1:port + path; the stream is at "/stream".
    QString url(const QString &path = QStringLiteral("/stream")) const;
    // Served at path with the status, type and body given; any other path
    // but the stream's is a 404.
    void addDocument(const QByteArray &path, int status, const QByteArray &type,
                     const QByteArray &body);
    // Stream connections served so far.
    int streamConnections() const { return m_streams; }
    // Request lines ("GET /x HTTP/1.1") in the order they came.
    QByteArrayList requests() const;

    // An MP3 made by ffmpeg for the stream: a tone at 128 kbit/s without tags,
    // so it can be looped frame by frame. Empty when ffmpeg is missing.
    static QByteArray toneMp3(double seconds = 5);

private:
    struct Document
    {
        int status;
        QByteArray type, body;
    };
    void acceptLoop();
    void serve(int client);
    void stream(int client, bool icy);
    bool sendAll(int client, const QByteArray &bytes);

    Options m_options;
    int m_listener = -1;
    quint16 m_port = 0;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_streams{0};
    mutable std::mutex m_mutex;
    std::map<QByteArray, Document> m_documents;
    QByteArrayList m_requests;
    std::vector<int> m_clients;
    std::vector<std::thread> m_threads;
    std::thread m_acceptor;
};
