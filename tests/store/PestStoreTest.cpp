// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/SqlText.h"
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

/// Instructions and what was found, as the data class reads and writes them.
class PestStoreTest : public QObject
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

    void theListFollowsPeriodAndFilters_data()
    {
        QTest::addColumn<bool>("all");
        QTest::addColumn<bool>("completed");
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("open") << false << false << QStringList{"4", "1"};
        QTest::newRow("completed") << false << true << QStringList{"3", "2"};
        QTest::newRow("all wins over completed") << true << true << QStringList{"4", "1", "3", "2"};
    }

    void theListFollowsPeriodAndFilters()
    {
        QFETCH(bool, all);
        QFETCH(bool, completed);
        QFETCH(QStringList, keys);
        TemporaryFarm farm;
        farm.addInstruction({.issued = QDate(2026, 3, 5)});
        farm.addInstruction({.issued = QDate(2026, 3, 9), .completed = QDate(2026, 4, 1)});
        farm.addInstruction({.issued = QDate(2026, 3, 5), .completed = QDate(2026, 3, 6)});
        farm.addInstruction({.issued = QDate(2026, 3, 1)});
        farm.addInstruction({.issued = QDate(2026, 2, 28)});
        farm.addInstruction({.issued = QDate(2026, 2, 28), .completed = QDate(2026, 3, 5)});
        farm.addInstruction({.issued = QDate(2026, 3, 10)});
        Pest store(farm.session);
        farm.session.FilterAll = all;
        farm.session.FilterCompleted = completed;
        QCOMPARE(column(store.New_Get_PestTransactions(day(2026, 3, 1), day(2026, 3, 9)), "PMTransID"), keys);
        QVERIFY(store.New_Get_PestTransactions(day(2026, 3, 9), day(2026, 3, 1)).Eof());
    }

    void aBlocksRowsComeInOneSetAsTheyComeOneByOne()
    {
        TemporaryFarm farm;
        const int instruction = farm.addInstruction({.blocks = {{8, 3}, {4, 2}}, .targets = {9, 2}});
        farm.addInstruction({.blocks = {{8, 3}}, .targets = {2}});
        Pest store(farm.session);
        // A second set of zero rows, as a second save leaves it: the older row of each key counts.
        for (std::int16_t point = 1; point <= 3; ++point) {
            store.New_Add_PestData(instruction, 8, 2, point, {.PMCount = 99});
        }
        dao::Recordset rows = store.Get_PestData_for_Block_of_Transaction(instruction, 8);
        QCOMPARE(rows.RecordCount(), 9);
        QStringList order;
        QSet<QString> seen;
        for (; !rows.Eof(); rows.MoveNext()) {
            const QString keys = rows.text("PMBPunt") + '/' + rows.text("CTargetID");
            if (!seen.contains(keys)) {
                const dao::Recordset single = store.New_Get_PestData_for_Transaction(
                    instruction, 8, rows.longValue("CTargetID"), static_cast<std::int16_t>(rows.longValue("PMBPunt")));
                QCOMPARE(rows.longValue("PMDataID"), single.longValue("PMDataID"));
                QCOMPARE(single.longValue("PMCount"), 0);
                order.append(keys);
            }
            seen.insert(keys);
        }
        QCOMPARE(order, (QStringList{"1/2", "1/9", "2/2", "2/9", "3/2", "3/9"}));
        QCOMPARE(column(store.New_Get_PestData_Points_TransBlock(instruction, 8), "PMBPunt"), (QStringList{"1", "2", "3"}));
        QCOMPARE(column(store.Get_NN_PestData_Points_Transaction(instruction, 4), "PMBPunt"), (QStringList{"1", "2"}));
        QCOMPARE(store.Get_PestData_Points_Pest(9).longValue(0), 3);
        QCOMPARE(store.New_Get_PestDataMax_for_Transaction(8, 9, instruction).longValue("PMDataMaxID"), 1);
    }

    void rankingsSumTheTotalsOfTheMethod_data()
    {
        QTest::addColumn<int>("block");
        QTest::addColumn<int>("method");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("seen at all") << 0 << 1 << 0 << QStringList{"5", "6", "7"};
        QTest::newRow("highest counts, ties by key") << 0 << 1 << 1 << QStringList{"7|9", "5|4", "6|4"};
        QTest::newRow("lowest counts") << 0 << 1 << 2 << QStringList{"5|4", "6|4", "7|9"};
        QTest::newRow("one block") << 2 << 1 << 1 << QStringList{"6|4", "5|1"};
        QTest::newRow("yes answers") << 0 << 2 << 1 << QStringList{"6|8", "5|2"};
    }

    void rankingsSumTheTotalsOfTheMethod()
    {
        QFETCH(int, block);
        QFETCH(int, method);
        QFETCH(int, mode);
        QFETCH(QStringList, expected);
        TemporaryFarm farm;
        const QDate inside(2026, 5, 10);
        const int counted = farm.addInstruction({.method = 1, .issued = QDate(2025, 1, 1), .completed = inside});
        const int answered = farm.addInstruction({.method = 2, .issued = inside, .completed = inside});
        const int open = farm.addInstruction({.method = 1, .issued = inside});
        const int before = farm.addInstruction({.method = 1, .issued = inside, .completed = QDate(2026, 4, 30)});
        Pest store(farm.session);
        const auto total = [&](int instruction, int target, int ofBlock, std::int16_t count, std::int16_t yes) {
            QCOMPARE(store.New_Add_PestDataMax(instruction, target, ofBlock, {.PMCountMax = count, .PMYesMax = yes}), Pest::Done);
        };
        total(counted, 7, 1, 9, 0);
        total(counted, 5, 1, 3, 50);
        total(counted, 5, 2, 1, 0);
        total(counted, 6, 2, 4, 0);
        total(answered, 5, 1, 77, 2);
        total(answered, 6, 1, 0, 8);
        total(open, 8, 1, 100, 0);
        total(before, 8, 1, 100, 0);
        QStringList found;
        for (dao::Recordset rows =
                 store.Get_PestDataMax_for_Period_Pest_Block(block, day(2026, 5, 1), day(2026, 5, 31), method, mode);
             !rows.Eof(); rows.MoveNext()) {
            found.append(mode == 0 ? rows.text(0) : rows.text(0) + '|' + rows.text(1));
        }
        QCOMPARE(found, expected);
        if (block == 0 && method == 1 && mode == 1) {
            QCOMPARE(column(store.Get_PestDataMax_for_Period_Block(5, day(2026, 5, 1), day(2026, 5, 31), 1, 1), "BlockID"),
                     (QStringList{"1", "2"}));
            QVERIFY_THROWS_EXCEPTION(basic::RunTimeError,
                                     store.Get_PestDataMax_for_Period_Block(5, day(2026, 5, 1), day(2026, 5, 31), 1, 3));
        }
    }

    void totalsOfAPeriodDifferBetweenTheMethods()
    {
        TemporaryFarm farm;
        const QDate inside(2026, 5, 10);
        const QDate outside(2026, 7, 1);
        const auto instruction = [&](int method, QDate issued, std::optional<QDate> completed) {
            farm.addInstruction({.method = method, .issued = issued, .completed = completed, .blocks = {{1, 1}}, .targets = {2}});
        };
        instruction(1, inside.addDays(5), inside.addDays(6)); // 1
        instruction(1, inside, inside); // 2
        instruction(1, inside, outside); // 3
        instruction(1, inside, std::nullopt); // 4
        instruction(2, inside, std::nullopt); // 5
        instruction(2, inside, outside); // 6
        instruction(2, outside, inside); // 7
        Pest store(farm.session);
        const SerialDate from = day(2026, 5, 1);
        const SerialDate to = day(2026, 5, 31);
        // Counting goes by the completion date and is ordered by the issue date.
        QCOMPARE(column(store.New_Get_PestDataMax_for_Period_Pest_Block(0, 2, from, to), "tblPMTrans.PMTransID"),
                 (QStringList{"2", "1"}));
        QVERIFY(store.New_Get_PestDataMax_for_Period_Pest_Block(9, 2, from, to).Eof());
        // Yes/No goes by the issue date, and only a given block leaves out what is not completed.
        QCOMPARE(column(store.New_Get_PestDataMaxYesNo_for_Period_Pest_Block(0, 2, from, to), "tblPMTrans.PMTransID"),
                 (QStringList{"5", "6"}));
        QCOMPARE(column(store.New_Get_PestDataMaxYesNo_for_Period_Pest_Block(1, 2, from, to), "tblPMTrans.PMTransID"),
                 QStringList{"6"});
        QCOMPARE(column(store.Get_PestData_for_Block(1, 2, from, to), "tblPMData.PMTransID"), (QStringList{"2", "7", "1"}));
    }

    void oldInstructionsAreReadThroughTheSameTables()
    {
        TemporaryFarm farm;
        Pest store(farm.session);
        std::int32_t key = 0;
        QCOMPARE(store.Add_PMTrans(key, 12, 1, day(2025, 12, 31), "NA", "Busi", 6, 53, true, false), Pest::Done);
        QCOMPARE(store.Add_PestData(key, 4, 2, {.PMCount = 3}), Pest::Done);
        QCOMPARE(store.Add_PestDataMax(key, 4, {.PMCountMax = 3}), Pest::Done);
        QCOMPARE(column(store.Get_PestTransaction_For_BlockMethodYear(12, 1, 2025), "PMTransID"), QStringList{"1"});
        QVERIFY(store.Get_PestTransaction_For_BlockMethodYear(12, 1, 2026).Eof());
        QVERIFY(store.New_Get_PestTransaction_For_BlockMethodYear(12, 1, 2025).Eof());
        store.New_Add_Block_for_Transaction(key, 12, 6);
        QCOMPARE(store.New_Get_PestTransaction_For_BlockMethodYear(12, 1, 2025).longValue("PMTransIDD"), 1);
        QCOMPARE(store.Get_PestData_for_Transaction(2, 4, key).longValue("PMCount"), 3);
        QVERIFY(store.New_Get_PestData_for_Transaction(key, 12, 4, 2).Eof());
        QCOMPARE(store.Get_PestDataMax_for_Transaction(4, key).longValue("PMCountMax"), 3);
        // Fields that no table has.
        QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, store.Method_Used(key));
        QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, store.Get_Methods_Used(key, 4));
    }
};

QTEST_GUILESS_MAIN(PestStoreTest)
#include "PestStoreTest.moc"
