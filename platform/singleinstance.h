#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class QLocalServer;
class QLocalSocket;

// One running program per user and session. The first start owns a local
// socket; a later start connects to it, hands over one request, prints the
// answer and ends. A lock file beside the socket makes "is anyone there?"
// and "then it is me" one step, so two starts at once never both own it, and
// a socket a killed owner left behind is found dead and replaced.
//
// A request is one line of bytes; the answer is whatever the owner writes
// before it closes the connection.
class SingleInstance : public QObject
{
    Q_OBJECT
public:
    enum class Role {
        Owner, // nobody answered: this start owns the socket once it listens
        Other, // another start owns it: ask() it
        Alone, // no socket can be used (see problem()); run on its own
    };
    using Handler = std::function<QByteArray(const QByteArray &request)>;

    // Longer requests are garbage: a selection of ten thousand files fits.
    static constexpr qint64 kMaxRequest = 4 * 1024 * 1024;
    // A request not complete by then is dropped with its connection.
    static constexpr int kRequestMs = 2000;

    explicit SingleInstance(QString socketPath);
    ~SingleInstance() override;

    // $XDG_RUNTIME_DIR/velto/instance; without a runtime folder, a private
    // folder in the temporary folder.
    static QString defaultPath();

    // Works before the application object exists and costs a few system
    // calls. As Owner the lock is held until listen(), so a start that comes
    // meanwhile waits and then finds this one.
    Role claim(int lockTimeoutMs = 5000);
    Role role() const { return m_role; }
    // Why the role is Alone.
    QString problem() const { return m_problem; }

    // Other: sends the request and waits for the whole answer; nothing when
    // the owner does not answer in time.
    std::optional<QByteArray> ask(const QByteArray &request, int timeoutMs);

    // Owner: from now on the event loop answers requests with the handler.
    // Needs the application object. False (and Alone) when the socket cannot
    // be made.
    bool listen(Handler handler);
    QString socketPath() const { return m_path; }

private:
    void accept();
    void readFrom(QLocalSocket *socket);
    void unlock();
    Role alone(const QString &problem);

    QString m_path;
    Role m_role = Role::Alone;
    QString m_problem;
    int m_lock = -1;
    Handler m_handler;
    QPointer<QLocalServer> m_server;
    QLocalSocket *m_client = nullptr;
};
