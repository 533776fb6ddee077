// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/clsPestMONNew.h"
#include "support/TemporaryFarm.h"

#include <QtTest>

using basic::SerialDate;
using Pest = clsPestMONNew;

namespace
{

constexpr auto PestFile = store::DatabaseFile::Pest;

SerialDate day(int year, int month, int dayOfMonth)
{
    return SerialDate::fromDate(QDate(year, month, dayOfMonth));
}

QStringList column(dao::Recordset rows, const char *field)
{
    QStringList texts;
    for (; !rows.Eof(); rows.MoveNext()) {
        texts.append(rows.text(field));
    }
    return texts;
}

QString allRows(const char *table, const char *key)
{
    return QStringLiteral("Select * from %1 order by %2").arg(QLatin1String(table), QLatin1String(key));
}

} // namespace

/// Instructions and findings, as the data class writes and deletes them.
class MonitoringWritersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewInstructionIsOpenAndHandsItsKeyBack()
    {
        TemporaryFarm farm;
        Pest store(farm.session);
        std::int32_t key = 0;
        QCOMPARE(store.New_Add_PMTrans(key, 2, day(2026, 3, 2), "", "O'Reilly", 9, true), Pest::Done);
        QCOMPARE(key, 1);
        const dao::Recordset row = store.Get_PMTrans(key);
        QCOMPARE(row.longValue("PMMethodID"), 2);
        QVERIFY(!row.isNull("PMNotes"));
        QCOMPARE(row.text("PMPerson"), QString("O'Reilly"));
        QVERIFY(row.isNull("PMTransDateCom"));
        QVERIFY(row.isNull("BlockID"));
        QVERIFY(!row.boolean("PMTransCom"));
        QVERIFY(row.boolean("PMRepeat"));

        const SerialDate withTime = SerialDate::fromDateTime(QDate(2026, 3, 4), QTime(16, 30));
        QCOMPARE(store.New_Save_PMTrans(key, 2, day(2026, 3, 2), "done", "Busi", 9, withTime, true, false), Pest::Done);
        QCOMPARE(store.Get_PMTrans(key).date("PMTransDateCom")->days(), withTime.days());
        QCOMPARE(store.New_Save_PMTrans(key, 2, day(2026, 3, 2), "done", "Busi", 9, std::nullopt, false, false), Pest::Done);
        QVERIFY(store.Get_PMTrans(key).isNull("PMTransDateCom"));

        std::int32_t missing = 55;
        QCOMPARE(store.New_Save_PMTrans(missing, 1, day(2026, 1, 1), "x", "x", 1, std::nullopt, false, false), Pest::Done);
        QCOMPARE(farm.count("tblPMTrans"), 1);
    }

    void aFailedWriteReportsItsCauseAndLeavesNothing()
    {
        TemporaryFarm farm;
        Pest store(farm.session);
        std::int32_t key = 0;
        QCOMPARE(store.New_Add_PMTrans(key, 1, day(2026, 3, 2), QString(256, 'n'), "Busi", 9, false), Pest::Failed);
        QCOMPARE(store.lastError()->number(), static_cast<int>(dao::DataErrorNumber::FieldTooSmall));
        QCOMPARE(key, 0);
        QCOMPARE(farm.count("tblPMTrans"), 0);
        QCOMPARE(store.Add_Pest_for_Trans(1, 1), Pest::Done);
        QVERIFY(!store.lastError());

        farm.session.dbPest.set(nullptr);
        farm.session.dbPest.setFailure("PestMon.mdb", "it is locked");
        QCOMPARE(store.New_Add_Pest_for_Instruction(1), Pest::Failed);
        QCOMPARE(store.lastError()->number(), static_cast<int>(basic::ErrorNumber::ObjectNotSet));
    }

    void aPairIsAddedOnceAndStaysAsItIs()
    {
        TemporaryFarm farm;
        Pest store(farm.session);
        for (const int points : {5, 9}) {
            QCOMPARE(store.New_Add_Block_for_Transaction(3, 10, static_cast<std::int16_t>(points)), Pest::Done);
            QCOMPARE(store.Add_Pest_for_Trans(3, 7), Pest::Done);
        }
        QCOMPARE(store.New_Add_Block_for_Transaction(4, 10, 2), Pest::Done);
        QCOMPARE(farm.rows(PestFile, "Select * from tblPMBlockTrans"), (QStringList{"3|10|5", "4|10|2"}));
        QCOMPARE(farm.rows(PestFile, "Select * from tblPMTarTrans"), QStringList{"1|3|7"});
        QCOMPARE(int{store.No_of_Pests(3)}, 1);
        QCOMPARE(int{store.No_of_Pests(99)}, 0);
        QCOMPARE(int{store.New_No_of_MonPoints(3, 10)}, 5);
    }

    void aDeleteRemovesTheOldestRowOnly()
    {
        TemporaryFarm farm;
        // Blocks and targets descend while keys ascend: the order of any index differs from that of the keys.
        Pest store(farm.session);
        for (int i = 20; i >= 1; --i) {
            QCOMPARE(store.New_Add_PestData(1, i, 30 - i, 1, {}), Pest::Done);
            QCOMPARE(store.New_Add_PestDataMax(1, 30 - i, i, {}), Pest::Done);
        }
        QCOMPARE(store.Delete_PMData_for_Trans(1), Pest::Done);
        QCOMPARE(store.Delete_PMDataMax_for_Trans(1), Pest::Done);
        QCOMPARE(farm.rows(PestFile, "Select Count(*), Min(PMDataID) from tblPMData"), QStringList{"19|2"});
        QCOMPARE(farm.rows(PestFile, "Select Count(*), Min(PMDataMaxID) from tblPMDataMax"), QStringList{"19|2"});
        QCOMPARE(store.Delete_PMData_for_Trans(2), Pest::Done);
        QCOMPARE(farm.count("tblPMData"), 19);

        for (const int target : {9, 4, 9}) {
            QCOMPARE(store.New_Add_Pest_for_Instruction(target), Pest::Done);
        }
        QCOMPARE(store.New_Delete_Pest_for_Instruction(9), Pest::Done);
        QCOMPARE(farm.rows(PestFile, "Select * from tblPMTPest"), (QStringList{"2|4", "3|9"}));
        QCOMPARE(store.New_Delete_All_Pests_for_Instruction(), Pest::Done);
        QCOMPARE(farm.rows(PestFile, "Select * from tblPMTPest"), QStringList{"3|9"});
        QCOMPARE(store.New_Add_Pest_for_Instruction(1), Pest::Done);
        QCOMPARE(column(store.New_Get_Pests_For_Instruction(), "PMTPestID"), (QStringList{"4", "3"}));
    }

    void eachDeleteReachesItsOwnTable_data()
    {
        using Delete = std::function<int(Pest &)>;
        QTest::addColumn<QString>("table");
        QTest::addColumn<Delete>("remove");
        const auto row = [](const char *table, const Delete &remove) { QTest::newRow(table) << QString(table) << remove; };
        row("tblPMTrans", [](Pest &store) { return store.Delete_PestMonTrans(1); });
        row("tblPMBlockTrans", [](Pest &store) { return store.New_Delete_Block_for_Transaction(1, 2); });
        row("tblPMTarTrans", [](Pest &store) { return store.New_Delete_Pest_for_Transaction(1, 3); });
        row("tblPMTBlock", [](Pest &store) { return store.New_Delete_Block_for_Instruction(2); });
        row("tblPMTPest", [](Pest &store) { return store.New_Delete_Pest_for_Instruction(3); });
        row("tblPMTempBlock", [](Pest &store) { return store.Delete_Block_for_Report(2); });
        row("tblPMTempPest", [](Pest &store) { return store.Delete_Pest_for_Report(3); });
    }

    void eachDeleteReachesItsOwnTable()
    {
        using Delete = std::function<int(Pest &)>;
        QFETCH(QString, table);
        QFETCH(Delete, remove);
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{2, 1}}, .targets = {3}});
        Pest store(farm.session);
        store.New_Add_Block_for_Instruction(2, 5);
        store.New_Add_Pest_for_Instruction(3);
        store.Add_Block_for_Report(2);
        store.Add_Pest_for_Report(3);
        const QStringList tables{"tblPMTrans",  "tblPMBlockTrans", "tblPMTarTrans",  "tblPMData",    "tblPMDataMax",
                                 "tblPMTBlock", "tblPMTPest",      "tblPMTempBlock", "tblPMTempPest"};
        QCOMPARE(remove(store), Pest::Done);
        for (const QString &one : tables) {
            QCOMPARE(qMakePair(one, farm.count(one)), qMakePair(one, one == table ? 0 : 1));
        }
    }

    void aSaveWritesWhatTheSelectorSays_data()
    {
        QTest::addColumn<int>("selector");
        QTest::addColumn<QString>("data");
        QTest::addColumn<QString>("total");
        QTest::newRow("all") << 0 << "11|12|13|True|True|True"
                             << "21|22|23|24|25|26";
        QTest::newRow("count") << 1 << "11|0|0|False|False|False"
                               << "21|0|0|0|0|0";
        QTest::newRow("in") << 2 << "0|12|0|False|False|False"
                            << "0|22|0|0|0|0";
        QTest::newRow("out") << 3 << "0|0|13|False|False|False"
                             << "0|0|23|0|0|0";
        QTest::newRow("yes") << 4 << "0|0|0|True|False|False"
                             << "0|0|0|24|0|0";
        QTest::newRow("yes in") << 5 << "0|0|0|False|True|False"
                                << "0|0|0|0|25|0";
        QTest::newRow("yes out") << 6 << "0|0|0|False|False|True"
                                 << "0|0|0|0|0|26";
        QTest::newRow("none") << 7 << "0|0|0|False|False|False"
                              << "0|0|0|0|0|0";
        QTest::newRow("below") << -1 << "0|0|0|False|False|False"
                               << "0|0|0|0|0|0";
    }

    void aSaveWritesWhatTheSelectorSays()
    {
        QFETCH(int, selector);
        QFETCH(QString, data);
        QFETCH(QString, total);
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{5, 1}}, .targets = {6}});
        Pest store(farm.session);
        std::int32_t dataKey = 1;
        std::int32_t totalKey = 1;
        QCOMPARE(store.Save_PestData(dataKey, 2, 7, 3, {11, 12, 13, true, true, true}, selector), Pest::Done);
        QCOMPARE(store.Save_PestDataMax(totalKey, 2, 7, {21, 22, 23, 24, 25, 26}, selector), Pest::Done);
        // The key fields are written whatever the selector; the block is not.
        QCOMPARE(farm.rows(PestFile, allRows("tblPMData", "PMDataID")), QStringList{"1|2|5|7|3|" + data});
        QCOMPARE(farm.rows(PestFile, allRows("tblPMDataMax", "PMDataMaxID")), QStringList{"1|2|5|7|" + total});
    }

    void onlyTheTotalIsAddedWhenItsKeyFindsNothing()
    {
        TemporaryFarm farm;
        Pest store(farm.session);
        std::int32_t dataKey = 8;
        std::int32_t totalKey = 8;
        QCOMPARE(store.Save_PestData(dataKey, 1, 2, 3, {}, 0), Pest::Done);
        QCOMPARE(farm.count("tblPMData"), 0);
        QCOMPARE(store.Save_PestDataMax(totalKey, 1, 2, {4, 0, 0, 0, 0, 0}, Pest::Count), Pest::Done);
        QCOMPARE(totalKey, 1);
        QCOMPARE(farm.rows(PestFile, allRows("tblPMDataMax", "PMDataMaxID")),
                 QStringList{"1|1|NULL|2|4|NULL|NULL|NULL|NULL|NULL"});
    }
};

QTEST_GUILESS_MAIN(MonitoringWritersTest)
#include "MonitoringWritersTest.moc"
