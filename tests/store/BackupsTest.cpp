// SPDX-License-Identifier: GPL-3.0-or-later
#include "ErrorOf.h"

#include "platform/basic/Clock.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "store/BackupFolder.h"
#include "store/Backups.h"
#include "store/DatedCopy.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QSemaphore>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <filesystem>
#include <memory>

using store::DatabaseFile;

/// Dated copies of the pest database and the restore of one.
class BackupsTest : public QObject
{
    Q_OBJECT

private:
    static void goTo(int day) { basic::Clock::stopAt(QDateTime(QDate(2026, 5, 1).addDays(day), QTime(7, 30))); }

    /// As chmod takes them.
    static unsigned mode(const QString &path)
    {
        return static_cast<unsigned>(std::filesystem::status(path.toStdU16String()).permissions());
    }
    static void setMode(const QString &path, unsigned mode)
    {
        std::filesystem::permissions(path.toStdU16String(), std::filesystem::perms(mode));
    }

    static std::vector<store::Backup> copiesOf(const TemporaryFarm &farm)
    {
        return store::BackupFolder(farm.databasesPath()).copies();
    }
    static QStringList days(const TemporaryFarm &farm)
    {
        QStringList all;
        for (const store::Backup &backup : copiesOf(farm)) {
            all.append(backup.day.toString("MM-dd"));
        }
        return all;
    }

private Q_SLOTS:
    void cleanup() { basic::Clock::stopAt({}); }

    void noCopyReplacesAnother()
    {
        TemporaryFarm farm;
        goTo(0);
        const QString first = store::backUpNow(farm.databasesPath());
        farm.addInstruction({.blocks = {{1, 100}}, .targets = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
        const QString later = store::backUpNow(farm.databasesPath());
        const QString latest = store::backUpNow(farm.databasesPath());
        const auto backups = copiesOf(farm);
        QCOMPARE(backups.size(), std::size_t(3));
        QCOMPARE(QFileInfo(backups[0].path).fileName(), QString("PestMon-2026-05-01-073000-2.mdb"));
        QCOMPARE(backups[0].path, latest);
        QCOMPARE(backups[1].path, later);
        QCOMPARE(backups[2].path, first);
    }

    void aReportedCopyExistsWhateverTheClockWas()
    {
        TemporaryFarm farm;
        for (int day = 400; day < 411; ++day) {
            goTo(day);
            store::backUpNow(farm.databasesPath());
        }
        for (int day = 0; day < 3; ++day) {
            goTo(day);
            const QString copy = store::backUpNow(farm.databasesPath());
            QVERIFY2(store::DatedCopy::isComplete(copy), qPrintable(copy));
            QCOMPARE(copiesOf(farm).size(), std::size_t(store::BackupDays));
        }
        QCOMPARE(days(farm).last(), QString("05-01"));
    }

    void aDamagedDatabaseIsNotCopied()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 100}}, .targets = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
        goTo(0);
        store::backUpNow(farm.databasesPath());
        farm.close();
        QFile pest(farm.filePath(DatabaseFile::Pest));
        QVERIFY(pest.open(QIODevice::ReadWrite) && pest.seek(pest.size() / 8192 * 4096));
        QCOMPARE(pest.write(QByteArray(4096, '\x2a')), 4096);
        pest.close();
        goTo(20);
        QCOMPARE(errorOf([&] { store::backUpNow(farm.databasesPath()); }), static_cast<int>(basic::ErrorNumber::PathFileAccess));
        QCOMPARE(days(farm), QStringList{"05-01"});
    }

    void aRestoredFileHasOwnerAndPermissionsOfTheReplacedOne()
    {
#ifdef Q_OS_WIN
        QSKIP("A file has the permissions of its folder on Windows.");
#endif
        TemporaryFarm farm;
        goTo(0);
        const QString copy = store::backUpNow(farm.databasesPath());
        farm.close();
        const QString pest = farm.filePath(DatabaseFile::Pest);
        setMode(pest, 0640);
        // Only an administrator may give a file away.
        const bool isGiven = QProcess::execute("chown", {"nobody:65534", pest}) == 0;
        const QString owner = QFileInfo(pest).owner();
        QVERIFY(!isGiven || owner == QLatin1String("nobody"));
        const QString replaced = store::restoreBackup(farm.databasesPath(), copy);
        for (const QString &file : {pest, replaced}) {
            QCOMPARE(mode(file), 0640U);
            QCOMPARE(QFileInfo(file).owner(), owner);
            QVERIFY(!isGiven || QFileInfo(file).groupId() == 65534U);
        }
    }

    void theCopiesOfASharedFarmAreShared()
    {
#ifdef Q_OS_WIN
        QSKIP("A file has the permissions of its folder on Windows.");
#endif
        TemporaryFarm farm;
        setMode(farm.databasesPath(), 02770);
        setMode(farm.filePath(DatabaseFile::Pest), 0660);
        QCOMPARE(mode(store::backUpNow(farm.databasesPath())), 0660U);
        QCOMPARE(mode(farm.databasesPath() + "/Backups"), 02770U);
    }

    void aCopyIsRestoredAndTheReplacedFilePreserved()
    {
        TemporaryFarm farm;
        goTo(0);
        farm.addInstruction({});
        store::backUpNow(farm.databasesPath());
        farm.addInstruction({});
        farm.close();
        const QString copy = copiesOf(farm).front().path;
        const QString replacedFile = store::restoreBackup(farm.databasesPath(), copy);
        farm.open();
        QCOMPARE(farm.count("tblPMTrans"), 1);
        const auto replaced = dao::Workspace::OpenDatabase(replacedFile, false, true, store::connectText());
        QCOMPARE(replaced->OpenRecordset("Select * from tblPMTrans").RecordCount(), 2);
        // It is not a dated copy, so it is never removed as one.
        QCOMPARE(days(farm), QStringList{"05-01"});
        farm.close();
        QVERIFY(store::restoreBackup(farm.databasesPath(), copy) != replacedFile);
    }

    void aCopyMadeWhileTheProgramWritesIsConsistent()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 2}}, .targets = {1}});
        farm.close();
        QSemaphore enough;
        std::atomic<int> written = 0;
        const auto work = [&, path = farm.filePath(DatabaseFile::Pest)] {
            const auto pest = dao::Workspace::OpenDatabase(path, false, false, store::connectText());
            // A pause between two cells, or no reader would find the file unlocked.
            for (int i = 1; !enough.tryAcquire(1, 5); ++i) {
                dao::CommitScope scope(*pest);
                pest->Execute(QString("Update tblPMData set PMCount = %1").arg(i % 1000));
                pest->Execute(QString("Insert into tblPMTPest (CTargetID) Values (%1)").arg(i));
                pest->Execute(QString("Update tblPMDataMax set PMCountMax = %1").arg(i % 1000));
                scope.commit();
                written = i;
            }
        };
        const std::unique_ptr<QThread> writer(QThread::create(work));
        const auto stop = qScopeGuard([&] {
            enough.release();
            writer->wait();
        });
        writer->start();
        QTRY_VERIFY(written > 0);
        int last = 0;
        for (int i = 0; i < 20; ++i) {
            const QString path = store::backUpNow(farm.databasesPath());
            const auto copy = dao::Workspace::OpenDatabase(path, false, true, store::connectText());
            QCOMPARE(copy->checkIntegrity(), QStringList());
            const auto number = [&](const char *sql) { return copy->OpenRecordset(sql).longValue(0); };
            last = number("Select Count(*) from tblPMTPest");
            QCOMPARE(number("Select Min(PMCount) from tblPMData"), last % 1000);
            QCOMPARE(number("Select Max(PMCountMax) from tblPMDataMax"), last % 1000);
        }
        QVERIFY(last > 1);
    }

    void aFileInUseIsNotReplaced()
    {
        TemporaryFarm farm;
        store::backUpNow(farm.databasesPath());
        farm.addInstruction({});
        const QString copy = copiesOf(farm).front().path;
        const dao::CommitScope writing(*farm.session.dbPest);
        farm.session.dbPest->Execute("Delete from tblPMTrans");
        QCOMPARE(errorOf([&] { store::restoreBackup(farm.databasesPath(), copy); }),
                 static_cast<int>(dao::DataErrorNumber::FileInUse));
        QCOMPARE(QDir(farm.databasesPath() + "/Backups").entryList({"*.mdb"}, QDir::Files).size(), 1);
        QCOMPARE(QDir(farm.databasesPath()).entryList({"*.new*"}, QDir::Files), QStringList());
    }

    void aJournalOfTheReplacedFileIsNotRolledBackIntoTheRestoredOne()
    {
        TemporaryFarm farm;
        goTo(0);
        farm.addInstruction({});
        store::backUpNow(farm.databasesPath());
        farm.close();
        const QString pest = farm.filePath(DatabaseFile::Pest);
        QFile damaged(pest);
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        damaged.write(QByteArray(8192, 'x'));
        damaged.close();
        QFile journal(pest + "-journal");
        QVERIFY(journal.open(QIODevice::WriteOnly));
        journal.write(QByteArray(4096, 'j'));
        journal.close();
        store::restoreBackup(farm.databasesPath(), copiesOf(farm).front().path);
        QVERIFY(!QFile::exists(pest + "-journal"));
        farm.open();
        QCOMPARE(farm.count("tblPMTrans"), 1);
    }

    void aDamagedOrForeignFileIsRefused_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("missing") << "none.mdb";
        QTest::newRow("noise") << "noise.mdb";
        QTest::newRow("cut") << "cut.mdb";
        QTest::newRow("another database") << "ZN4.mdb";
        QTest::newRow("another password") << "locked.mdb";
    }

    void aDamagedOrForeignFileIsRefused()
    {
        QFETCH(QString, file);
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 100}}, .targets = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
        farm.close();
        const QString folder = farm.databasesPath() + '/';
        const auto write = [&](const char *name, const QByteArray &bytes) {
            QFile one(folder + name);
            QVERIFY(one.open(QIODevice::WriteOnly));
            one.write(bytes);
        };
        QFile pest(farm.filePath(DatabaseFile::Pest));
        QVERIFY(pest.open(QIODevice::ReadOnly));
        const QByteArray whole = pest.readAll();
        pest.close();
        write("noise.mdb", QByteArray(20000, '\x5a'));
        write("cut.mdb", whole.left(whole.size() / 2));
        dao::Workspace::CreateDatabase(folder + "locked.mdb", ";pwd=other");
        QCOMPARE(errorOf([&] { store::restoreBackup(farm.databasesPath(), folder + file); }),
                 static_cast<int>(basic::ErrorNumber::InvalidArgument));
        QVERIFY(pest.open(QIODevice::ReadOnly));
        QCOMPARE(pest.readAll(), whole);
        QVERIFY(!QFile::exists(folder + "Backups"));
    }
};

QTEST_GUILESS_MAIN(BackupsTest)
#include "BackupsTest.moc"
