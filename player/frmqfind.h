#pragma once

#include "quickfind.h"

#include <QStringListModel>
#include <QWidget>

class QLineEdit;
class QListView;
class QRadioButton;
class QStackedLayout;
struct PlaylistState;

// Quick find/play: type part of a name, pick the entry, play it. The prefix
// list (List1) and the match list (List2) share one place; the mode shows one.
// Typing always goes to the text box; the lists only take clicks.
class frmQFind : public QWidget
{
    Q_OBJECT
public:
    frmQFind(PlaylistState &state, const qint16 &autoCloseQF, QWidget *parent = nullptr);

    // Copies the playlist's names and starts again with an empty text.
    void Form_Load();
    // Plays the selected name; closes the window when "AutoCloseQF" is set.
    void PlayMatch();

signals:
    // The current entry was set to the match and should play.
    void playRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool startsWithMode() const;
    QListView *visibleList() const;
    void Option1_Click();
    void Text1_Change();
    void FindMatch();
    void FindAny();
    void moveSelection(int step);
    void select(QListView *list, int row);

    PlaylistState &m_state;
    const qint16 &m_autoCloseQF;
    QuickFind m_find{{}};
    QStringListModel m_names;
    QStringListModel m_matches;
    QList<int> m_matchRows; // List2 row -> row of m_find.names()

    QLineEdit *m_text;
    QRadioButton *m_anywhere;
    QRadioButton *m_startsWith;
    QStackedLayout *m_lists;
    QListView *m_list1;
    QListView *m_list2;
};
