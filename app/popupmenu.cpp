#include "popupmenu.h"

#include "core/menumodel.h"

#include <QMenu>

PopupMenu::PopupMenu(Handlers handlers, qint16 &WinOnTop)
    : m_handlers(std::move(handlers)), m_WinOnTop(WinOnTop), m_menu(std::make_unique<QMenu>())
{
    m_menu->setTitle(popupMenuTitle());
    m_menu->setWindowTitle(popupMenuTitle());
    fill(*m_menu, popupMenu());
    // The tray shows the menu itself, so the check mark is set on every
    // opening, whoever opens it; WinOnTop may have changed in Preferences.
    QObject::connect(m_menu.get(), &QMenu::aboutToShow, m_menu.get(), [this] {
        if (m_onTop)
            m_onTop->setChecked(isOnTop(m_WinOnTop));
    });
}

PopupMenu::~PopupMenu() = default;

void PopupMenu::popup(QPoint globalPos)
{
    m_menu->popup(globalPos);
}

void PopupMenu::fill(QMenu &menu, const std::vector<MenuEntry> &entries)
{
    using A = MenuEntry::Action;
    for (const MenuEntry &entry : entries) {
        if (entry.action == A::Submenu) {
            fill(*menu.addMenu(entry.caption), entry.children);
            continue;
        }
        QAction *action = menu.addAction(entry.caption);
        const int value = entry.value;
        switch (entry.action) {
        case A::Command:
            QObject::connect(action, &QAction::triggered, m_menu.get(), [this, value] {
                if (m_handlers.DoIt)
                    m_handlers.DoIt(qint16(value));
            });
            break;
        case A::FavouriteSkin:
            QObject::connect(action, &QAction::triggered, m_menu.get(), [this, value] {
                if (m_handlers.SelFSkin)
                    m_handlers.SelFSkin(value);
            });
            break;
        case A::AlwaysOnTop:
            action->setCheckable(true);
            m_onTop = action;
            QObject::connect(action, &QAction::triggered, m_menu.get(), [this] { toggleOnTop(); });
            break;
        case A::Submenu:
            break;
        }
    }
}

void PopupMenu::toggleOnTop()
{
    m_WinOnTop = toggledOnTop(m_WinOnTop);
    // Qt flipped the check mark on its own; only exactly 1 shows as on.
    m_onTop->setChecked(isOnTop(m_WinOnTop));
    if (m_handlers.SetOnTop)
        m_handlers.SetOnTop();
}
