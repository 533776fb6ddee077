// SPDX-License-Identifier: GPL-3.0-or-later
#include "Import.h"
#include "Lists.h"
#include "platform/dao/Workspace.h"
#include "store/Staging.h"
#include "support/DiskCalls.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

using diskCalls::Effect;
using store::DatabaseFile;

namespace
{

/// Not every call before the move is tried, except with FARM_ALL_FAULTS in the environment.
constexpr int Stride = 9;

QString memoryFolder()
{
    const QDir memory(QStringLiteral("/dev/shm"));
    return (memory.exists() ? memory : QDir::temp()).filePath(QStringLiteral("StagingKillTest-XXXXXX"));
}

/// Runs `body` in a child that is killed at a call below the folder; false when it ended before that call.
bool killedAt(int call, Effect effect, const QString &folder, const std::function<void()> &body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
        diskCalls::watch(folder);
        diskCalls::failAt(call, effect);
        body();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status);
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

/// New databases and imports that are killed at any call leave nothing that the next one does not remove.
class StagingKillTest : public QObject
{
    Q_OBJECT

private:
    int callsOf(const std::function<void(const QString &)> &make, bool hasOtherFiles)
    {
        const QTemporaryDir root(memoryFolder());
        const QString target = prepare(root, hasOtherFiles);
        diskCalls::watch(root.path());
        diskCalls::failAt(std::numeric_limits<int>::max(), Effect::Fail);
        make(target);
        const int calls = diskCalls::calls();
        diskCalls::watch({});
        return calls;
    }

    static QString prepare(const QTemporaryDir &root, bool hasOtherFiles)
    {
        const QString target = root.filePath(QStringLiteral("Databases"));
        if (hasOtherFiles) {
            QDir().mkpath(target);
            QFile other(target + QStringLiteral("/Notes.txt"));
            [&] { QVERIFY(other.open(QIODevice::WriteOnly) && other.write("mine") == 4); }();
        }
        // Looks like a staged folder, but is not one of ours.
        QDir().mkpath(root.filePath(QStringLiteral("Databases.new-00c0ffee/Photos")));
        return target;
    }

    static bool isWhole(const QString &target)
    {
        return std::all_of(std::begin(store::AllDatabaseFiles), std::end(store::AllDatabaseFiles), [&](DatabaseFile file) {
            const QString path = target + u'/' + store::fileName(file);
            return QFile::exists(path)
                && dao::Workspace::OpenDatabase(path, false, true, store::connectText())->checkIntegrity().isEmpty();
        });
    }

private Q_SLOTS:
    void newDatabases_data()
    {
        using Make = std::function<void(const QString &)>;
        QTest::addColumn<Make>("make");
        QTest::addColumn<bool>("hasOtherFiles");
        const Make create = [](const QString &folder) { createDatabases(folder, TemporaryFarm::kind()); };
        const Make import = [](const QString &folder) { importFarm(QStringLiteral(JET_FIXTURES), folder); };
        QTest::newRow("created") << create << false;
        QTest::newRow("created among other files") << create << true;
        if (TemporaryFarm::kind() == dao::FileKind::Sqlite) {
            QTest::newRow("imported among other files") << import << true;
        }
    }

    void newDatabases()
    {
        QFETCH(std::function<void(const QString &)>, make);
        QFETCH(bool, hasOtherFiles);
        const int calls = callsOf(make, hasOtherFiles);
        const int move = qEnvironmentVariableIsSet("FARM_ALL_FAULTS") ? 0 : calls - 25;
        int kills = 0;
        for (int call = 1; call <= calls; call += call < move ? Stride : 1) {
            const QTemporaryDir root(memoryFolder());
            const QString target = prepare(root, hasOtherFiles);
            const Effect effect = call % 2 == 0 ? Effect::Kill : Effect::KillHalfway;
            QVERIFY(killedAt(call, effect, root.path(), [&] { make(target); }));
            ++kills;
            const bool wasWhole = QFile::exists(target) && isWhole(target);
            try {
                make(target);
                QVERIFY(!wasWhole);
            } catch (const basic::RunTimeError &error) {
                QVERIFY2(wasWhole && error.description().contains(QStringLiteral("exists already")),
                         qPrintable(error.description()));
            }
            QVERIFY2(isWhole(target), qPrintable(QString::number(call)));
            QStringList expected{"PestMon.mdb", "ZN4.mdb", "ZN4_Spray.mdb"};
            if (hasOtherFiles) {
                expected.prepend("Notes.txt");
            }
            QCOMPARE(namesIn(target), expected);
            QCOMPARE(namesIn(root.path()), (QStringList{"Databases", "Databases.new-00c0ffee"}));
        }
        qInfo("%d kills", kills);
    }

    void filesOfOthersAreLeftAlone()
    {
        const QTemporaryDir root(memoryFolder());
        const QString target = prepare(root, true);
        const auto make = [&] { createDatabases(target, TemporaryFarm::kind()); };
        // Killed before anything was moved; then the user puts a file there.
        QVERIFY(killedAt(20, Effect::Kill, root.path(), make));
        QVERIFY(QFile::copy(QStringLiteral(JET_FIXTURES "/PestMon.mdb"), target + QStringLiteral("/PestMon.mdb")));
        QVERIFY(!basic::runOrIgnore(make));
        QCOMPARE(namesIn(target), (QStringList{"Notes.txt", "PestMon.mdb"}));
    }

    void aFullDiskNamesTheFolderThatWasGiven()
    {
        const QTemporaryDir root(memoryFolder());
        const QString target = prepare(root, true);
        diskCalls::watch(root.path());
        for (int call = 1; call < 60; call += 4) {
            diskCalls::failAt(call, Effect::FailFull, diskCalls::Kind::Write, diskCalls::Duration::FromNowOn);
            QString sentence;
            try {
                createDatabases(target, TemporaryFarm::kind());
            } catch (const basic::RunTimeError &error) {
                sentence = error.description();
            }
            diskCalls::failAt(0, Effect::Fail);
            QVERIFY2(sentence.contains(target) && sentence.contains(QStringLiteral("full"), Qt::CaseInsensitive)
                         && !sentence.contains(QStringLiteral(".new-")),
                     qPrintable(sentence));
            QCOMPARE(namesIn(root.path()), (QStringList{"Databases", "Databases.new-00c0ffee"}));
        }
        diskCalls::watch({});
    }

    void importedLists()
    {
        for (int call = 1;; call += 2) {
            TemporaryFarm farm;
            farm.addFarm(QStringLiteral("Môreson"));
            farm.addBlock({QStringLiteral("Dam"), 1, 8, true});
            farm.close();
            const QTemporaryDir given(memoryFolder());
            const QString path = given.filePath(QStringLiteral("Blocks.csv"));
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Block key;Block;Points\n1;Dam;9\n;Hill;3\n") > 0);
            file.close();
            const auto import = [&] { importLists(farm.databasesPath(), path, {.dryRun = false, .byName = true}); };
            const bool isKilled = killedAt(call, call % 4 == 1 ? Effect::Kill : Effect::KillHalfway, farm.appPath(), import);
            import();
            farm.open();
            QCOMPARE(farm.rows(DatabaseFile::Main, QStringLiteral("Select Block, NoofMpoints from tblBlock order by BlockID")),
                     (QStringList{"Dam|9", "Hill|3"}));
            farm.close();
            QCOMPARE(namesIn(farm.databasesPath()), (QStringList{"PestMon.mdb", "ZN4.mdb", "ZN4_Spray.mdb"}));
            if (!isKilled) {
                QVERIFY(call > 10);
                return;
            }
        }
    }
};

QTEST_GUILESS_MAIN(StagingKillTest)
#include "StagingKillTest.moc"
