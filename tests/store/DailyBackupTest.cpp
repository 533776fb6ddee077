// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/DailyBackup.h"
#include "platform/basic/Clock.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

using store::DailyBackup;
using store::DatabaseFile;

/// The copy of each day, in the background.
class DailyBackupTest : public QObject
{
    Q_OBJECT

private:
    static void goTo(int day) { basic::Clock::stopAt(QDateTime(QDate(2026, 5, 1).addDays(day), QTime(7, 30))); }

    /// Starts the day's copy. The result is set in the event loop of the test: why there is no copy.
    static std::shared_ptr<std::optional<QString>> start(DailyBackup &backup)
    {
        const auto result = std::make_shared<std::optional<QString>>();
        connect(&backup, &DailyBackup::finished, &backup, [result](const QString &failure) { *result = failure; });
        backup.startForToday();
        return result;
    }
    static QString make(DailyBackup &backup)
    {
        const auto result = start(backup);
        return QTest::qWaitFor([&result] { return result->has_value(); }) ? **result : QStringLiteral("not finished");
    }
    static QString copyOf(const TemporaryFarm &farm, int day)
    {
        return store::BackupFolder(farm.databasesPath()).copyOfDay(QDate(2026, 5, 1).addDays(day));
    }
    static int rowsIn(const QString &copy, const QString &table)
    {
        const auto database = dao::Workspace::OpenDatabase(copy, false, true, store::connectText());
        return database->OpenRecordset("Select Count(*) from " + table).longValue(0);
    }

private Q_SLOTS:
    void init() { goTo(0); }
    void cleanup() { basic::Clock::stopAt({}); }

    void oneCopyADayAndTenInAll()
    {
        TemporaryFarm farm;
        DailyBackup backup(farm.session);
        for (int day = 0; day < 12; ++day) {
            goTo(day);
            QCOMPARE(make(backup), QString());
            farm.addInstruction({});
            backup.startForToday();
            QVERIFY(!backup.isRunning());
        }
        QCOMPARE(store::BackupFolder(farm.databasesPath()).copies().size(), std::size_t(store::BackupDays));
        QCOMPARE(rowsIn(copyOf(farm, 11), "tblPMTrans"), 11);
        // A second start of the day leaves the copy from before the day's work.
        DailyBackup secondStart(farm.session);
        QCOMPARE(make(secondStart), QString());
        QCOMPARE(rowsIn(copyOf(farm, 11), "tblPMTrans"), 11);
        QCOMPARE(QDir(farm.databasesPath() + "/Backups").entryList({"*.new*"}, QDir::Files), QStringList());
    }

    void anIncompleteCopyOfTheDayDoesNotCount_data()
    {
        using Spoil = std::function<bool(QFile &)>;
        QTest::addColumn<Spoil>("spoil");
        const auto row = [](const char *name, const Spoil &spoil) { QTest::newRow(name) << spoil; };
        row("empty", [](QFile &file) { return file.resize(0); });
        row("cut", [](QFile &file) { return file.resize(file.size() / 2); });
        row("a page overwritten",
            [](QFile &file) { return file.seek(file.size() / 8192 * 4096) && file.write(QByteArray(4096, '\x2a')) == 4096; });
    }

    void anIncompleteCopyOfTheDayDoesNotCount()
    {
        QFETCH(std::function<bool(QFile &)>, spoil);
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 100}}, .targets = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
        {
            DailyBackup backup(farm.session);
            QCOMPARE(make(backup), QString());
        }
        QFile copy(copyOf(farm, 0));
        QVERIFY(copy.open(QIODevice::ReadWrite) && spoil(copy));
        copy.close();
        DailyBackup backup(farm.session);
        QCOMPARE(make(backup), QString());
        QVERIFY(store::DatedCopy::isComplete(copyOf(farm, 0)));
        QCOMPARE(rowsIn(copyOf(farm, 0), "tblPMData"), 900);
    }

    void whatHindersTheCopyIsReported()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 100}}, .targets = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
        QFile inTheWay(farm.databasesPath() + "/Backups");
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        {
            DailyBackup backup(farm.session);
            QVERIFY(make(backup).contains("Backups could not be created"));
        }
        QVERIFY(inTheWay.remove());
        farm.close();
        QFile pest(farm.filePath(DatabaseFile::Pest));
        QVERIFY(pest.open(QIODevice::ReadWrite) && pest.seek(pest.size() / 8192 * 4096));
        QCOMPARE(pest.write(QByteArray(4096, '\x2a')), 4096);
        pest.close();
        farm.open();
        {
            DailyBackup backup(farm.session);
            QVERIFY(make(backup).contains("is damaged"));
        }
        QCOMPARE(QDir(farm.databasesPath() + "/Backups").entryList({"PestMon*"}, QDir::Files), QStringList());
        // A folder that was moved away is not created again.
        const QString moved = farm.appPath() + "/moved";
        QVERIFY(QDir().rename(farm.databasesPath(), moved));
        DailyBackup backup(farm.session);
        QVERIFY(make(backup).contains("is gone"));
        QVERIFY(!QFileInfo::exists(farm.databasesPath()));
        farm.close();
        // Nor is anything done where there is nothing to copy.
        DailyBackup without(farm.session);
        without.startForToday();
        QVERIFY(!without.isRunning());
    }

    void aWriteDoesNotWaitForTheEndOfTheCopy()
    {
        // 24 doublings make a file of a gigabyte.
        bool isSet = false;
        const int wanted = qEnvironmentVariableIntValue("FARM_BACKUP_DOUBLINGS", &isSet);
        const int doublings = isSet ? wanted : 18;
        TemporaryFarm farm;
        {
            dao::CommitScope scope(*farm.session.dbPest);
            farm.session.dbPest->Execute("Insert into tblPMData (PMTransID, PMCount) Values (1, 0)");
            for (int times = 0; times < doublings; ++times) {
                farm.session.dbPest->Execute(
                    "Insert into tblPMData (PMTransID, PMCount) Select PMTransID, PMCount from tblPMData");
            }
            scope.commit();
        }
        // Two rows that are far from each other in the file.
        const QString bothRows = QStringLiteral(" where PMDataID in (1, %1)").arg(1 << doublings);
        DailyBackup backup(farm.session);
        QElapsedTimer whole;
        whole.start();
        const auto result = start(backup);
        std::vector<qint64> milliseconds;
        QElapsedTimer timer;
        for (; !result->has_value(); QCoreApplication::processEvents()) {
            timer.restart();
            dao::CommitScope scope(*farm.session.dbPest);
            farm.session.dbPest->Execute("Update tblPMData set PMCount = PMCount + 1" + bothRows);
            scope.commit();
            milliseconds.push_back(timer.elapsed());
        }
        const qint64 duration = whole.elapsed();
        QCOMPARE(**result, QString());
        const auto copy = dao::Workspace::OpenDatabase(copyOf(farm, 0), false, true, store::connectText());
        QCOMPARE(copy->checkPages(), QStringList());
        const dao::Recordset rows = copy->OpenRecordset("Select Min(PMCount), Max(PMCount) from tblPMData" + bothRows);
        QCOMPARE(rows.longValue(0), rows.longValue(1));
        QVERIFY(milliseconds.size() > 2 && rows.longValue(0) <= static_cast<int>(milliseconds.size()));
        std::sort(milliseconds.begin(), milliseconds.end());
        qInfo("%lld MB copied in %lld ms; %zu writes meanwhile, median %lld ms, 99 %% %lld ms, longest %lld ms",
              QFileInfo(copyOf(farm, 0)).size() / 1048576, duration, milliseconds.size(), milliseconds[milliseconds.size() / 2],
              milliseconds[milliseconds.size() * 99 / 100], milliseconds.back());
    }

    void theEndOfTheProgramStopsIt()
    {
        TemporaryFarm farm;
        {
            DailyBackup backup(farm.session);
            backup.startForToday();
        }
        QCOMPARE(QDir(farm.databasesPath() + "/Backups").entryList({"*.new*"}, QDir::Files), QStringList());
        DailyBackup next(farm.session);
        QCOMPARE(make(next), QString());
        QVERIFY(store::DatedCopy::isComplete(copyOf(farm, 0)));
    }
};

QTEST_GUILESS_MAIN(DailyBackupTest)
#include "DailyBackupTest.moc"
