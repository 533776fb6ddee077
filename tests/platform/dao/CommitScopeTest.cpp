// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThingsFile.h"

#include "platform/dao/CommitScope.h"
#include "support/ChildProcess.h"

#include <QFileInfo>
#include <QTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace dao;

namespace
{

int rowsIn(Database &database)
{
    return database.OpenRecordset("Select * from Things").RecordCount();
}

/// Role: writes in a scope that it never ends.
int beUnfinishedWriter(const QStringList &arguments)
{
    const auto database = Workspace::OpenDatabase(arguments.at(0), false, false, ";pwd=secret");
    const CommitScope scope(*database);
    database->Execute("Update Things set Name = 'after'");
    // Enough rows that SQLite has to write into the file before the end.
    Recordset set = database->OpenRecordset("Select * from tblWide", RecordsetType::Dynaset);
    for (int i = 0; i < 60000; ++i) {
        set.AddNew();
        set.set(0, QString(255, u'x'));
        set.Update();
    }
    ChildProcess::report("written");
    ChildProcess::waitForTheEnd();
    return 0;
}

/// Lets no file grow beyond a size, as a full disk does. Windows has no such limit.
class FullDisk
{
public:
#ifdef Q_OS_WIN
    static constexpr bool IsPossible = false;
    explicit FullDisk(qint64) {}
    ~FullDisk() {}
#else
    static constexpr bool IsPossible = true;
    explicit FullDisk(qint64 bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = static_cast<rlim_t>(bytes);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
    }
#endif
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

#ifndef Q_OS_WIN
private:
    rlimit before_{};
#endif
};

} // namespace

class CommitScopeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void nothingIsSeenBeforeTheEnd();
    void anErrorCommitsWhatWasWrittenBefore();
    void rollbackDropsItsOwnPartOnly();
    void keysOfADroppedScopeAreNotGivenAgain();
    void tablesOfADroppedScopeAreGone();
    void aKilledProgramLeavesNothingOfItsScope();
    void fullDiskLeavesTheOldValue();
    void fullDiskInAScopeIsReported();
};

void CommitScopeTest::nothingIsSeenBeforeTheEnd()
{
    ThingsFile file;
    const auto other = file.openAgain(true);
    {
        CommitScope outer(*file);
        {
            CommitScope inner(*file);
            file.add("a");
            inner.commit();
        }
        QCOMPARE(rowsIn(*other), 0);
        file.add("b");
    }
    QCOMPARE(rowsIn(*other), 2);
}

void CommitScopeTest::anErrorCommitsWhatWasWrittenBefore()
{
    ThingsFile file;
    const int error = errorOf([&] {
        CommitScope scope(*file);
        file.add("a");
        QCOMPARE(errorOf([&] { file->Execute("Insert into Things (ThingID) values (1)"); }), 3022);
        file.add("b");
        file.add(QString(11, u'x'));
    });
    QCOMPARE(error, 3163);
    QCOMPARE(rowsIn(*file.openAgain(true)), 2);
}

void CommitScopeTest::rollbackDropsItsOwnPartOnly()
{
    ThingsFile file;
    file.add("before");
    {
        CommitScope outer(*file);
        file.add("committed");
        Recordset set = file->OpenRecordset("Select * from Things", RecordsetType::Dynaset);
        {
            CommitScope inner(*file);
            set.Edit();
            set.set("Name", QStringLiteral("dropped"));
            set.Update();
            file.add("dropped");
            inner.rollback();
        }
        QCOMPARE(set.text("Name"), QStringLiteral("before"));
        outer.commit();
    }
    QCOMPARE(rowsIn(*file), 2);
    {
        CommitScope scope(*file);
        scope.rollback();
        file.add("after");
    }
    QCOMPARE(rowsIn(*file), 3);
}

void CommitScopeTest::keysOfADroppedScopeAreNotGivenAgain()
{
    ThingsFile file;
    {
        CommitScope scope(*file);
        QCOMPARE(file.add("a"), 1);
        scope.rollback();
    }
    QCOMPARE(file.add("b"), 2);
    const auto other = file.openAgain();
    if (ThingsFile::kind() == FileKind::Jet) {
        // While two users have the file open, neither can write.
        QCOMPARE(errorOf([&] { other->Execute("Insert into Things (ThingID) values (9)"); }), 3045);
        QCOMPARE(errorOf([&] { file.add("c"); }), 3045);
        return;
    }
    other->Execute("Insert into Things (ThingID) values (9)");
    QCOMPARE(file.add("c"), 10);
}

void CommitScopeTest::tablesOfADroppedScopeAreGone()
{
    ThingsFile file;
    {
        CommitScope scope(*file);
        TableDef made("tblShort");
        made.Append(TableDef::CreateField("First", FieldType::Long));
        file->Append(made);
        QVERIFY(file->OpenRecordset("Select * from tblShort").Eof());
        scope.rollback();
    }
    QCOMPARE(errorOf([&] { file->OpenRecordset("Select * from tblShort"); }), 3078);
    QCOMPARE(file->tableNames(), QStringList{"Things"});
}

void CommitScopeTest::aKilledProgramLeavesNothingOfItsScope()
{
    ThingsFile file;
    file.add("before");
    TableDef wide("tblWide");
    wide.Append(TableDef::CreateField("Filler", FieldType::Text, 255));
    file->Append(wide);
    const QString path = file.path();
    file.close();
    ChildProcess writer("writer", {path});
    QCOMPARE(writer.line(), QByteArray("written"));
    writer.kill();
    QVERIFY(ThingsFile::kind() == FileKind::Jet || QFileInfo(path + "-journal").size() > 0);
    const auto again = file.openAgain();
    QCOMPARE(again->OpenRecordset("Select * from Things").text("Name"), QStringLiteral("before"));
    QVERIFY(again->OpenRecordset("Select * from tblWide").Eof());
    QCOMPARE(again->checkIntegrity(), QStringList());
    QVERIFY(!QFileInfo::exists(path + "-journal"));
}

void CommitScopeTest::fullDiskLeavesTheOldValue()
{
    if (!FullDisk::IsPossible) {
        QSKIP("Nothing limits the size of a file here.");
    }
    ThingsFile file;
    const std::int32_t key = file.add("old");
    const QString sql = QStringLiteral("Select * from Things where ThingID = %1").arg(key);
    Recordset set = file->OpenRecordset(sql, RecordsetType::Dynaset);
    set.Edit();
    set.set("Name", QStringLiteral("new"));
    {
        const FullDisk disk(1024);
        QCOMPARE(errorOf([&] { set.Update(); }), 3026);
    }
    QCOMPARE(file.openAgain(true)->OpenRecordset(sql).text("Name"), QStringLiteral("old"));
    QCOMPARE(file.openAgain(true)->checkIntegrity(), QStringList());
    // The row is still in editing, so a second try can follow.
    set.Update();
    QCOMPARE(file->OpenRecordset(sql).text("Name"), QStringLiteral("new"));
}

void CommitScopeTest::fullDiskInAScopeIsReported()
{
    if (!FullDisk::IsPossible) {
        QSKIP("Nothing limits the size of a file here.");
    }
    ThingsFile file;
    file.add("old");
    bool isLost = false;
    {
        CommitScope scope(*file);
        file.add("first");
        TableDef made("tblShort");
        made.Append(TableDef::CreateField("First", FieldType::Long));
        file->Append(made);
        QVERIFY(file->OpenRecordset("Select * from tblShort").Eof());
        int error = 0;
        {
            const FullDisk disk(QFileInfo(file.path()).size() + 40960);
            // Twice as many rows each time, soon more than the page cache holds.
            for (int i = 0; i < 19 && error == 0; ++i) {
                error = errorOf([&] { file->Execute("Insert into Things (Name, Big) Select Name, Big from Things"); });
            }
            if (error == 0) {
                error = errorOf([&] { scope.commit(); });
            }
        }
        // The limit on a file's size shows as a full disk or as a failed write, depending on the file that meets it.
        QVERIFY(error == 3026 || error == 3043);
        if (ThingsFile::kind() == FileKind::Jet) {
            // The file is written at the end of the scope, so that is where the disk was full and everything was rolled back.
            QCOMPARE(rowsIn(*file), 1);
            QVERIFY(!file->tableNames().contains("tblShort"));
            QVERIFY(file.add("after") > 1);
            return;
        }
        const int later = errorOf([&] { file.add("later"); });
        // SQLite rolled back either the one row or everything; in the second case every later write must fail.
        isLost = later != 0;
        QCOMPARE(errorOf([&] { scope.commit(); }), later);
    }
    QCOMPARE(errorOf([&] { file->OpenRecordset("Select * from tblShort"); }), isLost ? 3078 : 0);
    QCOMPARE(file->tableNames().contains("tblShort"), !isLost);
    const auto again = file.openAgain(true);
    QCOMPARE(again->checkIntegrity(), QStringList());
    QCOMPARE(rowsIn(*again) == 1, isLost);
    QVERIFY(file.add("after") > 1);
}

int main(int argc, char *argv[])
{
    return ChildProcess::runTestOrRole<CommitScopeTest>(argc, argv, {{"writer", beUnfinishedWriter}});
}

#include "CommitScopeTest.moc"
