#include "frminfo.h"

#include "platform/dialogs.h"
#include "player/id3tag.h"
#include "player/mp3info.h"
#include "player/playlist.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QLineEdit *field(QWidget *parent, const char *name, int maxLength)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setMaxLength(maxLength);
    return edit;
}

QPushButton *button(QWidget *parent, const char *name, const QString &text, const QString &tip)
{
    auto *b = new QPushButton(text, parent);
    b->setObjectName(QLatin1String(name));
    b->setToolTip(tip);
    b->setAutoDefault(false);
    return b;
}

} // namespace

frmInfo::frmInfo(Dialogs &dialogs, Source source, QWidget *parent)
    : QDialog(parent), m_dialogs(dialogs), m_source(std::move(source))
{
    setWindowTitle(QStringLiteral("Track Information"));
    txtFileName = field(this, "txtFileName", 32767);
    // The tag is written to the file the window was filled from.
    txtFileName->setReadOnly(true);
    txtTitle = field(this, "txtTitle", 30);
    txtArtist = field(this, "txtArtist", 30);
    txtAlbum = field(this, "txtAlbum", 30);
    txtYear = field(this, "txtYear", 4);
    txtTrack = field(this, "txtTrack", 3);
    txtComment = field(this, "txtComment", 29);
    cboGenre = new QComboBox(this);
    cboGenre->setObjectName(QStringLiteral("cboGenre"));
    cboGenre->addItems(genreList());
    cboGenre->setMaxVisibleItems(20);
    cbEdit = new QCheckBox(QStringLiteral("Edit"), this);
    cbEdit->setObjectName(QStringLiteral("cbEdit"));
    cbEdit->setToolTip(QStringLiteral(
        "Click \"Edit\" to avoid tag updates. NOTE: Tag cannot be saved if file is playing!"));
    lblFrame = new QLabel(this);
    lblFrame->setObjectName(QStringLiteral("lblFrame"));
    imgCover = new QLabel(this);
    imgCover->setObjectName(QStringLiteral("imgCover"));
    imgCover->setFixedSize(120, 120);
    imgCover->setAlignment(Qt::AlignCenter);
    imgCover->setFrameShape(QFrame::StyledPanel);

    auto *cmdSetTitle = button(this, "cmdSetTitle", QStringLiteral("Title from Name"),
                               QStringLiteral("Make the title from the file name"));
    auto *cmdMem = button(this, "cmdMem", QStringLiteral("Remember"),
                          QStringLiteral("Remember artist, album and year"));
    auto *cmdCpy = button(this, "cmdCpy", QStringLiteral("Paste"),
                          QStringLiteral("Put the remembered artist, album and year here"));
    auto *cmdCurrent = button(this, "cmdCurrent", QStringLiteral("Current"),
                              QStringLiteral("Show the playing item's tag again"));
    auto *cmdSave = button(this, "cmdSave", QStringLiteral("Save"),
                           QStringLiteral("Write the tag into the file"));
    auto *cmdOk = button(this, "cmdOk", QStringLiteral("OK"), QString());
    cmdOk->setDefault(true);

    auto *grid = new QGridLayout;
    int row = 0;
    auto add = [&](const QString &caption, QWidget *w) {
        grid->addWidget(new QLabel(caption, this), row, 0);
        grid->addWidget(w, row++, 1);
    };
    add(QStringLiteral("File"), txtFileName);
    add(QStringLiteral("Title"), txtTitle);
    add(QStringLiteral("Artist"), txtArtist);
    add(QStringLiteral("Album"), txtAlbum);
    add(QStringLiteral("Year"), txtYear);
    add(QStringLiteral("Track"), txtTrack);
    add(QStringLiteral("Genre"), cboGenre);
    add(QStringLiteral("Comment"), txtComment);
    add(QStringLiteral("Audio"), lblFrame);
    auto *side = new QVBoxLayout;
    side->addWidget(imgCover);
    side->addWidget(cbEdit);
    side->addStretch();
    auto *top = new QHBoxLayout;
    top->addLayout(grid, 1);
    top->addLayout(side);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {cmdSetTitle, cmdMem, cmdCpy, cmdCurrent})
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdOk);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);

    connect(cmdSetTitle, &QPushButton::clicked, this, [this] {
        const bool friendly = !m_source.friendlyNames || m_source.friendlyNames();
        txtTitle->setText(Playlist::FriendlyName(txtFileName->text(), friendly));
    });
    connect(cmdMem, &QPushButton::clicked, this, [this] {
        m_memArtist = txtArtist->text();
        m_memAlbum = txtAlbum->text();
        m_memYear = txtYear->text();
    });
    connect(cmdCpy, &QPushButton::clicked, this, [this] {
        txtArtist->setText(m_memArtist);
        txtAlbum->setText(m_memAlbum);
        txtYear->setText(m_memYear);
    });
    connect(cmdCurrent, &QPushButton::clicked, this, [this] { GetInfo(); });
    connect(cmdSave, &QPushButton::clicked, this, &frmInfo::SaveIDTag);
    connect(cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    m_timer1.setInterval(500);
    connect(&m_timer1, &QTimer::timeout, this, &frmInfo::Timer1_Timer);
}

void frmInfo::GetInfo()
{
    GetInfo(m_source.currentFile ? m_source.currentFile() : QString());
}

void frmInfo::GetInfo(const QString &file)
{
    m_followed = m_source.currentFile ? m_source.currentFile() : QString();
    const Mp3Info info = isMpegAudio(file) ? GetMP3Info(file) : Mp3Info();
    const TagFields f = fieldsFromRecord(info.tag);
    txtFileName->setText(file);
    txtTitle->setText(f.title);
    txtArtist->setText(f.artist);
    txtAlbum->setText(f.album);
    txtYear->setText(f.year);
    txtComment->setText(f.comment);
    txtTrack->setText(f.track);
    cboGenre->setCurrentIndex(f.genre);
    lblFrame->setText(
        info.examined
            ? QStringLiteral("%1 kbit/s, %2 kHz, %3").arg(info.bitRate, info.sampleRate, info.mode)
            : QString());
    SetCover();
}

void frmInfo::SaveIDTag()
{
    TagFields f;
    f.title = txtTitle->text();
    f.artist = txtArtist->text();
    f.album = txtAlbum->text();
    f.year = txtYear->text();
    f.comment = txtComment->text();
    f.track = txtTrack->text();
    f.genre = qMax(0, cboGenre->currentIndex());
    const QString file = txtFileName->text();
    const TagWrite result = writeTag(file, f);
    m_dialogs.message(tagWriteMessage(result));
    if (result != TagWrite::Failed && m_source.tagSaved)
        m_source.tagSaved(file);
}

void frmInfo::SetCover()
{
    setPicture(m_source.currentCover ? m_source.currentCover() : QImage());
}

void frmInfo::setPicture(const QImage &picture)
{
    if (picture.isNull()) {
        imgCover->clear();
        return;
    }
    imgCover->setPixmap(QPixmap::fromImage(
        picture.scaled(imgCover->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void frmInfo::Timer1_Timer()
{
    if (cbEdit->isChecked() || !m_source.currentFile)
        return;
    const QString current = m_source.currentFile();
    if (!current.isEmpty() && current != m_followed)
        GetInfo(current);
}

void frmInfo::showEvent(QShowEvent *event)
{
    m_timer1.start();
    QDialog::showEvent(event);
}

void frmInfo::hideEvent(QHideEvent *event)
{
    m_timer1.stop();
    QDialog::hideEvent(event);
}
