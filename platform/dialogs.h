#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// Message boxes and file choosers. Lines of a message are joined by "\r", as the
// program builds them; the implementation shows each on its own line.
class Dialogs
{
public:
    virtual ~Dialogs() = default;
    virtual void message(const QString &text) = 0;
    // A yes-or-no question under its own title, or under the program's.
    virtual bool question(const QString &title, const QString &text) = 0;
    bool askYesNo(const QString &text) { return question(QStringLiteral("Velto"), text); }
    // A line of text, offering `answer`; empty when the user cancels.
    virtual QString askText(const QString &prompt, const QString &answer) = 0;
    // Each returns an empty result when the user cancels.
    virtual QStringList openFiles(const QString &title, const QString &folder,
                                  const QString &filter) = 0;
    virtual QString saveFile(const QString &title, const QString &folder,
                             const QString &filter) = 0;
    virtual QString selectFolder(const QString &prompt, const QString &folder) = 0;
    // One existing file. filterIndex (0-based) is the filter shown first; it
    // comes back as the one the user chose, so the next dialog can start there.
    virtual QString openFile(const QString &title, const QString &folder, const QString &filter,
                             int &filterIndex)
    {
        Q_UNUSED(filterIndex);
        return openFiles(title, folder, filter).value(0);
    }
};

class QtDialogs : public Dialogs
{
public:
    explicit QtDialogs(QWidget *parent = nullptr) : m_parent(parent) {}
    void setParent(QWidget *parent) { m_parent = parent; }

    void message(const QString &text) override;
    bool question(const QString &title, const QString &text) override;
    QString askText(const QString &prompt, const QString &answer) override;
    QStringList openFiles(const QString &title, const QString &folder,
                          const QString &filter) override;
    QString saveFile(const QString &title, const QString &folder, const QString &filter) override;
    QString selectFolder(const QString &prompt, const QString &folder) override;
    QString openFile(const QString &title, const QString &folder, const QString &filter,
                     int &filterIndex) override;

    // "Name (*.a;*.b)|*.a;*.b|..." as the program writes filters, in Qt's form.
    static QString qtFilter(const QString &filter);
    static QString displayText(const QString &text);

private:
    QWidget *m_parent;
};
