#include "frmneorb.h"

#include "core/settings.h"
#include "core/snap.h"

#include <QAbstractScrollArea>
#include <QCursor>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>
#include <QWindow>

namespace {

// The local files of a drop (text/uri-list), in the order given.
QStringList droppedPaths(const QMimeData &data)
{
    QStringList paths;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile() && !url.toLocalFile().isEmpty())
            paths << url.toLocalFile();
    }
    return paths;
}

} // namespace

frmNeOrb::frmNeOrb(const Settings &settings, Dialogs &dialogs, const Clock &clock, QWidget *parent)
    : QWidget(parent, Qt::FramelessWindowHint | Qt::Window), m_settings(settings),
      m_skin(*this, dialogs, clock)
{
    setWindowTitle(QStringLiteral("Velto"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    resize(400, 160);
    connect(&m_skin, &SkinLoader::command, this, &frmNeOrb::command);
    connect(&m_keys, &KeyboardInput::command, this, &frmNeOrb::command);
    connect(&m_keys, &KeyboardInput::quitRequested, this, &QWidget::close);
    connect(&m_keys, &KeyboardInput::outlineStyle, this, [this](int style) {
        m_skin.setOutlineStyle(style);
        if (style == 0)
            emit escapePressed();
    });
}

frmNeOrb::~frmNeOrb() = default;

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

void frmNeOrb::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedPaths(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmNeOrb::dropEvent(QDropEvent *event)
{
    const QStringList paths = droppedPaths(*event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    emit filesDropped(paths);
}

void frmNeOrb::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        if (m_settings.NoRMB == 0)
            emit menuRequested();
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

void frmNeOrb::wheelEvent(QWheelEvent *event)
{
    // Lists and text areas scroll; past their ends the wheel must not turn into volume.
    for (QWidget *w = childAt(event->position().toPoint()); w && w != this; w = w->parentWidget())
        if (qobject_cast<QAbstractScrollArea *>(w))
            return event->ignore();
    emit wheelTurned(event->angleDelta().y());
    event->accept();
}

void frmNeOrb::showEvent(QShowEvent *event)
{
    m_pointerAtShow = QCursor::pos();
    QWidget::showEvent(event);
}

void frmNeOrb::enterEvent(QEnterEvent *event)
{
    if (event->globalPosition().toPoint() != m_pointerAtShow)
        emit pointerEntered();
    QWidget::enterEvent(event);
}

void frmNeOrb::snapToScreenEdges()
{
    QList<SnapScreen> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens << SnapScreen{screen->availableGeometry(), screen->physicalDotsPerInchX()};
    move(SnapWindow(frameGeometry(), screens));
}
