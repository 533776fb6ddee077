// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThingsFile.h"

#include "support/HostileJournal.h"

#include <QDir>
#include <QFile>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace dao;

/// A folder whose files are made to harm other files of the user.
class DatabaseVfsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void aJournalThatNamesAnotherFileIsRefused_data();
    void aJournalThatNamesAnotherFileIsRefused();
    void aJournalThatAppearsLaterDeletesNothing();
    void filesThatAreNotDatabasesAreRefused_data();
    void filesThatAreNotDatabasesAreRefused();

private:
    std::unique_ptr<ThingsFile> file_;
    QString victim_;
};

void DatabaseVfsTest::init()
{
    file_ = std::make_unique<ThingsFile>();
    file_->add("a");
    victim_ = file_->folder() + "/letter.txt";
    QFile letter(victim_);
    QVERIFY(letter.open(QIODevice::WriteOnly));
    QCOMPARE(letter.write("Dear Anna"), 9);
}

void DatabaseVfsTest::aJournalThatNamesAnotherFileIsRefused_data()
{
    QTest::addColumn<bool>("exclusive");
    QTest::addColumn<bool>("readOnly");
    QTest::newRow("shared") << false << false;
    QTest::newRow("exclusive") << true << false;
    QTest::newRow("read-only") << false << true;
}

void DatabaseVfsTest::aJournalThatNamesAnotherFileIsRefused()
{
    QFETCH(bool, exclusive);
    QFETCH(bool, readOnly);
    file_->close();
    QVERIFY(addHostileJournal(file_->path(), victim_));
    QStringList paths{file_->path()};
#ifdef Q_OS_UNIX
    paths.append(file_->folder() + "/link.mdb");
    QVERIFY(QFile::link(paths.front(), paths.back()));
#endif
    for (const QString &path : paths) {
        try {
            Workspace::OpenDatabase(path, exclusive, readOnly, ";pwd=secret");
            QFAIL("the journal was accepted");
        } catch (const DataError &error) {
            QVERIFY2(error.description().contains("Things.mdb-journal") && error.description().contains("letter.txt"),
                     qPrintable(error.description()));
        }
        QVERIFY(QFile::exists(victim_));
    }
    QVERIFY(QFile::exists(file_->path() + "-journal"));
    QVERIFY(QFile::remove(file_->path() + "-journal"));
    QCOMPARE(file_->openAgain()->OpenRecordset("Select * from Things").RecordCount(), 1);
}

void DatabaseVfsTest::aJournalThatAppearsLaterDeletesNothing()
{
    QVERIFY(addHostileJournal(file_->path(), victim_));
    QCOMPARE(errorOf([&] { (*file_)->OpenRecordset("Select * from Things"); }), 3051);
    QCOMPARE(errorOf([&] { file_->add("b"); }), 3051);
    QVERIFY(QFile::exists(victim_));
    QVERIFY(QFile::remove(file_->path() + "-journal"));
    QCOMPARE(file_->add("b"), 2);
}

void DatabaseVfsTest::filesThatAreNotDatabasesAreRefused_data()
{
    using Prepare = std::function<bool(const QString &path, const QString &victim)>;
    QTest::addColumn<Prepare>("prepare");
    const auto row = [](const char *name, const Prepare &prepare) { QTest::newRow(name) << prepare; };
    row("journal that is a folder", [](const QString &path, const QString &) { return QDir().mkdir(path + "-journal"); });
#ifdef Q_OS_UNIX
    row("pipe", [](const QString &path, const QString &) {
        return QFile::remove(path) && ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
    });
    row("journal that is a link",
        [](const QString &path, const QString &victim) { return QFile::link(victim, path + "-journal"); });
    row("write-ahead log that is a link", [](const QString &path, const QString &victim) {
        QFile file(path);
        // The two version bytes of the header make SQLite look for a write-ahead log.
        return QFile::link(victim, path + "-wal") && file.open(QIODevice::ReadWrite) && file.seek(18)
            && file.write("\2\2", 2) == 2;
    });
#endif
}

void DatabaseVfsTest::filesThatAreNotDatabasesAreRefused()
{
    QFETCH(std::function<bool(const QString &, const QString &)>, prepare);
    const QString path = file_->path();
    file_->close();
    QVERIFY(prepare(path, victim_));
    QVERIFY(errorOf([&] { file_->openAgain()->Execute("Update Things set Big = 1"); }) != 0);
    QVERIFY(!QFile::exists(path + "-shm"));
    QFile letter(victim_);
    QVERIFY(letter.open(QIODevice::ReadOnly));
    QCOMPARE(letter.readAll(), QByteArray("Dear Anna"));
}

QTEST_GUILESS_MAIN(DatabaseVfsTest)
#include "DatabaseVfsTest.moc"
