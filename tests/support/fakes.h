#pragma once

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/random.h"
#include "platform/screens.h"
#include "platform/settingsstore.h"
#include "support/printers.h"

#include <QMap>
#include <QStringList>
#include <deque>

// Records every message and answers questions from a script.
class FakeDialogs : public Dialogs
{
public:
    QStringList messages;
    QStringList questions;
    bool answer = true;
    std::deque<QStringList> openResults;
    QString saveResult, folderResult;

    void message(const QString &text) override { messages << text; }
    bool askYesNo(const QString &text) override
    {
        questions << text;
        return answer;
    }
    QStringList openFiles(const QString &, const QString &, const QString &) override
    {
        if (openResults.empty())
            return {};
        QStringList r = openResults.front();
        openResults.pop_front();
        return r;
    }
    QString saveFile(const QString &, const QString &, const QString &) override { return saveResult; }
    QString selectFolder(const QString &, const QString &) override { return folderResult; }
};

class FakeClock : public Clock
{
public:
    QDateTime time = QDateTime(QDate(2026, 11, 23), QTime(7, 29, 58));
    QDateTime now() const override { return time; }
};

class FakeRandom : public Random
{
public:
    std::deque<double> values;
    quint32 seeded = 0;
    void seed(quint32 v) override { seeded = v; }
    double next() override
    {
        if (values.empty())
            return 0.0;
        const double v = values.front();
        values.pop_front();
        return v;
    }
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
        if (it == values.end())
            return std::nullopt;
        return *it;
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
