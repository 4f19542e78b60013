#include "frmqfind.h"

#include "playlist.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QRadioButton>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

QListView *makeList(QStringListModel &model, const char *name)
{
    auto *list = new QListView;
    list->setObjectName(QLatin1String(name));
    list->setModel(&model);
    list->setUniformItemSizes(true); // thousands of names
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setFocusPolicy(Qt::NoFocus);
    return list;
}

} // namespace

frmQFind::frmQFind(PlaylistState &state, const qint16 &autoCloseQF, QWidget *parent)
    : QWidget(parent, Qt::Tool), m_state(state), m_autoCloseQF(autoCloseQF)
{
    setWindowTitle(QStringLiteral("Quick Find/Play"));
    m_text = new QLineEdit;
    m_text->setObjectName(QStringLiteral("Text1"));
    m_text->installEventFilter(this);
    m_anywhere = new QRadioButton(QStringLiteral("&Anywhere"));
    m_startsWith = new QRadioButton(QStringLiteral("&Starts with"));
    // Finding a song by any part of its name is what most searches want.
    m_anywhere->setChecked(true);
    m_list1 = makeList(m_names, "List1");
    m_list2 = makeList(m_matches, "List2");

    auto *options = new QHBoxLayout;
    options->addWidget(m_anywhere);
    options->addWidget(m_startsWith);
    options->addStretch();
    m_lists = new QStackedLayout;
    m_lists->addWidget(m_list1);
    m_lists->addWidget(m_list2);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addLayout(options);
    layout->addLayout(m_lists, 1);
    resize(280, 360);

    connect(m_text, &QLineEdit::textChanged, this, &frmQFind::Text1_Change);
    connect(m_startsWith, &QRadioButton::toggled, this, &frmQFind::Option1_Click);
    for (QListView *list : {m_list1, m_list2}) {
        connect(list, &QListView::doubleClicked, this, [this, list](const QModelIndex &index) {
            list->setCurrentIndex(index);
            PlayMatch();
        });
    }
    Option1_Click();
}

void frmQFind::Form_Load()
{
    m_find = QuickFind(m_state.PlNames);
    m_names.setStringList(m_find.names());
    m_text->clear();
    Text1_Change();
    m_text->setFocus();
}

bool frmQFind::startsWithMode() const
{
    return m_startsWith->isChecked();
}

QListView *frmQFind::visibleList() const
{
    return startsWithMode() ? m_list1 : m_list2;
}

void frmQFind::Option1_Click()
{
    m_lists->setCurrentWidget(visibleList());
    Text1_Change();
}

void frmQFind::Text1_Change()
{
    if (startsWithMode())
        FindMatch();
    else
        FindAny();
}

void frmQFind::FindMatch()
{
    const int row = m_find.FindMatch(m_text->text());
    if (row < 0)
        return;
    select(m_list1, row);
    m_list1->scrollTo(m_names.index(row), QAbstractItemView::PositionAtTop);
}

void frmQFind::FindAny()
{
    m_matchRows = m_find.FindAny(m_text->text());
    QStringList names;
    names.reserve(m_matchRows.size());
    for (const int row : m_matchRows)
        names << m_find.names()[row];
    m_matches.setStringList(names);
    if (!names.isEmpty())
        select(m_list2, 0);
}

void frmQFind::select(QListView *list, int row)
{
    list->setCurrentIndex(list->model()->index(row, 0));
}

void frmQFind::moveSelection(int step)
{
    QListView *list = visibleList();
    const int count = list->model()->rowCount();
    const int row = list->currentIndex().isValid() ? list->currentIndex().row() + step : 0;
    if (row >= 0 && row < count)
        select(list, row);
}

void frmQFind::PlayMatch()
{
    QListView *list = visibleList();
    const QModelIndex current = list->currentIndex();
    if (!current.isValid())
        return;
    const int row = list == m_list1 ? current.row() : m_matchRows.value(current.row(), -1);
    const QString name = m_find.names().value(row);
    int entry = m_find.entryOf(row);
    // The playlist may have changed while the window was open.
    if (entry < 0 || entry >= m_state.PlNames.size() || m_state.PlNames[entry] != name)
        entry = int(m_state.PlNames.indexOf(name));
    if (entry < 0)
        return;
    m_state.CurTrack = entry + 1;
    emit playRequested();
    if (m_autoCloseQF != 0)
        close();
}

bool frmQFind::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_text || event->type() != QEvent::KeyPress)
        return false;
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Up:
        moveSelection(-1);
        return true;
    case Qt::Key_Down:
        moveSelection(+1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        PlayMatch();
        return true;
    case Qt::Key_Escape:
        close();
        return true;
    default:
        return false;
    }
}

void frmQFind::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
