#pragma once

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/random.h"
#include "platform/screens.h"
#include "platform/settingsstore.h"
#include "support/printers.h"

#include <QMap>
#include <QStringList>

// Records every message and dialog, and answers from a script. An empty
// answer is a cancelled dialog.
class FakeDialogs : public Dialogs
{
public:
    struct Call
    {
        QString kind; // "open", "save" or "folder"
        QString title, folder, filter;
    };

    QStringList messages;
    QStringList questions;
    QStringList questionTitles;
    // Scripts answer from the front, then empty; prompts and offered answers are noted.
    QStringList textAnswers;
    QStringList prompts, offered;
    QList<Call> calls;
    bool answer = true;
    QList<QStringList> openResults;
    QString saveResult, folderResult;

    void message(const QString &text) override { messages << text; }
    bool question(const QString &title, const QString &text) override
    {
        questions << text;
        questionTitles << title;
        return answer;
    }
    QString askText(const QString &prompt, const QString &answer) override
    {
        prompts << prompt;
        offered << answer;
        return textAnswers.isEmpty() ? QString() : textAnswers.takeFirst();
    }
    QStringList openFiles(const QString &title, const QString &folder,
                          const QString &filter) override
    {
        calls << Call{QStringLiteral("open"), title, folder, filter};
        return openResults.isEmpty() ? QStringList() : openResults.takeFirst();
    }
    QString openFile(const QString &title, const QString &folder, const QString &filter,
                     int &) override
    {
        return openFiles(title, folder, filter).value(0);
    }
    QString saveFile(const QString &title, const QString &folder, const QString &filter) override
    {
        calls << Call{QStringLiteral("save"), title, folder, filter};
        return saveResult;
    }
    QString selectFolder(const QString &prompt, const QString &folder) override
    {
        calls << Call{QStringLiteral("folder"), prompt, folder, QString()};
        return folderResult;
    }
};

class FakeClock : public Clock
{
public:
    QDateTime time = QDateTime(QDate(2026, 11, 23), QTime(7, 29, 58));
    // How often the time was asked for: a clock timer's tick shows here.
    mutable int reads = 0;
    QDateTime now() const override
    {
        ++reads;
        return time;
    }
};

class FakeRandom : public Random
{
public:
    QList<double> values;
    quint32 seeded = 0;
    void seed(quint32 v) override { seeded = v; }
    double next() override { return values.isEmpty() ? 0.0 : values.takeFirst(); }
};

class FakeScreens : public Screens
{
public:
    QList<QRect> areas{QRect(0, 0, 1920, 1050)};
    QList<QRect> workAreas() const override { return areas; }
};

// A store in memory that folds case like the real one and logs every save.
class MemoryStore : public SettingsStore
{
public:
    QMap<QString, QString> values;
    QStringList savedKeys; // in the order written
    int flushes = 0;

    std::optional<QString> get(const QString &, const QString &section,
                               const QString &key) const override
    {
        const auto it = values.find(section.toLower() + '/' + key.toLower());
        return it == values.end() ? std::nullopt : std::optional(*it);
    }
    void save(const QString &, const QString &section, const QString &key,
              const QString &value) override
    {
        values[section.toLower() + '/' + key.toLower()] = value;
        savedKeys << key;
    }
    bool flush() override
    {
        ++flushes;
        return true;
    }
};
