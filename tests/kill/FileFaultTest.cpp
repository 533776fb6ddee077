// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaultCase.h"
#include "ForeignReader.h"
#include "platform/basic/Clock.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "platform/jet/PageCommit.h"
#include "store/Backups.h"
#include "store/Connection.h"
#include "store/DatedCopy.h"
#include "store/Upgrades.h"
#include "store/clsPestMONNew.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QFile>

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

using store::DatabaseFile;

/// A disk that fails at every operation while the program starts, copies or restores. Each time it says why, what was
/// there is unharmed, what is reported as done is whole and was waited for, and the same succeeds once the disk works again.
/// Another program reads the result.
class FileFaultTest : public QObject
{
    Q_OBJECT

private:
    using Files = QMap<QString, QByteArray>;

    static Files filesIn(const QString &folder)
    {
        Files files;
        for (const QString &name : QDir(folder).entryList(QDir::Files)) {
            QFile file(folder + u'/' + name);
            if (file.open(QIODevice::ReadOnly)) {
                files.insert(name, file.readAll());
            }
        }
        return files;
    }
    static void put(const Files &files, const QString &folder)
    {
        for (const QString &name : QDir(folder).entryList(QDir::Files)) {
            QFile::remove(folder + u'/' + name);
        }
        for (auto file = files.begin(); file != files.end(); ++file) {
            QFile out(folder + u'/' + file.key());
            QVERIFY(out.open(QIODevice::WriteOnly) && out.write(file.value()) == file.value().size());
        }
    }
    static QString instructions(const QString &file)
    {
        const auto found = foreignReader::rows(file, QStringLiteral("tblPMTrans"), {QStringLiteral("PMTransID")});
        return found ? found->join(u',') : QStringLiteral("unreadable");
    }

    /// Repeats the step with one more operation that succeeds before the fault each time, until no operation is left to fail.
    void atEveryOperation(const QString &folder, const std::function<void()> &prepare, const std::function<void()> &step,
                          const std::function<void(bool isDone)> &check)
    {
        QFETCH(FaultCase, fault);
        for (int number = 1;; number = FaultCase::next(number)) {
            prepare();
            diskCalls::watch(folder);
            fault.failAt(number);
            QString failure;
            try {
                step();
            } catch (const basic::RunTimeError &error) {
                failure = error.description().isEmpty() ? QStringLiteral("an error without words") : error.description();
            }
            const bool hasFailed = FaultCase::repair();
            diskCalls::watch({});
            QVERIFY2(failure.isEmpty() || (hasFailed && !fault.isHarmless() && failure.contains(folder)), qPrintable(failure));
            QVERIFY2(!failure.isEmpty() || !hasFailed || !fault.concernsSync() || (fault.kinds & dispensable_),
                     qPrintable(QStringLiteral("reported without the sync %1").arg(number)));
            check(failure.isEmpty());
            if (QTest::currentTestFailed()) {
                QFAIL(qPrintable(QStringLiteral("with operation %1 failing: %2").arg(number).arg(failure)));
            }
            faults_ += hasFailed ? 1 : 0;
            if (!hasFailed) {
                return;
            }
        }
    }

    int faults_ = 0;
    /// Syncs that the program does not need to succeed.
    diskCalls::Kinds dispensable_;

private Q_SLOTS:
    /// Thousands of waits for the disk, which is not the one under test.
    void initTestCase()
    {
        if (QDir(QStringLiteral("/dev/shm")).exists()) {
            qputenv("TMPDIR", "/dev/shm");
        }
    }
    void init() { dispensable_ = {}; }
    void cleanup()
    {
        diskCalls::watch({});
        basic::Clock::stopAt({});
    }
    void cleanupTestCase() { qInfo("%d faults", faults_); }

    void starting_data() { FaultCase::addAll(); }
    /// The last run was killed inside a commit, and the plantings have changed: the start rolls back, then copies the blocks.
    void starting()
    {
        TemporaryFarm farm;
        farm.addFarm(QStringLiteral("Rivier's Oord"));
        farm.addBlock({});
        for (int planting = 0; planting < 60; ++planting) {
            farm.addPlanting({.name = QStringLiteral("Planting %1").arg(planting)});
        }
        farm.addInstruction({.blocks = {{1, 20}}, .targets = {1, 2, 3}});
        farm.close();
        const QString pest = farm.filePath(DatabaseFile::Pest);
        const QString rows = instructions(pest);
        const Files hot = killedInsideCommit(farm);
        QVERIFY(!hot.isEmpty());
        // SQLite does not look whether the name of a new journal could be waited for.
        dispensable_ = diskCalls::Kind::SyncFolder;
        const auto start = [&farm] {
            SessionContext session;
            session.DatabasePath = farm.databasesPath() + u'/';
            openDatabases(session);
            store::Ensure_PMRepeatField(session);
            store::Ensure_Indexes(session);
            store::Update_TempBlock(session);
            store::Recalc_PMTransWeek(session);
        };
        atEveryOperation(
            farm.databasesPath(), [&] { put(hot, farm.databasesPath()); }, start,
            [&](bool isDone) {
                if (!isDone) {
                    start();
                }
                const auto database = dao::Workspace::OpenDatabase(pest, false, false, store::connectText());
                QCOMPARE(database->checkIntegrity(), QStringList());
                QCOMPARE(database->OpenRecordset(QStringLiteral("Select * from tblTempBlockPlant")).RecordCount(), 60);
                QCOMPARE(instructions(pest), rows);
                QCOMPARE(foreignReader::disagreement(pest), QString());
            });
    }

    void copying_data() { FaultCase::addAll(); }
    void copying()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 20}}, .targets = {1, 2, 3}});
        basic::Clock::stopAt(QDateTime(QDate(2026, 5, 1), QTime(7, 30)));
        const QString rows = instructions(farm.filePath(DatabaseFile::Pest));
        const QString backups = farm.databasesPath() + QStringLiteral("/Backups");
        QString copy;
        atEveryOperation(
            farm.databasesPath(),
            [&] {
                QDir(backups).removeRecursively();
                copy.clear();
            },
            [&] { copy = store::backUpNow(farm.databasesPath()); },
            [&](bool isDone) {
                for (const store::Backup &one : store::BackupFolder(farm.databasesPath()).copies()) {
                    QVERIFY2(store::DatedCopy::isComplete(one.path), qPrintable(one.path));
                    QCOMPARE(instructions(one.path), rows);
                }
                QCOMPARE(QFile::exists(copy), isDone);
                copy = store::backUpNow(farm.databasesPath());
                QCOMPARE(foreignReader::disagreement(copy), QString());
            });
    }

    void restoring_data() { FaultCase::addAll(); }
    void restoring()
    {
        TemporaryFarm farm;
        basic::Clock::stopAt(QDateTime(QDate(2026, 5, 1), QTime(7, 30)));
        farm.addInstruction({.blocks = {{1, 20}}, .targets = {1, 2, 3}});
        const QString pest = farm.filePath(DatabaseFile::Pest);
        const QString copy = store::backUpNow(farm.databasesPath());
        const QString restored = instructions(copy);
        farm.addInstruction({.blocks = {{1, 20}}, .targets = {1, 2, 3}});
        farm.close();
        const QString before = instructions(pest);
        const Files files = filesIn(farm.databasesPath());
        const Files backups = filesIn(farm.databasesPath() + QStringLiteral("/Backups"));
        // Qt syncs the copy of the replaced file without a look at the result; the program does so once more.
        dispensable_ = diskCalls::Kind::Sync;
        atEveryOperation(
            farm.databasesPath(),
            [&] {
                put(files, farm.databasesPath());
                put(backups, farm.databasesPath() + QStringLiteral("/Backups"));
            },
            [&] { store::restoreBackup(farm.databasesPath(), copy); },
            [&](bool isDone) {
                const QString now = instructions(pest);
                QVERIFY2(now == restored || (!isDone && now == before), qPrintable(now));
                // What was replaced is in one place or the other.
                const QStringList replaced =
                    QDir(farm.databasesPath() + QStringLiteral("/Backups")).entryList({QStringLiteral("*replaced*.mdb")});
                QVERIFY(now == before
                        || (replaced.size() == 1
                            && instructions(farm.databasesPath() + QStringLiteral("/Backups/") + replaced[0]) == before));
                store::restoreBackup(farm.databasesPath(), copy);
                QCOMPARE(instructions(pest), restored);
                QCOMPARE(foreignReader::disagreement(pest), QString());
            });
    }

private:
    /// The Databases folder as a program leaves it that is killed while it writes the pages of a transaction.
    static Files killedInsideCommit(const TemporaryFarm &farm)
    {
        const Files before = filesIn(farm.databasesPath());
        for (int call = 40;; --call) {
            const pid_t child = ::fork();
            if (child == 0) {
                diskCalls::watch(farm.databasesPath());
                const auto database =
                    dao::Workspace::OpenDatabase(farm.filePath(DatabaseFile::Pest), false, false, store::connectText());
                dao::CommitScope scope(*database);
                database->Execute(QStringLiteral("Update tblPMData Set PMCount = 7"));
                database->Execute(QStringLiteral("Delete from tblPMTrans"));
                diskCalls::failAt(call, diskCalls::Effect::KillHalfway);
                scope.commit();
                ::_exit(0);
            }
            int status = 0;
            ::waitpid(child, &status, 0);
            Files files = filesIn(farm.databasesPath());
            const QString pest = store::fileName(DatabaseFile::Pest);
            const bool hasJournal =
                files.contains(pest + QStringLiteral("-journal")) || jet::hasRollback(farm.filePath(DatabaseFile::Pest));
            if (WIFSIGNALED(status) && files[pest] != before[pest] && hasJournal) {
                return files;
            }
            put(before, farm.databasesPath());
            if (call == 1) {
                return {};
            }
        }
    }
};

QTEST_GUILESS_MAIN(FileFaultTest)
#include "FileFaultTest.moc"
