#include "frmicon.h"

#include "appicon.h"
#include "popupmenu.h"
#include "windowflags.h"

#include <QPixmap>
#include <QWidget>

frmIcon::frmIcon(QWidget &mainWindow, PopupMenu &menu) : m_window(mainWindow)
{
    m_icon.setIcon(trayIconImage());
    m_icon.setToolTip(QStringLiteral("Velto"));
    // The tray opens the menu on the right button itself, and a tray that
    // draws menus of its own (a D-Bus one) needs the menu handed over.
    m_icon.setContextMenu(menu.menu());
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [this](QSystemTrayIcon::ActivationReason reason) { activated(reason); });
}

frmIcon::~frmIcon()
{
    m_icon.hide();
}

bool frmIcon::available()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void frmIcon::show()
{
    m_icon.show();
}

void frmIcon::hide()
{
    m_icon.hide();
}

bool frmIcon::isShown() const
{
    return m_icon.isVisible() && available();
}

void frmIcon::setToolTip(const QString &text)
{
    m_icon.setToolTip(text.left(64));
}

bool frmIcon::hidesOnClose(qint16 ExitMode) const
{
    return closeHidesToTray(ExitMode, isShown());
}

bool closeHidesToTray(qint16 ExitMode, bool iconShown)
{
    return ExitMode == 1 && iconShown;
}

void frmIcon::RestoreWindow()
{
    bringForward(m_window);
}

void frmIcon::activated(QSystemTrayIcon::ActivationReason reason)
{
    // Trays differ: some report a double click, most only a single one.
    if (reason == QSystemTrayIcon::DoubleClick || reason == QSystemTrayIcon::Trigger)
        RestoreWindow();
}

QIcon trayIconImage()
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(QPixmap::fromImage(appIconImage(size)));
    return icon;
}
