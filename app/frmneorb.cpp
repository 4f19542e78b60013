#include "frmneorb.h"

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/random.h"
#include "platform/screens.h"
#include "platform/settingsstore.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QTimer>

frmNeOrb::frmNeOrb(Platform platform, ProgramFolder folder, QWidget *parent)
    : QWidget(parent, Qt::FramelessWindowHint | Qt::Window), m_platform(platform),
      m_folder(std::move(folder)), m_config(platform.store),
      m_lifecycle({m_config, platform.dialogs, platform.random, platform.clock, platform.screens,
                   m_folder},
                  m_settings, m_playlist, *this)
{
    setWindowTitle(QStringLiteral("Velto"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    resize(400, 160);
}

frmNeOrb::~frmNeOrb() = default;

void frmNeOrb::Load(const QStringList &names, const QString &workingFolder)
{
    m_lifecycle.Load(names, workingFolder);
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

void frmNeOrb::paintEvent(QPaintEvent *)
{
    // A plain face of the player's size until the skin engine draws the window.
    QPainter p(this);
    QLinearGradient g(0, 0, 0, height());
    g.setColorAt(0, QColor(0x2b, 0x32, 0x3f));
    g.setColorAt(1, QColor(0x14, 0x18, 0x20));
    p.fillRect(rect(), g);
    p.setPen(QColor(0x7f, 0xd8, 0xff));
    p.drawText(rect(), Qt::AlignCenter, QStringLiteral("Velto"));
    if (!m_painted) {
        m_painted = true;
        QTimer::singleShot(0, this, &frmNeOrb::firstFramePainted);
    }
}

void frmNeOrb::closeEvent(QCloseEvent *event)
{
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
    QWidget::keyPressEvent(event);
}
