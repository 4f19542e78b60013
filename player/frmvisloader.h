#pragma once

#include "vispictures.h"
#include "visscan.h"

#include <QLabel>
#include <QWidget>

#include <array>

class Dialogs;
class QCheckBox;
class QListWidget;
class QPushButton;

// One of the sixteen boxes of a page: a picture that answers the mouse.
class VisPictureBox : public QLabel
{
    Q_OBJECT
public:
    VisPictureBox(int index, QSize size, QWidget *parent = nullptr);
    int index() const { return m_index; }
    void setSelected(bool selected);

signals:
    void clicked(int index);
    void doubleClicked(int index);
    void hovered(int index);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;

private:
    int m_index;
};

// The visual playlist selector: the playlists of a folder tree as pictures,
// sixteen to a page. A playlist chosen goes into the main playlist, and its
// entries into the list beside the pictures, where a double click plays one.
class frmVisLoader : public QWidget
{
    Q_OBJECT
public:
    struct Options
    {
        QString &VisPLPath; // the folder shown first
    };
    static constexpr QSize kBox{96, 96};

    frmVisLoader(Options options, QString noCoverFile, Dialogs &dialogs, QWidget *parent = nullptr);
    ~frmVisLoader() override;

    // Shows the "VisPLPath" folder (asks for one when it is not set).
    void Form_Load();
    // Lists folder's ".DIR" folders and playlists, then shows the first page.
    void scanFolder(const QString &folder);
    void cSelDir_Click();
    void cNext_Click();
    void cPrev_Click();
    void showPage(int page);
    void iPic_Click(int box);
    void iPic_DblClick(int box);
    void iPic_MouseMove(int box);
    // Loads the playlist selected, or enters the folder selected.
    void cLoad_Click();
    // Stops a scan; when none runs, closes the window.
    void cCancel_Click();
    void cmdTogPL_Click();
    void cmdBg_Click();
    void PlayList_DblClick(int row);

    // The entries a playlist brought into the main playlist: names, and the
    // index of the first of them there.
    void showEntries(const QStringList &names, int firstIndex);

    const VisScan &scan() const { return m_scan; }
    int page() const { return m_page; }
    bool pageLoading() const { return m_pictures.busy(); }

signals:
    // A playlist to load into the main playlist (which calls showEntries).
    void loadRequested(const QString &playlistFile);
    // The entry at this index of the main playlist should play.
    void playRequested(int index);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void setBusy(bool busy);
    void scanFinished(bool stopped);
    void pictureReady(int ticket, int box, const QImage &picture);
    int entryOf(int box) const;
    void select(int box);
    void showName(int box);

    Options m_options;
    QString m_noCover;
    Dialogs &m_dialogs;
    VisScan m_scan;
    VisPictures m_pictures;
    int m_page = 0;
    int m_ticket = 0;
    int m_selected = -1; // entry index
    int m_pageLoaded = 0;
    int m_firstEntry = 0; // in the main playlist, of the list beside
    bool m_darkBackground = true;

    std::array<VisPictureBox *, 16> m_boxes{};
    QWidget *m_grid;
    QLabel *m_name;     // PName
    QLabel *m_pageStat; // lPgStat
    QListWidget *m_playList;
    QPushButton *m_selDir;
    QPushButton *m_prev;
    QPushButton *m_next;
    QPushButton *m_load;
    QPushButton *m_cancel;
    QPushButton *m_togglePlayList;
    QPushButton *m_background;
    QCheckBox *m_setDefault;
};
