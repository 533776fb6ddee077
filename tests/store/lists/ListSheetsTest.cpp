// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListSheets.h"
#include "platform/basic/RunTimeError.h"
#include "platform/sheets/Csv.h"
#include "store/lists/ListBooks.h"
#include "support/TemporaryFarm.h"

#include <QTest>

using lists::List;
using sheets::Cell;
using sheets::CellKind;

namespace
{

/// A sheet from rows of texts.
sheets::Sheet sheetOf(const QString &name, const std::vector<QStringList> &rows)
{
    return {name, sheets::readClipboardText(sheets::clipboardText(rows)), {}};
}

lists::Plan planOf(const lists::FarmLists &stored, const lists::GivenBook &given)
{
    lists::Planner planner(stored, lists::Matching::ByKey, 0);
    planner.addFaults(given.faults);
    for (const lists::GivenList &list : given.lists) {
        planner.add(list);
    }
    return planner.plan();
}

} // namespace

/// Sheets of the farm lists, as this program and as people write them.
class ListSheetsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { farm_.reset(); }
    void writtenBookChangesNothing();
    void editedBookChangesWhatWasEdited();
    void csvHoldsOneList();
    void headingsAreFoundWhereTheyAre();
    void listIsFoundByItsHeadings();
    void wrongSheetIsNotRead_data();
    void wrongSheetIsNotRead();
    void mergedCellsAreRefused();
    void refusedRowsCanBeCorrectedAndOpened();
    void pastedRowsHaveHeadingsOrNot();
    void cropsArePaths();

private:
    QString path(const QString &name) const { return folder_.filePath(name); }
    lists::FarmLists stored() const;

    QTemporaryDir folder_;
    std::unique_ptr<TemporaryFarm> farm_;
};

void ListSheetsTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Riverbend"));
    farm_->addFarm(QStringLiteral("Ridge"), false);
    farm_->addBlock({QStringLiteral("007"), 1, 8, true});
    farm_->addBlock({QStringLiteral("Dam"), 1, std::nullopt, true});
    farm_->addBlock({QStringLiteral("Dam"), 2, 5, false});
    const int valencia = farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Lemon"), QStringLiteral("Eureka"));
    farm_->addPlanting({QStringLiteral("O'Connor, \"upper\""), 3, true, valencia});
    farm_->addWorker(QStringLiteral("Anél"));
    farm_->addTarget(QStringLiteral("Red scale"), QStringLiteral("P"), {1, 2});
    farm_->add(u"tblYear", {{u"FYear", QStringLiteral("2026/2027")}});
}

lists::FarmLists ListSheetsTest::stored() const
{
    lists::FarmLists read;
    read.read(farm_->session);
    return read;
}

void ListSheetsTest::writtenBookChangesNothing()
{
    lists::writeBook(stored(), path(QStringLiteral("lists.xlsx")));
    const sheets::Workbook book = sheets::readWorkbook(path(QStringLiteral("lists.xlsx")));
    QCOMPARE(book.sheets.size(), lists::AllLists.size());
    QCOMPARE(book.sheets[1].at(0, 0).text, QStringLiteral("Block key"));
    const lists::Plan plan = planOf(stored(), lists::givenBook(book));
    QVERIFY2(plan.faults.empty(), plan.faults.empty() ? "" : qPrintable(plan.faults.front().reason));
    QVERIFY(plan.changes.empty());
    QCOMPARE(plan.total().unchanged, 14);
}

void ListSheetsTest::editedBookChangesWhatWasEdited()
{
    lists::writeBook(stored(), path(QStringLiteral("lists.xlsx")));
    sheets::Workbook book = sheets::readWorkbook(path(QStringLiteral("lists.xlsx")));
    sheets::Sheet &blocks = book.sheets[1];
    blocks.rows[1][3] = {CellKind::Number, false, QStringLiteral("12")};
    blocks.rows.push_back(
        {Cell(), {CellKind::Text, false, QStringLiteral("Ridge")}, {CellKind::Text, false, QStringLiteral("New")}});
    const lists::Plan plan = planOf(stored(), lists::givenBook(book));
    QCOMPARE(lists::summary(plan.total()), QStringLiteral("1 new, 1 changed, 0 refused"));
    QCOMPARE(plan.changes.front().after->cells,
             (lists::Cells{QStringLiteral("1"), QStringLiteral("007"), QStringLiteral("12"), QStringLiteral("1")}));
}

void ListSheetsTest::csvHoldsOneList()
{
    lists::writeBook(stored(), path(QStringLiteral("Planted blocks.csv")));
    const lists::GivenBook given = lists::givenBook(sheets::readWorkbook(path(QStringLiteral("Planted blocks.csv"))));
    QCOMPARE(given.lists.size(), std::size_t(1));
    QVERIFY(planOf(stored(), given).changes.empty());
    QCOMPARE(planOf(stored(), given).total().unchanged, 1);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, lists::writeBook(stored(), path(QStringLiteral("all.csv"))));
}

void ListSheetsTest::headingsAreFoundWhereTheyAre()
{
    const sheets::Sheet sheet = sheetOf(
        QStringLiteral(" blocks "),
        {{QStringLiteral("Our farm, 2026")},
         {},
         {QString(), QStringLiteral("Monitoring  points:"), QStringLiteral("BLOCK *"), QString(), QStringLiteral("Hectares"),
          QStringLiteral("Farm")},
         {},
         {QString(), QStringLiteral("7"), QStringLiteral("Hill"), QString(), QStringLiteral("3.2"), QStringLiteral("Ridge")}});
    const lists::GivenBook given = lists::givenBook({{sheet}});
    QCOMPARE(given.faults.size(), std::size_t(1));
    QVERIFY(!given.faults.front().refuses && given.faults.front().column == u"Hectares");
    QCOMPARE(given.lists.front().rows.size(), std::size_t(1));
    QCOMPARE(given.lists.front().rows.front().number, 5);
    const lists::Plan plan = planOf(stored(), given);
    QCOMPARE(plan.changes.front().after->cells,
             (lists::Cells{QStringLiteral("2"), QStringLiteral("Hill"), QStringLiteral("7"), QStringLiteral("1")}));
}

void ListSheetsTest::listIsFoundByItsHeadings()
{
    const auto listOf = [](const QStringList &headings) {
        const QStringList row(headings.size(), QStringLiteral("x"));
        const auto given = lists::givenBook({{sheetOf(QStringLiteral("Sheet1"), {headings, row})}});
        return given.lists.front().list;
    };
    QCOMPARE(listOf({QStringLiteral("Farm"), QStringLiteral("Block"), QStringLiteral("Points")}), List::Blocks);
    QCOMPARE(listOf({QStringLiteral("Block"), QStringLiteral("Planted block"), QStringLiteral("Variety")}), List::Plantings);
    QCOMPARE(listOf({QStringLiteral("Crop group"), QStringLiteral("Crop type"), QStringLiteral("Variety")}), List::Varieties);
    QCOMPARE(listOf({QStringLiteral("Pest"), QStringLiteral("Kind")}), List::Pests);
}

void ListSheetsTest::wrongSheetIsNotRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("headings");
    QTest::addColumn<QString>("reason");
    QTest::newRow("other purpose") << "Prices"
                                   << QStringList{QStringLiteral("Farm"), QStringLiteral("Price"), QStringLiteral("Date")}
                                   << "no farm list in it";
    QTest::newRow("no headings") << "Blocks" << QStringList{QStringLiteral("Dam"), QStringLiteral("5")}
                                 << "headings were not found";
    QTest::newRow("keys of another list") << "Blocks" << QStringList{QStringLiteral("Planted block key"), QStringLiteral("Block")}
                                          << "keys of the list Planted blocks";
}

void ListSheetsTest::wrongSheetIsNotRead()
{
    QFETCH(QString, name);
    QFETCH(QStringList, headings);
    QFETCH(QString, reason);
    QString said;
    try {
        const lists::GivenBook given =
            lists::givenBook({{sheetOf(name, {headings, QStringList(headings.size(), QStringLiteral("1"))})}});
        QVERIFY(given.lists.empty());
        said = given.faults.front().reason;
        QVERIFY(given.faults.front().refuses);
    } catch (const basic::RunTimeError &error) {
        said = error.description();
    }
    QVERIFY2(said.contains(reason), qPrintable(said));
}

void ListSheetsTest::mergedCellsAreRefused()
{
    sheets::Sheet sheet = sheetOf(QStringLiteral("Blocks"),
                                  {{QStringLiteral("Farm"), QStringLiteral("Block"), QStringLiteral("Note")},
                                   {QStringLiteral("Ridge"), QStringLiteral("A"), QStringLiteral("x")},
                                   {QString(), QStringLiteral("B")},
                                   {QStringLiteral("Ridge"), QStringLiteral("C")}});
    sheet.merged = {{1, 0, 2, 0}, {3, 2, 3, 5}};
    const lists::Plan plan = planOf(stored(), lists::givenBook({{sheet}}));
    QCOMPARE(lists::summary(plan.total()), QStringLiteral("1 new, 0 changed, 2 refused"));
    QVERIFY2(plan.faults.back().reason.contains(QLatin1String("A2:A3 are merged")), qPrintable(plan.faults.back().reason));
}

void ListSheetsTest::refusedRowsCanBeCorrectedAndOpened()
{
    const lists::GivenBook given = lists::givenBook(
        {{sheetOf(QStringLiteral("Blocks"),
                  {{QStringLiteral("Block key"), QStringLiteral("Farm"), QStringLiteral("Block"), QStringLiteral("Points")},
                   {QString(), QStringLiteral("Ridge"), QStringLiteral("Good"), QStringLiteral("5")},
                   {QStringLiteral("1"), QStringLiteral("Ridge"), QStringLiteral("Bad"), QStringLiteral("900")}})}});
    const lists::Plan plan = planOf(stored(), given);
    lists::writeRefused(given.lists, plan.faults, path(QStringLiteral("refused.xlsx")));
    sheets::Workbook book = sheets::readWorkbook(path(QStringLiteral("refused.xlsx")));
    QCOMPARE(book.sheets.size(), std::size_t(1));
    QCOMPARE(book.sheets[0].rows.size(), std::size_t(2));
    QVERIFY(book.sheets[0].rows[1].back().text.contains(QLatin1String("from 1 to 500")));
    book.sheets[0].rows[1][3].text = QStringLiteral("9");
    const lists::Plan corrected = planOf(stored(), lists::givenBook(book));
    QCOMPARE(lists::summary(corrected.total()), QStringLiteral("0 new, 1 changed, 0 refused"));
    QCOMPARE(lists::faultRows(plan.faults)[1].join(u'|'),
             QStringLiteral("Blocks|3|Points|900|Monitoring points are a whole number from 1 to 500."));
}

void ListSheetsTest::pastedRowsHaveHeadingsOrNot()
{
    const std::vector<int> columns{0, 1, 2, 3};
    const auto pasted = [&](const std::vector<QStringList> &rows, int first) {
        const lists::GivenList given =
            lists::givenRows(List::Blocks, sheets::readClipboardText(sheets::clipboardText(rows)), columns, first);
        lists::Planner planner(stored(), lists::Matching::ByKey, 2);
        planner.add(given);
        return planner.plan();
    };
    const lists::Plan plain =
        pasted({{QStringLiteral("Hill"), QStringLiteral("6")}, {QStringLiteral("Vale"), QStringLiteral("7")}}, 1);
    QCOMPARE(plain.total().added, 2);
    QCOMPARE(plain.changes[1].after->cell(2), QStringLiteral("7"));
    const lists::Plan headed =
        pasted({{QStringLiteral("Points"), QStringLiteral("Block")}, {QStringLiteral("7"), QStringLiteral("Vale")}}, 0);
    QCOMPARE(headed.total().added, 1);
    QCOMPARE(headed.changes[0].after->cells,
             (lists::Cells{QStringLiteral("2"), QStringLiteral("Vale"), QStringLiteral("7"), QStringLiteral("1")}));
}

void ListSheetsTest::cropsArePaths()
{
    const auto rows =
        sheets::readClipboardText(QStringLiteral("Citrus\tOrange\tDelta\n\t\tNavel\n\tLime\nNuts\tPecan\tWichita\n"));
    lists::Planner planner(stored(), lists::Matching::ByKeyOrName, 0);
    for (const lists::GivenList &list : lists::givenCrops(rows, 0)) {
        planner.add(list);
    }
    QVERIFY2(planner.plan().faults.empty(),
             planner.plan().faults.empty() ? "" : qPrintable(planner.plan().faults.front().reason));
    QCOMPARE(planner.plan().counts[lists::indexOf(List::CropGroups)].added, 1);
    QCOMPARE(planner.plan().counts[lists::indexOf(List::CropTypes)].added, 2);
    QCOMPARE(planner.plan().counts[lists::indexOf(List::Varieties)].added, 3);
    const lists::FarmLists &planned = planner.planned();
    const std::int32_t navel = planned.named(List::Varieties, QStringLiteral("Navel")).front();
    QCOMPARE(planned.shown(List::Varieties, *planned.find(List::Varieties, navel), 1), QStringLiteral("Orange"));
}

QTEST_GUILESS_MAIN(ListSheetsTest)
#include "ListSheetsTest.moc"
