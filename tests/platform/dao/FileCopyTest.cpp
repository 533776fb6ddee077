// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThingsFile.h"

#include "platform/dao/CommitScope.h"
#include "platform/dao/FileCopy.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <atomic>
#include <thread>

using namespace dao;

/// Copies made on another thread while the database is written.
class FileCopyTest : public QObject
{
    Q_OBJECT

private:
    static bool create(const QString &path) { return QFile(path).open(QIODevice::NewOnly); }
    static void fill(ThingsFile &file)
    {
        CommitScope scope(*file);
        file.add("a", 1);
        for (int times = 0; times < 17; ++times) {
            file->Execute("Insert into Things (Name, Big) Select Name, Big from Things");
        }
        scope.commit();
    }
    static int number(Database &database, const char *sql) { return database.OpenRecordset(sql).longValue(0); }

private Q_SLOTS:
    void aWriteNeitherWaitsNorTearsTheCopy()
    {
        ThingsFile file;
        fill(file);
        const QString path = file.folder() + "/copy.mdb";
        QVERIFY(create(path));
        const auto copy = file->startCopy(path);
        std::atomic<bool> isDone = false;
        std::atomic<bool> isStarted = false;
        std::thread worker([&] {
            do {
                isStarted = true;
            } while (copy->step());
            copy->finish();
            isDone = true;
        });
        while (!isStarted) {
            std::this_thread::yield();
        }
        // Each round changes a page that is copied early and one that is copied late.
        int rounds = 1;
        qint64 longest = 0;
        QElapsedTimer timer;
        for (; !isDone; ++rounds) {
            timer.restart();
            {
                CommitScope scope(*file);
                file->Execute("Update Things set Big = Big + 1 where ThingID in (1, 131072)");
                scope.commit();
            }
            longest = std::max(longest, timer.elapsed());
        }
        worker.join();
        QVERIFY2(copy->check().isEmpty(), "the copy is sound");
        const auto copied = Workspace::OpenDatabase(path, false, true, ";pwd=secret");
        QCOMPARE(number(*copied, "Select Count(*) from Things"), 131072);
        const int first = number(*copied, "Select Big from Things where ThingID = 1");
        QCOMPARE(number(*copied, "Select Big from Things where ThingID = 131072"), first);
        QVERIFY(first >= 1 && first <= rounds);
        QVERIFY2(rounds > 2, "nothing was written meanwhile");
        qInfo("longest of %d writes: %lld ms", rounds, longest);
    }

    void writesOfAnotherProgramBeginItAnew()
    {
        ThingsFile file;
        fill(file);
        const QString path = file.folder() + "/copy.mdb";
        QVERIFY(create(path));
        const auto copy = file->startCopy(path);
        QVERIFY(copy->step());
        const int percent = copy->percent();
        const auto other = file.openAgain();
        other->Execute("Update Things set Big = 7 where ThingID in (1, 131072)");
        QVERIFY(copy->step());
        QVERIFY(copy->percent() <= percent);
        while (copy->step()) {}
        copy->finish();
        const auto copied = Workspace::OpenDatabase(path, false, true, ";pwd=secret");
        QCOMPARE(number(*copied, "Select Sum(Big) from Things where Big = 7"), 14);
    }

    void aFullDiskIsReported()
    {
#ifdef Q_OS_WIN
        QSKIP("There is no device that is always full.");
#endif
        ThingsFile file;
        fill(file);
        const QString path = file.folder() + "/copy.mdb";
        QVERIFY(QFile::link("/dev/full", path));
        const int error = errorOf([&] {
            const auto copy = file->startCopy(path);
            while (copy->step()) {}
            copy->finish();
        });
        QVERIFY(error != 0);
        QCOMPARE(number(*file, "Select Count(*) from Things"), 131072);
    }
};

QTEST_GUILESS_MAIN(FileCopyTest)
#include "FileCopyTest.moc"
