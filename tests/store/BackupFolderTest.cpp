// SPDX-License-Identifier: GPL-3.0-or-later
#include "ErrorOf.h"

#include "store/BackupFolder.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QtTest>

using store::BackupFolder;

/// Which copies stay, what is removed, and when there is no space for another.
class BackupFolderTest : public QObject
{
    Q_OBJECT

private:
    static QDate day(int number) { return QDate(2026, 5, 1).addDays(number); }

    void addCopy(const QString &name, qint64 size = 1) const
    {
        QFile copy(folder_->path() + '/' + name);
        QVERIFY(copy.open(QIODevice::WriteOnly) && copy.resize(size));
    }
    void addDay(QDate date) const { addCopy(QFileInfo(folder_->copyOfDay(date)).fileName()); }
    QStringList days() const
    {
        QStringList all;
        for (const store::Backup &copy : folder_->copies()) {
            all.append(copy.day.toString("yyyy-MM-dd"));
        }
        return all;
    }

    std::unique_ptr<QTemporaryDir> databases_;
    std::unique_ptr<BackupFolder> folder_;

private Q_SLOTS:
    void init()
    {
        databases_ = std::make_unique<QTemporaryDir>();
        folder_ = std::make_unique<BackupFolder>(databases_->path());
        folder_->create();
    }

    void theCopiesOfTenDaysAreRetained()
    {
        for (int number = 0; number < 12; ++number) {
            addDay(day(number));
        }
        // A day counts once, however many copies it has; other files count for nothing.
        addCopy("PestMon-2026-05-05-120000.mdb");
        addCopy("PestMon-2026-05-05-120000-2.mdb");
        addCopy("PestMon-replaced-2026-04-01-120000.mdb");
        folder_->removeOldest(day(11), folder_->copyOfDay(day(11)));
        QCOMPARE(days().size(), store::BackupDays + 2);
        QCOMPARE(days().last(), QString("2026-05-03"));
        QCOMPARE(QFileInfo(folder_->copies().at(7).path).fileName(), QString("PestMon-2026-05-05-120000-2.mdb"));
        QVERIFY(QFile::exists(folder_->path() + "/PestMon-replaced-2026-04-01-120000.mdb"));
    }

    void theCopyJustMadeAlwaysStays()
    {
        // The clock was a year ahead for ten days and right before and after.
        addDay(day(0));
        for (int number = 0; number < 10; ++number) {
            addDay(day(1).addYears(1).addDays(number));
        }
        for (int number = 1; number <= 12; ++number) {
            addDay(day(number));
            folder_->removeOldest(day(number), folder_->copyOfDay(day(number)));
            QVERIFY(QFile::exists(folder_->copyOfDay(day(number))));
            QCOMPARE(days().size(), store::BackupDays);
        }
        // The copies of days to come go first, so each real day is there again.
        QCOMPARE(days().first(), QString("2026-05-13"));
        QCOMPARE(days().last(), QString("2026-05-04"));
        // A clock that is behind removes one copy a day, never its own.
        addDay(QDate(2000, 1, 1));
        folder_->removeOldest(QDate(2000, 1, 1), folder_->copyOfDay(QDate(2000, 1, 1)));
        QCOMPARE(days().size(), store::BackupDays);
        QCOMPARE(days().last(), QString("2000-01-01"));
    }

    void leftoversOfKilledProgramsAreRemoved()
    {
        addDay(day(0));
        const QStringList leftovers{"PestMon-2026-05-02.mdb.new", "PestMon-2026-05-02.mdb.77.new.AbCdEf.part",
                                    "PestMon-2026-05-02.mdb.77.new.AbCdEf.part-journal", "PestMon-2026-05-02.mdb.new-journal",
                                    "qt_temp.dwXAXS"};
        for (const QString &name : leftovers) {
            addCopy(name);
        }
        addCopy("PestMon-replaced-2026-04-01-120000.mdb-journal");
        folder_->removeLeftovers();
        QCOMPARE(QDir(folder_->path()).entryList(QDir::Files),
                 (QStringList{"PestMon-2026-05-01.mdb", "PestMon-replaced-2026-04-01-120000.mdb-journal"}));
    }

    void olderCopiesMakeSpaceDownToThreeDays()
    {
        // Sparse files: their size is that of the copies, without taking the disk's space.
        const qint64 free = QStorageInfo(folder_->path()).bytesAvailable();
        const auto full = static_cast<int>(basic::ErrorNumber::DiskFull);
        for (int number = 0; number < 5; ++number) {
            addCopy(QFileInfo(folder_->copyOfDay(day(number))).fileName(), free / 8);
        }
        folder_->requireSpace(free / 4, day(5));
        QCOMPARE(days().size(), 5);
        folder_->requireSpace(free / 2 + free / 32, day(5));
        QCOMPARE(days().size(), 4);
        QCOMPARE(days().last(), QString("2026-05-02"));
        // Where even that does not help, nothing is removed.
        QCOMPARE(errorOf([&] { folder_->requireSpace(free, day(5)); }), full);
        QCOMPARE(days().size(), 4);
    }

    void theDatabasesFolderIsNeverCreated()
    {
        const BackupFolder gone(databases_->path() + "/gone");
        QCOMPARE(errorOf([&] { gone.create(); }), static_cast<int>(basic::ErrorNumber::PathFileAccess));
        QVERIFY(!QFileInfo::exists(databases_->path() + "/gone"));
    }
};

QTEST_GUILESS_MAIN(BackupFolderTest)
#include "BackupFolderTest.moc"
