#include "frmvisloader.h"

#include "vispages.h"

#include "platform/dialogs.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 8;
constexpr int kSpacing = 6;

const char *const kDark = "#1d2329";
const char *const kLight = "#e4e8ec";

} // namespace

VisPictureBox::VisPictureBox(int index, QSize size, QWidget *parent)
    : QLabel(parent), m_index(index)
{
    setObjectName(QStringLiteral("iPic%1").arg(index));
    setFixedSize(size);
    setAlignment(Qt::AlignCenter);
    setMouseTracking(true);
    setSelected(false);
    // Hidden boxes keep their places, so the others never move.
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
}

void VisPictureBox::setSelected(bool selected)
{
    setStyleSheet(selected ? QStringLiteral("border: 2px solid #46d2f0;")
                           : QStringLiteral("border: 2px solid transparent;"));
}

void VisPictureBox::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit clicked(m_index);
    QLabel::mousePressEvent(event);
}

void VisPictureBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit doubleClicked(m_index);
}

void VisPictureBox::enterEvent(QEnterEvent *event)
{
    emit hovered(m_index);
    QLabel::enterEvent(event);
}

frmVisLoader::frmVisLoader(Options options, QString noCoverFile, Dialogs &dialogs, QWidget *parent)
    : QWidget(parent, Qt::Window), m_options(options), m_noCover(std::move(noCoverFile)),
      m_dialogs(dialogs), m_pictures(m_noCover, kBox)
{
    setWindowTitle(QStringLiteral("Visual Playlist Selector"));
    setObjectName(QStringLiteral("frmVisLoader"));

    // The boxes sit at fixed places from the window's top left corner.
    m_grid = new QWidget;
    m_grid->setObjectName(QStringLiteral("Pictures"));
    m_grid->setAutoFillBackground(true);
    auto *grid = new QGridLayout(m_grid);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->setSpacing(kSpacing);
    for (int i = 0; i < VisPages::kPerPage; ++i) {
        auto *box = new VisPictureBox(i, kBox);
        m_boxes[size_t(i)] = box;
        grid->addWidget(box, i / 4, i % 4);
        connect(box, &VisPictureBox::clicked, this, &frmVisLoader::iPic_Click);
        connect(box, &VisPictureBox::doubleClicked, this, &frmVisLoader::iPic_DblClick);
        connect(box, &VisPictureBox::hovered, this, &frmVisLoader::iPic_MouseMove);
    }
    m_grid->setFixedSize(grid->sizeHint());

    m_name = new QLabel;
    m_name->setObjectName(QStringLiteral("PName"));
    m_name->setTextFormat(Qt::PlainText);
    m_pageStat = new QLabel;
    m_pageStat->setObjectName(QStringLiteral("lPgStat"));
    m_pageStat->setTextFormat(Qt::PlainText);
    m_playList = new QListWidget;
    m_playList->setObjectName(QStringLiteral("PlayList"));
    m_playList->setUniformItemSizes(true);

    m_selDir = new QPushButton(QStringLiteral("Select &Folder..."));
    m_selDir->setObjectName(QStringLiteral("cSelDir"));
    m_prev = new QPushButton(QStringLiteral("Pg &Up"));
    m_prev->setObjectName(QStringLiteral("cPrev"));
    m_next = new QPushButton(QStringLiteral("Pg &Dn"));
    m_next->setObjectName(QStringLiteral("cNext"));
    m_load = new QPushButton(QStringLiteral("&Load"));
    m_load->setObjectName(QStringLiteral("cLoad"));
    m_cancel = new QPushButton(QStringLiteral("&Exit"));
    m_cancel->setObjectName(QStringLiteral("cCancel"));
    m_togglePlayList = new QPushButton(QStringLiteral("&Playlist"));
    m_togglePlayList->setObjectName(QStringLiteral("cmdTogPL"));
    m_togglePlayList->setCheckable(true);
    m_togglePlayList->setChecked(true);
    m_background = new QPushButton(QStringLiteral("&Background"));
    m_background->setObjectName(QStringLiteral("cmdBg"));
    m_setDefault = new QCheckBox(QStringLiteral("Set as De&fault"));
    m_setDefault->setObjectName(QStringLiteral("chkSetDef"));
    m_setDefault->setChecked(true);
    m_setDefault->setToolTip(QStringLiteral("A folder chosen becomes the one shown first"));

    auto *left = new QVBoxLayout;
    left->setContentsMargins(0, 0, 0, 0);
    left->addWidget(m_grid);
    left->addWidget(m_name);
    left->addWidget(m_pageStat);
    left->addStretch();
    auto *top = new QHBoxLayout;
    top->setContentsMargins(0, 0, kMargin, 0);
    top->addLayout(left);
    top->addWidget(m_playList, 1);
    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(kMargin, 0, kMargin, kMargin);
    for (QWidget *w : std::initializer_list<QWidget *>{m_selDir, m_setDefault, m_prev, m_next,
                                                       m_load, m_togglePlayList, m_background})
        buttons->addWidget(w);
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top, 1);
    layout->addLayout(buttons);
    resize(m_grid->width() + 280, m_grid->height() + 110);

    connect(m_selDir, &QPushButton::clicked, this, &frmVisLoader::cSelDir_Click);
    connect(m_prev, &QPushButton::clicked, this, &frmVisLoader::cPrev_Click);
    connect(m_next, &QPushButton::clicked, this, &frmVisLoader::cNext_Click);
    connect(m_load, &QPushButton::clicked, this, &frmVisLoader::cLoad_Click);
    connect(m_cancel, &QPushButton::clicked, this, &frmVisLoader::cCancel_Click);
    connect(m_togglePlayList, &QPushButton::clicked, this, &frmVisLoader::cmdTogPL_Click);
    connect(m_background, &QPushButton::clicked, this, &frmVisLoader::cmdBg_Click);
    connect(m_playList, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem *item) { PlayList_DblClick(m_playList->row(item)); });
    connect(m_playList, &QListWidget::itemActivated, this,
            [this](QListWidgetItem *item) { PlayList_DblClick(m_playList->row(item)); });
    connect(&m_scan, &VisScan::progress, this,
            [this](int found) { m_pageStat->setText(VisPages::pageLabel(0, found)); });
    connect(&m_scan, &VisScan::finished, this, &frmVisLoader::scanFinished);
    connect(&m_pictures, &VisPictures::pictureReady, this, &frmVisLoader::pictureReady);

    m_darkBackground = !m_darkBackground;
    cmdBg_Click(); // the dark one first
    showPage(0);
}

frmVisLoader::~frmVisLoader() = default;

void frmVisLoader::Form_Load()
{
    if (m_options.VisPLPath.isEmpty()) {
        m_name->setText(QStringLiteral("Choose a folder of playlists with Select Folder."));
        return;
    }
    scanFolder(m_options.VisPLPath);
}

void frmVisLoader::setBusy(bool busy)
{
    m_cancel->setText(busy ? QStringLiteral("Stop") : QStringLiteral("&Exit"));
}

void frmVisLoader::scanFolder(const QString &folder)
{
    m_pictures.cancel();
    m_selected = -1;
    // Stopping a scan still running reports its end; that one is not shown.
    disconnect(&m_scan, &VisScan::finished, this, &frmVisLoader::scanFinished);
    const bool exists = m_scan.scan(folder);
    connect(&m_scan, &VisScan::finished, this, &frmVisLoader::scanFinished);
    if (!exists) {
        setBusy(false);
        showPage(0);
        m_name->setText(QStringLiteral("This folder does not exist: ") + folder);
        return;
    }
    setBusy(true);
    m_name->setText(QStringLiteral("One moment, looking for playlists..."));
    m_pageStat->setText(VisPages::pageLabel(0, m_scan.count()));
}

void frmVisLoader::scanFinished(bool)
{
    setBusy(false);
    showPage(0);
}

void frmVisLoader::cSelDir_Click()
{
    const QString start = m_scan.folder().isEmpty() ? m_options.VisPLPath : m_scan.folder();
    const QString folder =
        m_dialogs.selectFolder(QStringLiteral("Select directory containing media files:"), start);
    if (folder.isEmpty())
        return;
    if (m_setDefault->isChecked())
        m_options.VisPLPath = folder;
    scanFolder(folder);
}

void frmVisLoader::cNext_Click()
{
    if (m_page + 1 < VisPages::pageCount(m_scan.count()))
        showPage(m_page + 1);
}

void frmVisLoader::cPrev_Click()
{
    if (m_page > 0)
        showPage(m_page - 1);
}

void frmVisLoader::showPage(int page)
{
    const int entries = m_scan.count();
    m_page = VisPages::clampPage(page, entries);
    m_playList->clear();
    m_pageStat->setText(VisPages::pageLabel(m_page, entries));
    const int first = VisPages::firstIndex(m_page);
    const int shown = VisPages::boxesShown(m_page, entries);
    QStringList paths;
    for (int i = 0; i < VisPages::kPerPage; ++i) {
        VisPictureBox *box = m_boxes[size_t(i)];
        box->clear();
        box->setSelected(first + i == m_selected);
        if (i < shown) {
            box->setToolTip(m_scan.name(first + i));
            paths << m_scan.path(first + i);
        }
        box->setVisible(i < shown);
    }
    m_prev->setEnabled(m_page > 0);
    m_next->setEnabled(m_page + 1 < VisPages::pageCount(entries));
    m_pageLoaded = 0;
    m_name->setText(QStringLiteral("One moment, loading playlist pictures..."));
    m_pictures.request(++m_ticket, paths);
    if (m_pageLoaded >= shown) {
        m_name->setText(QStringLiteral("Select playlist..."));
    } else if (!m_scan.isRunning()) {
        setBusy(true);
    }
}

void frmVisLoader::pictureReady(int ticket, int box, const QImage &picture)
{
    if (ticket != m_ticket || box < 0 || box >= VisPages::kPerPage)
        return;
    m_boxes[size_t(box)]->setPixmap(QPixmap::fromImage(picture));
    ++m_pageLoaded;
    if (m_pageLoaded == VisPages::boxesShown(m_page, m_scan.count())) {
        m_name->setText(QStringLiteral("Select playlist..."));
        if (!m_scan.isRunning())
            setBusy(false);
    }
}

int frmVisLoader::entryOf(int box) const
{
    const int entry = VisPages::firstIndex(m_page) + box;
    return box >= 0 && box < VisPages::kPerPage && entry < m_scan.count() ? entry : -1;
}

void frmVisLoader::select(int box)
{
    m_selected = entryOf(box);
    for (VisPictureBox *b : m_boxes)
        b->setSelected(b->index() == box && m_selected >= 0);
}

void frmVisLoader::showName(int box)
{
    const int entry = entryOf(box);
    if (entry < 0)
        return;
    m_name->setText(m_scan.isFolder(entry)
                        ? QStringLiteral("This is a directory. Double-click to enter!")
                        : m_scan.name(entry));
}

void frmVisLoader::iPic_Click(int box)
{
    select(box);
    showName(box);
}

void frmVisLoader::iPic_MouseMove(int box)
{
    showName(box);
}

void frmVisLoader::iPic_DblClick(int box)
{
    select(box);
    cLoad_Click();
}

void frmVisLoader::cLoad_Click()
{
    if (m_selected < 0 || m_selected >= m_scan.count())
        return;
    const QString path = m_scan.path(m_selected);
    if (m_scan.isFolder(m_selected))
        return scanFolder(path);
    m_name->setText(m_scan.name(m_selected));
    emit loadRequested(path);
}

void frmVisLoader::showEntries(const QStringList &names, int firstIndex)
{
    m_firstEntry = firstIndex;
    m_playList->clear();
    m_playList->addItems(names);
    if (!m_playList->isVisible() && isVisible())
        cmdTogPL_Click();
}

void frmVisLoader::PlayList_DblClick(int row)
{
    if (row >= 0 && row < m_playList->count())
        emit playRequested(m_firstEntry + row);
}

void frmVisLoader::cCancel_Click()
{
    // The first page of what a stopped scan found still shows.
    if (m_scan.isRunning())
        return m_scan.stop();
    if (m_pictures.busy()) {
        m_pictures.cancel();
        setBusy(false);
        m_name->setText(QStringLiteral("Select playlist..."));
        return;
    }
    close();
}

void frmVisLoader::cmdTogPL_Click()
{
    m_playList->setVisible(!m_playList->isVisible());
    m_togglePlayList->setChecked(m_playList->isVisible());
}

void frmVisLoader::cmdBg_Click()
{
    m_darkBackground = !m_darkBackground;
    QPalette palette = m_grid->palette();
    palette.setColor(QPalette::Window, QColor(QLatin1String(m_darkBackground ? kDark : kLight)));
    palette.setColor(QPalette::WindowText,
                     QColor(QLatin1String(m_darkBackground ? kLight : kDark)));
    m_grid->setPalette(palette);
}

void frmVisLoader::closeEvent(QCloseEvent *event)
{
    m_scan.stop();
    m_pictures.cancel();
    setBusy(false);
    QWidget::closeEvent(event);
}

void frmVisLoader::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_PageDown:
        return cNext_Click();
    case Qt::Key_PageUp:
        return cPrev_Click();
    case Qt::Key_Escape:
        return cCancel_Click();
    default:
        QWidget::keyPressEvent(event);
    }
}
