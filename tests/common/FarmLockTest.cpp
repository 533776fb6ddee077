// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/FarmLock.h"

#include "support/ChildProcess.h"

#include <QDir>
#include <QFile>
#include <QSemaphore>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

namespace
{

/// Role: has the farm until it is killed.
int beHolder(const QStringList &arguments)
{
    const FarmLock::Attempt attempt = FarmLock::tryLock(arguments.at(0));
    ChildProcess::report(attempt.lock ? "locked" : "refused");
    ChildProcess::waitForTheEnd();
    return 0;
}

} // namespace

/// The lock of a farm's folder, within a process, between processes, and with files that another computer would leave.
class FarmLockTest : public QObject
{
    Q_OBJECT

private:
    QString path() const { return folder_->filePath(QStringLiteral("PestMon.lock")); }
    QByteArray text() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// What another computer has written, so many seconds ago.
    void leave(int secondsAgo) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("computer=OFFICE-2\nuser=anna\nprocess=77\nsince=2026-05-01T08:00:00\nmachine=OFFICE-2/0123\n");
        QVERIFY(file.flush());
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo), QFileDevice::FileModificationTime));
    }

    std::unique_ptr<QTemporaryDir> folder_;

private Q_SLOTS:
    void init() { folder_ = std::make_unique<QTemporaryDir>(); }

    void theSecondLearnsWhoHasTheFarm()
    {
        FarmLock::Attempt first = FarmLock::tryLock(folder_->path());
        QVERIFY(first.lock && !first.holder);
        const FarmLock::Attempt second = FarmLock::tryLock(folder_->path() + "/.");
        QVERIFY(!second.lock);
        QVERIFY(second.holder->isThisComputer);
        QCOMPARE(second.holder->computer, QSysInfo::machineHostName());
        QCOMPARE(second.holder->process, QCoreApplication::applicationPid());
        QVERIFY(second.holder->text().contains(" on " + QSysInfo::machineHostName() + " since 20"));
        first.lock.reset();
        QVERIFY(text().isEmpty());
        const FarmLock::Attempt third = FarmLock::tryLock(folder_->path());
        QVERIFY(third.lock && !third.holder);
        // Nothing but the lock is left in the folder.
        QCOMPARE(QDir(folder_->path()).entryList(QDir::Files), QStringList{"PestMon.lock"});
    }

    void theLockOfAKilledProgramIsTakenOver()
    {
        ChildProcess holder(QStringLiteral("holder"), {folder_->path()});
        QCOMPARE(holder.line(), QByteArray("locked"));
        const qint64 process = holder.id();
        const FarmLock::Attempt refused = FarmLock::tryLock(folder_->path());
        QVERIFY(!refused.lock);
        QCOMPARE(refused.holder->process, process);
        holder.kill();
        const FarmLock::Attempt taken = FarmLock::tryLock(folder_->path());
        QVERIFY(taken.lock);
        QCOMPARE(taken.holder->process, process);
        QVERIFY(text().contains("process=" + QByteArray::number(QCoreApplication::applicationPid())));
    }

    void aFreshLockOfAnotherComputerHoldsAlsoWithoutFileLocks()
    {
        leave(100);
        const FarmLock::Attempt refused = FarmLock::tryLock(folder_->path());
        QVERIFY(!refused.lock);
        QVERIFY(!refused.holder->isThisComputer);
        QCOMPARE(refused.holder->text(), QString("anna on OFFICE-2 since 2026/05/01 08:00"));
        QVERIFY(text().contains("anna"));
        leave(200);
        const FarmLock::Attempt taken = FarmLock::tryLock(folder_->path());
        QVERIFY(taken.lock);
        QCOMPARE(taken.holder->computer, QString("OFFICE-2"));
    }

    void theHolderRefreshesTheFileAndNoticesATakeover()
    {
        using namespace std::chrono_literals;
        QSemaphore lost;
        FarmLock::Attempt attempt = FarmLock::tryLock(folder_->path(), 20ms);
        attempt.lock->setLostHandler([&] { lost.release(); });
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-1000), QFileDevice::FileModificationTime));
        QTRY_VERIFY(QFileInfo(path()).lastModified().secsTo(QDateTime::currentDateTime()) < 500);
        QVERIFY(lost.available() == 0);
        leave(0);
        QVERIFY(lost.tryAcquire(1, 5000));
        attempt.lock.reset();
        QVERIFY2(text().contains("anna"), "the file now belongs to the other holder");
    }
};

int main(int argc, char *argv[])
{
    return ChildProcess::runTestOrRole<FarmLockTest>(argc, argv, {{"holder", beHolder}});
}

#include "FarmLockTest.moc"
