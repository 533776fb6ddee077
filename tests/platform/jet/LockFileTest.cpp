// SPDX-License-Identifier: GPL-3.0-or-later
#include "Judges.h"

#include "platform/jet/LockFile.h"
#include "platform/jet/Transaction.h"
#include "support/ChildProcess.h"

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#endif

using jet::Access;
using jet::Database;
using jet::ErrorNumber;
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

/// The system's own call, as another program makes it.
bool lockByte(int file, std::uint32_t at)
{
#ifdef Q_OS_WIN
    OVERLAPPED start{};
    start.Offset = at;
    return LockFileEx(reinterpret_cast<HANDLE>(_get_osfhandle(file)), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1,
                      0, &start)
        != 0;
#else
    struct flock lock {
    };
    lock.l_type = F_WRLCK;
    lock.l_start = at;
    lock.l_len = 1;
    return ::fcntl(file, F_SETLK, &lock) == 0;
#endif
}

/// Role: a user of another program, who writes an entry and locks the byte of a slot.
int beOtherUser(const QStringList &arguments)
{
    const int slot = arguments.at(1).toInt();
    QFile file(arguments.at(0));
    const bool isLocked = file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)
        && lockByte(file.handle(), 0x10000001U + static_cast<std::uint32_t>(slot)) && file.seek(64 * slot)
        && file.write(arguments.at(2).toLatin1().leftJustified(32, '\0')) == 32;
    ChildProcess::report(isLocked ? "present" : "refused");
    ChildProcess::waitForTheEnd();
    return 0;
}

/// Role: takes a slot as soon as it may.
int beNewcomer(const QStringList &arguments)
{
    ChildProcess::report("waiting");
    const jet::LockFile newcomer(arguments.at(0));
    return newcomer.slot();
}

/// Role: keeps all others out.
int beWriter(const QStringList &arguments)
{
    jet::LockFile lock(arguments.at(0));
    const auto others = lock.lockOthers();
    ChildProcess::report("alone");
    ChildProcess::waitForTheEnd();
    return 0;
}

class OtherUser
{
public:
    OtherUser(const QString &lockPath, int slot, const QString &computer)
        : process_("user", {lockPath, QString::number(slot), computer}), isPresent_(process_.line() == "present")
    {
    }
    bool isPresent() const { return isPresent_; }

private:
    ChildProcess process_;
    bool isPresent_;
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
            jet::LockFile lock(path_);
            QCOMPARE(lock.slot(), 1);
            QVERIFY(lock.isTaken(0) && !lock.isTaken(1) && !lock.isTaken(2));
        }
        // The last to leave removes the file, and that was not the last.
        QVERIFY(QFile::exists(lockPath_));
    }

    void aNewcomerWaitsForTheOneWhoWrites()
    {
        jet::LockFile writer(path_);
        auto others = writer.lockOthers();
        ChildProcess newcomer("newcomer", {path_});
        QCOMPARE(newcomer.line(), QByteArray("waiting"));
        QTest::qSleep(200);
        others.reset();
        // The first slot that was free when it was tried.
        QVERIFY(newcomer.exitCode() > 0);
    }

    void aProgramThatLetsNobodyElseReadOrWriteIsNamedAsTheReason()
    {
#ifdef Q_OS_WIN
        const auto openFor = [this](DWORD access, DWORD shared) {
            return CreateFileW(reinterpret_cast<const wchar_t *>(path_.utf16()), access, shared, nullptr, OPEN_EXISTING, 0,
                               nullptr);
        };
        const HANDLE alone = openFor(GENERIC_READ | GENERIC_WRITE, 0);
        QVERIFY(alone != INVALID_HANDLE_VALUE);
        const QString refused = errorOf(ErrorNumber::CannotOpenFile, [&] { Database::open(path_, judges::Password); });
        QVERIFY2(refused.startsWith(path_ + " cannot be read: "), qPrintable(refused));
        CloseHandle(alone);
        const auto database = Database::open(path_, judges::Password, Access::ReadWrite);
        QCOMPARE(openFor(GENERIC_READ, 0), INVALID_HANDLE_VALUE);
        const HANDLE reader = openFor(GENERIC_READ, FILE_SHARE_READ);
        QVERIFY(reader != INVALID_HANDLE_VALUE);
        const QString unwritten = errorOf(ErrorNumber::CannotOpenFile, [&] { insert(*database); });
        QVERIFY2(unwritten.startsWith(path_ + " cannot be written: "), qPrintable(unwritten));
        CloseHandle(reader);
        insert(*database);
        QCOMPARE(judges::faults(path_), QString());
#else
        QSKIP("Only Windows has sharing modes.");
#endif
    }

    void aKilledProgramLeavesNoLock()
    {
        ChildProcess writer("writer", {path_});
        QCOMPARE(writer.line(), QByteArray("alone"));
        writer.kill();
        QVERIFY(QFile::exists(lockPath_));
        const auto database = Database::open(path_, judges::Password, Access::ReadWrite);
        insert(*database);
    }
};

int main(int argc, char *argv[])
{
    return ChildProcess::runTestOrRole<LockFileTest>(argc, argv,
                                                     {{"user", beOtherUser}, {"newcomer", beNewcomer}, {"writer", beWriter}});
}

#include "LockFileTest.moc"
