// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Upgrades.h"
#include "pestmon/DamagedFile.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "store/SqlText.h"
#include "support/TemporaryFarm.h"

#include <QCryptographicHash>
#include <QFile>
#include <QtTest>

#include <array>
#include <random>

using store::DatabaseFile;
using store::sqlText;

namespace
{

const QString CopyRows = QStringLiteral("Select tBlockPID, tPBlock, tBlockID, tBlock, tFlag, PBActive from tblTempBlockPlant");

QByteArray fingerprint(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

/// The refresh row by row: look up, add or edit, and at the end the flagged rows.
void refreshRowByRow(SessionContext &session)
{
    dao::Recordset source =
        session.dbMain->OpenRecordset("Select *, tblBlockPlant.BlockID as TTT from tblBlockPlant, tblBlock where "
                                      "tblBlockPlant.BlockID = tblBlock.BlockID");
    for (; !source.Eof(); source.MoveNext()) {
        dao::Recordset copy = session.dbPest->OpenRecordset(
            sqlText(u"Select * from tblTempBlockPlant where tBlockPID = ", source.longValue("BlockPID")),
            dao::RecordsetType::Dynaset);
        if (copy.Eof()) {
            copy.AddNew();
        } else {
            copy.Edit();
        }
        copy.set(u"tBlockPID", source.value("BlockPID"));
        copy.set(u"tBlockID", source.value("TTT"));
        copy.set(u"tPBlock", source.value("PBlock"));
        copy.set(u"tBlock", source.value("Block"));
        copy.set(u"tFlag", false);
        copy.set(u"PBActive", source.value("PBActive"));
        copy.Update();
    }
    dao::Recordset flagged = session.dbPest->OpenRecordset(sqlText(u"Select * from tblTempBlockPlant where tFlag = ", true),
                                                           dao::RecordsetType::Dynaset);
    for (; !flagged.Eof(); flagged.MoveNext()) {
        flagged.Edit();
        flagged.set(u"PBActive", true);
        flagged.Update();
    }
}

/// A farm and a copy in any state: plantings without block, rows flagged, duplicate, out of date, left over.
void fillAtRandom(TemporaryFarm &farm, unsigned int seed)
{
    dao::CommitScope mainScope(*farm.session.dbMain);
    dao::CommitScope pestScope(*farm.session.dbPest);
    std::mt19937 random(seed);
    const auto below = [&](unsigned int limit) { return static_cast<int>(random() % limit); };
    const std::array<dao::Value, 4> names{QString("O'Brien"), QString(), dao::Null{}, QString("élan")};
    const auto name = [&] { return names[static_cast<std::size_t>(below(4))]; };
    for (int i = 0; i < 3; ++i) {
        farm.add(u"tblBlock", {{u"BlockID", i + 1}, {u"Block", name()}, {u"FarmID", 1}, {u"active", true}});
    }
    for (int i = 0; i < 8; ++i) {
        farm.add(u"tblBlockPlant",
                 {{u"BlockPID", i + 1}, {u"BlockID", below(4) + 1}, {u"PBlock", name()}, {u"PBActive", below(2) == 0}});
    }
    for (int i = 0; i < 10; ++i) {
        farm.add(u"tblTempBlockPlant",
                 {{u"tBlockPID", below(11)},
                  {u"tPBlock", name()},
                  {u"tBlockID", below(4) + 1},
                  {u"tBlock", name()},
                  {u"tFlag", below(3) == 0},
                  {u"PBActive", below(2) == 0}});
    }
}

} // namespace

/// What every start does to the databases.
class UpgradesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCopyEqualsTheOneRefreshedRowByRow()
    {
        for (unsigned int seed = 1; seed <= 12; ++seed) {
            TemporaryFarm quick;
            TemporaryFarm expected;
            fillAtRandom(quick, seed);
            fillAtRandom(expected, seed);
            store::Update_TempBlock(quick.session);
            const dao::CommitScope oneWait(*expected.session.dbPest);
            refreshRowByRow(expected.session);
            QCOMPARE(quick.rows(DatabaseFile::Pest, CopyRows), expected.rows(DatabaseFile::Pest, CopyRows));
        }
    }

    void nothingIsWrittenWhenNothingChanged()
    {
        TemporaryFarm farm;
        const int block = farm.addBlock({.name = "Dam"});
        farm.addPlanting({.name = "a", .block = block});
        farm.addPlanting({.name = "b", .block = block, .active = false});
        farm.addInstruction({.issued = QDate(2026, 2, 2), .completed = QDate(2026, 12, 31)});
        store::Update_TempBlock(farm.session);
        store::Recalc_PMTransWeek(farm.session);
        const QByteArray before = fingerprint(farm.filePath(DatabaseFile::Pest));
        QVERIFY(!before.isEmpty());
        store::Ensure_TempBlockTable(farm.session, [](const basic::RunTimeError &) { QFAIL("no step may fail"); });
        store::Ensure_PMRepeatField(farm.session);
        store::Ensure_Indexes(farm.session);
        store::Update_TempBlock(farm.session);
        store::Recalc_PMTransWeek(farm.session);
        QCOMPARE(fingerprint(farm.filePath(DatabaseFile::Pest)), before);
    }

    void anOlderFileGetsTheTableAndTheField()
    {
        TemporaryFarm farm;
        farm.session.dbPest.set(nullptr);
        const QString older = farm.databasesPath() + "/older.mdb";
        {
            const auto database = dao::Workspace::CreateDatabase(older, store::connectText(), TemporaryFarm::kind());
            dao::TableDef instructions("tblPMTrans");
            instructions.Append(dao::TableDef::CreateField("PMTransID", dao::FieldType::Long));
            database->Append(instructions);
            dao::Recordset rows = database->OpenRecordset("Select * from tblPMTrans", dao::RecordsetType::Dynaset);
            rows.AddNew();
            rows.set(u"PMTransID", 1);
            rows.Update();
        }
        farm.session.dbPest.set(dao::Workspace::OpenDatabase(older, false, false, store::connectText()));
        farm.addPlanting({.name = "", .block = farm.addBlock({.name = "Dam"})});
        QCOMPARE(store::TestTableExists(farm.session, "tblTempBlockPlant"), QString());
        store::Ensure_TempBlockTable(farm.session, [](const basic::RunTimeError &) { QFAIL("no step may fail"); });
        QCOMPARE(store::TestTableExists(farm.session, "TBLTEMPBLOCKPLANT"), QString("TBLTEMPBLOCKPLANT"));
        store::Update_TempBlock(farm.session);
        QCOMPARE(farm.rows(DatabaseFile::Pest, CopyRows), QStringList{"1||1|Dam|False|True"});

        store::Ensure_PMRepeatField(farm.session);
        QCOMPARE(farm.rows(DatabaseFile::Pest, "Select * from tblPMTrans"), QStringList{"1|False"});
        farm.session.dbPest->Execute("UPDATE tblPMTrans SET PMRepeat = True");
        store::Ensure_PMRepeatField(farm.session);
        QCOMPARE(farm.rows(DatabaseFile::Pest, "Select * from tblPMTrans"), QStringList{"1|True"});
    }

    void anOlderFileGetsTheCurrentIndexes()
    {
        if (TemporaryFarm::kind() == dao::FileKind::Jet) {
            QSKIP("the mirror of a Jet file gets them at every start");
        }
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 3}}, .targets = {1, 2}});
        const auto indexes = [&] {
            QStringList all;
            for (const char *table : {"tblPMData", "tblPMDataMax"}) {
                const dao::TableDef definition = farm.session.dbPest->tableDef(table);
                for (const dao::Index &index : definition.Indexes()) {
                    all.append(QStringList(index.fields.begin(), index.fields.end()).join(u','));
                }
            }
            return all;
        };
        const QStringList today = indexes();
        const QString data = "Select * from tblPMData";
        const QStringList rows = farm.rows(DatabaseFile::Pest, data);
        farm.session.dbPest->removeIndex("tblPMData", "tblPMData_CTargetID_BlockID_PMBPunt");
        farm.session.dbPest->removeIndex("tblPMDataMax", "tblPMDataMax_PMTransID_CTargetID_BlockID_PMCountMax_PMYesMax");
        farm.session.dbPest->removeIndex("tblPMDataMax", "tblPMDataMax_BlockID_CTargetID");
        for (const std::vector<QString> &fields :
             std::vector<std::vector<QString>>{{"PMTransID", "CTargetID", "BlockID"}, {"CTargetID", "BlockID"}}) {
            const QString name = "tblPMDataMax_" + QStringList(fields.begin(), fields.end()).join(u'_');
            farm.session.dbPest->Append("tblPMDataMax", dao::Index{name, fields, false, false});
        }
        farm.session.dbPest->Append("tblPMData",
                                    dao::Index{"tblPMData_CTargetID_PMBPunt", {"CTargetID", "PMBPunt"}, false, false});
        QVERIFY(indexes() != today);
        // A file that cannot be written stays as it is, and the caller learns why.
        farm.close();
        farm.open(true);
        QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, store::Ensure_Indexes(farm.session));
        QVERIFY(indexes() != today);
        farm.close();
        farm.open();
        store::Ensure_Indexes(farm.session);
        QCOMPARE(indexes(), today);
        QCOMPARE(farm.rows(DatabaseFile::Pest, data), rows);
        QVERIFY(farm.session.dbPest->checkIntegrity().isEmpty());
        const QByteArray before = fingerprint(farm.filePath(DatabaseFile::Pest));
        store::Ensure_Indexes(farm.session);
        QCOMPARE(fingerprint(farm.filePath(DatabaseFile::Pest)), before);
    }

    void aStepThatFailsIsReportedOnce()
    {
        TemporaryFarm farm;
        farm.close();
        const QString empty = farm.databasesPath() + "/empty.mdb";
        dao::Workspace::CreateDatabase(empty, store::connectText());
        farm.session.dbPest.set(dao::Workspace::OpenDatabase(empty, false, true, store::connectText()));
        QList<int> reported;
        store::Ensure_TempBlockTable(farm.session, [&](const basic::RunTimeError &error) { reported.append(error.number()); });
        QCOMPARE(reported, QList<int>{static_cast<int>(dao::DataErrorNumber::ReadOnly)});
        store::Ensure_PMRepeatField(farm.session);
    }

    void withoutTheDatabaseOnlyTheRefreshFails()
    {
        TemporaryFarm farm;
        farm.session.dbPest.set(nullptr);
        farm.session.dbPest.setFailure("PestMon.mdb", "it is locked");
        QCOMPARE(store::TestTableExists(farm.session, "tblTempBlockPlant"), QString("tblTempBlockPlant"));
        store::Ensure_TempBlockTable(farm.session, [](const basic::RunTimeError &) { QFAIL("no box for this"); });
        store::Ensure_PMRepeatField(farm.session);
        try {
            store::Update_TempBlock(farm.session);
            QFAIL("an error was expected");
        } catch (const basic::RunTimeError &error) {
            QCOMPARE(error.number(), static_cast<int>(basic::ErrorNumber::ObjectNotSet));
            QVERIFY(error.description().contains("PestMon.mdb"));
        }
    }

    void aWrongValueIsNamedOrReplaced()
    {
        if (TemporaryFarm::kind() == dao::FileKind::Jet) {
            QSKIP("a Jet field holds values of its type alone");
        }
        TemporaryFarm farm;
        farm.addInstruction({.completed = QDate(2026, 1, 8)});
        farm.addInstruction({.completed = QDate(2026, 1, 15)});
        farm.addInstruction({.completed = QDate(2026, 1, 22)});
        const QString pest = farm.filePath(DatabaseFile::Pest);
        // A stored week is only written, an empty date is none, and a text may be a date.
        QVERIFY(changeFile(pest,
                           "UPDATE tblPMTrans SET PMTransWeek = 'x' WHERE PMTransID = 1;"
                           "UPDATE tblPMTrans SET PMTransDateCom = '' WHERE PMTransID = 2;"
                           "UPDATE tblPMTrans SET PMTransDateCom = '2026/02/05', PMTransWeek = 99999 WHERE PMTransID = 3"));
        store::Recalc_PMTransWeek(farm.session);
        QCOMPARE(farm.rows(DatabaseFile::Pest, "Select PMTransWeek from tblPMTrans order by PMTransID"),
                 (QStringList{"2", "9", "6"}));
        QVERIFY(changeFile(pest, "UPDATE tblPMTrans SET PMTransDateCom = 'soon' WHERE PMTransID = 2"));
        try {
            store::Recalc_PMTransWeek(farm.session);
            QFAIL("an error was expected");
        } catch (const basic::RunTimeError &error) {
            QCOMPARE(error.number(), 13);
            for (const char *part : {"PestMon.mdb", "tblPMTrans", "row 2", "PMTransDateCom", "soon"}) {
                QVERIFY2(error.description().contains(part), qPrintable(error.description()));
            }
        }
        farm.addPlanting({.name = "a", .block = farm.addBlock({})});
        QVERIFY(changeFile(farm.filePath(DatabaseFile::Main), "UPDATE tblBlockPlant SET PBlock = printf('%060d', 1)"));
        try {
            store::Update_TempBlock(farm.session);
            QFAIL("an error was expected");
        } catch (const basic::RunTimeError &error) {
            QVERIFY2(error.description().contains("row 1 of tblBlockPlant in ZN4.mdb"), qPrintable(error.description()));
        }
    }

    void weeksFollowTheDateOfCompletion()
    {
        TemporaryFarm farm;
        const auto add = [&](const dao::Value &completed, const dao::Value &week) {
            farm.add(u"tblPMTrans", {{u"PMTransDateCom", completed}, {u"PMTransWeek", week}, {u"PMTransCom", true}});
        };
        const auto date = [](int month, int day) { return basic::SerialDate::fromDate(QDate(2024, month, day)); };
        add(date(1, 1), 9);
        add(date(1, 7), 9);
        add(date(1, 8), 9);
        add(date(12, 31), 1);
        add(basic::SerialDate::fromDateTime(QDate(2024, 1, 7), QTime(23, 59, 59)), dao::Null{});
        add(basic::SerialDate(), 7); // the zero date counts as a date here
        add(dao::Null{}, 44);
        add(dao::Null{}, dao::Null{});
        store::Recalc_PMTransWeek(farm.session);
        QCOMPARE(farm.rows(DatabaseFile::Pest, "Select PMTransWeek from tblPMTrans order by PMTransID"),
                 (QStringList{"1", "1", "2", "53", "1", "52", "44", "NULL"}));
    }
};

QTEST_GUILESS_MAIN(UpgradesTest)
#include "UpgradesTest.moc"
