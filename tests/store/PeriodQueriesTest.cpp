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

/// Rankings and totals of a period.
class PeriodQueriesTest : public QObject
{
    Q_OBJECT

    static QString pointOf(const dao::Recordset &rows)
    {
        return QString::number(rows.date("PMTransDateCom")->days()) + '|' + QString::number(rows.longValue("PMTransWeek"));
    }

private Q_SLOTS:
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

    void sumsAreThoseOfTheRows_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<int>("block");
        QTest::newRow("counts of the farm") << 1 << 0;
        QTest::newRow("counts of a block") << 1 << 2;
        QTest::newRow("answers of the farm") << 2 << 0;
        QTest::newRow("answers of a block") << 2 << 2;
    }

    void sumsAreThoseOfTheRows()
    {
        QFETCH(int, method);
        QFETCH(int, block);
        TemporaryFarm farm;
        Pest store(farm.session);
        const SerialDate from = day(2026, 5, 1);
        const SerialDate to = day(2026, 5, 31);
        for (int i = 0; i < 60; ++i) {
            const QDate issued = QDate(2026, 4, 20).addDays(i % 50);
            const int instruction =
                farm.addInstruction({.method = 1 + i % 2,
                                     .issued = issued,
                                     .completed = i % 5 == 0 ? std::nullopt : std::optional(issued.addDays(i % 9)),
                                     .blocks = {{1, 3}, {2, 3}},
                                     .targets = {2, 3}});
            for (const int target : {2, 3}) {
                const auto count = static_cast<std::int16_t>(i % 4 == 0 ? 0 : i * target);
                const auto yes = static_cast<std::int16_t>(i % 3);
                QCOMPARE(store.New_Add_PestDataMax(instruction, target, 1 + i % 3 % 2, {.PMCountMax = count, .PMYesMax = yes}),
                         Pest::Done);
            }
        }
        farm.session.dbPest->Execute(
            "Update tblPMDataMax set PMCountMax = Null, PMYesMax = Null where PMDataMaxID in (3, 11, 40)");
        // By completion date and week: how the graph takes the rows together.
        QMap<QString, double> expected;
        const bool isCount = method == 1;
        dao::Recordset rows = isCount ? store.New_Get_PestDataMax_for_Period_Pest_Block(block, 2, from, to)
                                      : store.New_Get_PestDataMaxYesNo_for_Period_Pest_Block(block, 2, from, to);
        for (; !rows.Eof(); rows.MoveNext()) {
            const QString field = isCount ? "PMCountMax" : "PMYesMax";
            if (rows.date("PMTransDateCom") && !rows.isNull(field) && (isCount || rows.boolean(field))) {
                expected[pointOf(rows)] += isCount ? rows.number(field) : 1.0;
            }
        }
        QMap<QString, double> found;
        for (dao::Recordset sums = store.sumsOfPeriod(method, block, 2, from, to); !sums.Eof(); sums.MoveNext()) {
            found[pointOf(sums)] += sums.number("Amount");
        }
        QCOMPARE(found, expected);
        QVERIFY(found.size() > 2);
    }
};

QTEST_GUILESS_MAIN(PeriodQueriesTest)
#include "PeriodQueriesTest.moc"
