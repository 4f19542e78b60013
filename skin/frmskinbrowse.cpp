#include "frmskinbrowse.h"

#include "skindescription.h"
#include "skindir.h"
#include "skinsurface.h"

#include "platform/dialogs.h"
#include "platform/findfile.h"
#include "platform/rawnames.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

frmSkinBrowse::frmSkinBrowse(Options options, const SkinSurface &skin, Dialogs &dialogs,
                             LoadSkin load, QWidget *parent)
    : QWidget(parent, Qt::Tool), m_options(std::move(options)), m_skin(skin), m_dialogs(dialogs),
      m_load(std::move(load))
{
    setWindowTitle(QStringLiteral("Skin Browser"));
    setObjectName(QStringLiteral("frmSkinBrowse"));

    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("List1"));
    m_list->setUniformItemSizes(true); // thousands of skins
    m_comment = new QLabel;
    m_comment->setObjectName(QStringLiteral("Comment"));
    m_comment->setWordWrap(true);
    m_comment->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_comment->setTextFormat(Qt::PlainText);
    auto *scroll = new QScrollArea;
    scroll->setWidget(m_comment);
    scroll->setWidgetResizable(true);
    m_info = scroll;
    m_status = new QLabel;
    m_status->setObjectName(QStringLiteral("Status"));
    m_status->setWordWrap(true);
    m_status->setTextFormat(Qt::PlainText);

    m_types = new QComboBox;
    m_types->setObjectName(QStringLiteral("cboShType"));
    m_types->addItems(skinTypeFilters());
    auto *typeLabel = new QLabel(QStringLiteral("&Type:"));
    typeLabel->setBuddy(m_types);
    m_folder = new QPushButton(QStringLiteral("Skin &Folder..."));
    m_folder->setObjectName(QStringLiteral("SetSDir"));
    m_folder->setToolTip(QStringLiteral("List the skins of another folder"));
    m_favourite = new QToolButton;
    m_favourite->setObjectName(QStringLiteral("cFavSkin"));
    m_favourite->setText(QStringLiteral("Select Fa&vorite Skin"));
    m_favourite->setToolTip(
        QStringLiteral("Make the selected skin the favorite of a mode in the popup menu"));
    m_favouriteMenu = new QMenu(QStringLiteral("Select Favorite Skin"), this);
    m_favourite->setMenu(m_favouriteMenu);
    m_favourite->setPopupMode(QToolButton::InstantPopup);
    m_infoButton = new QPushButton(QStringLiteral("&Info"));
    m_infoButton->setObjectName(QStringLiteral("cToggInfo"));
    m_infoButton->setCheckable(true);
    m_infoButton->setChecked(true);
    m_infoButton->setToolTip(QStringLiteral("Show or hide the skin's comment"));
    auto *close = new QPushButton(QStringLiteral("&Close"));

    // The list comes first, at the window's top left corner.
    auto *top = new QHBoxLayout;
    top->addWidget(m_list, 3);
    top->addWidget(m_info, 2);
    auto *controls = new QHBoxLayout;
    controls->addWidget(typeLabel);
    controls->addWidget(m_types);
    controls->addWidget(m_folder);
    controls->addWidget(m_favourite);
    controls->addWidget(m_infoButton);
    controls->addStretch();
    controls->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addWidget(m_status);
    layout->addLayout(controls);
    resize(560, 380);

    connect(m_types, &QComboBox::currentIndexChanged, this, &frmSkinBrowse::ReadSkinDir);
    connect(m_folder, &QPushButton::clicked, this, &frmSkinBrowse::SetSDir);
    connect(m_infoButton, &QPushButton::clicked, this, &frmSkinBrowse::cToggInfo);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    // Arrow keys walk through the skins as clicks do. A click that moved the
    // selection has been handled by then; one on the selected entry tries it
    // again (unless it is the skin shown).
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        m_justSelected = row;
        List1_Click(row);
    });
    connect(m_list, &QListWidget::itemClicked, this, [this](QListWidgetItem *item) {
        const int row = m_list->row(item);
        if (row == std::exchange(m_justSelected, -1))
            return;
        List1_Click(row);
    });
    connect(m_favouriteMenu, &QMenu::aboutToShow, this, &frmSkinBrowse::refreshFavouriteMenu);
    refreshFavouriteMenu();
}

QString frmSkinBrowse::skinFolder() const
{
    return m_options.SkinPath.isEmpty() ? m_options.defaultFolder : m_options.SkinPath;
}

QString frmSkinBrowse::typeFilter() const
{
    return m_types->currentText().toUpper();
}

void frmSkinBrowse::setTypeFilter(const QString &type)
{
    const int index = m_types->findText(type, Qt::MatchFixedString);
    if (index >= 0)
        m_types->setCurrentIndex(index);
}

void frmSkinBrowse::ReadSkinDir()
{
    const QString folder = skinFolder();
    QSet<QString> favourites;
    for (int slot = 0; slot < FavouriteSkins::kSlots; ++slot) {
        if (const QString file = FavouriteSkins::chosenFile(slot, m_options.FavSkin, folder);
            !file.isEmpty())
            favourites.insert(skinPathKey(file));
    }
    const QList<SkinDirEntry> entries = ::ReadSkinDir(folder, typeFilter(), favourites);
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    m_loadedRow = -1;
    m_justSelected = -1;
    for (const SkinDirEntry &entry : entries) {
        auto *item = new QListWidgetItem(entry.text, m_list);
        item->setData(Qt::UserRole, entry.file);
        if (!m_current.isEmpty() && skinPathKey(entry.file) == m_current) {
            m_list->setCurrentItem(item);
            m_loadedRow = m_list->row(item);
        }
    }
    const QStringList unreadable = undecodableNames(folder, QStringLiteral("*.skin"), 5);
    m_status->setText(
        unreadable.isEmpty()
            ? QString()
            : QStringLiteral("Not listed, as their names are not UTF-8 and cannot be opened "
                             "(rename them): ") +
                  unreadable.join(QStringLiteral(", ")));
    m_status->setVisible(!unreadable.isEmpty());
}

void frmSkinBrowse::setCurrentSkin(const QString &file)
{
    m_current = file.isEmpty() ? QString() : skinPathKey(file);
    showComment();
}

void frmSkinBrowse::SetSDir()
{
    const QString chosen =
        m_dialogs.selectFolder(QStringLiteral("Select Skin Directory:"), skinFolder());
    if (chosen.isEmpty())
        return;
    m_options.SkinPath = chosen;
    ReadSkinDir();
}

void frmSkinBrowse::cToggInfo()
{
    // Its own state, not whether the window is on screen: hidden, every
    // widget reads as invisible.
    m_info->setVisible(m_info->isHidden());
    m_infoButton->setChecked(!m_info->isHidden());
}

void frmSkinBrowse::List1_Click(int row)
{
    QListWidgetItem *item = m_list->item(row);
    if (!item || row == m_loadedRow)
        return;
    // The file the entry was made from; the entry's text names it too, in
    // capitals, which any letter case on disk matches.
    QString file = item->data(Qt::UserRole).toString();
    if (!QFileInfo(file).isFile()) {
        if (const QString byEntry = findFileNoCase(skinFolder(), skinFileOfEntry(item->text()));
            !byEntry.isEmpty())
            file = byEntry;
    }
    // A skin gone since the list was read: the loader says so.
    const QString shown = m_load(file);
    if (shown.isEmpty())
        return; // the loader has said why; the browser stays as it is
    m_loadedRow = row;
    m_current = skinPathKey(shown);
    showComment();
    // An imported copy joins the list, selected.
    if (m_current != skinPathKey(file))
        ReadSkinDir();
}

void frmSkinBrowse::showComment()
{
    QString text = m_skin.skin().comment;
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    m_comment->setText(text.trimmed());
}

void frmSkinBrowse::setFavourite(int slot)
{
    QListWidgetItem *item = m_list->currentItem();
    if (!item || slot < 0 || slot >= FavouriteSkins::kSlots)
        return;
    m_options.FavSkin[size_t(slot)] = item->data(Qt::UserRole).toString();
    if (typeFilter() == QLatin1String("FAVORITE"))
        ReadSkinDir();
}

void frmSkinBrowse::refreshFavouriteMenu()
{
    m_favouriteMenu->clear();
    for (int slot = 0; slot < FavouriteSkins::kSlots; ++slot) {
        const QString file = m_options.FavSkin[size_t(slot)];
        const QString now = file.isEmpty() ? QStringLiteral("none") : QFileInfo(file).fileName();
        QAction *action = m_favouriteMenu->addAction(
            QStringLiteral("&%1 %2 (%3)").arg(slot).arg(FavouriteSkins::slotName(slot), now));
        connect(action, &QAction::triggered, this, [this, slot] { setFavourite(slot); });
    }
}
