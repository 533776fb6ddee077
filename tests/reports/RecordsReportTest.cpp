// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/RecordsReport.h"

#include "SheetReader.h"

#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace reports;

namespace
{

PestRecord counted(QDate date, int point, std::optional<double> count)
{
    return {.completed = basic::SerialDate::fromDate(date), .point = point, .counts = true, .count = count};
}

PestRecord answered(QDate date, int point, bool yes)
{
    return {.completed = basic::SerialDate::fromDate(date), .point = point, .yes = yes};
}

const QDate May4(2026, 5, 4);
const QDate May9(2026, 5, 9);
constexpr int VeryMany = std::numeric_limits<int>::max();

} // namespace

/// The cells of the records report, from rows of captured values.
class RecordsReportTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void tables_data();
    void tables();
    void nothingWithoutRecords();
    void headingAndGroup();
    void nesting_data();
    void nesting();
    void nothingChosen();
    void readersSeeTheTable();
    void tablesBeginOnAPageThatHoldsThem_data();
    void tablesBeginOnAPageThatHoldsThem();
    void longTablesBreakBetweenRows();
    void aFullSheetContinuesOnTheNext();

private:
    /// A row of the sheet as "a|b|c" from column A to the last one filled.
    QString line(int row) const;
    QStringList lines(int first, int last) const;

    excel::Application application_;
    std::vector<double> progress_;
};

void RecordsReportTest::init()
{
    application_ = excel::Application();
    application_.Workbooks().Add();
    progress_.clear();
}

QString RecordsReportTest::line(int row) const
{
    QString actual;
    QString blanks;
    for (char column = 'A'; column <= 'Z'; ++column) {
        const QString value = application_.Range(QChar(column) + QString::number(row)).value();
        if (!value.isEmpty()) {
            actual += blanks + value;
            blanks.clear();
        }
        blanks += u'|';
    }
    return actual;
}

QStringList RecordsReportTest::lines(int first, int last) const
{
    QStringList actual;
    for (int row = first; row <= last; ++row) {
        actual.append(line(row));
    }
    return actual;
}

void RecordsReportTest::tables_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<std::vector<PestRecord>>("records");
    QTest::addColumn<QStringList>("expected");
    const QString heading = QStringLiteral("Date|Block|Point 1|Point 2|Total");
    QTest::newRow("counts with totals") << 2 << std::vector{counted(May4, 1, 3), counted(May4, 2, 4), counted(May9, 2, 10)}
                                        << QStringList{heading, QStringLiteral("2026/05/04|B1|3|4|7"),
                                                       QStringLiteral("2026/05/09|B1||10|10"), QStringLiteral("|Total|3|14|17"),
                                                       QString()};
    QTest::newRow("two instructions on a day share a line")
        << 2 << std::vector{counted(May4, 1, 3), counted(May4, 1, 4)}
        << QStringList{heading, QStringLiteral("2026/05/04|B1|4||7"), QStringLiteral("|Total|7|0|7")};
    QTest::newRow("answers have no totals") << 2 << std::vector{answered(May4, 1, true), answered(May4, 2, false)}
                                            << QStringList{heading, QStringLiteral("2026/05/04|B1|Yes"), QString()};
    QTest::newRow("totals from the first count on")
        << 2 << std::vector{answered(May4, 1, true), counted(May9, 1, 2)}
        << QStringList{heading, QStringLiteral("2026/05/04|B1|Yes"), QStringLiteral("2026/05/09|B1|2||2"),
                       QStringLiteral("|Total|2|0|2")};
    QTest::newRow("a point past the table") << 2 << std::vector{counted(May4, 1, 3), counted(May4, 6, 4)}
                                            << QStringList{heading, QStringLiteral("2026/05/04|B1|3||7|||4"),
                                                           QStringLiteral("|Total|3|0|7")};
    QTest::newRow("a point past Z") << 2 << std::vector{counted(May4, 1, 3), counted(May4, 25, 4)}
                                    << QStringList{heading, QStringLiteral("2026/05/04|B1|3||3"), QStringLiteral("|Total|3|0|3")};
    QTest::newRow("nothing captured counts as nothing")
        << 2 << std::vector{counted(May4, 1, {})}
        << QStringList{heading, QStringLiteral("2026/05/04|B1|||0"), QStringLiteral("|Total|0|0|0")};
}

void RecordsReportTest::tables()
{
    QFETCH(int, points);
    QFETCH(std::vector<PestRecord>, records);
    QFETCH(QStringList, expected);
    RecordsSheet sheet(application_);
    sheet.writeTable(QStringLiteral("Block"), QStringLiteral("B1"), points, records);
    QCOMPARE(lines(5, 4 + static_cast<int>(expected.size())), expected);
}

void RecordsReportTest::nothingWithoutRecords()
{
    RecordsSheet sheet(application_);
    sheet.writeTable(QStringLiteral("Block"), QStringLiteral("B1"), 5, {});
    QCOMPARE(sheet.row(), 4);
    QCOMPARE(line(5), QString());
}

void RecordsReportTest::headingAndGroup()
{
    RecordsSheet sheet(application_);
    sheet.writeHeading(QStringLiteral("Rivier"), May4, May9);
    sheet.beginGroup(QStringLiteral("Ants"), VeryMany);
    QCOMPARE(lines(1, 4),
             (QStringList{QStringLiteral("PEST MONITORING"), QStringLiteral("Farm :  Rivier|||Date :  04/05/2026|||09/05/2026"),
                          QString(), QStringLiteral("Ants")}));
    const excel::Range group = application_.Range(QStringLiteral("A4"));
    QVERIFY(group.MergeCells());
    QCOMPARE(group.HorizontalAlignment(), excel::xlCenter);
    QCOMPARE(application_.Range(QStringLiteral("Z4")).Borders().LineStyle(), excel::xlContinuous);
    QCOMPARE(application_.Range(QStringLiteral("AA4")).Borders().LineStyle(), excel::xlNone);
    // All columns of a very wide table that the sheet has.
    sheet.writeTable(QStringLiteral("Block"), QStringLiteral("B1"), VeryMany, {counted(May4, 24, 5)});
    QVERIFY(line(6).endsWith(QLatin1String("Point 23|Point 24")));
    QVERIFY(line(7).endsWith(QLatin1String("||5")));
}

void RecordsReportTest::nesting_data()
{
    QTest::addColumn<bool>("byPest");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("by pest") << true
                             << QStringList{QStringLiteral("Ants"),
                                            QString(),
                                            QStringLiteral("Date|Block|Point 1|Point 2|Point 3|Total"),
                                            QStringLiteral("2026/05/04|B1|Yes"),
                                            QString(),
                                            QStringLiteral("Mites"),
                                            QString(),
                                            QStringLiteral("Date|Block|Point 1|Point 2|Point 3|Point 4|Point 5|Total"),
                                            QStringLiteral("2026/05/04|B1|Yes")};
    QTest::newRow("by block") << false
                              << QStringList{QStringLiteral("Block :  B1"),
                                             QString(),
                                             QStringLiteral("Date|Pest|Point 1|Point 2|Point 3|Point 4|Point 5|Total"),
                                             QStringLiteral("2026/05/04|Ants|Yes"),
                                             QStringLiteral("Date|Pest|Point 1|Point 2|Point 3|Point 4|Point 5|Total"),
                                             QStringLiteral("2026/05/04|Mites|Yes")};
}

void RecordsReportTest::nesting()
{
    QFETCH(bool, byPest);
    QFETCH(QStringList, expected);
    const RecordsOrder order{.nesting = byPest ? RecordsNesting::ByPest : RecordsNesting::ByBlock,
                             .farm = QStringLiteral("Rivier"),
                             .from = May4,
                             .to = May9,
                             .pests = {{.key = 1, .name = QStringLiteral("Ants"), .chosen = true},
                                       {.key = 2, .name = QStringLiteral("Bugs")},
                                       {.key = 3, .name = QStringLiteral("Mites"), .chosen = true}},
                             .blocks = {{.key = 1, .name = QStringLiteral("B1"), .chosen = true, .points = 0},
                                        {.key = 2, .name = QStringLiteral("B2")}}};
    QStringList asked;
    const RecordsSource source{.pointsOfPest = [](std::int32_t pest) { return pest == 1 ? std::optional(3) : std::nullopt; },
                               .records =
                                   [&](std::int32_t block, std::int32_t pest) {
                                       asked.append(QStringLiteral("%1/%2").arg(block).arg(pest));
                                       return std::vector{answered(May4, 1, true)};
                                   }};
    RecordsSheet sheet(application_);
    writeRecords(sheet, order, source, [this](double percent) { progress_.push_back(percent); });
    QCOMPARE(lines(4, 3 + static_cast<int>(expected.size())), expected);
    QCOMPARE(asked, (QStringList{QStringLiteral("1/1"), QStringLiteral("1/3")}));
    // A step for every row of the outer list, chosen or not.
    QCOMPARE(progress_.size(), byPest ? 3U : 2U);
    QCOMPARE(progress_.back(), 100.0);
}

void RecordsReportTest::nothingChosen()
{
    RecordsSheet sheet(application_);
    writeRecords(sheet, {.from = May4, .to = May9, .pests = {{}}, .blocks = {{}}}, {}, [](double) {});
    QCOMPARE(sheet.row(), 4);
    QCOMPARE(line(1) + line(4), QStringLiteral("PEST MONITORING"));
}

void RecordsReportTest::readersSeeTheTable()
{
    const QTemporaryDir folder;
    RecordsSheet sheet(application_);
    sheet.writeTable(QStringLiteral("Pest"), QStringLiteral("Ants"), 1, {counted(May4, 1, 3)});
    sheet.fitColumns();
    const QString path = folder.filePath(QStringLiteral("records.xls"));
    application_.ActiveWorkbook().SaveAs(path);
    NEEDS_READERS();
    const ReadSheet actual(path);
    QCOMPARE(actual.fault(), QString());
    const char *framed = " 0 thin/thin/thin/thin - General";
    for (const char *cell : {"A5", "B5", "C5", "D5", "B7", "C7", "D7"}) {
        const QString look = actual.cell(QLatin1String(cell));
        QVERIFY2(look.contains(QLatin1String(" 8 bold ")) && look.endsWith(QLatin1String(framed)), qPrintable(look));
    }
    QVERIFY(actual.cell(QStringLiteral("A6")).startsWith(QLatin1String("text [2026/05/04] ")));
    QVERIFY(actual.cell(QStringLiteral("D6")).startsWith(QLatin1String("number [3] ")));
    // The empty line under the totals.
    QVERIFY(actual.cell(QStringLiteral("D8")).endsWith(QLatin1String(framed)));
    QVERIFY2(actual.width(QStringLiteral("A")).toDouble() > actual.width(QStringLiteral("D")).toDouble(),
             "columns are as wide as their texts");
}

void RecordsReportTest::tablesBeginOnAPageThatHoldsThem_data()
{
    // Two tables of twenty dates fill a page of A4; one of 39 fills it below the repeated heading.
    QTest::addColumn<int>("dates");
    QTest::newRow("two to a page") << 20;
    QTest::newRow("one to a page") << 39;
}

void RecordsReportTest::tablesBeginOnAPageThatHoldsThem()
{
    QFETCH(int, dates);
    std::vector<PestRecord> records;
    for (int day = 0; day < dates; ++day) {
        records.push_back(counted(May4.addDays(day), 1, 3));
    }
    RecordsSheet sheet(application_);
    for (int table = 0; table < 5; ++table) {
        sheet.beginGroup(QStringLiteral("Pest %1").arg(table), 1);
        sheet.writeTable(QStringLiteral("Block"), QStringLiteral("B1"), 1, records);
        sheet.endGroup();
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("records.xlsx"));
    application_.ActiveWorkbook().SaveAs(path);
    NEEDS_READERS();
    const QStringList breaks = readBack({QStringLiteral("--page"), path}).filter(QStringLiteral("breaks ")).value(0).split(u' ');
    QVERIFY2(breaks.size() >= 2, qPrintable(breaks.join(u' ')));
    for (const QString &row : breaks.mid(1)) {
        QVERIFY2(line(row.toInt() + 1).startsWith(QLatin1String("Pest ")), qPrintable(row));
        QVERIFY2(row.toInt() > 10, "the first page is not left empty");
    }
}

void RecordsReportTest::longTablesBreakBetweenRows()
{
    std::vector<PestRecord> records;
    for (int day = 0; day < 100; ++day) {
        records.push_back(counted(May4.addDays(day), 1, 3));
    }
    RecordsSheet sheet(application_);
    for (int table = 0; table < 2; ++table) {
        sheet.beginGroup(QStringLiteral("Pest %1").arg(table), 1);
        sheet.writeTable(QStringLiteral("Block"), QStringLiteral("B1"), 1, records);
        sheet.endGroup();
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("records.xlsx"));
    application_.ActiveWorkbook().SaveAs(path);
    NEEDS_READERS();
    const QStringList breaks = readBack({QStringLiteral("--page"), path}).filter(QStringLiteral("breaks ")).value(0).split(u' ');
    QVERIFY2(breaks.size() >= 3, qPrintable(breaks.join(u' ')));
    int before = 3;
    for (const QString &row : breaks.mid(1)) {
        // A4 upright has 46 rows of 15 points below the heading.
        QVERIFY2(row.toInt() > before && row.toInt() - before <= 46, qPrintable(breaks.join(u' ')));
        before = row.toInt();
    }
}

void RecordsReportTest::aFullSheetContinuesOnTheNext()
{
    RecordsSheet sheet(application_, 20);
    sheet.writeHeading(QStringLiteral("Rivier"), May4, May9);
    sheet.beginGroup(QStringLiteral("Ants"), 1);
    for (int table = 0; table < 5; ++table) {
        sheet.writeTable(QStringLiteral("Block"), QStringLiteral("B%1").arg(table), 1, {counted(May4, 1, 3)});
    }
    const excel::Workbook book = application_.ActiveWorkbook();
    QCOMPARE(book.Worksheets().Count(), 2);
    QCOMPARE(line(1), QStringLiteral("PEST MONITORING"));
    QVERIFY2(line(2).startsWith(QLatin1String("Farm :  Rivier|")), qPrintable(line(2)));
    QCOMPARE(line(4), QStringLiteral("Ants"));
    QVERIFY2(sheet.row() <= 20, qPrintable(QString::number(sheet.row())));
    book.Worksheets(1).Activate();
    QCOMPARE(line(1) + line(4), QStringLiteral("PEST MONITORINGAnts"));
}

QTEST_MAIN(RecordsReportTest)
#include "RecordsReportTest.moc"
