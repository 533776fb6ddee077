// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/clsPestMONNew.h"
#include "support/TemporaryFarm.h"

#include <QtTest>

using basic::SerialDate;
using Pest = clsPestMONNew;

namespace
{

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

} // namespace

/// Instructions and findings, as the data class lists them.
class MonitoringQueriesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

    void instructionsOfOneBlockAreReadThroughTheSameTables()
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

QTEST_GUILESS_MAIN(MonitoringQueriesTest)
#include "MonitoringQueriesTest.moc"
