#pragma once

#include "favouriteskins.h"

#include <QWidget>

#include <functional>

class Dialogs;
class QComboBox;
class QLabel;
class QListWidget;
class QMenu;
class QPushButton;
class QToolButton;
class SkinSurface;

// The skin browser: the skins of the skin folder, filtered by the mode they
// are made for. A click loads a skin at once and shows its comment lines;
// the favourite slots take the skin selected.
class frmSkinBrowse : public QWidget
{
    Q_OBJECT
public:
    // The settings it reads and changes; they outlive the window.
    struct Options
    {
        QString &SkinPath;
        FavouriteSkins::Slots &FavSkin;
        // Where the skins are when no skin folder is set.
        QString defaultFolder;
    };
    // Loads a skin; returns the file shown then (an imported copy of an
    // older skin, say), empty when the skin was refused and the old one stays.
    using LoadSkin = std::function<QString(const QString &file)>;

    frmSkinBrowse(Options options, const SkinSurface &skin, Dialogs &dialogs, LoadSkin load,
                  QWidget *parent = nullptr);

    QString skinFolder() const;
    // Fills the list from the skin folder under the type filter.
    void ReadSkinDir();
    // Asks for another skin folder.
    void SetSDir();
    // Shows or hides the comment beside the list.
    void cToggInfo();
    // Loads the skin of a list entry and shows its comment.
    void List1_Click(int row);
    // The selected skin becomes the favourite of the slot.
    void setFavourite(int slot);

    // The skin shown now: its entry is selected, and its comment shown.
    void setCurrentSkin(const QString &file);
    void setTypeFilter(const QString &type);
    QString typeFilter() const;

private:
    void showComment();
    void refreshFavouriteMenu();

    Options m_options;
    const SkinSurface &m_skin;
    Dialogs &m_dialogs;
    LoadSkin m_load;
    int m_loadedRow = -1;
    int m_justSelected = -1; // by the press of the click now ending
    QString m_current;       // skinPathKey() of the skin shown

    QComboBox *m_types;
    QListWidget *m_list;
    QWidget *m_info;
    QLabel *m_comment;
    QLabel *m_status;
    QPushButton *m_folder;
    QPushButton *m_infoButton;
    QToolButton *m_favourite;
    QMenu *m_favouriteMenu;
};
