// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThingsFile.h"

#include "platform/dao/CommitScope.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <functional>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace dao;

namespace
{

void change(const QString &path, const std::function<void(QFile &)> &action)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    action(file);
}

void putAt(QFile &file, qint64 at, const QByteArray &bytes)
{
    QVERIFY(file.seek(at));
    QCOMPARE(file.write(bytes), bytes.size());
}

#ifdef Q_OS_UNIX
/// Gives a folder to an ordinary user and works as that user, where the tests run as one who may do everything.
class OrdinaryUser
{
public:
    explicit OrdinaryUser(const QString &folder) : isRoot_(::geteuid() == 0)
    {
        constexpr uid_t Nobody = 65534;
        for (const QString &path : {folder, folder + "/Things.mdb"}) {
            QVERIFY(!isRoot_ || ::chown(QFile::encodeName(path).constData(), Nobody, Nobody) == 0);
        }
        QVERIFY(!isRoot_ || ::seteuid(Nobody) == 0);
    }
    ~OrdinaryUser()
    {
        if (isRoot_ && ::seteuid(0) != 0) {
            qFatal("the test cannot go on as another user");
        }
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool isRoot_;
};
#endif

} // namespace

class WorkspaceTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void filesThatCannotBeOpened_data();
    void filesThatCannotBeOpened();
    void wrongPassword();
    void missingFilesAndFolders();
    void damageInsideIsFound();
    void theFileAloneHoldsEverything();
    void definitionsComeBack();
    void aFieldIsAddedToOldRows();
    void lockedByAnother();
    void readOnlyReadsButDoesNotWrite();
    void missingPermissions();
    void aMovedFileIsNotWritten();
    void copyIsOfOneMoment();
    void anExistingFileIsNeverReplaced();
};

void WorkspaceTest::filesThatCannotBeOpened_data()
{
    using Damage = std::function<void(QFile &)>;
    QTest::addColumn<Damage>("damage");
    QTest::addColumn<int>("error");
    const auto row = [](const char *name, const Damage &damage, int error) { QTest::newRow(name) << damage << error; };
    row(
        "whole", [](QFile &) {}, 0);
    row(
        "empty", [](QFile &file) { file.resize(0); }, 3049);
    row(
        "first bytes only", [](QFile &file) { file.resize(50); }, 3049);
    row(
        "last page missing", [](QFile &file) { file.resize(file.size() - 4096); }, 3049);
    row(
        "first bytes changed", [](QFile &file) { putAt(file, 0, "x"); }, 3343);
    row(
        "schema overwritten", [](QFile &file) { putAt(file, 100, QByteArray(3000, '\x55')); }, 3049);
    row(
        "of another program", [](QFile &file) { putAt(file, 68, "abcd"); }, 3343);
    row(
        "Jet file", [](QFile &file) { putAt(file, 0, QByteArray("\0\1\0\0Standard Jet DB\0", 20)); }, 3343);
    row(
        "noise", [](QFile &file) { putAt(file, 0, QByteArray(file.size(), 'z')); }, 3343);
}

void WorkspaceTest::filesThatCannotBeOpened()
{
    QFETCH(std::function<void(QFile &)>, damage);
    ThingsFile file;
    file.close();
    change(file.path(), damage);
    QTEST(errorOf([&] { file.openAgain(); }), "error");
}

void WorkspaceTest::wrongPassword()
{
    ThingsFile file;
    file.close();
    for (const char *connect : {";pwd=Secret", ";pwd=", "", ";pwd=secret "}) {
        QCOMPARE(errorOf([&] { Workspace::OpenDatabase(file.path(), false, false, QString::fromLatin1(connect)); }), 3031);
    }
    QVERIFY(Workspace::OpenDatabase(file.path(), false, false, ";PWD=secret;"));
}

void WorkspaceTest::missingFilesAndFolders()
{
    const ThingsFile file;
    const QString missing = file.folder() + "/Gone.mdb";
    QCOMPARE(errorOf([&] { Workspace::OpenDatabase(missing, false, false, ";pwd=secret"); }), 3024);
    QVERIFY(!QFile::exists(missing));
    QCOMPARE(errorOf([&] { Workspace::OpenDatabase(file.folder(), false, false, ";pwd=secret"); }), 3051);
    QVERIFY(Workspace::OpenDatabase(file.folder() + "\\THINGS.mdb", false, false, ";pwd=secret"));
}

void WorkspaceTest::damageInsideIsFound()
{
    ThingsFile file;
    {
        CommitScope scope(*file);
        for (int i = 0; i < 2000; ++i) {
            file.add(QString::number(i), i);
        }
        // Enough for several reports.
        for (int times = 0; times < 3; ++times) {
            file->Execute("Insert into Things (Name, Big) Select Name, Big from Things");
        }
        scope.commit();
    }
    // Keys of a file from elsewhere may count below zero.
    for (const char *keys : {"ThingID", "ThingID - 20000"}) {
        file->Execute(QStringLiteral("Update Things set ThingID = ") + keys);
        int lastPercent = 0;
        const auto rises = [&](int percent) { lastPercent = percent >= lastPercent ? percent : 1000; };
        QCOMPARE(file->checkIntegrity(rises), QStringList());
        QCOMPARE(lastPercent, 100);
    }
    file.close();
    change(file.path(), [](QFile &stored) { putAt(stored, stored.size() - 3 * 4096, QByteArray(4096, '\x2A')); });
    const auto again = file.openAgain();
    QVERIFY(!again->checkIntegrity().isEmpty());
    QCOMPARE(errorOf([&] { again->OpenRecordset("Select * from Things where Precise = 1"); }), 3049);
}

void WorkspaceTest::theFileAloneHoldsEverything()
{
    ThingsFile file;
    file.add("a");
    QCOMPARE(QDir(file.folder()).entryList(QDir::Files), QStringList{"Things.mdb"});
}

void WorkspaceTest::definitionsComeBack()
{
    ThingsFile file;
    TableDef made("tblMany");
    made.Append(TableDef::CreateField("First", FieldType::Long));
    made.Append(TableDef::CreateField("Second", FieldType::Text, 20));
    made.Append(Index{"PrimaryKey", {"First", "Second"}, true, true});
    made.Append(Index{"Second", {"second"}, false, false});
    file->Append(made);
    QCOMPARE(errorOf([&] { file->Append(TableDef(made)); }), 3010);
    QCOMPARE(errorOf([&] { file->tableDef("tblNone"); }), 3265);
    file.close();
    const auto again = file.openAgain();
    QCOMPARE(again->tableNames(), QStringList({"tblMany", "Things"}));
    const TableDef many = again->tableDef("TBLMANY");
    QCOMPARE(many.Name(), QStringLiteral("tblMany"));
    QCOMPARE(many.findField(u"second")->size, 20);
    QCOMPARE(many.Indexes().size(), std::size_t{2});
    QVERIFY(many.Indexes().front().primary);
    QCOMPARE(many.Indexes().back().name, QStringLiteral("Second"));
    const TableDef things = again->tableDef("Things");
    QVERIFY(things.Fields().front().autoIncrement);
    QVERIFY(!things.findField(u"Code")->allowZeroLength);
    const std::vector types{FieldType::Long,   FieldType::Text,   FieldType::Text, FieldType::Integer, FieldType::Long,
                            FieldType::Single, FieldType::Double, FieldType::Date, FieldType::Boolean};
    for (std::size_t i = 0; i < types.size(); ++i) {
        QVERIFY(things.Fields()[i].type == types[i]);
    }
}

void WorkspaceTest::aFieldIsAddedToOldRows()
{
    ThingsFile file;
    file.add("a");
    const auto other = file.openAgain();
    QCOMPARE(other->OpenRecordset("Select * from Things").fieldCount(), 9);
    file->Append("things", TableDef::CreateField("PMRepeat", FieldType::Boolean));
    file->Append("Things", TableDef::CreateField("Note", FieldType::Text, 5));
    QCOMPARE(errorOf([&] { file->Append("Things", TableDef::CreateField("pmrepeat", FieldType::Long)); }), 3191);
    QCOMPARE(errorOf([&] { file->Append("Nothing", TableDef::CreateField("x", FieldType::Long)); }), 3265);
    const Recordset set = file->OpenRecordset("Select * from Things where PMRepeat = False");
    QVERIFY(!set.isNull("PMRepeat"));
    QVERIFY(set.isNull("Note"));
    QVERIFY(other->tableDef("Things").findField(u"Note") != nullptr);
    QVERIFY(other->OpenRecordset("Select * from Things").hasField("PMRepeat"));
}

void WorkspaceTest::lockedByAnother()
{
    ThingsFile file;
    file.add("a");
    const auto other = file.openAgain();
    {
        CommitScope scope(*other);
        other->Execute("Update Things set Big = 5");
        QCOMPARE(errorOf([&] { file->Execute("Update Things set Big = 6"); }), 3260);
        QCOMPARE(file->OpenRecordset("Select * from Things").longValue("Big"), 0);
        scope.commit();
    }
    QCOMPARE(file->Execute("Update Things set Big = 6"), 1);
    file.close();
    const auto exclusive = [&] { return Workspace::OpenDatabase(file.path(), true, false, ";pwd=secret"); };
    const auto alone = exclusive();
    QCOMPARE(errorOf([&] { file.openAgain(); }), 3045);
}

void WorkspaceTest::readOnlyReadsButDoesNotWrite()
{
    ThingsFile file;
    file.add("a");
    const auto reader = file.openAgain(true);
    Recordset set = reader->OpenRecordset("Select * from Things", RecordsetType::Dynaset);
    QCOMPARE(set.text("Name"), QStringLiteral("a"));
    set.Edit();
    set.set("Name", QStringLiteral("b"));
    QCOMPARE(errorOf([&] { set.Update(); }), 3027);
    CommitScope scope(*reader);
    QCOMPARE(errorOf([&] { reader->Execute("Delete from Things"); }), 3027);
    scope.commit();
    QCOMPARE(file->OpenRecordset("Select * from Things").RecordCount(), 1);
}

void WorkspaceTest::missingPermissions()
{
    ThingsFile file;
    file.add("a");
    file.close();
#ifdef Q_OS_UNIX
    const OrdinaryUser user(file.folder());
#endif
    const auto writeError = [&] {
        const auto opened = file.openAgain();
        return opened->OpenRecordset("Select * from Things").RecordCount() == 1
            ? errorOf([&] { opened->Execute("Delete from Things"); })
            : -1;
    };
    QVERIFY(QFile::setPermissions(file.path(), QFile::ReadOwner));
#ifdef Q_OS_WIN
    if (QFile(file.path()).open(QIODevice::ReadWrite)) {
        QSKIP("This user may write a file that is read-only.");
    }
#endif
    QCOMPARE(writeError(), 3027);
#ifdef Q_OS_UNIX
    QVERIFY(QFile::setPermissions(file.path(), QFile::Permissions()));
    QCOMPARE(errorOf([&] { file.openAgain(); }), 3051);
    QVERIFY(QFile::setPermissions(file.path(), QFile::ReadOwner | QFile::WriteOwner));
    QVERIFY(QFile::setPermissions(file.folder(), QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(writeError(), 3027);
    QVERIFY(QFile::setPermissions(file.folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
#else
    QVERIFY(QFile::setPermissions(file.path(), QFile::ReadOwner | QFile::WriteOwner));
#endif
    QCOMPARE(writeError(), 0);
}

void WorkspaceTest::aMovedFileIsNotWritten()
{
    ThingsFile file;
    file.add("a");
    const QString moved = file.folder() + "/moved.mdb";
#ifdef Q_OS_WIN
    QVERIFY2(!QFile::rename(file.path(), moved), "an open file cannot be moved");
    return;
#endif
    for (const bool isReplaced : {false, true}) {
        QVERIFY(isReplaced ? QFile::copy(moved, file.path()) : QFile::rename(file.path(), moved));
        try {
            file->Execute("Update Things set Big = 7");
            QFAIL("the file is gone");
        } catch (const DataError &error) {
            QCOMPARE(error.number(), 3027);
            QVERIFY2(error.description().contains("was moved or replaced"), qPrintable(error.description()));
        }
    }
    QCOMPARE(QDir(file.folder()).entryList(QDir::Files), (QStringList{"moved.mdb", "Things.mdb"}));
    const auto again = Workspace::OpenDatabase(moved, false, true, ";pwd=secret");
    QCOMPARE(again->OpenRecordset("Select * from Things").longValue("Big"), 0);
}

void WorkspaceTest::copyIsOfOneMoment()
{
    ThingsFile file;
    file.add("a");
    const QString copy = file.folder() + "/Copy.mdb";
    const auto other = file.openAgain();
    {
        CommitScope scope(*file);
        file.add("b");
        file->backupTo(copy);
        QCOMPARE(errorOf([&] { other->backupTo(copy); }), 75);
        scope.commit();
    }
    QCOMPARE(QDir(file.folder()).entryList(QDir::Files), QStringList({"Copy.mdb", "Things.mdb"}));
    const auto copied = Workspace::OpenDatabase(copy, false, false, ";pwd=secret");
    QCOMPARE(copied->OpenRecordset("Select * from Things").RecordCount(), 1);
    QCOMPARE(copied->checkIntegrity(), QStringList());
    QCOMPARE(errorOf([&] { file->backupTo(file.folder() + "/gone/Copy.mdb"); }), 75);
}

void WorkspaceTest::anExistingFileIsNeverReplaced()
{
    ThingsFile file;
    QCOMPARE(errorOf([&] { Workspace::CreateDatabase(file.path(), ";pwd=other"); }), 75);
    QCOMPARE(errorOf([&] { Workspace::CreateDatabase(file.folder() + "/gone/New.mdb", ""); }), 75);
    QVERIFY(file.openAgain());
}

QTEST_GUILESS_MAIN(WorkspaceTest)
#include "WorkspaceTest.moc"
