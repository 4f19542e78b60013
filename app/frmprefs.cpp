#include "frmprefs.h"

#include "core/clocktick.h"
#include "core/schedule.h"
#include "platform/dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimeEdit>
#include <QVBoxLayout>

namespace {

const QString kTimeFormat = QStringLiteral("hh:mm");

QLabel *buddyLabel(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

QTimeEdit *timeEdit(const char *name, const QTime &time, const QString &tip)
{
    auto *edit = new QTimeEdit(time);
    edit->setObjectName(QLatin1String(name));
    edit->setDisplayFormat(QStringLiteral("HH:mm"));
    edit->setToolTip(tip);
    return edit;
}

} // namespace

QString normaliseExtensions(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,;]+"));
    QStringList out;
    for (QString ext : text.split(separators, Qt::SkipEmptyParts)) {
        if (ext.startsWith(QLatin1String("*.")))
            ext.remove(0, 2);
        while (ext.startsWith(QLatin1Char('.')))
            ext.remove(0, 1);
        if (!ext.isEmpty())
            out << ext;
    }
    return out.join(QLatin1Char(' '));
}

frmPrefs::frmPrefs(const Settings &settings, const QStringList &autoList, Dialogs &dialogs,
                   QWidget *parent)
    : QDialog(parent), m_initial(settings), m_initialAutoList(autoList), m_dialogs(dialogs)
{
    setWindowTitle(QStringLiteral("Velto Preferences"));

    auto *tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("tabs"));
    tabs->addTab(generalPage(), QStringLiteral("&General"));
    tabs->addTab(playbackPage(), QStringLiteral("&Playback"));
    tabs->addTab(listsPage(), QStringLiteral("&Lists"));
    tabs->addTab(skinsPage(), QStringLiteral("S&kins"));
    tabs->addTab(schedulePage(), QStringLiteral("Auto &On/Off"));
    tabs->addTab(cdPage(), QStringLiteral("&CD"));
    tabs->addTab(devicesPage(), QStringLiteral("&Devices"));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    // Enter and Esc answer the dialog; desktop themes would give the two
    // buttons the mnemonics O and C, which the tabs use.
    QPushButton *ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(QStringLiteral("OK"));
    ok->setToolTip(QStringLiteral("Keep the changes (Enter)"));
    QPushButton *cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setText(QStringLiteral("Cancel"));
    cancel->setToolTip(QStringLiteral("Forget the changes (Esc)"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttons);
}

void frmPrefs::bind(std::function<QVariant()> read,
                    std::function<void(Settings &, const QVariant &)> write)
{
    QVariant initial = read();
    m_bindings.push_back({std::move(read), std::move(initial), std::move(write)});
}

void frmPrefs::applyTo(Settings &settings) const
{
    for (const Binding &b : m_bindings) {
        const QVariant now = b.read();
        if (now != b.initial)
            b.write(settings, now);
    }
}

QStringList frmPrefs::autoList() const
{
    QStringList list;
    for (int i = 0; i < m_list->count(); ++i)
        list << m_list->item(i)->text();
    return list;
}

QString frmPrefs::chosenSkin() const
{
    const QString text = m_skin->text().trimmed();
    return text == m_initialSkin ? QString() : text;
}

// Each option is tested the way the code that uses it tests it, so the box
// shows what Velto will do with a stored value such as -1 or 2.
bool frmPrefs::isOn(qint16 value, Truth truth)
{
    switch (truth) {
    case Truth::One:
        return value == 1;
    case Truth::Positive:
        return value > 0;
    case Truth::Zero:
        return value == 0;
    case Truth::NonZero:
        break;
    }
    return value != 0;
}

QCheckBox *frmPrefs::check(const char *key, const QString &text, const QString &tip,
                           qint16 Settings::*field, Truth truth)
{
    auto *box = new QCheckBox(text);
    box->setObjectName(QLatin1String(key));
    box->setToolTip(tip);
    box->setChecked(isOn(m_initial.*field, truth));
    const qint16 on = truth == Truth::Zero ? 0 : 1;
    bind([box] { return QVariant(box->isChecked()); },
         [field, on](Settings &s, const QVariant &v) {
             s.*field = qint16(v.toBool() ? on : 1 - on);
         });
    return box;
}

QComboBox *frmPrefs::choice(const char *key, const QStringList &items, int index,
                            const QString &tip, std::function<void(Settings &, int)> write)
{
    auto *combo = new QComboBox;
    combo->setObjectName(QLatin1String(key));
    combo->addItems(items);
    combo->setCurrentIndex(index);
    combo->setToolTip(tip);
    bind([combo] { return QVariant(combo->currentIndex()); },
         [write = std::move(write)](Settings &s, const QVariant &v) { write(s, v.toInt()); });
    return combo;
}

QLineEdit *frmPrefs::text(const char *key, QString Settings::*field, const QString &tip,
                          std::function<QString(const QString &)> clean)
{
    auto *edit = new QLineEdit(m_initial.*field);
    edit->setObjectName(QLatin1String(key));
    edit->setToolTip(tip);
    bind([edit] { return QVariant(edit->text()); },
         [field, clean = std::move(clean)](Settings &s, const QVariant &v) {
             s.*field = clean ? clean(v.toString()) : v.toString();
         });
    return edit;
}

QSpinBox *frmPrefs::number(const char *key, qint16 Settings::*field, int min, int max,
                           const QString &tip)
{
    auto *spin = new QSpinBox;
    spin->setObjectName(QLatin1String(key));
    spin->setRange(min, max);
    spin->setValue(qBound(min, int(m_initial.*field), max));
    spin->setToolTip(tip);
    bind([spin] { return QVariant(spin->value()); },
         [field](Settings &s, const QVariant &v) { s.*field = qint16(v.toInt()); });
    return spin;
}

QWidget *frmPrefs::withChooser(QLineEdit *edit, const QString &buttonText, const QString &tip,
                               std::function<QString()> choose)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit, 1);
    auto *button = new QPushButton(buttonText);
    button->setObjectName(edit->objectName() + QStringLiteral("Choose"));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [edit, choose = std::move(choose)] {
        const QString chosen = choose();
        if (!chosen.isEmpty())
            edit->setText(chosen);
    });
    layout->addWidget(button);
    return row;
}

QString frmPrefs::chooseFile(const QString &title, const QString &current, const QString &filter)
{
    const QString folder = current.isEmpty() ? QDir::homePath() : QFileInfo(current).path();
    return m_dialogs.openFiles(title, folder, filter).value(0);
}

QString frmPrefs::chooseFolder(const QString &prompt, const QString &current)
{
    return m_dialogs.selectFolder(prompt, current.isEmpty() ? QDir::homePath() : current);
}

QWidget *frmPrefs::generalPage()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);

    auto *start = new QGroupBox(QStringLiteral("At start"));
    auto *form = new QFormLayout(start);
    const int startIndex = m_initial.StartMd == 1 ? 1 : m_initial.StartMd == 2 ? 2 : 0;
    QComboBox *startMd =
        choice("StartMd",
               {QStringLiteral("Nothing"), QStringLiteral("The last playlist and track"),
                QStringLiteral("The file, playlist or folder below")},
               startIndex,
               QStringLiteral("What Velto opens when it starts without a file on the command line"),
               [](Settings &s, int index) { s.StartMd = qint16(index); });
    form->addRow(QStringLiteral("Open at s&tart:"), startMd);

    QLineEdit *startFile =
        text("StartFile", &Settings::StartFile,
             QStringLiteral("The media file, playlist or folder opened at start"));
    auto *fileRow = new QWidget;
    auto *fileLayout = new QHBoxLayout(fileRow);
    fileLayout->setContentsMargins(0, 0, 0, 0);
    fileLayout->addWidget(
        withChooser(startFile, QStringLiteral("&Browse..."),
                    QStringLiteral("Choose the file to open at start"), [this, startFile] {
                        return chooseFile(QStringLiteral("Open at start"), startFile->text(),
                                          QStringLiteral("All files (*)|*"));
                    }));
    auto *folderButton = new QPushButton(QStringLiteral("Fold&er..."));
    folderButton->setObjectName(QStringLiteral("StartFileFolder"));
    folderButton->setToolTip(QStringLiteral("Choose a folder to open at start"));
    folderButton->setAutoDefault(false);
    connect(folderButton, &QPushButton::clicked, this, [this, startFile] {
        const QString folder = chooseFolder(
            QStringLiteral("Select Directory containing Media Files:"), startFile->text());
        if (!folder.isEmpty())
            startFile->setText(folder);
    });
    fileLayout->addWidget(folderButton);
    form->addRow(buddyLabel(QStringLiteral("Start &file:"), startFile), fileRow);
    auto enableFile = [fileRow, startMd] { fileRow->setEnabled(startMd->currentIndex() == 2); };
    connect(startMd, &QComboBox::currentIndexChanged, this, enableFile);
    enableFile();

    form->addRow(check("StartMin", QStringLiteral("Start &minimized"),
                       QStringLiteral("Start with the window minimized"), &Settings::StartMin,
                       Truth::One));
    form->addRow(check("StartMute", QStringLiteral("Start m&uted"),
                       QStringLiteral("Start with the sound muted"), &Settings::StartMute));
    layout->addWidget(start);

    auto *window = new QGroupBox(QStringLiteral("Window"));
    auto *wform = new QFormLayout(window);
    wform->addRow(check("WinOnTop", QStringLiteral("&Always on top"),
                        QStringLiteral("Keep the Velto window above all other windows"),
                        &Settings::WinOnTop, Truth::One));
    wform->addRow(check("WinSnap", QStringLiteral("S&nap to the screen edges"),
                        QStringLiteral("A window dropped near a screen edge moves onto it"),
                        &Settings::WinSnap));
    wform->addRow(check("WinSavePos", QStringLiteral("&Remember the window position"),
                        QStringLiteral("Start where the window was when Velto ended"),
                        &Settings::WinSavePos, Truth::One));
    wform->addRow(check("NoRMB", QStringLiteral("Rig&ht click opens the popup menu"),
                        QStringLiteral("A right click on the window opens the popup menu"),
                        &Settings::NoRMB, Truth::Zero));
    wform->addRow(
        QStringLiteral("Closing the &window:"),
        choice(
            "ExitMode",
            {QStringLiteral("Quits Velto"), QStringLiteral("Hides Velto to its tray icon")},
            m_initial.ExitMode == 1 ? 1 : 0,
            QStringLiteral("What the desktop's close does. Quit in the popup menu always quits."),
            [](Settings &s, int index) { s.ExitMode = qint16(index); }));
    layout->addWidget(window);
    layout->addStretch();
    return page;
}

QWidget *frmPrefs::playbackPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    const int device = m_initial.MCIDevice == QLatin1String("0")   ? 0
                       : m_initial.MCIDevice == QLatin1String("1") ? 1
                                                                   : 2;
    form->addRow(QStringLiteral("Media de&vice:"),
                 choice("MCIDevice",
                        {QStringLiteral("MPEGVideo"), QStringLiteral("MPEGVideo2"),
                         QStringLiteral("ActiveMovie")},
                        device,
                        QStringLiteral("The media device that plays MP3 and most other files"),
                        [](Settings &s, int index) { s.MCIDevice = QString::number(index); }));
    QSpinBox *overlap =
        number("PBOverlap", &Settings::PBOverlap, 0, 32767,
               QStringLiteral("The next item starts this long before the current one ends, "
                              "so the two overlap"));
    overlap->setSuffix(QStringLiteral(" ms"));
    form->addRow(QStringLiteral("Start the next item &early by:"), overlap);
    form->addRow(check("AutoPlay", QStringLiteral("Start pla&ying when something is loaded"),
                       QStringLiteral("Play at once after a file or playlist is opened"),
                       &Settings::AutoPlay));
    form->addRow(
        check("ClearPLFirst", QStringLiteral("Clea&r the playlist before loading one"),
              QStringLiteral("Loading a playlist replaces the list instead of adding to it"),
              &Settings::ClearPLFirst, Truth::One));
    form->addRow(check("ScrollName", QStringLiteral("&Scroll the title in the display"),
                       QStringLiteral("Titles too long for the display scroll through it"),
                       &Settings::ScrollName));
    return page;
}

QWidget *frmPrefs::listsPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->addRow(check("FriendlyNames", QStringLiteral("Show &titles instead of file names"),
                       QStringLiteral("\"01 - Morning_Song.mp3\" shows as \"Morning Song.mp3\""),
                       &Settings::FriendlyNames, Truth::Positive));
    QLineEdit *ext = text("ValidExt", &Settings::ValidExt,
                          QStringLiteral("File extensions added when you add a whole folder, "
                                         "separated by blanks"),
                          normaliseExtensions);
    form->addRow(QStringLiteral("&Extensions added from a folder:"), ext);
    form->addRow(check("AutoCloseQF", QStringLiteral("Close &Quick Find after playing an entry"),
                       QStringLiteral("The Quick Find/Play window closes once you play an entry"),
                       &Settings::AutoCloseQF));
    QLineEdit *vis = text("VisPLPath", &Settings::VisPLPath,
                          QStringLiteral("The folder the visual playlist selector shows first"));
    form->addRow(buddyLabel(QStringLiteral("&Visual selector folder:"), vis),
                 withChooser(vis, QStringLiteral("&Browse..."),
                             QStringLiteral("Choose the visual selector's folder"), [this, vis] {
                                 return chooseFolder(QStringLiteral("Select the playlist folder:"),
                                                     vis->text());
                             }));
    form->addRow(check("UseTagCover",
                       QStringLiteral("&Use the tag's album and artist to find a cover"),
                       QStringLiteral("Look for a cover picture named after the album or artist "
                                      "when an MP3 starts"),
                       &Settings::UseTagCover, Truth::One));
    form->addRow(check("AutoCover", QStringLiteral("&Show every cover in the album window"),
                       QStringLiteral("Open the album cover window whenever a cover is loaded"),
                       &Settings::AutoCover, Truth::One));
    return page;
}

QWidget *frmPrefs::skinsPage()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *form = new QFormLayout;

    m_initialSkin =
        m_initial.Skin.isEmpty() ? QString() : QDir(m_initial.SkinPath).filePath(m_initial.Skin);
    m_skin = new QLineEdit(m_initialSkin);
    m_skin->setObjectName(QStringLiteral("Skin"));
    m_skin->setToolTip(QStringLiteral("The skin file in use; another one is loaded on OK"));
    const QString skinFilter = QStringLiteral("Skins (*.skin)|*.skin");
    form->addRow(buddyLabel(QStringLiteral("&Skin:"), m_skin),
                 withChooser(m_skin, QStringLiteral("&Browse..."),
                             QStringLiteral("Choose another skin file"), [this, skinFilter] {
                                 return chooseFile(QStringLiteral("Select Skin"), m_skin->text(),
                                                   skinFilter);
                             }));
    form->addRow(
        check("UseSkinBrowser", QStringLiteral("Select Skin opens the skin bro&wser"),
              QStringLiteral("Select Skin shows the skin browser instead of a file dialog"),
              &Settings::UseSkinBrowser, Truth::One));
    layout->addLayout(form);

    // The slots in the popup menu's order.
    const char *const slotNames[10] = {"Favorite", "Player",   "Calculator",  "Notepad",
                                       "Clock",    "FM Tuner", "Web Browser", "Web Radio",
                                       "Other 1",  "Other 2"};
    auto *favourites = new QGroupBox(QStringLiteral("Favorite skins"));
    auto *fform = new QFormLayout(favourites);
    for (int slot = 0; slot < 10; ++slot) {
        const QString name = QLatin1String(slotNames[slot]);
        auto *edit = new QLineEdit(m_initial.FavSkin[slot]);
        edit->setObjectName(QStringLiteral("FavSkin%1").arg(slot));
        edit->setToolTip(QStringLiteral("The skin the popup menu's %1 entry loads").arg(name));
        bind([edit] { return QVariant(edit->text()); },
             [slot](Settings &s, const QVariant &v) { s.FavSkin[slot] = v.toString(); });
        fform->addRow(buddyLabel(QStringLiteral("&%1 %2:").arg(slot).arg(name), edit),
                      withChooser(edit, QStringLiteral("..."),
                                  QStringLiteral("Choose the %1 favorite skin").arg(name),
                                  [this, edit, skinFilter] {
                                      return chooseFile(QStringLiteral("Select Favorite Skin"),
                                                        edit->text(), skinFilter);
                                  }));
    }
    layout->addWidget(favourites);
    layout->addStretch();
    return page;
}

QWidget *frmPrefs::schedulePage()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(check("Auto", QStringLiteral("S&witch on and off by the schedule"),
                            QStringLiteral("Play and stop at the times of the entries below"),
                            &Settings::Auto));

    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("AutoList"));
    m_list->setToolTip(QStringLiteral("Day, switch-on time, switch-off time and preset of each "
                                      "entry. Delete removes the selected one."));
    m_list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_list->addItems(m_initialAutoList);
    m_list->installEventFilter(this);
    layout->addWidget(buddyLabel(QStringLiteral("Entr&ies:"), m_list));
    layout->addWidget(m_list);

    m_day = new QComboBox;
    m_day->setObjectName(QStringLiteral("AutoDay"));
    m_day->addItems({QStringLiteral("E - Every day"), QStringLiteral("D - Weekdays (Mon-Fri)"),
                     QStringLiteral("N - Weekend (Sat, Sun)"), QStringLiteral("M - Monday"),
                     QStringLiteral("T - Tuesday"), QStringLiteral("W - Wednesday"),
                     QStringLiteral("R - Thursday"), QStringLiteral("F - Friday"),
                     QStringLiteral("S - Saturday"), QStringLiteral("U - Sunday")});
    m_day->setToolTip(QStringLiteral("The days the new entry applies on"));
    m_on = timeEdit("AutoOn", QTime(7, 0), QStringLiteral("Start playing at this time"));
    m_off = timeEdit("AutoOff", QTime(8, 0),
                     QStringLiteral("Stop playing at this time (00:00 is midnight)"));
    m_preset = new QSpinBox;
    m_preset->setObjectName(QStringLiteral("AutoPreset"));
    m_preset->setRange(0, 9);
    m_preset->setSpecialValueText(QStringLiteral("0 (playlist)"));
    m_preset->setToolTip(QStringLiteral("0 plays the playlist from its current entry; 1-9 play "
                                        "that web radio or FM preset where one is set up"));
    auto *add = new QPushButton(QStringLiteral("&Add"));
    add->setObjectName(QStringLiteral("AutoAdd"));
    add->setToolTip(QStringLiteral("Add an entry with this day, times and preset"));
    add->setAutoDefault(false);
    connect(add, &QPushButton::clicked, this, &frmPrefs::addEntry);
    auto *del = new QPushButton(QStringLiteral("Re&move"));
    del->setObjectName(QStringLiteral("AutoDelete"));
    del->setToolTip(QStringLiteral("Remove the selected entry"));
    del->setAutoDefault(false);
    connect(del, &QPushButton::clicked, this, &frmPrefs::deleteEntry);

    auto *grid = new QGridLayout;
    grid->addWidget(buddyLabel(QStringLiteral("Da&y:"), m_day), 0, 0);
    grid->addWidget(m_day, 0, 1);
    grid->addWidget(buddyLabel(QStringLiteral("O&n at:"), m_on), 0, 2);
    grid->addWidget(m_on, 0, 3);
    grid->addWidget(buddyLabel(QStringLiteral("O&ff at:"), m_off), 0, 4);
    grid->addWidget(m_off, 0, 5);
    grid->addWidget(buddyLabel(QStringLiteral("P&reset:"), m_preset), 1, 0);
    grid->addWidget(m_preset, 1, 1);
    grid->addWidget(add, 1, 3);
    grid->addWidget(del, 1, 5);
    layout->addLayout(grid);
    m_note = new QLabel;
    m_note->setObjectName(QStringLiteral("AutoNote"));
    m_note->setWordWrap(true);
    layout->addWidget(m_note);

    auto *snooze = new QGroupBox(QStringLiteral("Snooze and clock"));
    auto *sform = new QFormLayout(snooze);
    sform->addRow(check("Snooze", QStringLiteral("&Snooze: stop playing later"),
                        QStringLiteral("Stop playback after some minutes or at a time of day"),
                        &Settings::Snooze));
    QComboBox *mode = choice(
        "SnoozeMode",
        {QStringLiteral("After %1 minutes").arg(ClockTick::DefaultSnoozeMinutes),
         QStringLiteral("At the snooze time")},
        m_initial.SnoozeMode != 0 ? 1 : 0,
        QStringLiteral("Count down from the moment the snooze is switched on, or stop at the "
                       "same time every day while it is on"),
        [](Settings &s, int index) { s.SnoozeMode = qint16(index); });
    sform->addRow(QStringLiteral("Snooze &ends:"), mode);
    const QTime snoozeTime = QTime::fromString(m_initial.SnoozeTime, kTimeFormat);
    QTimeEdit *time = timeEdit("SnoozeTime", snoozeTime.isValid() ? snoozeTime : QTime(23, 59),
                               QStringLiteral("The time of day the snooze stops playback"));
    bind([time] { return QVariant(time->time().toString(kTimeFormat)); },
         [](Settings &s, const QVariant &v) { s.SnoozeTime = v.toString(); });
    sform->addRow(QStringLiteral("Snooze &time:"), time);
    auto enableTime = [time, mode] { time->setEnabled(mode->currentIndex() == 1); };
    connect(mode, &QComboBox::currentIndexChanged, this, enableTime);
    enableTime();
    sform->addRow(check("SnoozeHide", QStringLiteral("Minimi&ze on switch-off and snooze"),
                        QStringLiteral("Minimize the window when the schedule or the snooze "
                                       "stops playback"),
                        &Settings::SnoozeHide, Truth::One));
    sform->addRow(check("TimeFmt", QStringLiteral("&24-hour clock"),
                        QStringLiteral("Show the clock as 19:30 instead of 07:30 PM"),
                        &Settings::TimeFmt));
    layout->addWidget(snooze);
    return page;
}

bool frmPrefs::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
        deleteEntry();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

bool frmPrefs::addEntry()
{
    const QChar day = m_day->currentText().front();
    const auto entry = makeEntry(day, m_on->time().toString(kTimeFormat),
                                 m_off->time().toString(kTimeFormat), m_preset->value());
    if (!entry) {
        m_note->setText(QStringLiteral("Not added: an entry that switches on and off at 00:00 "
                                       "would never switch anything."));
        return false;
    }
    m_note->clear();
    m_list->addItem(*entry);
    m_list->setCurrentRow(m_list->count() - 1);
    return true;
}

void frmPrefs::deleteEntry()
{
    const int row = m_list->currentRow();
    if (row < 0 || !m_list->currentItem() || !m_list->currentItem()->isSelected())
        return;
    delete m_list->takeItem(row);
}

QWidget *frmPrefs::cdPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->addRow(check("UseCDP", QStringLiteral("Look titles up in the CD player's title &file"),
                       QStringLiteral("Name a disc's tracks from cdplayer.ini in Velto's folder"),
                       &Settings::UseCDP, Truth::One));
    QCheckBox *cddb = check("UseCDDB", QStringLiteral("Look titles up on a CDDB &server"),
                            QStringLiteral("Ask the server below when the title file does not "
                                           "know the disc"),
                            &Settings::UseCDDB, Truth::One);
    form->addRow(cddb);
    QLineEdit *server =
        text("CDDBcmd", &Settings::CDDBcmd,
             QStringLiteral("The server's query address, ending in \"?cmd=\", for example %1")
                 .arg(Settings().CDDBcmd));
    form->addRow(QStringLiteral("Server &address:"), server);
    QLineEdit *email = text("EmailID", &Settings::EmailID,
                            QStringLiteral("The user and host name sent to the server as "
                                           "user@host; servers refuse made-up looking ones"));
    form->addRow(QStringLiteral("&E-mail:"), email);
    auto enable = [cddb, server, email] {
        server->setEnabled(cddb->isChecked());
        email->setEnabled(cddb->isChecked());
    };
    connect(cddb, &QCheckBox::toggled, this, enable);
    enable();
    return page;
}

QWidget *frmPrefs::devicesPage()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);

    auto *fm = new QGroupBox(QStringLiteral("FM tuner"));
    auto *fform = new QFormLayout(fm);
    QCheckBox *fmOn = check("FMEnable", QStringLiteral("Use an FM &tuner card"),
                            QStringLiteral("Velto drives a radio card for the FM Tuner mode"),
                            &Settings::FMEnable, Truth::One);
    fform->addRow(fmOn);
    const QStringList cards = {QStringLiteral("Aztech/PB/CompExpress"),
                               QStringLiteral("Aims Labs RadioTrack"),
                               QStringLiteral("Aims Labs RadioTrack II")};
    const QStringList ports[3] = {{QStringLiteral("350h"), QStringLiteral("358h")},
                                  {QStringLiteral("30Ch"), QStringLiteral("20Ch")},
                                  {QStringLiteral("384h"), QStringLiteral("284h")}};
    const int card = m_initial.CardType >= 0 && m_initial.CardType < 3 ? m_initial.CardType : 0;
    QComboBox *cardType = choice("CardType", cards, card,
                                 QStringLiteral("The kind of card; Video4Linux cards are found "
                                                "without it"),
                                 [](Settings &s, int index) { s.CardType = qint16(index); });
    fform->addRow(QStringLiteral("Card t&ype:"), cardType);
    QComboBox *cardPort = choice("CardPort", ports[card], m_initial.CardPort == 1 ? 1 : 0,
                                 QStringLiteral("The card's I/O port"),
                                 [](Settings &s, int index) { s.CardPort = qint16(index); });
    connect(cardType, &QComboBox::currentIndexChanged, this, [cardPort, ports](int index) {
        if (index < 0 || index > 2)
            return;
        const int port = cardPort->currentIndex();
        for (int i = 0; i < 2; ++i)
            cardPort->setItemText(i, ports[index][i]);
        cardPort->setCurrentIndex(port);
    });
    fform->addRow(QStringLiteral("&I/O port:"), cardPort);
    QSpinBox *preset = number("StartPreset", &Settings::StartPreset, 0, 999,
                              QStringLiteral("The preset tuned when Velto starts"));
    fform->addRow(QStringLiteral("Start p&reset:"), preset);
    auto *freq = new QDoubleSpinBox;
    freq->setObjectName(QStringLiteral("StartFreq"));
    freq->setRange(87.0, 108.0);
    freq->setDecimals(1);
    freq->setSingleStep(0.1);
    freq->setSuffix(QStringLiteral(" MHz"));
    freq->setValue(qBound(87.0, leadingNumber(m_initial.StartFreq), 108.0));
    freq->setToolTip(QStringLiteral("The frequency tuned when Velto starts"));
    bind([freq] { return QVariant(QString::number(freq->value(), 'f', 1)); },
         [](Settings &s, const QVariant &v) { s.StartFreq = v.toString(); });
    fform->addRow(QStringLiteral("Start fre&quency:"), freq);
    auto enableFm = [fmOn, cardType, cardPort, preset, freq] {
        for (QWidget *w : {static_cast<QWidget *>(cardType), static_cast<QWidget *>(cardPort),
                           static_cast<QWidget *>(preset), static_cast<QWidget *>(freq)})
            w->setEnabled(fmOn->isChecked());
    };
    connect(fmOn, &QCheckBox::toggled, this, enableFm);
    enableFm();
    layout->addWidget(fm);

    auto *ex = new QGroupBox(QStringLiteral("External display"));
    auto *eform = new QFormLayout(ex);
    QCheckBox *exOn = check("ExEnable", QStringLiteral("Show the title on an e&xternal display"),
                            QStringLiteral("Send what plays to an LED sign or LCD module on a "
                                           "serial port"),
                            &Settings::ExEnable, Truth::One);
    eform->addRow(exOn);
    QComboBox *kind =
        choice("ExDev", {QStringLiteral("LED sign"), QStringLiteral("Character LCD module")},
               m_initial.ExDev == 1 ? 1 : 0, QStringLiteral("The kind of display"),
               [](Settings &s, int index) { s.ExDev = qint16(index); });
    eform->addRow(QStringLiteral("Display &model:"), kind);
    QSpinBox *port = number("ExPort", &Settings::ExPort, 0, 255,
                            QStringLiteral("The number of the serial port the display is on"));
    eform->addRow(QStringLiteral("Serial port &number:"), port);
    QLineEdit *parm = text("ExParm", &Settings::ExParm,
                           QStringLiteral("Speed, parity, data bits and stop bits, as 9600,N,8,1"));
    eform->addRow(QStringLiteral("Port &settings:"), parm);
    auto enableEx = [exOn, kind, port, parm] {
        for (QWidget *w : {static_cast<QWidget *>(kind), static_cast<QWidget *>(port),
                           static_cast<QWidget *>(parm)})
            w->setEnabled(exOn->isChecked());
    };
    connect(exOn, &QCheckBox::toggled, this, enableEx);
    enableEx();
    layout->addWidget(ex);
    layout->addStretch();
    return page;
}
