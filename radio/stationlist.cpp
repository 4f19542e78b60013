#include "stationlist.h"

#include "stationfile.h"

#include "platform/dialogs.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"
#include "skin/skintextfield.h"

#include <QKeyEvent>

StationList::StationList(SkinSurface &skin, Dialogs &dialogs, int listNumber, int fieldNumber,
                         QString file, const bool &shown)
    : m_skin(skin), m_dialogs(dialogs), m_listNumber(listNumber), m_fieldNumber(fieldNumber),
      m_file(std::move(file)), m_shown(shown)
{
}

SkinListArea *StationList::list() const
{
    return m_skin.list(m_listNumber);
}

SkinTextField *StationList::field() const
{
    return m_skin.textField(m_fieldNumber);
}

void StationList::hook()
{
    if (SkinListArea *l = list(); l && l != m_hookedList) {
        m_hookedList = l;
        l->installEventFilter(this);
        connect(l, &QListWidget::itemClicked, this, [this](QListWidgetItem *item) {
            if (m_shown && item)
                emit clicked(m_hookedList->row(item));
        });
        connect(l, &QListWidget::currentRowChanged, this, [this](int row) {
            if (m_shown && row >= 0)
                emit currentChanged(row);
        });
        connect(l, &QListWidget::itemActivated, this, [this](QListWidgetItem *item) {
            if (m_shown && item)
                emit activated(m_hookedList->row(item));
        });
    }
    if (SkinTextField *f = field(); f && f != m_hookedField) {
        m_hookedField = f;
        connect(f, &QLineEdit::returnPressed, this, [this] {
            if (m_shown && m_hookedField)
                emit entered(m_hookedField->text());
        });
    }
}

bool StationList::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_hookedList || event->type() != QEvent::KeyPress || !m_shown)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Delete && key != Qt::Key_F2)
        return false;
    emit keyPressed(key, m_hookedList->currentRow());
    return true;
}

QStringList StationList::load()
{
    const StationFile in = readStationFile(m_file);
    m_readable = in.problem.isEmpty();
    if (!m_readable)
        m_dialogs.message(in.problem);
    return in.lines;
}

bool StationList::save(const QStringList &lines)
{
    if (!m_readable) {
        qWarning("velto: %s was not read, so it is not written either", qPrintable(m_file));
        return false;
    }
    if (writeStationFile(m_file, lines))
        return true;
    m_dialogs.message(QStringLiteral("Unable to write the station list! Is the file "
                                     "read-only?\r") +
                      m_file);
    return false;
}

void StationList::fill(const QStringList &names, int current)
{
    SkinListArea *l = list();
    if (!l)
        return;
    const QSignalBlocker quiet(l);
    l->setUpdatesEnabled(false);
    l->clear();
    l->addItems(names);
    if (current >= 0 && current < l->count())
        l->setCurrentRow(current);
    l->setUpdatesEnabled(true);
}

void StationList::select(int row)
{
    SkinListArea *l = list();
    if (!l)
        return;
    const QSignalBlocker quiet(l);
    if (row >= 0 && row < l->count())
        l->setCurrentRow(row);
    else
        l->clearSelection();
}

void StationList::edit(const QString &text, bool selectAll)
{
    SkinTextField *f = field();
    if (!f)
        return;
    f->setText(text);
    if (selectAll) {
        f->selectAll();
    } else {
        f->deselect();
        f->end(false);
    }
    f->setFocus();
}

QString StationList::oneLine(const QString &text)
{
    QString line = text;
    return line.replace(QLatin1Char('\n'), QLatin1Char(' '))
        .replace(QLatin1Char('\r'), QLatin1Char(' '));
}
