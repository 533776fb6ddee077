// SPDX-License-Identifier: GPL-3.0-or-later
#include "Judges.h"

#include "platform/jet/LockFile.h"
#include "platform/jet/Transaction.h"

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using jet::Access;
using jet::Database;
using jet::ErrorNumber;
using jet::LockFile;
using jet::Transaction;

namespace
{

template <typename Body> QString errorOf(ErrorNumber number, Body &&body)
{
    try {
        body();
    } catch (const jet::Error &error) {
        return error.is(number) ? error.description() : QString("error %1: %2").arg(error.number()).arg(error.description());
    }
    return "no error";
}

/// A user of another program: an entry, and a lock of the classic kind that belongs to a process of its own.
class OtherUser
{
public:
    OtherUser(const QString &path, int slot, const QByteArray &computer)
    {
        int ready[2];
        if (pipe(ready) != 0) {
            qFatal("no pipe");
        }
        child_ = fork();
        if (child_ == 0) {
            const int file = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT, 0600);
            struct flock lock {
            };
            lock.l_type = F_WRLCK;
            lock.l_start = 0x10000001 + slot;
            lock.l_len = 1;
            const bool isLocked = fcntl(file, F_SETLK, &lock) == 0
                && pwrite(file, computer.leftJustified(32, '\0').constData(), 32, 64 * slot) == 32;
            const char answer = isLocked ? 'y' : 'n';
            if (::write(ready[1], &answer, 1) == 1) {
                pause();
            }
            _exit(0);
        }
        char answer = 'n';
        isPresent_ = ::read(ready[0], &answer, 1) == 1 && answer == 'y';
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherUser()
    {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    bool isPresent() const { return isPresent_; }

private:
    pid_t child_ = 0;
    bool isPresent_ = false;
};

} // namespace

/// Users of one file in several programs.
class LockFileTest : public QObject
{
    Q_OBJECT

private:
    QByteArray entries() const
    {
        QFile file(lockPath_);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void insert(Database &database)
    {
        Transaction transaction(database);
        transaction.insert("tblPMTempPest", {jet::Null{}, 1});
        transaction.commit();
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath("Pest.Mon.mdb");
    QString lockPath_ = folder_.filePath("Pest.Mon.ldb");

private Q_SLOTS:
    void init()
    {
        QFile::remove(lockPath_);
        judges::write(path_, judges::fixture("PestMon.mdb"));
        QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup);
    }

    void anEntryIsThereWhileTheFileIsOpen()
    {
        {
            const auto reader = Database::open(path_, judges::Password);
            QVERIFY(!QFile::exists(lockPath_));
            const auto writer = Database::open(path_, judges::Password, Access::ReadWrite);
            QCOMPARE(entries().size(), 64);
            QCOMPARE(QByteArray(entries().constData()), QSysInfo::machineHostName().toUpper().toLatin1().left(31));
            QCOMPARE(QByteArray(entries().constData() + 32), QByteArray("Admin"));
            QCOMPARE(QFile::permissions(lockPath_) & QFile::WriteGroup, QFile::WriteGroup);
            // Reading goes on next to it, and what cannot be opened leaves no entry.
            QCOMPARE(Database::open(path_, judges::Password)->tableNames().size(), 16);
        }
        QVERIFY(!QFile::exists(lockPath_));
        QVERIFY(
            errorOf(ErrorNumber::NotAValidPassword, [&] { Database::open(path_, "x", Access::ReadWrite); }).contains("password"));
        QVERIFY(!QFile::exists(lockPath_));
    }

    void nobodyElseMayBePresentWhenItIsWritten()
    {
        const auto database = Database::open(path_, judges::Password, Access::ReadWrite);
        {
            const OtherUser other(lockPath_, 3, "KANTOOR");
            const OtherUser another(lockPath_, 254, "STOOR");
            QVERIFY(other.isPresent() && another.isPresent());
            QCOMPARE(errorOf(ErrorNumber::FileInUse, [&] { insert(*database); }),
                     QString("KANTOOR, STOOR has the file open; close it there, then try again"));
            QVERIFY(database->readRows("tblPMData", [](const jet::Row &) {}) == 281);
        }
        // They have ended without leaving: their entries are there, their locks are not.
        QVERIFY(entries().contains("KANTOOR"));
        insert(*database);
        // During a write no other user gets a slot.
        Transaction transaction(*database);
        QVERIFY(!OtherUser(lockPath_, 0, "A").isPresent());
        QVERIFY(!OtherUser(lockPath_, 200, "B").isPresent());
    }

    void twoOfOurProgramsAreKeptApart()
    {
        const auto one = Database::open(path_, judges::Password, Access::ReadWrite);
        const auto other = Database::open(path_, judges::Password, Access::ReadWrite);
        QCOMPARE(entries().size(), 128);
        const QString name = QSysInfo::machineHostName().toUpper().left(31);
        QCOMPARE(errorOf(ErrorNumber::FileInUse, [&] { insert(*one); }),
                 QString("%1 has the file open; close it there, then try again").arg(name));
        QVERIFY(errorOf(ErrorNumber::FileInUse, [&] { insert(*other); }).contains(name));
    }

    void theFirstMayWriteOnceTheSecondHasLeft()
    {
        const auto one = Database::open(path_, judges::Password, Access::ReadWrite);
        {
            const auto other = Database::open(path_, judges::Password, Access::ReadWrite);
        }
        QVERIFY(QFile::exists(lockPath_));
        insert(*one);
    }

    void aFirstSlotThatIsTakenIsPassedOver()
    {
        const OtherUser other(lockPath_, 0, "KANTOOR");
        {
            LockFile lock(path_);
            QCOMPARE(lock.slot(), 1);
            QVERIFY(lock.isTaken(0) && !lock.isTaken(1) && !lock.isTaken(2));
        }
        // The last to leave removes the file, and that was not the last.
        QVERIFY(QFile::exists(lockPath_));
    }

    void aNewcomerWaitsForTheOneWhoWrites()
    {
        LockFile writer(path_);
        auto others = writer.lockOthers();
        const pid_t child = fork();
        if (child == 0) {
            // Takes its slot as soon as it may.
            LockFile newcomer(path_);
            _exit(newcomer.slot() == 1 ? 7 : 0);
        }
        usleep(200000);
        others.reset();
        int status = 0;
        waitpid(child, &status, 0);
        QCOMPARE(WEXITSTATUS(status), 7);
    }

    void aKilledProgramLeavesNoLock()
    {
        const pid_t child = fork();
        if (child == 0) {
            LockFile lock(path_);
            const auto others = lock.lockOthers();
            kill(getpid(), SIGKILL);
        }
        waitpid(child, nullptr, 0);
        QVERIFY(QFile::exists(lockPath_));
        const auto database = Database::open(path_, judges::Password, Access::ReadWrite);
        insert(*database);
    }
};

QTEST_GUILESS_MAIN(LockFileTest)
#include "LockFileTest.moc"
