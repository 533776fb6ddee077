// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThingsFile.h"

#include <QTest>

#include <limits>

using namespace dao;
using basic::SerialDate;

namespace
{
Recordset all(ThingsFile &file, RecordsetType type = RecordsetType::Dynaset)
{
    return file->OpenRecordset(QStringLiteral("Select * from Things"), type);
}
} // namespace

class RecordsetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyTypeComesBack();
    void fieldsRefuseWhatTheyCannotHold_data();
    void fieldsRefuseWhatTheyCannotHold();
    void nullReadsAsNothing();
    void theAutonumberIsThereAtOnceAndNeverTwice();
    void moving();
    void aDeletedRowIsNoticed();
    void deletingWhileWalking();
    void editingSeesWhatOthersWrote();
    void rowsReadAgainRetainTheirTexts();
    void aFailedUpdateLeavesTheRowInEditing();
    void setsThatCannotWrite();
    void anActionIsNeverASet();
    void equalFieldNamesAreDistinguished();
    void sumsBeyondLong();
    void textSortsAndComparesWithoutCaseAndAccents();
};

void RecordsetTest::everyTypeComesBack()
{
    ThingsFile file;
    Recordset set = all(file);
    set.AddNew();
    set.set("NAME", QString::fromUtf8("Mör'ë \"x\""));
    set.set("Small", -32768);
    set.set("Big", 2147483647.4);
    set.set("Share", 1.1);
    set.set("Precise", 0.1 + 0.2);
    set.set("Day", SerialDate(-1.25));
    set.set("Flag", true);
    set.Update();
    file.close();
    const auto again = file.openAgain();
    Recordset read = again->OpenRecordset("select * from things");
    QCOMPARE(read.text("Name"), QString::fromUtf8("Mör'ë \"x\""));
    QCOMPARE(read.longValue("small"), -32768);
    QCOMPARE(read.longValue("Big"), 2147483647);
    QCOMPARE(read.number("Share"), static_cast<double>(1.1F));
    QCOMPARE(read.text("Share"), QStringLiteral("1.1"));
    QCOMPARE(read.number("Precise"), 0.1 + 0.2);
    QCOMPARE(read.date("Day")->days(), -1.25);
    QVERIFY(std::get<bool>(read.value("Flag")));
    QCOMPARE(read.longValue("Flag"), -1);
    QCOMPARE(errorOf([&] { read.longValue("Name"); }), 13);
    QCOMPARE(errorOf([&] { read.text("Day"); }), 13);
    QCOMPARE(errorOf([&] { read.text("Colour"); }), 3265);
}

void RecordsetTest::fieldsRefuseWhatTheyCannotHold_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<Value>("value");
    QTest::addColumn<int>("error");
    const auto row = [](const char *name, const char *field, const Value &value, int error) {
        QTest::newRow(name) << QString::fromLatin1(field) << value << error;
    };
    row("text as long as the field", "Name", QString(10, u'x'), 0);
    row("characters, not bytes", "Name", QString(10, u'é'), 0);
    row("text too long", "Name", QString(11, u'x'), 3163);
    row("empty text", "Name", QString(), 0);
    row("empty text where none may be", "Code", QString(), 3315);
    row("Integer beyond 16 bits", "Small", 32768, 6);
    row("Integer from a rounded half", "Small", 32767.5, 6);
    row("Long beyond 32 bits", "Big", 2147483648.0, 6);
    row("Long of no number", "Big", std::numeric_limits<double>::quiet_NaN(), 6);
    row("Single beyond 32 bits", "Share", 1e39, 6);
    row("text in a number", "Big", QStringLiteral("12"), 3421);
    row("number in a text", "Name", 12, 3421);
    row("number in a date", "Day", 12, 3421);
    row("text in a Boolean", "Flag", QStringLiteral("True"), 3421);
    row("null", "Big", Null{}, 0);
}

void RecordsetTest::fieldsRefuseWhatTheyCannotHold()
{
    QFETCH(QString, field);
    QFETCH(Value, value);
    ThingsFile file;
    Recordset set = all(file);
    set.AddNew();
    QTEST(errorOf([&] { set.set(field, value); }), "error");
}

void RecordsetTest::nullReadsAsNothing()
{
    ThingsFile file;
    Recordset set = all(file);
    set.AddNew();
    QVERIFY(set.isNull("Name"));
    set.set("Flag", Null{});
    set.Update();
    const Recordset read = all(file);
    QVERIFY(read.isNull("Name") && read.isNull("Day") && read.isNull("Big"));
    QCOMPARE(read.text("Name"), QString());
    QCOMPARE(read.longValue("Big"), 0);
    QVERIFY(!read.date("Day"));
    QVERIFY(!read.isNull("Flag"));
    QVERIFY(!read.boolean("Flag"));
}

void RecordsetTest::theAutonumberIsThereAtOnceAndNeverTwice()
{
    ThingsFile file;
    Recordset set = all(file);
    set.AddNew();
    QCOMPARE(set.longValue("ThingID"), 1);
    set.CancelUpdate();
    const std::int32_t second = file.add("b");
    QCOMPARE(second, 2);
    file->Execute("Delete from Things");
    QCOMPARE(file.add("c"), 3);
    // A row from elsewhere retains its key, and numbering continues after it.
    set.AddNew();
    set.set("ThingID", 40);
    set.Update();
    QCOMPARE(file.add("d"), 41);
    file->Execute("Delete from Things");
    file.close();
    const auto again = file.openAgain();
    Recordset later = again->OpenRecordset("Select * from Things", RecordsetType::Dynaset);
    later.AddNew();
    QCOMPARE(later.longValue("ThingID"), 42);
}

void RecordsetTest::moving()
{
    ThingsFile file;
    Recordset empty = all(file);
    QVERIFY(empty.Bof() && empty.Eof());
    QCOMPARE(errorOf([&] { empty.MoveFirst(); }), 3021);
    QCOMPARE(errorOf([&] { empty.MoveNext(); }), 3021);
    QCOMPARE(errorOf([&] { empty.text("Name"); }), 3021);
    file.add("a");
    file.add("b");
    Recordset set = all(file, RecordsetType::Snapshot);
    QCOMPARE(set.RecordCount(), 2);
    set.MoveLast();
    QCOMPARE(set.text("Name"), QStringLiteral("b"));
    set.MoveNext();
    QVERIFY(set.Eof());
    QCOMPARE(errorOf([&] { set.text("Name"); }), 3021);
    QCOMPARE(errorOf([&] { set.MoveNext(); }), 3021);
    set.MovePrevious();
    QCOMPARE(set.text("Name"), QStringLiteral("b"));
    set.MoveFirst();
    set.MovePrevious();
    QVERIFY(set.Bof() && !set.Eof());
    set.Close();
    QCOMPARE(errorOf([&] { set.text("Name"); }), 3021);
}

void RecordsetTest::aDeletedRowIsNoticed()
{
    ThingsFile file;
    file.add("a");
    file.add("b");
    Recordset set = all(file);
    file->Execute("Delete from Things where ThingID = 1");
    QCOMPARE(errorOf([&] { set.text("Name"); }), 3167);
    QCOMPARE(errorOf([&] { set.Edit(); }), 3167);
    QCOMPARE(errorOf([&] { set.Delete(); }), 3167);
    set.MoveNext();
    set.Edit();
    set.set("Name", QStringLiteral("c"));
    if (ThingsFile::kind() == FileKind::Jet) {
        // No other program can write while this one has the file open.
        file->Execute("Delete from Things");
    } else {
        file.openAgain()->Execute("Delete from Things");
    }
    QCOMPARE(errorOf([&] { set.Update(); }), 3167);
}

void RecordsetTest::deletingWhileWalking()
{
    ThingsFile file;
    for (int i = 0; i < 5; ++i) {
        file.add(QString::number(i));
    }
    Recordset set = all(file);
    set.MoveNext();
    set.Delete();
    QCOMPARE(errorOf([&] { set.text("Name"); }), 3167);
    QCOMPARE(set.RecordCount(), 4);
    set.MovePrevious();
    QCOMPARE(set.text("Name"), QStringLiteral("0"));
    set.MoveNext();
    QCOMPARE(set.text("Name"), QStringLiteral("2"));
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
        set.Delete();
    }
    QCOMPARE(set.RecordCount(), 0);
    QVERIFY(all(file).Eof());
}

void RecordsetTest::editingSeesWhatOthersWrote()
{
    ThingsFile file;
    file.add("a", 1);
    Recordset first = all(file);
    Recordset second = all(file);
    const Recordset snapshot = all(file, RecordsetType::Snapshot);
    second.Edit();
    second.set("Big", 2);
    second.Update();
    QCOMPARE(first.longValue("Big"), 2);
    QCOMPARE(snapshot.longValue("Big"), 1);
    if (ThingsFile::kind() == FileKind::Jet) {
        file->Execute("Update Things set Big = 3");
    } else {
        file.openAgain()->Execute("Update Things set Big = 3");
    }
    first.Edit();
    QCOMPARE(first.longValue("Big"), 3);
    // A value that is there already by now is not written, any other is.
    first.set("Big", 3);
    first.set("Name", QStringLiteral("z"));
    QCOMPARE(first.text("Name"), QStringLiteral("z"));
    first.Update();
    QCOMPARE(file.openAgain(true)->OpenRecordset("Select * from Things").text("Name"), QStringLiteral("z"));
}

// Reading rows again any number of times never mixes their texts.
void RecordsetTest::rowsReadAgainRetainTheirTexts()
{
    ThingsFile file;
    file.add("left");
    file.add("middle");
    file.add("right");
    Recordset set = all(file);
    for (int round = 0; round < 40; ++round) {
        const QString name(round % 11, u'x');
        file->Execute(QStringLiteral("Update Things set Name = '%1' where ThingID = 2").arg(name));
        set.MoveFirst();
        QCOMPARE(set.text("Name"), QStringLiteral("left"));
        set.MoveNext();
        set.Edit();
        QCOMPARE(set.text("Name"), name);
        set.MoveNext();
        QCOMPARE(set.text("Name"), QStringLiteral("right"));
    }
}

void RecordsetTest::aFailedUpdateLeavesTheRowInEditing()
{
    ThingsFile file;
    file.add("a");
    Recordset set = all(file);
    set.AddNew();
    set.set("ThingID", 1);
    set.set("Name", QStringLiteral("b"));
    QCOMPARE(errorOf([&] { set.Update(); }), 3022);
    set.set("ThingID", 7);
    set.Update();
    QCOMPARE(all(file).RecordCount(), 2);
    QCOMPARE(errorOf([&] { set.Update(); }), 3020);
    QCOMPARE(errorOf([&] { set.set("Name", QStringLiteral("c")); }), 3020);
}

void RecordsetTest::setsThatCannotWrite()
{
    ThingsFile file;
    file.add("a");
    Recordset snapshot = all(file, RecordsetType::Snapshot);
    QCOMPARE(errorOf([&] { snapshot.AddNew(); }), 3027);
    QCOMPARE(errorOf([&] { snapshot.Edit(); }), 3027);
    QCOMPARE(errorOf([&] { snapshot.Delete(); }), 3027);
    Recordset joined = file->OpenRecordset("Select * from Things a, Things b", RecordsetType::Dynaset);
    QCOMPARE(errorOf([&] { joined.Edit(); }), 3027);
    Recordset counted = file->OpenRecordset("Select Count(*) from Things", RecordsetType::Dynaset);
    QCOMPARE(counted.longValue(0), 1);
    QCOMPARE(errorOf([&] { counted.AddNew(); }), 3027);
}

void RecordsetTest::anActionIsNeverASet()
{
    ThingsFile file;
    file.add("a", 1);
    const QString action = QStringLiteral("Update Things set Big = Big + 1");
    const QString select = QStringLiteral("Select Big from Things");
    file->Execute(action);
    QCOMPARE(errorOf([&] { file->OpenRecordset(action); }), 3075);
    QCOMPARE(file->OpenRecordset(select).longValue(0), 2);
    QCOMPARE(errorOf([&] { file->Execute(select); }), 3075);
}

void RecordsetTest::equalFieldNamesAreDistinguished()
{
    ThingsFile file;
    file.add("a", 2);
    file.add("b", 1);
    const Recordset set =
        file->OpenRecordset("Select * from Things, Things as Other where Things.Big = Other.ThingID order by Things.ThingID");
    QCOMPARE(set.text("Name"), QStringLiteral("a"));
    QCOMPARE(set.text("things.name"), QStringLiteral("a"));
    QCOMPARE(set.text("Other.Name"), QStringLiteral("b"));
    QVERIFY(!set.hasField("Other.Colour"));
}

void RecordsetTest::sumsBeyondLong()
{
    ThingsFile file;
    file.add("a", 2000000000);
    file.add("b", 2000000000);
    const Recordset set = file->OpenRecordset("Select Sum(Big) as Total, Max(Big) from Things");
    QCOMPARE(std::get<double>(set.value("Total")), 4e9);
    QCOMPARE(set.text("Total"), QStringLiteral("4000000000"));
    QCOMPARE(std::get<std::int32_t>(set.value(1)), 2000000000);
    QCOMPARE(errorOf([&] { set.longValue("Total"); }), 6);
}

void RecordsetTest::textSortsAndComparesWithoutCaseAndAccents()
{
    ThingsFile file;
    for (const char *name : {"zulu", "co-op", "Éclair", "coop", "eben", "COOP"}) {
        file.add(QString::fromUtf8(name));
    }
    QStringList names;
    for (Recordset set = file->OpenRecordset("Select Name from Things order by Name"); !set.Eof(); set.MoveNext()) {
        names.push_back(set.text(0));
    }
    QCOMPARE(names, QStringList({"coop", "COOP", "co-op", "eben", QString::fromUtf8("Éclair"), "zulu"}));
    QCOMPARE(file->OpenRecordset("Select * from Things where Name = 'ECLAIR'").RecordCount(), 1);
    QCOMPARE(file->OpenRecordset("Select * from Things where 'Coop' = Name").RecordCount(), 2);
}

QTEST_GUILESS_MAIN(RecordsetTest)
#include "RecordsetTest.moc"
