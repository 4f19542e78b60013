#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class Dialogs;
class QCommandLineParser;
class SingleInstance;
class Velto;

// What a later start of velto asks of the one running: open, play or add the
// files it names, or one of the remote-control commands.
struct RemoteRequest
{
    enum class Action { Open, Play, Enqueue, PlayPause, Next, Previous, Stop, Status };
    Action action = Action::Open;
    QString folder; // the asking start's working folder; names are relative to it
    QStringList names;

    // The commands that only make sense with a running player.
    bool controlsOnly() const;
    bool operator==(const RemoteRequest &) const = default;
};

struct RemoteAnswer
{
    bool ok = false;
    QString text; // printed by the asking start
    bool operator==(const RemoteAnswer &) const = default;
};

// One line each way: compact JSON, which escapes line breaks in names.
QByteArray encodeRequest(const RemoteRequest &request);
// Anything but a request a velto wrote gives nothing.
std::optional<RemoteRequest> decodeRequest(const QByteArray &bytes);
QByteArray encodeAnswer(const RemoteAnswer &answer);
std::optional<RemoteAnswer> decodeAnswer(const QByteArray &bytes);

// The command line's remote-control options (--enqueue, --play-pause...).
void addRemoteOptions(QCommandLineParser &parser);
// What the command line asks; Play when "play" is set.
RemoteRequest requestFrom(const QCommandLineParser &parser, const QString &workingFolder);

// Before the application object: hands the command line over to a running
// Velto and returns this start's exit code, or nothing when this start is
// the one to run (then `instance` owns the socket or runs alone).
std::optional<int> handOver(SingleInstance &instance, const RemoteRequest &request);

// The running Velto's side: answers requests at once and does what they ask
// from the event loop, so a message box a file brings never keeps the asking
// start waiting.
class RemoteControl
{
public:
    RemoteControl(Velto &velto, Dialogs &dialogs) : m_velto(velto), m_dialogs(dialogs) {}

    QByteArray answer(const QByteArray &request);
    RemoteAnswer answer(const RemoteRequest &request);

private:
    void perform(const RemoteRequest &request);

    Velto &m_velto;
    Dialogs &m_dialogs;
};
