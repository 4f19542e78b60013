#pragma once

#include <QPoint>
#include <QtGlobal>
#include <functional>
#include <memory>
#include <vector>

class QAction;
class QMenu;
struct MenuEntry;

// The popup menu shared by the tray icon and command 38, built from the menu
// model. Its entries add no behaviour of their own: they hand a command to
// DoIt, a slot to SelFSkin, or flip WinOnTop and ask for SetOnTop.
class PopupMenu
{
public:
    struct Handlers
    {
        std::function<void(qint16 cmd)> DoIt;
        std::function<void(int slot)> SelFSkin;
        // Runs after "&Always On Top" has written the new WinOnTop.
        std::function<void()> SetOnTop;
    };

    // WinOnTop is read each time the menu opens and written by "&Always On
    // Top"; it must outlive the menu.
    PopupMenu(Handlers handlers, qint16 &WinOnTop);
    ~PopupMenu();
    PopupMenu(const PopupMenu &) = delete;
    PopupMenu &operator=(const PopupMenu &) = delete;

    QMenu *menu() const { return m_menu.get(); }
    // Opens the menu at a point on the screen and returns at once.
    void popup(QPoint globalPos);

private:
    void fill(QMenu &menu, const std::vector<MenuEntry> &entries);
    void toggleOnTop();

    Handlers m_handlers;
    qint16 &m_WinOnTop;
    std::unique_ptr<QMenu> m_menu;
    QAction *m_onTop = nullptr;
};
