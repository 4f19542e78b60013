#include "schedulepage.h"

#include "core/clocktick.h"
#include "core/schedule.h"
#include "core/settingkeys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTimeEdit>
#include <QVBoxLayout>

namespace {

const QString kTimeFormat = QStringLiteral("hh:mm");

QTimeEdit *timeEdit(const QString &name, const QTime &time, const QString &tip)
{
    auto *edit = new QTimeEdit(time);
    edit->setObjectName(name);
    edit->setDisplayFormat(QStringLiteral("HH:mm"));
    edit->setToolTip(tip);
    return edit;
}

} // namespace

SchedulePage::SchedulePage(const Settings &settings, const QStringList &autoList, Dialogs &dialogs)
    : PrefsPage(settings, dialogs), m_initialAutoList(autoList)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(check(&Settings::Auto, QStringLiteral("S&witch on and off by the schedule"),
                            QStringLiteral("Play and stop at the times of the entries below")));

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
    m_on = timeEdit(QStringLiteral("AutoOn"), QTime(7, 0),
                    QStringLiteral("Start playing at this time"));
    m_off = timeEdit(QStringLiteral("AutoOff"), QTime(8, 0),
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
    connect(add, &QPushButton::clicked, this, &SchedulePage::addEntry);
    auto *del = new QPushButton(QStringLiteral("Re&move"));
    del->setObjectName(QStringLiteral("AutoDelete"));
    del->setToolTip(QStringLiteral("Remove the selected entry"));
    del->setAutoDefault(false);
    connect(del, &QPushButton::clicked, this, &SchedulePage::deleteEntry);

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
    sform->addRow(check(&Settings::Snooze, QStringLiteral("&Snooze: stop playing later"),
                        QStringLiteral("Stop playback after some minutes or at a time of day")));
    QComboBox *mode = choice(
        &Settings::SnoozeMode,
        {QStringLiteral("After %1 minutes").arg(ClockTick::DefaultSnoozeMinutes),
         QStringLiteral("At the snooze time")},
        m_initial.SnoozeMode != 0 ? 1 : 0,
        QStringLiteral("Count down from the moment the snooze is switched on, or stop at the "
                       "same time every day while it is on"));
    sform->addRow(QStringLiteral("Snooze &ends:"), mode);
    const QTime snoozeTime = QTime::fromString(m_initial.SnoozeTime, kTimeFormat);
    QTimeEdit *time = timeEdit(settingKey(&Settings::SnoozeTime),
                               snoozeTime.isValid() ? snoozeTime : QTime(23, 59),
                               QStringLiteral("The time of day the snooze stops playback"));
    bind([time] { return QVariant(time->time().toString(kTimeFormat)); },
         [](Settings &s, const QVariant &v) { s.SnoozeTime = v.toString(); });
    sform->addRow(QStringLiteral("Snooze &time:"), time);
    auto enableTime = [time, mode] { time->setEnabled(mode->currentIndex() == 1); };
    connect(mode, &QComboBox::currentIndexChanged, this, enableTime);
    enableTime();
    sform->addRow(check(&Settings::SnoozeHide, QStringLiteral("Minimi&ze on switch-off and snooze"),
                        QStringLiteral("Minimize the window when the schedule or the snooze "
                                       "stops playback"),
                        Truth::One));
    sform->addRow(check(&Settings::TimeFmt, QStringLiteral("&24-hour clock"),
                        QStringLiteral("Show the clock as 19:30 instead of 07:30 PM")));
    layout->addWidget(snooze);
}

bool SchedulePage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
        deleteEntry();
        return true;
    }
    return PrefsPage::eventFilter(watched, event);
}

bool SchedulePage::addEntry()
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

void SchedulePage::deleteEntry()
{
    const int row = m_list->currentRow();
    if (row < 0 || !m_list->currentItem() || !m_list->currentItem()->isSelected())
        return;
    delete m_list->takeItem(row);
}

QStringList SchedulePage::autoList() const
{
    QStringList list;
    for (int i = 0; i < m_list->count(); ++i)
        list << m_list->item(i)->text();
    return list;
}
