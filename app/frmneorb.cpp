#include "frmneorb.h"

#include "core/keys.h"
#include "core/snap.h"
#include "player/autolist.h"
#include "skin/lights.h"
#include "skin/skinlistarea.h"
#include "platform/dialogs.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <QWindow>

#include <vector>

frmNeOrb::frmNeOrb(Platform platform, ProgramFolder folder, QWidget *parent)
    : QWidget(parent, Qt::FramelessWindowHint | Qt::Window), m_platform(platform),
      m_folder(std::move(folder)), m_config(platform.store),
      m_lifecycle({m_config, platform.dialogs, platform.random, platform.clock, platform.screens,
                   m_folder},
                  m_settings, m_playlist, *this),
      m_skin(*this, platform.dialogs, platform.clock),
      m_dispatcher({*this, m_engine, m_playlistControl, m_calculator, m_stopwatches, m_notepad,
                    m_fm, m_web, m_webRadio, m_mixer, m_flags, m_markPos, m_wrPresetIdx,
                    m_linkList}),
      m_clockTick(platform.clock, m_settings, m_autoList, clockActions())
{
    setWindowTitle(QStringLiteral("Velto"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    resize(400, 160);
    connect(&m_skin, &SkinLoader::command, this, &frmNeOrb::DoIt);
    m_engine.showLights = [this] { refreshLights(); };
    m_stopwatches.setLabelFn([this](int n, const QString &text) { m_skin.setLabel(n, text); });
    m_stopwatches.setDisplayFn([this](const QString &) {
        const int t = m_stopwatches.current();
        // Group 6 counts in seconds; the stopwatch keeps tenths within the minute.
        m_skin.SetDD(6, m_stopwatches.field(t, 2) * 3600 + m_stopwatches.field(t, 3) * 60 +
                            m_stopwatches.field(t, 4) / 10);
    });
    m_timer2.setInterval(250);
    connect(&m_timer2, &QTimer::timeout, this, [this] { m_clockTick.Timer2_Timer(); });
}

ClockTick::Actions frmNeOrb::clockActions()
{
    ClockTick::Actions a;
    a.setLabel = [this](int n, const QString &text) { m_skin.setLabel(n, text); };
    a.setDD = [this](int group, const QVariant &value) { m_skin.SetDD(group, value); };
    // The shipped skins show the day on label 14 and the date on label 21.
    a.makeDayStr = [this](const DayText &texts) {
        m_skin.setLabel(14, texts.day);
        m_skin.setLabel(21, texts.date);
    };
    a.switchOn = [this](int preset) { switchOn(preset); };
    a.switchOff = [this] { switchOff(); };
    a.snoozeAction = [this] { switchOff(); };
    a.endOfTick = [this](const QDateTime &now) { m_stopwatches.tick(now); };
    return a;
}

void frmNeOrb::switchOn(int preset)
{
    Q_UNUSED(preset); // presets 1-9 pick a radio station once the radio modes exist
    showNormal();
    raise();
    activateWindow();
    DoIt(12);
}

void frmNeOrb::switchOff()
{
    DoIt(10);
    if (m_settings.SnoozeHide == 1)
        showMinimized();
}

void frmNeOrb::LoadAutoList(const QString &file)
{
    m_autoList = ::LoadAutoList(file);
}

void frmNeOrb::InitTimers()
{
    m_stopwatches.TimerFn(0);
    m_clockTick.ShowTime();
    m_timer2.start();
}

void frmNeOrb::refreshLights()
{
    PlayerSwitches s;
    s.introScan = m_flags.IntroScan;
    s.stopAfterItem = m_flags.StopAfterItem;
    s.repeatItem = m_flags.RepeatItem;
    s.shuffle = m_flags.Shuffle;
    s.continuousPlay = m_settings.ContPB != 0;
    s.scheduleAuto = m_settings.Auto != 0;
    s.snooze = m_settings.Snooze != 0;
    s.ledSign = m_settings.ExEnable == 1;
    s.onTop = isOnTop(m_settings.WinOnTop);
    s.twentyFourHour = m_settings.TimeFmt != 0;
    m_skin.ShowLights(::ShowLights(s));
}

frmNeOrb::~frmNeOrb() = default;

void frmNeOrb::Load(const QStringList &names, const QString &workingFolder)
{
    m_lifecycle.Load(names, workingFolder);
    ShowPlaylist();
}

// The playlist list, its name (label 8) and its count (label 13), as the shipped skins lay them out.
void frmNeOrb::ShowPlaylist()
{
    if (SkinListArea *list = m_skin.list(1)) {
        list->clear();
        list->addItems(m_playlist.PlNames);
        if (m_playlist.CurTrack >= 1 && m_playlist.CurTrack <= list->count())
            list->setCurrentRow(m_playlist.CurTrack - 1);
    }
    m_skin.setLabel(8, m_playlist.title);
    m_skin.setLabel(13, QString::number(m_playlist.PlNames.size()));
}

void frmNeOrb::Unload(bool interactive)
{
    m_lifecycle.Unload(interactive);
}

void frmNeOrb::AddOpened(const QString &path)
{
    Playlist playlist(m_playlist);
    playlist.friendlyNames = m_settings.FriendlyNames > 0;
    playlist.AddOpened(path);
}

void frmNeOrb::LoadSkin(const QString &file)
{
    // Key tables name other skins by bare file names, beside the current skin.
    QString path = file;
    if (QFileInfo(file).isRelative() && !m_skin.file().isEmpty())
        path = QFileInfo(m_skin.file()).dir().filePath(file);
    if (!m_skin.LoadSkin(path))
        return;
    const QFileInfo loaded(m_skin.file());
    m_settings.Skin = loaded.fileName();
    m_settings.SkinPath = loaded.absolutePath();
    m_linkList = m_skin.skin().keyTable;
    refreshLights();
    ShowPlaylist();
}

void frmNeOrb::SelectSkin()
{
    const QString folder = m_settings.SkinPath.isEmpty() ? m_folder.path() : m_settings.SkinPath;
    const QStringList chosen = m_platform.dialogs.openFiles(
        QStringLiteral("Select Skin"), folder, QStringLiteral("Skins (*.skin)|*.skin"));
    if (!chosen.isEmpty())
        LoadSkin(chosen.first());
}

void frmNeOrb::WebLink(const QString &url)
{
    QDesktopServices::openUrl(QUrl::fromUserInput(url));
}

void frmNeOrb::paintEvent(QPaintEvent *event)
{
    QPainter p(this);
    if (m_skin.skin().accepted)
        m_skin.paint(p, event->rect());
    else
        paintPlaceholder(p);
    if (!m_painted) {
        m_painted = true;
        QTimer::singleShot(0, this, &frmNeOrb::firstFramePainted);
    }
}

void frmNeOrb::paintPlaceholder(QPainter &p)
{
    // No skin could be loaded: a plain face still lets the user reach the menu.
    QLinearGradient g(0, 0, 0, height());
    g.setColorAt(0, QColor(0x2b, 0x32, 0x3f));
    g.setColorAt(1, QColor(0x14, 0x18, 0x20));
    p.fillRect(rect(), g);
    p.setPen(QColor(0x7f, 0xd8, 0xff));
    p.drawText(rect(), Qt::AlignCenter, QStringLiteral("Velto"));
}

void frmNeOrb::closeEvent(QCloseEvent *event)
{
    // The desktop's close may only hide Velto in the tray; Quit and Ctrl+Q always end it.
    if (event->spontaneous() && m_tray.hidesOnClose(m_settings.ExitMode)) {
        hide();
        event->ignore();
        return;
    }
    m_lifecycle.Unload(true);
    event->accept();
}

void frmNeOrb::keyPressEvent(QKeyEvent *event)
{
    // The window has no frame to close it by; desktop users expect Ctrl+Q.
    if (event->matches(QKeySequence::Quit) ||
        (event->key() == Qt::Key_Q && event->modifiers() == Qt::ControlModifier)) {
        close();
        return;
    }
    if (const auto media = mediaKeyCommand(event->key())) {
        DoIt(*media);
        return;
    }
    const QString text = event->text();
    if (text.isEmpty() || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        QWidget::keyPressEvent(event);
        return;
    }
    std::vector<ButtonKey> keys;
    for (const SkinButton &button : m_skin.skin().buttons)
        keys.push_back({buttonKey(button.name), button.command});
    const bool textField = qobject_cast<QLineEdit *>(QApplication::focusWidget()) != nullptr;
    const KeyOutcome outcome = matchKey(text.toUcs4().value(0), keys, textField);
    switch (outcome.kind) {
    case KeyOutcome::Kind::PassThrough:
        QWidget::keyPressEvent(event);
        break;
    case KeyOutcome::Kind::Command:
        DoIt(outcome.command);
        break;
    case KeyOutcome::Kind::Outline:
        m_skin.setOutlineStyle(outcome.outlineStyle);
        break;
    case KeyOutcome::Kind::Consumed:
        break;
    }
}

void frmNeOrb::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        if (m_settings.NoRMB == 0)
            ShowMenu();
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    // Wayland lets only the compositor move windows; elsewhere we move it
    // ourselves so the drop can snap to the screen edges.
    if (QGuiApplication::platformName() == QLatin1String("wayland") && windowHandle() &&
        windowHandle()->startSystemMove())
        return;
    m_dragging = true;
    m_dragOffset = event->position().toPoint();
}

void frmNeOrb::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging)
        move(event->globalPosition().toPoint() - m_dragOffset);
}

void frmNeOrb::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_dragging)
        return;
    m_dragging = false;
    if (m_settings.WinSnap != 0)
        snapToScreenEdges();
}

void frmNeOrb::snapToScreenEdges()
{
    QList<SnapScreen> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens << SnapScreen{screen->availableGeometry(), screen->physicalDotsPerInchX()};
    move(SnapWindow(frameGeometry(), screens));
}
