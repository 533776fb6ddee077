// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"
#include "Judges.h"

#include "platform/basic/Clock.h"
#include "platform/jet/LockFile.h"
#include "platform/jet/PageCommit.h"
#include "platform/jet/Transaction.h"
#include "support/DiskCalls.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using diskCalls::Duration;
using diskCalls::Effect;
using jet::Access;
using jet::Database;
using jet::ErrorNumber;
using jet::Transaction;

namespace
{

constexpr char Fixture[] = "PestMon_indexed.mdb";

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

template <typename Body> QString errorOf(ErrorNumber number, Body &&body)
{
    try {
        body();
    } catch (const jet::Error &error) {
        return error.is(number) ? error.description() : QString("error %1: %2").arg(error.number()).arg(error.description());
    }
    return "no error";
}

QString memoryFolder()
{
    const QDir memory("/dev/shm");
    return (memory.exists() ? memory : QDir::temp()).filePath("PageCommitTest-XXXXXX");
}

} // namespace

/// A process that ends, or a disk that fails, at every call that writes: the file then is as before or as after, to the byte.
class PageCommitTest : public QObject
{
    Q_OBJECT

private:
    /// Three transactions of different sizes, the same bytes each time.
    static void changeThrice(const QString &path, int *committed)
    {
        const auto database = Database::open(path, judges::Password, Access::ReadWrite);
        for (int part = 0; part < 3; ++part) {
            Transaction transaction(*database);
            if (part == 0) {
                transaction.update("tblPMTrans", *transaction.findByKey("tblPMTrans", {5}), {{5, 33}});
            } else if (part == 1) {
                // Few rows on many pages.
                std::vector<jet::Value> row(10);
                row[6] = QString(255, QChar(0x6F22));
                for (int i = 0; i < 400; ++i) {
                    row[1] = i;
                    transaction.insert("tblPMTrans", row);
                }
                for (int key = 1; key < 250; key += 2) {
                    transaction.remove("tblPMData", *transaction.findByKey("tblPMData", {key}));
                }
            } else {
                transaction.createTable(
                    {"tblTempBlockPlant", {{"tBlockPID"}, {"tPBlock", jet::ColumnType::Text, 50, false, true}}});
                transaction.insert("tblTempBlockPlant", {1, QString("x")});
                transaction.addBooleanColumn("tblPMTrans", "PMRepeat");
            }
            transaction.commit();
            ++*committed;
        }
    }

    /// Lets a child make the changes and fail at a call. Returns how many transactions it had reported.
    int inChild(int call, Effect effect, bool &isComplete)
    {
        *shared_ = 0;
        const pid_t child = fork();
        if (child == 0) {
            diskCalls::failAt(call, effect);
            changeThrice(path_, shared_);
            _exit(1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        isComplete = WIFEXITED(status) && WEXITSTATUS(status) == 1;
        return *shared_;
    }

    void reset()
    {
        for (const QString &name : QDir(folder_.path()).entryList(QDir::Files)) {
            QFile::remove(folder_.filePath(name));
        }
        judges::write(path_, judges::fixture(Fixture));
    }

    bool isAlone() const { return QDir(folder_.path()).entryList(QDir::Files) == QStringList("Farm.mdb"); }

    QTemporaryDir folder_{memoryFolder()};
    QString path_ = folder_.filePath("Farm.mdb");
    /// The file after none, one, two and all transactions.
    QList<QByteArray> states_;
    int *shared_ = nullptr;

private Q_SLOTS:
    void initTestCase()
    {
        shared_ = static_cast<int *>(mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
        diskCalls::watch(folder_.path());
        basic::Clock::stopAt(QDateTime(QDate(2024, 2, 29), QTime(12, 0)));
        reset();
        states_.append(read(path_));
        // What a transaction leaves is seen by ending right behind it.
        int calls = 0;
        for (bool isComplete = false; !isComplete;) {
            reset();
            inChild(++calls, Effect::Kill, isComplete);
            Database::open(path_, judges::Password);
            if (read(path_) != states_.last()) {
                states_.append(read(path_));
            }
        }
        QCOMPARE(states_.size(), 4);
        calls_ = calls - 1;
    }

    void cleanup() { diskCalls::failAt(0, Effect::Fail); }

    void aProcessThatEndsLeavesTheOldOrTheNew_data()
    {
        QTest::addColumn<Effect>("effect");
        QTest::newRow("between two calls") << Effect::Kill;
        QTest::newRow("in the middle of a write") << Effect::KillHalfway;
    }

    void aProcessThatEndsLeavesTheOldOrTheNew()
    {
        QFETCH(Effect, effect);
        int undone = 0;
        for (int call = 1; call <= calls_; ++call) {
            reset();
            bool isComplete = false;
            const int committed = inChild(call, effect, isComplete);
            undone += jet::hasRollback(path_) ? 1 : 0;
            // The next opening undoes it, also one for reading.
            const auto database = Database::open(path_, judges::Password, call % 2 == 0 ? Access::ReadOnly : Access::ReadWrite);
            const QByteArray found = read(path_);
            QVERIFY2(found == states_[committed] || found == states_[std::min(committed + 1, 3)],
                     qPrintable(QString("call %1").arg(call)));
            QVERIFY(!jet::hasRollback(path_));
            QVERIFY(database->isSettled());
            if (call % 20 == 0) {
                QCOMPARE(judges::faults(path_), QString());
            }
        }
        QVERIFY2(calls_ > 100 && undone > calls_ / 3, qPrintable(QString("%1 of %2").arg(undone).arg(calls_)));
        qInfo("%d ends, %d of them with a rollback file left behind", calls_, undone);
    }

    void anUndoThatIsCutShortIsDoneAgain()
    {
        for (int call = 1; call < 40; ++call) {
            reset();
            bool isComplete = false;
            int last = calls_ / 2;
            inChild(last, Effect::Kill, isComplete);
            while (!jet::hasRollback(path_)) {
                reset();
                inChild(--last, Effect::Kill, isComplete);
            }
            const pid_t child = fork();
            if (child == 0) {
                diskCalls::failAt(call, Effect::KillHalfway);
                Database::open(path_, judges::Password);
                _exit(1);
            }
            waitpid(child, nullptr, 0);
            Database::open(path_, judges::Password);
            QVERIFY(states_.contains(read(path_)));
        }
    }

    void aDiskThatFailsLeavesTheOldAndTheObjectGoesOn_data()
    {
        QTest::addColumn<Duration>("duration");
        QTest::newRow("once") << Duration::Once;
        QTest::newRow("from now on") << Duration::FromNowOn;
    }

    void aDiskThatFailsLeavesTheOldAndTheObjectGoesOn()
    {
        QFETCH(Duration, duration);
        int failed = 0;
        int undecided = 0;
        for (int call = 1;; ++call) {
            reset();
            auto database = Database::open(path_, judges::Password, Access::ReadWrite);
            const auto insert = [&](int failing) {
                Transaction transaction(*database);
                for (int i = 0; i < 200; ++i) {
                    transaction.insert("tblPMData", {jet::Null{}, i, 2, 3, 4});
                }
                diskCalls::failAt(failing, Effect::FailFull, diskCalls::Changes & ~diskCalls::Kinds(diskCalls::Kind::SyncFolder),
                                  duration);
                transaction.commit();
            };
            QString error;
            try {
                insert(call);
            } catch (const jet::Error &raised) {
                error = raised.description();
            }
            const bool wasReached = diskCalls::hasFailed();
            diskCalls::failAt(0, Effect::Fail);
            if (error.isEmpty()) {
                // What fails when everything is written does not matter any more.
                QCOMPARE(judges::faults(path_), QString());
                QCOMPARE(Database::open(path_, judges::Password)->definition("tblPMData").rowCount, 481U);
                if (!wasReached) {
                    break;
                }
                continue;
            }
            ++failed;
            QVERIFY2(error.contains(folder_.path()), qPrintable(error));
            database->refresh();
            const std::uint32_t rows = database->readRows("tblPMData", [](const jet::Row &) {});
            if (rows == 481U) {
                // The last wait failed, and a disk that fails from then on cannot take the change back.
                QVERIFY(++undecided == 1 && duration == Duration::FromNowOn);
            } else {
                QCOMPARE(rows, 281U);
                QCOMPARE(read(path_), states_[0]);
            }
            insert(0);
            QCOMPARE(database->readRows("tblPMData", [](const jet::Row &) {}), rows + 200U);
            database.reset();
            QVERIFY(isAlone());
            QCOMPARE(judges::faults(path_), QString());
        }
        QVERIFY2(failed > 10, qPrintable(QString::number(failed)));
    }

    /// The name of the rollback file waits for the disk before the first change of a session, and again when another user has
    /// removed the file.
    void aFolderThatCannotBeWaitedForIsReported()
    {
        reset();
        const auto database = Database::open(path_, judges::Password, Access::ReadWrite);
        const auto insert = [&] {
            Transaction transaction(*database);
            for (int i = 0; i < 201; ++i) {
                transaction.insert("tblPMData", {jet::Null{}, i, 2, 3, 4});
            }
            transaction.commit();
        };
        for (int part = 0; part < 2; ++part) {
            diskCalls::failAt(1, Effect::Fail, diskCalls::Kind::SyncFolder);
            const QString error = errorOf(ErrorNumber::DiskError, insert);
            diskCalls::failAt(0, Effect::Fail);
            QVERIFY2(error.contains(folder_.path()), qPrintable(error));
            database->refresh();
            QCOMPARE(database->readRows("tblPMData", [](const jet::Row &) {}), 281U + 402U * static_cast<unsigned int>(part));
            insert();
            diskCalls::failAt(1, Effect::Fail, diskCalls::Kind::SyncFolder);
            insert();
            QVERIFY2(!diskCalls::hasFailed(), "the name is on the disk");
            diskCalls::failAt(0, Effect::Fail);
            QVERIFY(!jet::hasRollback(path_));
            QCOMPARE(judges::faults(path_), QString());
            QVERIFY(QFile::remove(jet::rollbackPath(path_)));
        }
    }

    void aUserWhoLeavesAtOnceRefusesNoWrite()
    {
        reset();
        const auto database = Database::open(path_, judges::Password, Access::ReadWrite);
        auto visitor = std::make_unique<jet::LockFile>(path_);
        const std::unique_ptr<QThread> leaving(QThread::create([&] {
            QThread::msleep(200);
            visitor.reset();
        }));
        leaving->start();
        {
            Transaction transaction(*database);
            transaction.update("tblPMTrans", *transaction.findByKey("tblPMTrans", {5}), {{5, 33}});
            transaction.commit();
        }
        QVERIFY(leaving->wait());
    }

    void theLastUserRemovesTheRollbackFile()
    {
        reset();
        auto first = Database::open(path_, judges::Password, Access::ReadWrite);
        {
            Transaction transaction(*first);
            transaction.update("tblPMTrans", *transaction.findByKey("tblPMTrans", {5}), {{5, 33}});
            transaction.commit();
        }
        auto second = Database::open(path_, judges::Password, Access::ReadWrite);
        QVERIFY_THROWS_EXCEPTION(jet::Error, first->requireSoleUser());
        first.reset();
        QVERIFY(QFile::exists(jet::rollbackPath(path_)));
        second->requireSoleUser();
        second.reset();
        QVERIFY(isAlone());
    }

    void aRollbackFileThatCannotBeReadIsNoIncompleteOne()
    {
        int call = calls_ / 2;
        bool isComplete = false;
        do {
            reset();
            inChild(call--, Effect::Kill, isComplete);
        } while (!jet::hasRollback(path_));
        const QByteArray stored = read(jet::rollbackPath(path_));
        const QByteArray changed = read(path_);
        int refused = 0;
        for (int reading = 1;; ++reading) {
            judges::write(path_, changed);
            judges::write(jet::rollbackPath(path_), stored);
            diskCalls::failAt(reading, Effect::Fail, diskCalls::Kind::Read);
            const bool isOpened = basic::runOrIgnore([&] { Database::open(path_, judges::Password); });
            const bool hasFailed = diskCalls::hasFailed();
            diskCalls::failAt(0, Effect::Fail);
            if (isOpened) {
                QVERIFY(states_.contains(read(path_)));
            } else {
                ++refused;
                QVERIFY(!jet::hasRollback(path_) || read(jet::rollbackPath(path_)) == stored);
            }
            if (!hasFailed) {
                break;
            }
        }
        QVERIFY(refused > 2);
    }

    void aRollbackFileThatIsNotWholeIsIgnored()
    {
        reset();
        QByteArray stored;
        for (int call = calls_ / 2; stored.isEmpty(); --call) {
            reset();
            bool isComplete = false;
            inChild(call, Effect::Kill, isComplete);
            stored = read(jet::rollbackPath(path_));
        }
        for (const QByteArray &torn : {QByteArray(), stored.left(7), stored.chopped(1), QByteArray(stored).replace(5000, 1, "?"),
                                       QByteArray(stored).replace(0, 16, QByteArray(16, '\0'))}) {
            reset();
            judges::write(jet::rollbackPath(path_), torn);
            Database::open(path_, judges::Password, Access::ReadWrite);
            QCOMPARE(read(path_), states_[0]);
            QVERIFY(isAlone());
        }
    }

    void aFileThatAnotherHasWrittenSinceIsLeftAlone()
    {
        int call = calls_ / 2;
        bool isComplete = false;
        do {
            reset();
            inChild(call--, Effect::Kill, isComplete);
        } while (!jet::hasRollback(path_));
        QByteArray file = read(path_);
        // Another user's commit bytes, and nothing else.
        bytes::setNumber<quint16>(file, 0, 0xE0A, 0x0107);
        judges::write(path_, file);
        const QString error = errorOf(ErrorNumber::NeedsRepair, [&] { Database::open(path_, judges::Password); });
        QVERIFY2(error.contains(path_) && error.contains("cut short"), qPrintable(error));
        QCOMPARE(read(path_), file);
        QVERIFY(jet::hasRollback(path_));
    }

private:
    int calls_ = 0;
};

QTEST_GUILESS_MAIN(PageCommitTest)
#include "PageCommitTest.moc"
