#include "fuzztarget.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

std::map<std::string, FuzzFunction> &targets()
{
    static std::map<std::string, FuzzFunction> all;
    return all;
}

std::string g_current; // the file being replayed, for the failure message

const QString kFuzzDir = QStringLiteral(VELTO_TESTS_DIR "/fuzz");

// Every file below fuzzDir/<kind>/<target>/, keyed by its target.
std::map<std::string, QStringList> inputs(const QString &kind)
{
    std::map<std::string, QStringList> found;
    const QDir root(kFuzzDir + '/' + kind);
    for (const QString &target : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QStringList &files = found[target.toStdString()];
        for (QDirIterator it(root.filePath(target), QDir::Files, QDirIterator::Subdirectories);
             it.hasNext();)
            files << it.next();
        files.sort();
    }
    return found;
}

void replay(const std::string &target, const QStringList &files)
{
    const auto it = targets().find(target);
    ASSERT_NE(it, targets().end()) << "no fuzz target named " << target;
    for (const QString &path : files) {
        QFile in(path);
        ASSERT_TRUE(in.open(QIODevice::ReadOnly)) << path.toStdString();
        g_current = path.toStdString();
        it->second(in.readAll());
    }
    g_current.clear();
}

} // namespace

bool registerFuzzTarget(const char *name, FuzzFunction function)
{
    targets()[name] = function;
    return true;
}

void fuzzCheckFailed(const char *condition, const char *file, int line)
{
    ADD_FAILURE_AT(file, line) << "check failed: " << condition << "\n  input: " << g_current;
}

// What the fuzzer once broke stays mended: each finding is kept under
// regressions/<target>/ and read again here by the same code.
TEST(FuzzRegressions, EveryKeptFindingReadsWithoutHarm)
{
    const auto found = inputs(QStringLiteral("regressions"));
    for (const auto &[target, files] : found)
        replay(target, files);
}

// The seeds run through the same checks, so a target that no longer
// builds or whose checks fail shows here, not first in a fuzzing campaign.
TEST(FuzzSeeds, EveryTargetHasSeedsAndTheyPassItsChecks)
{
    const auto found = inputs(QStringLiteral("seeds"));
    for (const auto &[name, function] : targets()) {
        const auto it = found.find(name);
        ASSERT_TRUE(it != found.end() && !it->second.isEmpty()) << "no seeds for " << name;
        replay(name, it->second);
    }
    for (const auto &[target, files] : found)
        EXPECT_TRUE(targets().count(target)) << "seeds for no target: " << target;
}
