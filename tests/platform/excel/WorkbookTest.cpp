// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Application.h"
#include "platform/excel/Readers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace excel;

namespace
{
class RecordingLauncher : public Launcher
{
public:
    bool open(const QString &path) override
    {
        opened.append(path);
        return hasProgram;
    }
    void reportPath(const QString &path) override { actual.append(path); }

    bool hasProgram = true;
    QStringList opened;
    QStringList actual;
};

/// A sheet with the marks of a field sheet, each property set more than once or on ranges that overlap.
void fillFieldSheet(const Application &application, const Workbook &book)
{
    const Worksheet sheet = book.Worksheets(1);
    sheet.Range("A1", "C3").Font().setBold(true);
    Range title = sheet.Range("a1", "p1");
    title.setValue("Pest Monitoring: Count");
    title.setMergeCells(true);
    title.Font().setSize(15);
    title.setRowHeight(18);
    title.setHorizontalAlignment(xlCenter);
    Interior shade = title.Interior();
    shade.setPattern(xlSolid);
    shade.setPatternColorIndex(xlAutomatic);
    shade.setThemeColor(1);
    shade.setTintAndShade(-0.149998474074526);
    shade.setPatternTintAndShade(0);
    sheet.Range("A2", "C2").Font().setBold(false);
    Range pest = sheet.Range("B3", "B3");
    pest.setValue("Codling moth");
    pest.setOrientation(90);
    pest.setWrapText(true);
    pest.setRowHeight(20);
    pest.setRowHeight(95);
    pest.setVerticalAlignment(xlTop);
    pest.Borders().setLineStyle(xlContinuous);
    pest.Borders().setWeight(xlThin);
    // The line between B3 and C3 is one line: the one set last shows.
    sheet.Range("C3", "C3").Borders().setWeight(xlHairline);
    Range count = sheet.Range("C3", "C3");
    count.setNumberFormat("#0.00");
    count.setValue("12.50");
    count.setHorizontalAlignment(2);
    count.Font().setName("Arial");
    count.Font().setUnderline(true);
    sheet.Columns("a:b").setColumnWidth(5);
    PageSetup page = sheet.PageSetup();
    page.setPrintTitleRows("$1:$7");
    page.setPrintTitleColumns(sheet.Columns("A:A").Address());
    page.setLeftHeader("Date &D Time &T");
    page.setRightHeader("Page #&P Of &N Pages");
    page.setOrientation(xlPortrait);
    page.setLeftMargin(application.CentimetersToPoints(1.25));
}
} // namespace

class WorkbookTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readersSeeWhatWasSet_data();
    void readersSeeWhatWasSet();
    void values();
    void longTexts_data();
    void longTexts();
    void numbersOfAllForms();
    void tooManyFormatsAreReported();
    void limitsOfXlsAreReported();
    void columnFit();
    void mergeKeepsOneValue();
    void sheetNames();
    void refusedValues_data();
    void refusedValues();
    void savesThatFail();
    void handOver();
    void deletedSheets();
};

void WorkbookTest::readersSeeWhatWasSet_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("xls") << ".xls";
    QTest::newRow("xlsx") << ".xlsx";
}

void WorkbookTest::readersSeeWhatWasSet()
{
    QFETCH(QString, ending);
    const QTemporaryDir folder;
    const QString path = folder.filePath("sheet" + ending);
    Application application;
    Workbook book = application.Workbooks().Add();
    fillFieldSheet(application, book);
    Worksheet last = book.Worksheets().Add(book.Worksheets(1));
    last.setName("It's <one> & \"two\"");
    last.PageSetup().setPrintTitleRows("$2:$2");
    book.Worksheets(1).Activate();
    book.SaveAs(path);
    NEEDS_READERS();
    const QStringList actual = readBack({path});
    const auto title = [](const QString &cell, const QString &content, bool bold) {
        return cell + content + " Arial 15" + (bold ? " bold" : "") + " center bottom 0 -/-/-/- D9D9D9 General";
    };
    QStringList expected{"sheet Sheet1 shown", title("A1", " text [Pest Monitoring: Count]", true)};
    // The reader of .xlsx passes over the covered cells of a merged range.
    for (char column = 'B'; column <= 'P' && ending == u".xls"; ++column) {
        expected.append(title(QChar::fromLatin1(column) + QStringLiteral("1"), " blank []", column <= 'C'));
    }
    // A blank cell with the standard look is left out of a .xlsx.
    for (int cell = 0; cell < 4 && ending == u".xls"; ++cell) {
        expected.append(QStringList{"A2", "B2", "C2", "A3"}[cell] + " blank [] Arial 10" + (cell == 3 ? " bold" : "")
                        + " general bottom 0 -/-/-/- - General");
    }
    if (ending == u".xlsx") {
        expected.append("A3 blank [] Arial 10 bold general bottom 0 -/-/-/- - General");
    }
    expected << "B3 text [Codling moth] Arial 10 bold general top wrap 90 thin/hair/thin/thin - General"
             << "C3 number [12.5] Arial 10 bold underlined left bottom 0 hair/hair/hair/hair - #0.00"
             << "merged A1:P1"
             << "height 1 18"
             << "height 3 95"
             << "width A 5.7"
             << "width B 5.7";
    if (ending == u".xls") {
        expected << "titles Sheet1!$A$1:$A$65536,Sheet1!$A$1:$IV$7"
                 << "sheet It's <one> & \"two\""
                 << "titles 'It''s <one> & \"two\"'!$A$2:$IV$2";
    } else {
        expected << "titles $A:$A $1:$7"
                 << "page portrait 9 0.4921"
                 << "head [Date &D Time &T] [None] [Page #&P Of &N Pages]"
                 << "head [None] [None] [None]"
                 << "sheet It's <one> & \"two\""
                 << "titles None $2:$2"
                 << "page portrait 9 0.7000"
                 << "head [None] [None] [None]"
                 << "head [None] [None] [None]";
    }
    compareLines(actual, expected);
}

// Which texts become numbers, as the readers of both formats see them.
void WorkbookTest::values()
{
    const QStringList numbers{"12", "-3.5", ".5", "+4", "007", "123456789012345"};
    const QStringList texts{
        "1234567890123456", "1e3", "1,5", "-", ".", "1.2.3", "12 ", "2026/11/22", "=1+1", QString::fromUtf8("١٢"),
        "&amp; <b> _x0041_"};
    const QTemporaryDir folder;
    Application application;
    Workbook book = application.Workbooks().Add();
    const QStringList values = numbers + texts;
    QStringList expected{"sheet Sheet1 shown"};
    for (qsizetype row = 0; row < values.size(); ++row) {
        const QString cell = QStringLiteral("A%1").arg(row + 1);
        book.Worksheets(1).Range(cell).setValue(values[row]);
        const bool isNumber = row < numbers.size();
        QCOMPARE(book.Worksheets(1).Range(cell).isNumber(), isNumber);
        const QString shown = isNumber ? QString::number(values[row].toDouble(), 'g', 15) : values[row];
        expected.append(QStringLiteral("%1 %2 [%3] Arial 10 general bottom 0 -/-/-/- - General")
                            .arg(cell, isNumber ? "number" : "text", shown));
    }
    NEEDS_READERS();
    for (const auto &[name, format] : {std::pair{"values.xls", xlExcel8}, std::pair{"values.xlsx", xlOpenXMLWorkbook}}) {
        const QString path = folder.filePath(QLatin1String(name));
        book.SaveAs(path, format);
        compareLines(readBack({path}).first(expected.size()), expected);
    }
}

void WorkbookTest::longTexts_data()
{
    QTest::addColumn<QString>("letter");
    QTest::newRow("one byte") << "x";
    QTest::newRow("two bytes") << QString::fromUtf8("測");
    QTest::newRow("pair") << QString::fromUtf8("🍎");
}

// Texts longer than a record must be parted at its end, whole letters on both sides.
void WorkbookTest::longTexts()
{
    QFETCH(QString, letter);
    const QTemporaryDir folder;
    const QString path = folder.filePath("long.xls");
    Application application;
    Workbook book = application.Workbooks().Add();
    QStringList texts;
    for (int row = 1; row <= 40; ++row) {
        texts.append(QString::number(row) + u'é' + letter.repeated((row * 811) % (MaxTextLength / 2 - 3)));
        book.Worksheets(1).Range(QStringLiteral("A%1").arg(row)).setValue(texts.last());
    }
    book.SaveAs(path);
    NEEDS_READERS();
    const QStringList actual = readBack({path});
    QCOMPARE(actual.size(), texts.size() + 1);
    for (qsizetype row = 0; row < texts.size(); ++row) {
        QVERIFY(actual[row + 1].contains(u'[' + texts[row] + u']'));
    }
}

/// Whole numbers have a short form in .xls and stand together; others, and those too large for it, break the run.
void WorkbookTest::numbersOfAllForms()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("numbers.xls");
    const std::vector<double> numbers{0, 1, -1, 7.25, 536870911, 536870912, -536870911, -536870912, 3e15, 1.0 / 3, -0.0, 42};
    Application application;
    Workbook book = application.Workbooks().Add();
    const Worksheet sheet = book.Worksheets(1);
    for (std::size_t at = 0; at < numbers.size(); ++at) {
        sheet.Cells(1, static_cast<int>(at + 1)).setValue(numbers[at]);
    }
    // Alone behind a gap.
    sheet.Range("Z1").setValue(9.0);
    book.SaveAs(path);
    const Worksheet read = Application().Workbooks().Open(path).Worksheets(1);
    NEEDS_READERS();
    const QStringList actual = readBack({path}).filter(" number ");
    QCOMPARE(static_cast<std::size_t>(actual.size()), numbers.size() + 1);
    for (std::size_t at = 0; at < numbers.size(); ++at) {
        const QString shown = actual[static_cast<qsizetype>(at)].section(u'[', 1).section(u']', 0, 0);
        QCOMPARE(shown.toDouble(), QString::number(numbers[at], 'g', 15).toDouble());
        QCOMPARE(read.Cells(1, static_cast<int>(at + 1)).value().toDouble(), numbers[at]);
    }
    QVERIFY(actual.last().startsWith("Z1 number [9]"));
    for (const auto &[row, column] : {std::pair(0, 1), std::pair(1, 0), std::pair(1, 16385)}) {
        const auto outside = [&, place = std::pair(row, column)] { sheet.Cells(place.first, place.second); };
        QCOMPARE(errorOf(outside).first, 1004);
    }
}

void WorkbookTest::tooManyFormatsAreReported()
{
    const QTemporaryDir folder;
    Application application;
    Workbook book = application.Workbooks().Add();
    int row = 0;
    for (int degrees = -90; degrees <= 90 && row < 4100; ++degrees) {
        for (int size = 8; size < 32 && row < 4100; ++size) {
            Range cell = book.Worksheets(1).Range(QStringLiteral("A%1").arg(++row));
            cell.setOrientation(degrees);
            cell.Font().setSize(size);
        }
    }
    const auto [number, description] = errorOf([&] { book.SaveAs(folder.filePath("many.xls")); });
    QCOMPARE(number, 1004);
    QVERIFY2(description.contains("4000") && description.contains("many.xls"), qPrintable(description));
    book.SaveAs(folder.filePath("many.xlsx"), xlOpenXMLWorkbook);
}

void WorkbookTest::limitsOfXlsAreReported()
{
    const QTemporaryDir folder;
    for (const char *beyond : {"A65537", "IW1"}) {
        Application application;
        Workbook book = application.Workbooks().Add();
        book.Worksheets(1).Range(QLatin1String(beyond)).setValue("x");
        const auto [number, description] = errorOf([&] { book.SaveAs(folder.filePath("beyond.xls")); });
        QCOMPARE(number, 1004);
        QVERIFY2(description.contains("Sheet1") && description.contains("most"), qPrintable(description));
        QVERIFY(!QFile::exists(folder.filePath("beyond.xls")));
    }
}

void WorkbookTest::columnFit()
{
    Application application;
    const Worksheet sheet = application.Workbooks().Add().Worksheets(1);
    sheet.Range("A1").setValue("narrow");
    sheet.Range("B1").setValue("a text that is a good deal wider");
    sheet.Range("C1").setValue("a text that is a good deal wider");
    sheet.Range("C1").Font().setBold(true);
    sheet.Range("D1", "F1").setMergeCells(true);
    sheet.Range("D1").setValue("a merged heading that must not widen its column");
    sheet.Range("G1").setValue("a text that is a good deal wider");
    sheet.Range("G1").setOrientation(90);
    sheet.Columns("A:Z").AutoFit();
    const auto width = [&](const char *column) { return sheet.Columns(QLatin1String(column)).ColumnWidth(); };
    QVERIFY(width("A") > 5 && width("A") < 9);
    QVERIFY(width("B") > 3 * width("A"));
    QVERIFY(width("C") > width("B"));
    QCOMPARE(width("D"), width("Z"));
    QVERIFY(width("G") < width("A"));
}

void WorkbookTest::mergeKeepsOneValue()
{
    Application application;
    const Worksheet sheet = application.Workbooks().Add().Worksheets(1);
    sheet.Range("A1", "C2").setValue("first");
    sheet.Range("A1", "C2").setMergeCells(true);
    QCOMPARE(sheet.Range("A1").value(), "first");
    QCOMPARE(sheet.Range("B2").value(), "");
    sheet.Range("A1", "C2").setValue("again");
    QCOMPARE(sheet.Range("B2").value(), "");
    sheet.Range("C2", "D3").setMergeCells(true);
    QVERIFY(!sheet.Range("A1").MergeCells());
    QVERIFY(sheet.Range("D3").MergeCells());
    sheet.Range("D3").setMergeCells(false);
    QVERIFY(!sheet.Range("C2").MergeCells());
}

void WorkbookTest::sheetNames()
{
    Application application;
    Workbook book = application.Workbooks().Add();
    Worksheet first = book.Worksheets(1);
    Worksheet second = book.Worksheets().Add(first);
    first.setName("Block 7");
    const QStringList refused{"", QString(32, u'x'), "a:b", "a/b", "a\\b", "a?b", "a*b", "a[b", "a]b", "'a", "a'", "BLOCK 7"};
    for (const QString &name : refused) {
        QCOMPARE(errorOf([&] { second.setName(name); }).first, 1004);
        QCOMPARE(second.Name(), "Sheet2");
    }
    first.setName("BLOCK 7");
    second.setName(QString(31, u'x'));
    QCOMPARE(book.Worksheets().Add(second).Name(), "Sheet3");
}

void WorkbookTest::refusedValues_data()
{
    QTest::addColumn<std::function<void(Range)>>("action");
    const auto row = [](const char *name, std::function<void(Range)> action) { QTest::newRow(name) << std::move(action); };
    row("too long a text", [](Range range) { range.setValue(QString(MaxTextLength + 1, u'x')); });
    row("not a number", [](Range range) { range.setValue(std::nan("")); });
    row("row height", [](Range range) { range.setRowHeight(409.6); });
    row("alignment", [](Range range) { range.setHorizontalAlignment(99); });
    row("orientation", [](Range range) { range.setOrientation(91); });
    row("font size", [](Range range) { range.Font().setSize(0); });
    row("weight", [](Range range) { range.Borders().setWeight(9); });
    row("theme colour", [](Range range) { range.Interior().setThemeColor(11); });
    row("number format", [](Range range) { range.setNumberFormat(""); });
}

void WorkbookTest::refusedValues()
{
    QFETCH(std::function<void(Range)>, action);
    Application application;
    Range range = application.Workbooks().Add().Worksheets(1).Range("A1");
    range.setValue("before");
    QCOMPARE(errorOf([&] { action(range); }).first, 1004);
    QCOMPARE(range.value(), "before");
    QCOMPARE(errorOf([&] { action(Range()); }).first != 0, true);
}

void WorkbookTest::savesThatFail()
{
    const QTemporaryDir folder;
    Application application;
    Workbook book = application.Workbooks().Add();
    QVERIFY(QDir(folder.path()).mkdir("taken.xls"));
    QStringList refused{folder.filePath("taken.xls"), folder.filePath("missing/report.xls"),
                        folder.filePath(QString(300, u'x') + ".xlsx")};
    for (const QString &path : refused) {
        const auto [number, description] = errorOf([&] { book.SaveAs(path); });
        QCOMPARE(number, 1004);
        QVERIFY2(description.contains(path), qPrintable(description));
    }
    const QString existing = folder.filePath("existing.xls");
    QFile file(existing);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("precious") == 8);
    file.close();
    QCOMPARE(errorOf([&] { book.SaveAs(existing); }).first, 1004);
    QCOMPARE(QFileInfo(existing).size(), 8);
    application.setDisplayAlerts(false);
    book.SaveAs(existing);
    NEEDS_READERS();
    QVERIFY(readBack({existing}).contains("sheet Sheet1 shown"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"existing.xls"});
}

void WorkbookTest::handOver()
{
    const QTemporaryDir folder;
    RecordingLauncher launcher;
    Application application(&launcher);
    QCOMPARE(errorOf([&] { application.ActiveWorkbook(); }).first, 91);
    const QString first = folder.filePath("first.xlsx");
    Workbook book = application.Workbooks().Add();
    application.setVisible(true);
    QVERIFY(launcher.opened.isEmpty());
    book.SaveAs(first);
    QCOMPARE(launcher.opened, QStringList{first});
    application.setVisible(false);
    const QString second = folder.filePath("second.xls");
    application.Workbooks().Add().SaveAs(second);
    QCOMPARE(launcher.opened.size(), 1);
    launcher.hasProgram = false;
    application.setVisible(true);
    application.setVisible(true);
    QCOMPARE(launcher.opened, (QStringList{first, second}));
    QCOMPARE(launcher.actual, QStringList{second});
    QCOMPARE(errorOf([&] { application.Workbooks().OpenStored(first); }).first, 429);
    QCOMPARE(errorOf([&] { application.Workbooks().OpenStored(folder.filePath("none.xlsx")); }).first, 1004);
    QCOMPARE(launcher.actual.size(), 1);
}

void WorkbookTest::deletedSheets()
{
    Application application;
    Workbook book = application.Workbooks().Add();
    Worksheet first = book.Worksheets(1);
    QCOMPARE(errorOf([&] { first.Delete(); }).first, 1004);
    Worksheet second = book.Worksheets().Add(first);
    const Range deleted = second.Range("A1");
    second.Delete();
    QCOMPARE(book.Sheets().Count(), 1);
    QCOMPARE(book.ActiveSheet().Name(), "Sheet1");
    QCOMPARE(errorOf([&] { Range(deleted).setValue("late"); }).first, 1004);
    QCOMPARE(errorOf([&] { book.Worksheets(2); }).first, 9);
}

QTEST_GUILESS_MAIN(WorkbookTest)
#include "WorkbookTest.moc"
