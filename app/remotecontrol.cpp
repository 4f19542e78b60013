#include "remotecontrol.h"

#include "nowplaying.h"
#include "velto.h"
#include "windowflags.h"

#include "core/commandline.h"
#include "core/commands.h"
#include "platform/dialogs.h"
#include "platform/singleinstance.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <array>
#include <cstdio>

namespace {

struct ActionName
{
    RemoteRequest::Action action;
    const char *name; // on the wire and on the command line
    const char *help;
};

// Open has no option: it is a plain start with names.
const std::array<ActionName, 7> kActions = {{
    {RemoteRequest::Action::Play, "play", nullptr},
    {RemoteRequest::Action::Enqueue, "enqueue",
     "Add what FILE names to the playlist of the running Velto without playing it."},
    {RemoteRequest::Action::PlayPause, "play-pause",
     "Pause or resume the running Velto, or play when it is stopped."},
    {RemoteRequest::Action::Next, "next", "Play the next entry in the running Velto."},
    {RemoteRequest::Action::Previous, "prev", "Play the previous entry in the running Velto."},
    {RemoteRequest::Action::Stop, "stop", "Stop the running Velto."},
    {RemoteRequest::Action::Status, "status",
     "Print what the running Velto plays: its state, the title and the position."},
}};

QString actionName(RemoteRequest::Action action)
{
    for (const ActionName &a : kActions)
        if (a.action == action)
            return QLatin1String(a.name);
    return QStringLiteral("open");
}

// Enough for a start that is still putting its window up; a running one
// answers within milliseconds.
constexpr int kAnswerMs = 10000;

} // namespace

bool RemoteRequest::controlsOnly() const
{
    return action != Action::Open && action != Action::Play && action != Action::Enqueue;
}

QByteArray encodeRequest(const RemoteRequest &request)
{
    QJsonObject o;
    o[QLatin1String("velto")] = 1;
    o[QLatin1String("do")] = actionName(request.action);
    o[QLatin1String("folder")] = request.folder;
    o[QLatin1String("names")] = QJsonArray::fromStringList(request.names);
    return QJsonDocument(o).toJson(QJsonDocument::Compact);
}

std::optional<RemoteRequest> decodeRequest(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        return std::nullopt;
    const QJsonObject o = doc.object();
    if (o.value(QLatin1String("velto")).toInt() != 1 ||
        !o.value(QLatin1String("folder")).isString() || !o.value(QLatin1String("names")).isArray())
        return std::nullopt;
    RemoteRequest request;
    const QString name = o.value(QLatin1String("do")).toString();
    if (name != QLatin1String("open")) {
        const auto found = std::find_if(kActions.begin(), kActions.end(), [&](const ActionName &a) {
            return name == QLatin1String(a.name);
        });
        if (found == kActions.end())
            return std::nullopt;
        request.action = found->action;
    }
    request.folder = o.value(QLatin1String("folder")).toString();
    for (const QJsonValue &value : o.value(QLatin1String("names")).toArray()) {
        if (!value.isString())
            return std::nullopt;
        request.names << value.toString();
    }
    return request;
}

QByteArray encodeAnswer(const RemoteAnswer &answer)
{
    QJsonObject o;
    o[QLatin1String("ok")] = answer.ok;
    o[QLatin1String("text")] = answer.text;
    return QJsonDocument(o).toJson(QJsonDocument::Compact);
}

std::optional<RemoteAnswer> decodeAnswer(const QByteArray &bytes)
{
    const QJsonDocument doc = QJsonDocument::fromJson(bytes);
    const QJsonObject o = doc.object();
    if (!o.value(QLatin1String("ok")).isBool() || !o.value(QLatin1String("text")).isString())
        return std::nullopt;
    return RemoteAnswer{o.value(QLatin1String("ok")).toBool(),
                        o.value(QLatin1String("text")).toString()};
}

void addRemoteOptions(QCommandLineParser &parser)
{
    for (const ActionName &a : kActions)
        if (a.help)
            parser.addOption(QCommandLineOption(QLatin1String(a.name), QLatin1String(a.help)));
}

RemoteRequest requestFrom(const QCommandLineParser &parser, const QString &workingFolder)
{
    RemoteRequest request;
    request.folder = workingFolder;
    request.names = parser.positionalArguments();
    for (const ActionName &a : kActions) {
        if (parser.isSet(QLatin1String(a.name))) {
            request.action = a.action;
            break;
        }
    }
    return request;
}

std::optional<int> handOver(SingleInstance &instance, const RemoteRequest &request)
{
    const SingleInstance::Role role = instance.claim();
    if (role == SingleInstance::Role::Other) {
        const std::optional<QByteArray> bytes = instance.ask(encodeRequest(request), kAnswerMs);
        const std::optional<RemoteAnswer> answer = bytes ? decodeAnswer(*bytes) : std::nullopt;
        if (!answer) {
            std::fprintf(stderr, "velto: the running Velto did not answer\n");
            return 1;
        }
        std::fputs(answer->text.toLocal8Bit().constData(), answer->ok ? stdout : stderr);
        return answer->ok ? 0 : 1;
    }
    if (role == SingleInstance::Role::Alone)
        std::fprintf(stderr, "velto: %s; this Velto runs on its own\n",
                     qPrintable(instance.problem()));
    if (request.controlsOnly()) {
        std::fprintf(stderr, "velto: Velto is not running\n");
        return 1;
    }
    return std::nullopt;
}

QByteArray RemoteControl::answer(const QByteArray &request)
{
    const std::optional<RemoteRequest> decoded = decodeRequest(request);
    if (!decoded)
        return encodeAnswer({false, QStringLiteral("velto: not a request Velto understands\n")});
    return encodeAnswer(answer(*decoded));
}

RemoteAnswer RemoteControl::answer(const RemoteRequest &request)
{
    if (request.action == RemoteRequest::Action::Status)
        return {true, statusText(nowPlaying(m_velto.player(), m_velto.playlist()))};
    QTimer::singleShot(0, &m_velto.window(), [this, request] { perform(request); });
    return {true, QString()};
}

void RemoteControl::perform(const RemoteRequest &request)
{
    using Action = RemoteRequest::Action;
    // As if the button were pressed: whatever mode the skin is in decides.
    switch (request.action) {
    case Action::PlayPause:
        return m_velto.DoIt(Command::PlayPause);
    case Action::Next:
        return m_velto.DoIt(Command::Next);
    case Action::Previous:
        return m_velto.DoIt(Command::Previous);
    case Action::Stop:
        return m_velto.DoIt(Command::Stop);
    case Action::Status:
        return;
    case Action::Open:
    case Action::Play:
    case Action::Enqueue:
        break;
    }

    QStringList found;
    for (const QString &name : openedNames(request.names, request.folder)) {
        if (name.contains(QLatin1String("://")) || QFileInfo::exists(name))
            found << name;
        else
            m_dialogs.message(QStringLiteral("File not found:\r") + name);
    }
    if (request.names.isEmpty()) {
        // Started again from the menu: the running window comes forward.
        return bringForward(m_velto.window());
    }
    if (found.isEmpty())
        return;
    // A station (an address or its own playlist) goes to the web radio, as at
    // start; enqueueing one makes no sense there, so it plays too.
    if (found.size() == 1 && m_velto.openRadio(found.first()))
        return;
    // A plain name plays as it would have at start: when "Start playing" is on.
    const bool play = request.action == Action::Play ||
                      (request.action == Action::Open && m_velto.settings().AutoPlay != 0);
    if (request.action == Action::Enqueue)
        m_velto.player().openHanded(found, false);
    else
        m_velto.openFiles(found, play);
}
