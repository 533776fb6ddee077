// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListPlan.h"

#include <QTest>

using lists::List;
using sheets::Cell;
using sheets::CellKind;

namespace
{

/// Cells of a row from texts; "-" is a column that was not given.
lists::GivenRow given(int number, const QString &key, const QStringList &texts)
{
    lists::GivenRow row;
    row.number = number;
    row.keyText = key;
    for (const QString &text : texts) {
        if (text == u"-") {
            row.cells.emplace_back();
        } else {
            row.cells.emplace_back(Cell{text.isEmpty() ? CellKind::Blank : CellKind::Text, false, text});
        }
    }
    return row;
}

/// Two farms with a block "Dam" each, and plantings of two varieties "Other" of different types.
lists::FarmLists sampleLists()
{
    lists::FarmLists lists;
    const auto put = [&lists](List list, std::int32_t key, const QStringList &cells) {
        lists.put(list, {key, lists::Cells(cells.begin(), cells.end())});
    };
    put(List::Farms, 1, {QStringLiteral("Riverbend"), QStringLiteral("1")});
    put(List::Farms, 2, {QStringLiteral("Ridge"), QStringLiteral("1")});
    put(List::Blocks, 10, {QStringLiteral("1"), QStringLiteral("Dam"), QStringLiteral("8"), QStringLiteral("1")});
    put(List::Blocks, 11, {QStringLiteral("2"), QStringLiteral("Dam"), QStringLiteral("0"), QStringLiteral("1")});
    put(List::Blocks, 12, {QStringLiteral("1"), QStringLiteral("East/West"), QString(), QStringLiteral("0")});
    put(List::CropGroups, 1, {QStringLiteral("Citrus")});
    put(List::CropTypes, 20, {QStringLiteral("1"), QStringLiteral("Orange")});
    put(List::CropTypes, 21, {QStringLiteral("1"), QStringLiteral("Lemon")});
    put(List::CropTypes, 22, {QStringLiteral("9"), QStringLiteral("Lost")});
    put(List::Varieties, 30, {QString(), QStringLiteral("20"), QStringLiteral("Valencia")});
    put(List::Varieties, 31, {QString(), QStringLiteral("20"), QStringLiteral("Other")});
    put(List::Varieties, 32, {QString(), QStringLiteral("21"), QStringLiteral("Other")});
    put(List::Varieties, 33, {QString(), QStringLiteral("22"), QStringLiteral("Stray")});
    put(List::Plantings, 40,
        {QString(), QStringLiteral("10"), QStringLiteral("Dam a"), QString(), QString(), QStringLiteral("30"),
         QStringLiteral("1")});
    put(List::Workers, 50, {QStringLiteral("Anna"), QStringLiteral("1")});
    put(List::Pests, 60, {QStringLiteral("Red scale"), QStringLiteral("P"), QStringLiteral("20")});
    put(List::Pests, 61, {QStringLiteral("Old mark"), QStringLiteral("Q"), QString()});
    put(List::Seasons, 1, {QStringLiteral("2026")});
    return lists;
}

lists::Plan planOf(List list, const std::vector<lists::GivenRow> &rows, lists::Matching matching = lists::Matching::ByKey,
                   std::int32_t farm = 0)
{
    lists::Planner planner(sampleLists(), matching, farm);
    planner.add({list, lists::tableOf(list).sheet, rows});
    return planner.plan();
}

/// "added,changed,unchanged,refused".
QString counted(const lists::Plan &plan)
{
    const lists::Counts total = plan.total();
    return QStringLiteral("%1,%2,%3,%4").arg(total.added).arg(total.changed).arg(total.unchanged).arg(total.refused);
}

} // namespace

/// What given rows become, and what is wrong with those that become nothing.
class ListPlanTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void badRowIsRefused_data();
    void badRowIsRefused();
    void doubtfulRowIsNoted_data();
    void doubtfulRowIsNoted();
    void unfitCellIsRefused_data();
    void unfitCellIsRefused();
    void goodRowIsPlanned_data();
    void goodRowIsPlanned();
    void newRowsHaveDefaultsAndNewKeys();
    void keysDecideUnlessNamesMay();
    void allFaultsOfARowAreNamed();
    void rowsReferToRowsBeforeThem();
    void whatIsStoredMayBreakTheRules();
};

void ListPlanTest::badRowIsRefused_data()
{
    QTest::addColumn<int>("list");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, List list, const char *key, const QStringList &cells, const char *column,
                        const char *reason) {
        QTest::newRow(name) << static_cast<int>(list) << QString::fromUtf8(key) << cells << QString::fromUtf8(column)
                            << QString::fromUtf8(reason);
    };
    const QString farm = QStringLiteral("Riverbend");
    const QString yes = QStringLiteral("Yes");
    const auto block = [&](const QString &name, const QString &points = QStringLiteral("5")) {
        return QStringList{farm, name, points, yes};
    };
    row("no name", List::Blocks, "", block({}), "Block", "missing");
    row("no farm of two", List::Blocks, "", {QString(), QStringLiteral("Hill"), QStringLiteral("5"), yes}, "Farm", "missing");
    row("unknown farm", List::Blocks, "", {QStringLiteral("Nowhere"), QStringLiteral("Hill"), QString(), yes}, "Farm",
        "no farm of");
    row("long name", List::Blocks, "", block(QString(51, u'x')), "Block", "51 characters; 50 are the most");
    row("line break", List::Blocks, "", block(QStringLiteral("Hill\nside")), "Block", "line break");
    row("tab", List::Blocks, "", block(QStringLiteral("Hill\tside")), "Block", "a tab");
    row("control character", List::Blocks, "", block(QStringLiteral("Hill\u0007")), "Block", "U+0007");
    row("mark of direction", List::Blocks, "", block(QStringLiteral("Hill\u202Eside")), "Block", "U+202E");
    row("formula as text", List::Blocks, "", block(QStringLiteral("=A1")), "Block", "formula");
    row("points 0", List::Blocks, "", block(QStringLiteral("Hill"), QStringLiteral("0")), "Points", "from 1 to 500");
    row("points 501", List::Blocks, "", block(QStringLiteral("Hill"), QStringLiteral("501")), "Points", "from 1 to 500");
    row("points 5.5", List::Blocks, "", block(QStringLiteral("Hill"), QStringLiteral("5.5")), "Points", "whole number");
    row("points as a word", List::Blocks, "", block(QStringLiteral("Hill"), QStringLiteral("five")), "Points", "whole number");
    row("answer", List::Blocks, "", {farm, QStringLiteral("Hill"), QString(), QStringLiteral("perhaps")}, "Active", "Yes or No");
    row("no key", List::Blocks, "abc", block(QStringLiteral("Hill")), "Block key", "not a key");
    row("unknown key", List::Blocks, "999", block(QStringLiteral("Hill")), "Block key", "no block with this key");
    row("key of another list", List::Blocks, "40", block(QStringLiteral("Hill")), "Block key", "planted block \"Dam a\"");
    row("no nickname", List::Workers, "", {QString(), yes}, "Nickname", "cannot be picked");
    row("kind", List::Pests, "", {QStringLiteral("Mite"), QStringLiteral("Insects"), QString()}, "Kind",
        "shows only under \"<All>\"");
    row("no kind", List::Pests, "", {QStringLiteral("Mite"), QString(), QString()}, "Kind", "missing");
    row("crop types", List::Pests, "", {QStringLiteral("Mite"), QStringLiteral("P"), QStringLiteral("Orange; Pear; Fig")},
        "Crop types", "\"Pear\" or \"Fig\"");
    const auto planting = [&](const QString &blockName, const QString &variety) {
        return QStringList{QString(), blockName, QStringLiteral("New"), QString(), QString(), variety, yes};
    };
    const QString dam = QStringLiteral("Riverbend / Dam");
    row("no variety", List::Plantings, "", planting(dam, {}), "Variety", "vanishes from the lists");
    row("variety without group", List::Plantings, "", planting(dam, QStringLiteral("Stray")), "Variety", "crop group of this");
    row("one of two blocks", List::Plantings, "", planting(QStringLiteral("Dam"), QStringLiteral("Valencia")), "Block",
        "Write \"Riverbend / Dam\"");
    row("one of two varieties", List::Plantings, "", planting(dam, QStringLiteral("Other")), "Variety",
        "Citrus / Orange / Other");
    row("no block of the farm", List::Plantings, "",
        {QStringLiteral("Ridge"), QStringLiteral("East/West"), QStringLiteral("New"), QString(), QString(),
         QStringLiteral("Valencia"), yes},
        "Block", "fits the other cells");
    row("what follows, alone", List::Plantings, "40",
        {QStringLiteral("Ridge"), QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("-"),
         QStringLiteral("-"), QStringLiteral("-")},
        "Farm", "follows from the column Block");
}

void ListPlanTest::badRowIsRefused()
{
    QFETCH(int, list);
    QFETCH(QString, key);
    QFETCH(QStringList, cells);
    QFETCH(QString, column);
    QFETCH(QString, reason);
    const lists::Plan plan = planOf(static_cast<List>(list), {given(7, key, cells)});
    QCOMPARE(counted(plan), QStringLiteral("0,0,0,1"));
    QVERIFY(plan.changes.empty());
    QCOMPARE(plan.faults.size(), std::size_t(1));
    const lists::Fault &fault = plan.faults.front();
    QCOMPARE(fault.column, column);
    QCOMPARE(fault.row, 7);
    QVERIFY2(fault.reason.contains(reason), qPrintable(fault.reason));
}

void ListPlanTest::doubtfulRowIsNoted_data()
{
    QTest::addColumn<int>("list");
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QString>("reason");
    const auto block = [](const QString &name) {
        return QStringList{QStringLiteral("Riverbend"), name, QStringLiteral("5"), QStringLiteral("Yes")};
    };
    QTest::newRow("name of another block") << static_cast<int>(List::Blocks) << block(QStringLiteral("dam")) << "another block";
    QTest::newRow("no name of a sheet") << static_cast<int>(List::Blocks) << block(QStringLiteral("12/1")) << "\"/\"";
    QTest::newRow("apostrophe at the end") << static_cast<int>(List::Blocks) << block(QStringLiteral("Boys'")) << "apostrophe";
    QTest::newRow("worker of the same name")
        << static_cast<int>(List::Workers) << QStringList{QStringLiteral("ANNA"), QString()} << "another worker";
}

void ListPlanTest::doubtfulRowIsNoted()
{
    QFETCH(int, list);
    QFETCH(QStringList, cells);
    QFETCH(QString, reason);
    const lists::Plan plan = planOf(static_cast<List>(list), {given(2, {}, cells)});
    QCOMPARE(counted(plan), QStringLiteral("1,0,0,0"));
    QVERIFY(!plan.refuses());
    QCOMPARE(plan.faults.size(), std::size_t(1));
    QVERIFY2(plan.faults.front().reason.contains(reason), qPrintable(plan.faults.front().reason));
}

void ListPlanTest::unfitCellIsRefused_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("formula");
    QTest::addColumn<QString>("reason");
    QTest::newRow("date") << static_cast<int>(CellKind::Date) << false << "made a date of it";
    QTest::newRow("error") << static_cast<int>(CellKind::Error) << false << "error";
    QTest::newRow("formula") << static_cast<int>(CellKind::Text) << true << "formula";
}

void ListPlanTest::unfitCellIsRefused()
{
    QFETCH(int, kind);
    QFETCH(bool, formula);
    QFETCH(QString, reason);
    lists::GivenRow row = given(2, {}, {QStringLiteral("Riverbend"), QStringLiteral("2026/02/01"), QString(), QString()});
    row.cells[1]->kind = static_cast<CellKind>(kind);
    row.cells[1]->formula = formula;
    const lists::Plan plan = planOf(List::Blocks, {row});
    QCOMPARE(counted(plan), QStringLiteral("0,0,0,1"));
    QCOMPARE(plan.faults.size(), std::size_t(1));
    QCOMPARE(plan.faults.front().value, QStringLiteral("2026/02/01"));
    QVERIFY2(plan.faults.front().reason.contains(reason), qPrintable(plan.faults.front().reason));
}

void ListPlanTest::goodRowIsPlanned_data()
{
    QTest::addColumn<int>("list");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char *name, List list, const char *key, const QStringList &cells, const char *stored) {
        QTest::newRow(name) << static_cast<int>(list) << QString::fromUtf8(key) << cells << QString::fromUtf8(stored);
    };
    row("number as text", List::Blocks, "",
        {QStringLiteral("riverbend"), QStringLiteral(" Hill "), QStringLiteral(" 12.0 "), QStringLiteral("no")}, "1|Hill|12|0");
    row("right to left", List::Blocks, "", {QStringLiteral("Ridge"), QStringLiteral("מטע"), QString(), QString()}, "2|מטע|5|1");
    row("only one column", List::Blocks, "10",
        {QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("9"), QStringLiteral("-")}, "1|Dam|9|1");
    row("blank keeps points and activity", List::Blocks, "10",
        {QStringLiteral("Ridge"), QStringLiteral("Weir"), QString(), QString()}, "2|Weir|8|1");
    row("parents decide", List::Plantings, "",
        {QStringLiteral("Ridge"), QStringLiteral("Dam"), QStringLiteral("New"), QString(), QStringLiteral("Lemon"),
         QStringLiteral("Other"), QString()},
        "|11|New|||32|1");
    row("path and key", List::Plantings, "",
        {QString(), QStringLiteral("#11"), QStringLiteral("New"), QString(), QString(), QStringLiteral("Orange / Other"),
         QString()},
        "|11|New|||31|1");
    row("kinds and types", List::Pests, "", {QStringLiteral("Scab"), QStringLiteral("disease"), QStringLiteral("Lemon, Orange")},
        "Scab|D|20;21");
}

void ListPlanTest::goodRowIsPlanned()
{
    QFETCH(int, list);
    QFETCH(QString, key);
    QFETCH(QStringList, cells);
    QFETCH(QString, stored);
    const lists::Plan plan = planOf(static_cast<List>(list), {given(2, key, cells)});
    QVERIFY2(plan.faults.empty(), plan.faults.empty() ? "" : qPrintable(plan.faults.front().reason));
    QCOMPARE(plan.changes.size(), std::size_t(1));
    const lists::Cells &after = plan.changes.front().after->cells;
    QCOMPARE(QStringList(after.begin(), after.end()).join(u'|'), stored);
    QCOMPARE(plan.changes.front().before.has_value(), !key.isEmpty());
}

void ListPlanTest::newRowsHaveDefaultsAndNewKeys()
{
    const std::vector<lists::GivenRow> rows{
        given(2, {}, {QStringLiteral("-"), QStringLiteral("Hill"), QStringLiteral("-"), QStringLiteral("-")}),
        given(3, {}, {QStringLiteral("-"), QStringLiteral("Vale"), QStringLiteral("-"), QStringLiteral("-")})};
    const lists::Plan plan = planOf(List::Blocks, rows, lists::Matching::ByKey, 2);
    QCOMPARE(plan.changes.size(), std::size_t(2));
    QCOMPARE(plan.changes[0].after->key, 13);
    QCOMPARE(plan.changes[1].after->key, 14);
    QCOMPARE(plan.changes[1].after->cells,
             (lists::Cells{QStringLiteral("2"), QStringLiteral("Vale"), QStringLiteral("5"), QStringLiteral("1")}));
}

void ListPlanTest::keysDecideUnlessNamesMay()
{
    const std::vector<lists::GivenRow> rows{
        given(2, {}, {QStringLiteral("Riverbend"), QStringLiteral("DAM"), QStringLiteral("9"), QStringLiteral("Yes")}),
        given(3, {}, {QStringLiteral("Riverbend"), QStringLiteral("Hill"), QStringLiteral("9"), QStringLiteral("Yes")})};
    QCOMPARE(counted(planOf(List::Blocks, rows)), QStringLiteral("2,0,0,0"));
    const lists::Plan byName = planOf(List::Blocks, rows, lists::Matching::ByKeyOrName);
    QCOMPARE(counted(byName), QStringLiteral("1,1,0,0"));
    QCOMPARE(byName.changes.front().key(), 10);
    // Seasons have no keys.
    QCOMPARE(counted(planOf(List::Seasons, {given(2, {}, {QStringLiteral("2026")}), given(3, {}, {QStringLiteral("2027")})})),
             QStringLiteral("1,0,1,0"));
    // Two rows with one key: nobody can say which is meant.
    const lists::GivenRow same =
        given(4, QStringLiteral("10"), {QStringLiteral("-"), QStringLiteral("Weir"), QStringLiteral("-"), QStringLiteral("-")});
    const lists::Plan twice = planOf(List::Blocks, {same, same});
    QCOMPARE(counted(twice), QStringLiteral("0,0,0,2"));
    QVERIFY(twice.faults.front().reason.contains(QLatin1String("Several rows")));
}

void ListPlanTest::allFaultsOfARowAreNamed()
{
    const lists::Plan plan =
        planOf(List::Blocks,
               {given(2, {}, {QStringLiteral("Nowhere"), QString(60, u'x'), QStringLiteral("many"), QStringLiteral("perhaps")})});
    QStringList columns;
    for (const lists::Fault &fault : plan.faults) {
        columns.append(fault.column);
    }
    columns.sort();
    QCOMPARE(columns.join(u','), QStringLiteral("Active,Block,Farm,Points"));
    QCOMPARE(lists::summary(plan.total()), QStringLiteral("0 new, 0 changed, 1 refused"));
}

void ListPlanTest::rowsReferToRowsBeforeThem()
{
    lists::Planner planner(sampleLists(), lists::Matching::ByKey, 0);
    planner.add({List::Farms, {}, {given(2, {}, {QStringLiteral("New farm"), QString()})}});
    planner.add({List::Blocks,
                 {},
                 {given(2, {}, {QStringLiteral("New farm"), QStringLiteral("Hill"), QString(), QString()}),
                  given(3, {}, {QStringLiteral("New farm"), QStringLiteral("Bad\tname"), QString(), QString()})}});
    planner.add({List::Plantings,
                 {},
                 {given(2, {},
                        {QString(), QStringLiteral("Hill"), QStringLiteral("Hill a"), QString(), QString(),
                         QStringLiteral("Valencia"), QString()}),
                  given(3, {},
                        {QString(), QStringLiteral("Bad\tname"), QStringLiteral("b"), QString(), QString(),
                         QStringLiteral("Valencia"), QString()})}});
    QCOMPARE(counted(planner.plan()), QStringLiteral("3,0,0,2"));
    QCOMPARE(planner.plan().changes.back().after->cell(1), QStringLiteral("13"));
}

void ListPlanTest::whatIsStoredMayBreakTheRules()
{
    // Points 0, no points, a kind of another program: what differs is checked, no more.
    QCOMPARE(
        counted(planOf(List::Blocks,
                       {given(2, QStringLiteral("11"),
                              {QStringLiteral("Ridge"), QStringLiteral("Weir"), QStringLiteral("0"), QStringLiteral("Yes")})})),
        QStringLiteral("0,1,0,0"));
    QCOMPARE(
        counted(planOf(List::Blocks,
                       {given(2, QStringLiteral("12"),
                              {QStringLiteral("Riverbend"), QStringLiteral("East/West"), QString(), QStringLiteral("No")})})),
        QStringLiteral("0,0,1,0"));
    QCOMPARE(counted(planOf(List::Pests,
                            {given(2, QStringLiteral("61"), {QStringLiteral("Older mark"), QStringLiteral("Q"), QString()})})),
             QStringLiteral("0,1,0,0"));
}

QTEST_GUILESS_MAIN(ListPlanTest)
#include "ListPlanTest.moc"
