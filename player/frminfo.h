#pragma once

#include <QDialog>
#include <QImage>
#include <QTimer>

#include <functional>

class Dialogs;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

// The track information window: the item's ID3v1 tag in editable fields,
// its frame information and cover, and the save that writes the tag back.
// Widgets carry the names the procedures use (txtTitle, cboGenre, ...).
class frmInfo : public QDialog
{
    Q_OBJECT
public:
    struct Source
    {
        std::function<QString()> currentFile; // the main window's current item
        std::function<QImage()> currentCover;
        std::function<bool()> friendlyNames;
        std::function<void(const QString &file)> tagSaved;
    };

    frmInfo(Dialogs &dialogs, Source source, QWidget *parent = nullptr);

    // Fills the fields from the current item's tag, then SetCover.
    void GetInfo();
    // The same for another entry; the window follows the current item again
    // only once that changes.
    void GetInfo(const QString &file);
    // Writes the fields into the file named in txtFileName and tells the user.
    void SaveIDTag();
    void SetCover();
    // A picture handed over from the album window.
    void setPicture(const QImage &picture);
    // While "Edit" is not checked, follows the main window's current item.
    void Timer1_Timer();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    Dialogs &m_dialogs;
    Source m_source;
    QString m_followed; // the current item when the fields were last filled
    QString m_memArtist, m_memAlbum, m_memYear;
    QTimer m_timer1;

    QLineEdit *txtFileName, *txtTitle, *txtArtist, *txtAlbum, *txtYear, *txtTrack, *txtComment;
    QComboBox *cboGenre;
    QCheckBox *cbEdit;
    QLabel *lblFrame, *imgCover;
};
